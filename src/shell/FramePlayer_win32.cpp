#include "shell/FramePlayer_win32.h"

#include <string>
#include <utility>

#include "platform/Wide_win32.h"
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
        ShowWindow(Panel(), SW_SHOWMINNOACTIVE);
}

void FramePlayer::GoToPanel() {
    if (Panel() == nullptr)
        return;
    if (IsIconic(Panel()))
        ShowWindow(Panel(), SW_RESTORE);
    SetFocus(Panel());
}

bool FramePlayer::IsPanelActive() const {
    const HWND focus = GetFocus();
    if (Panel() == nullptr || IsChild(m_mdiClient, focus))
        m_panelHadFocus = false;
    else if (focus == Panel() || IsChild(Panel(), focus))
        m_panelHadFocus = true;
    return m_panelHadFocus || (Panel() != nullptr && JukeboxWindows().empty());
}

bool FramePlayer::PassFocusOn() {
    if (!IsPanelActive() || IsIconic(Panel()))
        return false;
    SetFocus(Panel());
    return true;
}

void FramePlayer::FocusJukebox() {
    if (m_panelHadFocus)
        SetFocus(m_mdiClient);  // which passes it on to its active child
}

PixelRect FramePlayer::Room() const {
    RECT room = {};
    GetClientRect(m_mdiClient, &room);
    MapWindowPoints(m_mdiClient, m_frame, reinterpret_cast<POINT*>(&room), 2);
    return {room.left, room.top, room.right, room.bottom};
}

void FramePlayer::OnClientPlaced() {
    if (Panel() != nullptr)
        m_panel->SetRoom(Room());
}

void FramePlayer::OnDpiChanged(int oldDpi, int dpi) {
    if (Panel() != nullptr)
        m_panel->OnDpiChanged(oldDpi, dpi);
}

std::vector<HWND> FramePlayer::JukeboxWindows() const {
    std::vector<HWND> windows;
    for (HWND child = GetWindow(m_mdiClient, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT))
        if (GetWindow(child, GW_OWNER) == nullptr)  // Wine 8 gives icons a title of their own.
            windows.push_back(child);
    return windows;
}

void FramePlayer::ShowInWindowList(HMENU windowList) {
    const std::size_t jukeboxes = JukeboxWindows().size();
    DeleteMenu(windowList, kPanelItem, MF_BYCOMMAND);
    DeleteMenu(windowList, kPanelItem + 1, MF_BYCOMMAND);
    if (Panel() == nullptr)
        return;
    const bool active = IsPanelActive();
    if (jukeboxes == 0)
        AppendMenuW(windowList, MF_SEPARATOR, kPanelItem + 1, nullptr);
    const std::wstring text =
        L"&" + std::to_wstring(jukeboxes + 1) + L" " + Wide(WindowText(Panel()));
    AppendMenuW(windowList, MF_STRING | (active ? MF_CHECKED : MF_UNCHECKED), kPanelItem,
                text.c_str());
    const auto shown = reinterpret_cast<HWND>(SendMessageW(m_mdiClient, WM_MDIGETACTIVE, 0, 0));
    CheckMenuItem(windowList, static_cast<UINT>(GetDlgCtrlID(shown)),
                  MF_BYCOMMAND | (active ? MF_UNCHECKED : MF_CHECKED));
}

// Ctrl+F4, and Ctrl+F6 and Ctrl+Tab, by which the panel comes after the last jukebox window.
bool FramePlayer::TranslateChildKeys(const MSG& message) {
    if (message.message != WM_KEYDOWN || GetKeyState(VK_CONTROL) >= 0 || Panel() == nullptr)
        return false;
    const bool goesOn = message.wParam == VK_F6 || message.wParam == VK_TAB;
    if (IsPanelActive()) {
        if (message.wParam == VK_F4)
            SendMessageW(Panel(), WM_CLOSE, 0, 0);
        else if (goesOn && !JukeboxWindows().empty())
            SetFocus(m_mdiClient);
        return message.wParam == VK_F4 || goesOn;
    }
    if (!goesOn || IsIconic(Panel()) || ++m_childrenPassed < JukeboxWindows().size())
        return false;
    m_childrenPassed = 0;
    SetFocus(Panel());
    return true;
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

// The captions show which child is active.
void FramePlayer::BetweenMessages() {
    ReleaseClosed();
    const bool active = Panel() != nullptr && IsPanelActive();
    if (std::exchange(m_panelShownActive, active) == active)
        return;
    if (Panel() != nullptr)
        SendMessageW(Panel(), WM_NCACTIVATE, active, 0);
    const LRESULT jukebox = SendMessageW(m_mdiClient, WM_MDIGETACTIVE, 0, 0);
    SendMessageW(reinterpret_cast<HWND>(jukebox), WM_NCACTIVATE, !active, 0);
}

void FramePlayer::ReleaseClosed() {
    if (std::exchange(m_panelClosed, false))
        m_panel.reset();
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

void FramePlayer::OpenPanel() {
    m_panel = std::make_unique<PlayerPanelWindow>(
        m_application.TheEnvironment(), m_application.Player(), m_application.SongsToPlay(),
        SongPathsOf(m_application.Catalogue()), m_application.Discovery());
    if (!m_panel->Open(
            m_frame, Room(), [this] { FocusJukebox(); }, [this] { OnPanelClosed(); })) {
        m_panel.reset();
        return;
    }
    m_loadedNumber = m_application.Windows().Add("frmMainWinamp",
                                                 [this] { SendMessageW(Panel(), WM_CLOSE, 0, 0); });
}

void FramePlayer::OnPanelClosed() {
    m_application.Windows().Remove(m_loadedNumber);
    m_panelClosed = true;
    FocusJukebox();
}

void FramePlayer::InstallPlayer() {
    SearchingPopup window(m_frame);
    tobbin::InstallPlayer(m_application, window);
}

}  // namespace tobbin
