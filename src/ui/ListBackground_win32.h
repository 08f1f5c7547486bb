#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <string>

#include "platform/UniqueHandle_win32.h"
#include "platform/WindowSubclass_win32.h"
#include "ui/PictureLoader.h"

namespace tobbin {

// The picture behind the rows of a list view, under a veil of the window's color that keeps the
// rows readable. It stays in its place while the rows scroll. The list's owner calls Paint when the
// list asks how to draw itself.
class ListBackground {
 public:
    explicit ListBackground(PictureLoader& loader)
        : m_loader(loader), m_list([this](UINT message, WPARAM wParam, LPARAM lParam) {
              return HandleMessage(message, wParam, lParam);
          }) {}
    ListBackground(const ListBackground&) = delete;
    ListBackground& operator=(const ListBackground&) = delete;
    ~ListBackground() { Detach(); }

    // From the list view's creation to its end.
    void Attach(HWND list) { m_list.Attach(list); }
    void Detach() {
        m_loader.Forget(this);
        m_list.Detach();
    }

    // Shows a file, or nothing when the path is empty. `next` is decoded ahead.
    void Show(const std::string& path, bool tiled, const std::string& next);

    // Whether there is a picture now: names are then drawn on it, not on the window's color.
    bool IsShown() const { return m_canvas && !m_path.empty(); }

    // Paints the area behind the rows; then, before each row, the ground of a selected one, which
    // not every system paints as wide as the row when names have no ground of their own.
    void Paint(HDC dc) const;
    void PaintRow(HDC dc, int row) const;

    // Called when a picture can't be shown.
    std::function<void(const std::string& path, const std::string& problem)> onFailed =
        [](const std::string&, const std::string&) {};
    // WM_GETOBJECT for the list itself, whose messages all come by here; 0 leaves it to the list.
    std::function<LRESULT(WPARAM wParam)> onObject = [](WPARAM) { return LRESULT{0}; };
    // A mouse message for the list; true keeps it from the list.
    std::function<bool(UINT message, WPARAM keys, POINT at)> onMouse = [](UINT, WPARAM, POINT) {
        return false;
    };

 private:
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam);
    void Request();
    void OnReady();
    void SetCanvas(const PicturePixels& pixels);
    void UseColors();
    RECT Pane() const;
    POINT Scrolled() const;

    PictureLoader& m_loader;
    WindowSubclass m_list;
    std::string m_path, m_next;
    bool m_tiled = false;
    PictureRequest m_request;  // the last one made
    UniqueBitmap m_canvas;     // a picture of an earlier request while the last one is made
    PictureSize m_canvasSize;
};

}  // namespace tobbin
