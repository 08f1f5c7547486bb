#pragma once

#include <windows.h>

#include <functional>

#include "platform/UniqueHandle_win32.h"
#include "platform/WindowBase_win32.h"
#include "player/PlayerPanel.h"

namespace tobbin {

// The window of the player panel, an MDI child of the main frame: a play/pause button, a status
// label, and three scroll bars with their labels, stretched to the window's width. The message loop
// must offer it its keys (IsDialogMessageW) while the focus is in it.
class PlayerPanelWindow : public WindowBase, private PlayerPanelView {
 public:
    static constexpr wchar_t kClassName[] = L"frmMainWinamp";

    // The controls' numbers.
    enum Control : int {
        cmdPlayPause = 101,
        lblStatus,
        cmdStopAdding,
        hscrlTrackPos,
        hscrlVolume,
        hscrlBalance,
    };

    PlayerPanelWindow(Environment& environment, WinAMP_Control& control, const PlayList& playList,
                      PlayerPanel::SongPathOf songPathOf);
    ~PlayerPanelWindow() override;

    // Shows the panel in the frame's client window and loads it. `closed` is called when its window
    // is gone; the owner then releases the object from its message loop.
    bool Open(HWND mdiClient, std::function<void()> closed);

    // The size that it opens with, in pixels.
    static SIZE FirstSize(HWND mdiClient);

    PlayerPanel& Panel() { return m_panel; }

 protected:
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
    void SetCaption(const std::string& caption) override;
    void SetOuterSize(int widthTwips, int heightTwips) override;
    void SetButton(const std::string& caption, bool enabled) override;
    void SetStatus(const std::string& text) override;
    void SetBar(PlayerBar bar, const BarState& state) override;
    void OfferStop(bool offered) override;
    void SetTimer(bool enabled) override;
    void WorkIn(int milliseconds) override;

    bool OnCreate() override;
    void OnDpiChanged();
    void OnSize(int width, int height);
    void OnFocus();
    void OnNextControl(WPARAM which, bool isHandle);
    void OnCommand(int control);
    void OnTimer(UINT_PTR timer);
    void OnScroll(HWND bar, int code);
    void OnDestroy() override;
    void LeavePlayer();

    PlayerPanel m_panel;
    std::function<void()> m_closed = [] {};
    UniqueFont m_font;
    bool m_focusIsLent = false;  // to the volume, until there is something to pause
    bool m_loaded = false;
    bool m_leftPlayer = false;
};

}  // namespace tobbin
