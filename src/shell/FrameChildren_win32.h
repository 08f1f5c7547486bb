#pragma once

#include <windows.h>

#include <functional>
#include <memory>
#include <vector>

#include "shell/Application.h"
#include "ui/JukeboxView_win32.h"
#include "ui/JukeboxWindow.h"
#include "ui/PictureLoader.h"
#include "ui/WindowState.h"

namespace tobbin {

// The jukebox windows in the frame's client window, from their opening to their release.
class FrameChildren {
 public:
    FrameChildren(Application& application, JukeboxWindowHost& host);

    // `jukebox` belongs to the application, which forgets it when the window is released.
    JukeboxMdiChild& Open(HWND mdiClient, Jukebox& jukebox);
    int OpenedSoFar() const { return m_opened; }

    // Keeps the windows' places as they are now, which their closing does as well.
    void KeepStates();

    // Releases windows that are closed. Only to be called when no message of one is at work.
    void ReleaseClosed();

    // Makes the pictures of all windows.
    PictureLoader& Pictures() { return m_pictures; }

    // The open window with this handle; null when it is none of the jukebox windows.
    JukeboxMdiChild* MaybeAt(HWND window) const;
    void ForEach(const std::function<void(JukeboxMdiChild&)>& call) const;

 private:
    struct Child {
        Jukebox* jukebox = nullptr;
        std::unique_ptr<JukeboxWindow> controller;
        std::unique_ptr<JukeboxMdiChild> window;
        int loadedNumber = 0;  // among the loaded windows
        bool closed = false;
    };
    void OnClosed(Child& child);
    void KeepState(const Child& child);

    Application& m_application;
    JukeboxWindowHost& m_host;
    WindowStates m_states;
    PictureLoader m_pictures;
    std::vector<std::unique_ptr<Child>> m_children;
    int m_opened = 0;
};

}  // namespace tobbin
