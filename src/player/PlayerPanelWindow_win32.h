#pragma once

#include <windows.h>

#include <functional>

#include "platform/UniqueHandle_win32.h"
#include "platform/WindowBase_win32.h"
#include "player/PanelPlace.h"
#include "player/PlayerPanel.h"

namespace tobbin {

// The window of the player panel, a child of the main frame above the area of the jukebox windows:
// a play/pause button, a status label, a button that chooses the player, what plays, and three
// scroll bars with their labels and values, stretched to the window's width. Minimized it is a
// caption in the lower right corner. The message loop must offer it its keys (IsDialogMessageW)
// while the focus is in it.
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
        cmdChoosePlayer,
        lblSong,
        lblTrackPos,  // the bars' values, in their order
        lblVolume,
        lblBalance,
    };

    PlayerPanelWindow(Environment& environment, WinAMP_Control& control, const PlayList& playList,
                      PlayerPanel::SongPathOf songPathOf, PlayerDiscovery& discovery);
    ~PlayerPanelWindow() override;

    // Shows the panel in the frame, over the room of the jukebox windows, and loads it. The focus
    // stays where it is. `minimized` is called when it has been collapsed, `closed` when its window
    // is gone; the owner then releases the object from its message loop.
    bool Open(HWND frame, const PixelRect& room, std::function<void()> minimized,
              std::function<void()> closed);

    // The room has changed: the panel keeps its place from the lower right corner.
    void SetRoom(const PixelRect& room);
    // The screen has changed.
    void OnDpiChanged(int oldDpi, int dpi);

    PlayerPanel& Panel() { return m_panel; }

 protected:
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
    void SetCaption(const std::string& caption) override;
    void SetOuterSize(int widthTwips, int heightTwips) override;
    void SetButton(const std::string& caption, bool enabled) override;
    void SetStatus(const std::string& text) override;
    void SetSong(const std::string& text) override;
    void SetBar(PlayerBar bar, const BarState& state) override;
    void SetBarText(PlayerBar bar, const std::string& text) override;
    void SetChoice(const std::string& caption) override;
    void OfferStop(bool offered) override;
    void SetTimer(bool enabled) override;
    void WorkIn(int milliseconds) override;

    bool OnCreate() override;
    void UseLook();
    void SetText(int control, const std::string& text);
    void KeepInRoom(WINDOWPOS& place) const;
    void OnMoved();
    void OnSize(int width, int height);
    void OnFocus();
    void OnNextControl(WPARAM which, bool isHandle);
    void OnCommand(int control);
    void OnTimer(UINT_PTR timer);
    void OnScroll(HWND bar, int code);
    void OnDestroy() override;
    void LeavePlayer();

    PlayerPanel m_panel;
    std::function<void()> m_minimized = [] {};
    std::function<void()> m_closed = [] {};
    PixelRect m_room;
    PanelPlace m_place;
    UniqueFont m_font;
    bool m_focusIsLent = false;  // to the volume, until there is something to pause
    bool m_loaded = false;
    bool m_leftPlayer = false;
};

}  // namespace tobbin
