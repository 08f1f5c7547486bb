#include "shell/MainFrame_win32.h"

#include <algorithm>
#include <utility>

#include "platform/DragDrop_win32.h"
#include "platform/Wide_win32.h"
#include "platform/WindowAnswers_win32.h"
#include "resource.h"
#include "shell/FrameKeys_win32.h"
#include "shell/FramePlace_win32.h"
#include "shell/SingleInstance_win32.h"
#include "shell/StatusTexts.h"
#include "ui/WindowState_win32.h"

namespace tobbin {
namespace {

constexpr char kCaption[] = "Tobbin MP3 Organizer";

constexpr UINT kWorkIsDone = WM_APP + 1;
constexpr UINT_PTR kCopiesTimer = 1;
constexpr UINT kCopiesTimerMilliseconds = 20'000;
constexpr UINT_PTR kDetailsTimer = 2;
constexpr UINT kDetailsMilliseconds = 200;

// Not after a crash or a hang: what led there might come again.
void RegisterRestart(const std::string& arguments) {
    RegisterApplicationRestart(Wide(arguments).c_str(), RESTART_NO_CRASH | RESTART_NO_HANG);
}

// The system tells only the frame; its controls have to know as well.
void TellDescendants(HWND window, UINT message) {
    EnumChildWindows(
        window,
        [](HWND child, LPARAM number) -> BOOL {
            SendMessageW(child, static_cast<UINT>(number), 0, 0);
            return TRUE;
        },
        static_cast<LPARAM>(message));
}

}  // namespace

MainFrame::MainFrame(Application& application, WindowsEnvironment& environment)
    : m_application(application), m_environment(environment), m_contents(application) {}

MainFrame::~MainFrame() {
    m_environment.Status().SetListener({});
    Destroy();
    m_contents.ReleaseClosed();
}

bool MainFrame::Open() {
    ClassLook look;
    look.name = kClassName;
    look.background = GetSysColorBrush(COLOR_BTNFACE);  // a flat toolbar shows what is behind it
    Placement placement;
    placement.style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
    placement.x = placement.y = placement.width = placement.height = 0;
    if (!Create(look, kCaption, placement))
        return false;
    SetMenu(Handle(), m_menu.Handle());
    m_dpi = static_cast<int>(GetDpiForWindow(Handle()));
    m_icons.Show(Handle(), IDI_TOBBIN);
    m_maximized = PlaceFrame(Handle(), m_environment.Interfaces().userSettings);
    DragAcceptFiles(Handle(), TRUE);
    m_application.Settings().OnRecentListChanged([this] { UpdateTheMenuControlArray(); });
    RegisterRestart({});
    SetTimer(Handle(), kCopiesTimer, kCopiesTimerMilliseconds, nullptr);
    m_loadedNumber = m_application.Windows().Add("frmMDIForm1", [this] { Destroy(); });
    return true;
}

void MainFrame::SaveDatForm() {
    if (IsWindowVisible(Handle()))
        KeepFramePlace(Handle(), m_environment.Interfaces().userSettings);
}

void MainFrame::Appear() {
    ShowWindow(Handle(), m_maximized ? SW_SHOWMAXIMIZED : SW_SHOWDEFAULT);
    UpdateWindow(Handle());
    SetForegroundWindow(Handle());
    UpdateBars();
}

LRESULT MainFrame::Default(UINT message, WPARAM wParam, LPARAM lParam) {
    return DefFrameProcW(Handle(), m_contents.Client(), message, wParam, lParam);
}

LRESULT MainFrame::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            OnSize();
            return 0;  // the system would give the client window all of the frame
        case WM_COMMAND:
            if (LOWORD(wParam) >= kFirstChildNumber || LOWORD(wParam) >= 0xF000)
                break;
            OnCommand(LOWORD(wParam));
            return 0;
        case WM_SETFOCUS:
            if (m_contents.Player().PassFocusOn())
                return 0;
            break;
        case WM_ENTERIDLE:  // a modal dialog waits
            if (m_barsOutdated)
                UpdateBars();
            break;
        case WM_INITMENUPOPUP:
            OnInitMenu(reinterpret_cast<HMENU>(wParam), HIWORD(lParam) != 0);
            break;
        case WM_HELP:
            OnCommand(static_cast<int>(Command::Help));
            return TRUE;
        case WM_SYSCOLORCHANGE:
            TellDescendants(Handle(), message);
            UseLook();
            break;
        case WM_SETTINGCHANGE:
            if (wParam == SPI_SETNONCLIENTMETRICS || wParam == SPI_SETHIGHCONTRAST)
                UseLook();
            break;
        case WM_DPICHANGED:
            OnDpiChanged(*reinterpret_cast<const RECT*>(lParam));
            return 0;
        case WM_COPYDATA:
            return OnCopyData(*reinterpret_cast<const COPYDATASTRUCT*>(lParam));
        case WM_DROPFILES:
            m_environment.Status().Clear();
            m_contents.OpenFiles(TakeDroppedFiles(reinterpret_cast<HDROP>(wParam)));
            return 0;
        case WM_TIMER:
            if (wParam == kCopiesTimer)
                KeepCopies();
            else if (wParam == kDetailsTimer)
                ShowDetails();
            else
                break;
            return 0;
        case WM_QUERYENDSESSION:
            OnQueryEndSession();
            return TRUE;
        case WM_ENDSESSION:
            if (wParam != FALSE)
                OnEndSession((lParam & ENDSESSION_CLOSEAPP) != 0);
            return 0;
        case kWorkIsDone:
            ShutdownBlockReasonDestroy(Handle());
            return 0;
        case WM_GETMINMAXINFO:
            ShowSmallestSize(Handle(), *reinterpret_cast<MINMAXINFO*>(lParam));
            break;
        case WM_CLOSE:
            OnClose();
            return 0;
        default:
            break;
    }
    return WindowBase::HandleMessage(message, wParam, lParam);
}

