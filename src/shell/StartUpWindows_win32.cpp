#include "shell/StartUpWindows_win32.h"

namespace tobbin {

Progress& StartUpWindows::LoadSplash() {
    m_splash = std::make_unique<Splash>();
    m_splash->Open();
    m_splashNumber = m_loaded.Add("frmSplash", [this] { UnloadSplash(); });
    return *m_splash;
}

void StartUpWindows::UnloadSplash() {
    m_loaded.Remove(m_splashNumber);
    m_splash.reset();
}

void StartUpWindows::ShowProgressArea(bool visible) {
    m_splash->ShowProgressArea(visible);
}

void StartUpWindows::OpenJukeboxWindow(Jukebox& jukebox) {
    m_frame.Contents().View().OpenJukeboxWindow(jukebox);
}

void StartUpWindows::HandOver() {
    m_frame.Appear();
}

void StartUpWindows::ShowTips() {
    m_frame.Contents().ShowTipsAtStartUp();
}

}  // namespace tobbin
