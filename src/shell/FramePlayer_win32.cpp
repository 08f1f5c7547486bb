#include "shell/FramePlayer_win32.h"

#include "player/SongPaths.h"
#include "shell/FrameKeys_win32.h"
#include "shell/NewSongs.h"
#include "shell/Searching_win32.h"

namespace tobbin {

FramePlayer::FramePlayer(Application& application)
    : m_application(application),
      m_requests(application.TheEnvironment(), application.PlayerPlace(), application.Discovery(),
                 application.Player(), application.SongsToPlay(), *this) {}

FramePlayer::~FramePlayer() = default;

void FramePlayer::SetWindows(HWND frame, HWND mdiClient) {
    m_frame = frame;
    m_mdiClient = mdiClient;
}

void FramePlayer::MinimizePanel() {
    if (Panel() != nullptr)
        ShowWindow(Panel(), SW_MINIMIZE);
}

// Esc stops the adding of songs wherever the focus is in the frame.
bool FramePlayer::TranslateKeys(MSG& message) {
    if (Panel() != nullptr && IsEscKey(message) && m_panel->Panel().IsAddingSongs() &&
        IsChild(m_frame, message.hwnd)) {
        m_panel->Panel().OnStopAdding();
        return true;
    }
    return Panel() != nullptr && IsChild(Panel(), message.hwnd) &&
           IsDialogMessageW(Panel(), &message);
}

void FramePlayer::ReleaseClosed() {
    if (!m_panelClosed)
        return;
    m_panelClosed = false;
    m_panel.reset();
    GiveRoomBack();
}

std::unique_ptr<SearchingWindow> FramePlayer::MakeSearchingWindow() {
    return std::make_unique<SearchingPopup>(m_frame);
}

void FramePlayer::PlayInPanel() {
    ReleaseClosed();
    if (m_panel)
        m_panel->Panel().Playstuff();
    else
        OpenPanel();
}

// It shows above the jukebox window that is active, which keeps the focus.
void FramePlayer::OpenPanel() {
    const LRESULT active = SendMessageW(m_mdiClient, WM_MDIGETACTIVE, 0, 0);
    MakeRoomForPanel();
    m_panel = std::make_unique<PlayerPanelWindow>(
        m_application.TheEnvironment(), m_application.Player(), m_application.SongsToPlay(),
        SongPathsOf(m_application.Catalogue()));
    if (!m_panel->Open(m_mdiClient, [this] { OnPanelClosed(); })) {
        m_panel.reset();
        return;
    }
    if (active != 0) {
        SendMessageW(m_mdiClient, WM_MDIACTIVATE, static_cast<WPARAM>(active), 0);
        SetWindowPos(Panel(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    }
    m_loadedNumber = m_application.Windows().Add("frmMainWinamp",
                                                 [this] { SendMessageW(Panel(), WM_CLOSE, 0, 0); });
}

// A child that opens over a maximized one is maximized too. The jukebox window gets all of the room
// but a strip for the panel instead, so that the panel stays small and both are seen.
void FramePlayer::MakeRoomForPanel() {
    BOOL maximized = FALSE;
    const auto active = reinterpret_cast<HWND>(
        SendMessageW(m_mdiClient, WM_MDIGETACTIVE, 0, reinterpret_cast<LPARAM>(&maximized)));
    if (active == nullptr || !maximized)
        return;
    SendMessageW(m_mdiClient, WM_MDIRESTORE, reinterpret_cast<WPARAM>(active), 0);
    RECT room = {};
    GetClientRect(m_mdiClient, &room);
    const int strip = PlayerPanelWindow::FirstSize(m_mdiClient).cy;
    if (room.bottom < 2 * strip)
        return;
    MoveWindow(active, 0, 0, room.right, room.bottom - strip, TRUE);
    m_shrunk = active;
    GetWindowRect(active, &m_shrunkTo);
}

// Unless the person has moved it meanwhile.
void FramePlayer::GiveRoomBack() {
    RECT place = {};
    if (m_shrunk != nullptr && GetWindowRect(m_shrunk, &place) && EqualRect(&place, &m_shrunkTo))
        SendMessageW(m_mdiClient, WM_MDIMAXIMIZE, reinterpret_cast<WPARAM>(m_shrunk), 0);
    m_shrunk = nullptr;
}

void FramePlayer::OnPanelClosed() {
    m_application.Windows().Remove(m_loadedNumber);
    m_panelClosed = true;
}

void FramePlayer::InstallPlayer() {
    SearchingPopup window(m_frame);
    tobbin::InstallPlayer(m_application, window);
}

}  // namespace tobbin
