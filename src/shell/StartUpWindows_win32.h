#pragma once

#include <memory>

#include "shell/MainFrame_win32.h"
#include "shell/Splash_win32.h"
#include "shell/StartUp.h"

namespace tobbin {

// The windows that start-up shows: the splash window, then the frame.
class StartUpWindows : public StartUpView {
 public:
    StartUpWindows(LoadedWindows& loaded, MainFrame& frame) : m_loaded(loaded), m_frame(frame) {}

    // The splash window's handle, null when it is not loaded.
    HWND SplashHandle() const { return m_splash ? m_splash->Handle() : nullptr; }

    Progress& LoadSplash() override;
    void UnloadSplash() override;
    void ShowProgressArea(bool visible) override;
    void OpenJukeboxWindow(Jukebox& jukebox) override;
    void HandOver() override;
    void ShowTips() override;

 private:
    LoadedWindows& m_loaded;
    MainFrame& m_frame;
    std::unique_ptr<Splash> m_splash;
    int m_splashNumber = 0;  // among the loaded windows
};

}  // namespace tobbin