bool MainFrame::OnCreate() {
    if (!m_toolbar.Create(Handle()) || !m_statusBar.Create(Handle()) ||
        !m_contents.CreateIn(Handle(), m_menu.WindowList()))
        return false;
    m_contents.onChanged = [this] { m_barsOutdated = true; };
    m_environment.Boxes().SetMainWindow(Handle());
    m_environment.Status().SetListener([this](const std::string& line, const StepsDone& steps) {
        m_statusBar.ShowLine(line, steps);
    });
    return true;
}

void MainFrame::OnSize() {
    if (m_contents.Client() == nullptr || IsIconic(Handle()))
        return;
    SendMessageW(m_toolbar.Handle(), TB_AUTOSIZE, 0, 0);
    m_statusBar.OnSize();
    RECT client = {};
    GetClientRect(Handle(), &client);
    const int top = m_toolbar.Height();
    MoveWindow(m_contents.Client(), 0, top, client.right,
               std::max<int>(0, client.bottom - top - m_statusBar.Height()), TRUE);
    m_contents.Player().OnClientPlaced();
}

void MainFrame::OnDpiChanged(const RECT& place) {
    MoveTo(place);
    UseLook();
}

// Takes the fonts, the pictures and the measures for the screen and the colors there are now.
void MainFrame::UseLook() {
    const auto dpi = static_cast<int>(GetDpiForWindow(Handle()));
    m_icons.Show(Handle(), IDI_TOBBIN);
    m_toolbar.OnDpiChanged();
    m_statusBar.OnDpiChanged();
    OnSize();
    m_contents.UseLook(std::exchange(m_dpi, dpi), dpi);
}

void MainFrame::OnCommand(int command) {
    m_environment.Status().Clear();
    if (command == FramePlayer::kPanelItem)
        m_contents.Player().GoToPanel();
    else if (const auto recent = FrameMenu::MaybeRecent(command))
        m_contents.Commands().Files().OpenRecent(*recent);
    else if (const CommandRow* const row = MaybeRowOf(command))
        m_contents.Commands().Do(row->command);
    else
        m_contents.Commands().ClickButton(command - kToolbarNumber);
    m_barsOutdated = true;
}

void MainFrame::OnInitMenu(HMENU menu, bool isSystemMenu) {
    if (isSystemMenu)
        return;
    if (menu == m_menu.WindowList())
        m_contents.Player().ShowInWindowList(menu);
    FrameMenu::ShowStates(
        menu, [this](Command command) { return m_contents.Commands().StateOf(command); });
}

// A second start of the program. While this one is still starting, its splash window is what there
// is to bring forward.
bool MainFrame::OnCopyData(const COPYDATASTRUCT& data) {
    const std::optional<std::vector<std::string>> files = SingleInstance::MaybeFiles(data);
    if (!files)
        return false;
    if (IsIconic(Handle()))
        ShowWindow(Handle(), SW_RESTORE);
    if (IsWindowVisible(Handle()))
        SetForegroundWindow(GetLastActivePopup(Handle()));
    m_environment.Status().Clear();
    m_contents.OpenFiles(*files);
    return true;
}

