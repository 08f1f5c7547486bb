#pragma once

#include <windows.h>

#include <commctrl.h>

#include <string>

#include "platform/UniqueHandle_win32.h"
#include "platform/WindowBase_win32.h"
#include "tobbin_player/Messages.h"
#include "tobbin_player/Player.h"

namespace tobbin::player {

// The player's window: what plays and where in it, buttons, volume and the list; and what other
// programs send their messages to.
class Window : public WindowBase {
 public:
    static constexpr wchar_t kClassName[] = L"Winamp v1.x";

    Window(Player& player, const SystemText& text);
    ~Window() override;

    // Opens it minimized, without taking the focus, unless it `isAskedFor`.
    bool Open(bool isAskedFor);

    // The first window of another start of this program; null when there is none.
    static HWND MaybeOther();

    // Puts songs into a player's window in place of its list and plays them.
    static void Send(HWND window, const std::vector<std::string>& files);

 private:
    enum Control {
        kName = 101,
        kStatus,
        kPositionLabel,
        kPosition,
        kTime,
        kPrevious,
        kPlay,
        kPause,
        kStop,
        kNext,
        kVolumeLabel,
        kVolume,
        kListLabel,
        kList
    };

    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool OnCreate() override;
    void OnDestroy() override;
    void OnSize(int width, int height);
    void OnDpiChanged(const RECT& place);
    LRESULT OnCopyData(const COPYDATASTRUCT& data);
    void OnControl(int control);
    void OnHotKey(int key);
    void OnScroll(HWND bar, int code);
    LRESULT OnNotify(NMHDR& header);
    void OnTextWanted(NMLVDISPINFOW& info);
    void RemoveSelected();
    void PlayFocused();
    void UseLook();

    void Refresh();
    void SetText(int control, const std::string& text);

    Player& m_player;
    Messages m_messages;
    UINT m_addPathMessage;
    UINT m_trackNumberMessage;
    UniqueFont m_font;
    Display m_shown;
    std::string m_caption;
    bool m_dragging = false;
};

}  // namespace tobbin::player
