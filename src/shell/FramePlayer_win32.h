#pragma once

#include <windows.h>

#include <memory>

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
    // The jukebox window that was maximized before the panel opened is so again.
    void GiveRoomBack();

    // For the message loop: the keys of the panel, and the moment between two messages.
    bool TranslateKeys(MSG& message);
    void ReleaseClosed();

 private:
    std::unique_ptr<SearchingWindow> MakeSearchingWindow() override;
    void PlayInPanel() override;
    void InstallPlayer() override;

    void OpenPanel();
    void MakeRoomForPanel();
    void OnPanelClosed();

    Application& m_application;
    PlayRequests m_requests;
    std::unique_ptr<PlayerPanelWindow> m_panel;
    HWND m_frame = nullptr;
    HWND m_mdiClient = nullptr;
    int m_loadedNumber = 0;   // of the panel, among the loaded windows
    HWND m_shrunk = nullptr;  // the child that made room for the panel
    RECT m_shrunkTo = {};     // its place since then, on the screen
    bool m_panelClosed = false;
};

}  // namespace tobbin