bool MainFrame::TranslateKeys(MSG& message) {
    if (Handle() == nullptr || !IsWindowVisible(Handle()))
        return false;
    if (message.message == WM_KEYDOWN || message.message == WM_LBUTTONDOWN)
        m_environment.Status().OnInput();
    const HWND top = GetAncestor(message.hwnd, GA_ROOT);
    // A dialog has its keys for itself, also while work that began below it lets events through.
    if (top != Handle() && GetClassLongPtrW(top, GCL_CBWNDEXTRA) >= DLGWINDOWEXTRA)
        return IsDialogMessageW(top, &message) != FALSE;
    // The frame's first: the panel's would take the keys of menus and windows as well.
    return m_contents.Player().TranslateChildKeys(message) ||
           TranslateFrameKeys(Handle(), m_contents.Client(), m_contents.Player().Panel(),
                              m_menu.Keys(), message) ||
           (top == Handle() && IsEscKey(message) &&
            m_contents.Commands().Files().StopRefreshing()) ||
           m_contents.Player().TranslateKeys(message);
}

void MainFrame::BetweenMessages() {
    m_contents.ReleaseClosed();
    m_contents.Player().BetweenMessages();
    m_contents.OpenWaitingFiles();
    if (m_barsOutdated || m_barsOf != m_contents.ActiveChild())
        UpdateBars();
}

void MainFrame::UpdateTheMenuControlArray() {
    m_recent.Update(m_application.Settings());
    m_menu.ShowRecent(m_recent.Captions());
}

void MainFrame::UpdateBars() {
    m_barsOutdated = false;
    if (Handle() == nullptr)
        return;
    // Not every system puts a maximized window's title into the frame's caption as it opens.
    if (const HWND active = m_contents.ActiveChild(); std::exchange(m_barsOf, active) != active)
        SetWindowTextW(Handle(), Wide(kCaption).c_str());
    m_toolbar.Update([this](Command command) { return m_contents.Commands().IsEnabled(command); });
    const JukeboxWindow* const window = m_contents.View().MaybeActiveJukebox();
    m_statusBar.ShowJukebox(window != nullptr ? JukeboxText(window->Model()) : std::string());
    m_statusBar.ShowSelection(window != nullptr ? SelectionText(*window) : std::string());
    SetTimer(Handle(), kDetailsTimer, kDetailsMilliseconds, nullptr);  // begins anew
}

// Reads the song's tag, so it waits until the person stays on a song.
void MainFrame::ShowDetails() {
    if (WindowsOnlyAnswer())
        return;
    KillTimer(Handle(), kDetailsTimer);
    const JukeboxWindow* const window = m_contents.View().MaybeActiveJukebox();
    m_environment.Status().ShowDetails(window != nullptr ? window->FocusedSongDetails()
                                                         : std::string());
}

// Whatever box is open. Not in the middle of other work, which another program's message can reach.
void MainFrame::KeepCopies() {
    if (!WindowsOnlyAnswer())
        m_contents.Commands().Files().Recovered().KeepWhenDue();
}

// Documented for programs that can't be ended for a moment: the system shows the text to the person
// (ShutdownBlockReasonCreate). The posted message is handled when the work is done.
void MainFrame::OnSessionMustWait() {
    ShutdownBlockReasonCreate(Handle(), L"Tobbin is saving.  It takes a moment.");
    PostMessageW(Handle(), kWorkIsDone, 0, 0);
}

// The session may end: nobody is asked. This is the last moment to say what an update that starts
// Windows anew shall open again (RegisterApplicationRestart).
void MainFrame::OnQueryEndSession() {
    RegisterRestart(m_contents.Commands().Files().RestartArguments(RESTART_MAX_CMD_LINE - 1));
}

// It ends, and the program may be ended at any moment from now on, or has to end itself for an
// installer. No window is closed, as a dialog may be open.
void MainFrame::OnEndSession(bool programCloses) {
    if (WindowsOnlyAnswer())
        return;
    m_contents.Commands().Files().Recovered().LeaveForNextStart();
    SaveDatForm();
    m_contents.Children().KeepStates();
    if (programCloses)
        PostQuitMessage(0);
}

// Not below a dialog or a search, whose work is not done.
void MainFrame::OnClose() {
    if (m_closing || !IsWindowEnabled(Handle()))
        return;
    m_closing = true;
    m_contents.Commands().Files().StopRefreshing();
    SaveDatForm();
    m_application.Windows().UnloadAll();
}

void MainFrame::OnDestroy() {
    m_application.Settings().OnRecentListChanged([] {});
    m_application.Windows().Remove(m_loadedNumber);
    m_environment.Status().SetListener({});
    m_environment.Boxes().SetMainWindow(nullptr);
    PostQuitMessage(0);
}

}  // namespace tobbin
