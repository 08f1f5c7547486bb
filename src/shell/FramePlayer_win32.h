#pragma once

#include <windows.h>

#include <memory>
#include <vector>

#include "player/PlayerPanelWindow_win32.h"
#include "player/PlayRequests.h"
#include "shell/Application.h"

namespace tobbin {

// The main frame's part in playing: the player panel among its children, and what a request to
// play needs of the frame.
class FramePlayer : private PlayHost {
 public:
    explicit FramePlayer(Application& application);
    ~FramePlayer() override;

    // The frame and its client window, once they are there.
    void SetWindows(HWND frame, HWND mdiClient);

    PlayRequests& Requests() { return m_requests; }

    // The panel's window; null when it is not open.
    HWND Panel() const { return m_panel ? m_panel->Handle() : nullptr; }
    void MinimizePanel();
    // Opens it again where it is collapsed, and gives it the focus.
    void GoToPanel();

    // Whether the panel is the active child: the focus was in it last, or no jukebox is open.
    bool IsPanelActive() const;
    // The frame gets the focus: hands it on to an active panel. Returns whether there was one.
    bool PassFocusOn();

    // The client window has its place in the frame.
    void OnClientPlaced();
    void OnDpiChanged(int oldDpi, int dpi);

    // The panel's item behind the jukebox windows' ones in the window list, which is about to open.
    static constexpr int kPanelItem = 1650;
    void ShowInWindowList(HMENU windowList);

    // For the message loop: the keys that go through the child windows, those of the panel, and the
    // moment between two messages.
    bool TranslateChildKeys(const MSG& message);
    bool TranslateKeys(MSG& message);
    void BetweenMessages();
    void ReleaseClosed();

 private:
    std::unique_ptr<SearchingWindow> MakeSearchingWindow() override;
    void PlayInPanel() override;
    void InstallPlayer() override;

    void OpenPanel();
    void OnPanelClosed();
    void FocusJukebox();
    PixelRect Room() const;
    std::vector<HWND> JukeboxWindows() const;

    Application& m_application;
    PlayRequests m_requests;
    std::unique_ptr<PlayerPanelWindow> m_panel;
    HWND m_frame = nullptr;
    HWND m_mdiClient = nullptr;
    int m_loadedNumber = 0;  // of the panel, among the loaded windows
    bool m_panelClosed = false;
    mutable bool m_panelHadFocus = false;  // last, before menus and boxes
    bool m_panelShownActive = false;
    std::size_t m_childrenPassed = 0;  // by the keys that go through them
};

}  // namespace tobbin
