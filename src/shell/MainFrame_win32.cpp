#include "shell/MainFrame_win32.h"

#include <algorithm>
#include <utility>

#include "jukebox/SpecialFolders.h"
#include "platform/DialogBase_win32.h"
#include "platform/DragDrop_win32.h"
#include "platform/Wide_win32.h"
#include "resource.h"
#include "shell/FrameKeys_win32.h"
#include "shell/FramePlace_win32.h"
#include "shell/Searching_win32.h"
#include "shell/SingleInstance_win32.h"
#include "shell/StatusTexts.h"
#include "shell/TipDialog_win32.h"
#include "shell/Tips.h"
#include "ui/FindDialog_win32.h"
#include "ui/ListedSongs.h"
#include "ui/PictureDialog_win32.h"

namespace tobbin {
namespace {

constexpr char kCaption[] = "Tobbin MP3 Organizer";

HICON ProgramIcon(int size) {
    return static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDI_TOBBIN),
                                         IMAGE_ICON, size, size, LR_SHARED));
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

MainFrame::MainFrame(Application& application, WindowsOutside& outside)
    : m_application(application),
      m_outside(outside),
      m_player(application),
      m_commands(application, *this),
      m_children(application, *this) {}

MainFrame::~MainFrame() {
    m_outside.Status().SetListener({});
    Destroy();
    m_children.ReleaseClosed();
}

bool MainFrame::Open() {
    ClassLook look;
    look.name = kClassName;
    look.icon = ProgramIcon(GetSystemMetrics(SM_CXICON));
    look.smallIcon = ProgramIcon(GetSystemMetrics(SM_CXSMICON));
    Placement placement;
    placement.style = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN;
    placement.x = placement.y = placement.width = placement.height = 0;
    if (!Create(look, kCaption, placement))
        return false;
    SetMenu(Handle(), m_menu.Handle());
    m_maximised = PlaceFrame(Handle(), m_outside.Interfaces().userSettings);
    DragAcceptFiles(Handle(), TRUE);
    m_application.Settings().OnRecentListChanged([this] { UpdateTheMenuControlArray(); });
    m_loadedNumber = m_application.Windows().Add("frmMDIForm1", [this] { Destroy(); });
    return true;
}

void MainFrame::SaveDatForm() {
    if (IsWindowVisible(Handle()))
        KeepFramePlace(Handle(), m_outside.Interfaces().userSettings);
}

void MainFrame::Appear() {
    ShowWindow(Handle(), m_maximised ? SW_SHOWMAXIMIZED : SW_SHOWDEFAULT);
    UpdateWindow(Handle());
    SetForegroundWindow(Handle());
    UpdateBars();
}

LRESULT MainFrame::Default(UINT message, WPARAM wParam, LPARAM lParam) {
    return DefFrameProcW(Handle(), m_client, message, wParam, lParam);
}

LRESULT MainFrame::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CREATE:
            return OnCreate() ? 0 : -1;
        case WM_SIZE:
            OnSize();
            return 0;  // the system would give the client window all of the frame
        case WM_COMMAND:
            if (LOWORD(wParam) >= IDM_FIRST_CHILD || LOWORD(wParam) >= 0xF000)
                break;
            OnCommand(LOWORD(wParam));
            return 0;
        case WM_ENTERIDLE:  // a modal dialog waits
            if (m_barsOutdated)
                UpdateBars();
            break;
        case WM_INITMENUPOPUP:
            OnInitMenu(reinterpret_cast<HMENU>(wParam), HIWORD(lParam) != 0);
            break;
        case WM_HELP:
            OnCommand(IDM_HELP);
            return TRUE;
        case WM_SYSCOLORCHANGE:
            TellDescendants(Handle(), message);
            break;
        case WM_DPICHANGED:
            OnDpiChanged(*reinterpret_cast<const RECT*>(lParam));
            return 0;
        case WM_COPYDATA:
            return OnCopyData(*reinterpret_cast<const COPYDATASTRUCT*>(lParam));
        case WM_DROPFILES:
            m_outside.Status().Clear();
            OpenFiles(TakeDroppedFiles(reinterpret_cast<HDROP>(wParam)));
            return 0;
        case WM_QUERYENDSESSION:
            return OnQueryEndSession();
        case WM_CLOSE:
            OnClose();
            return 0;
        case WM_DESTROY:
            OnDestroy();
            return 0;
        default:
            break;
    }
    return Default(message, wParam, lParam);
}

bool MainFrame::OnCreate() {
    if (!m_toolbar.Create(Handle()) || !m_statusBar.Create(Handle()))
        return false;
    CLIENTCREATESTRUCT creation = {};
    creation.hWindowMenu = m_menu.WindowList();
    creation.idFirstChild = IDM_FIRST_CHILD;
    m_client = CreateWindowExW(
        WS_EX_CLIENTEDGE, L"MDICLIENT", nullptr,
        WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS | WS_HSCROLL | WS_VSCROLL, 0, 0,
        0, 0, Handle(), nullptr, GetModuleHandleW(nullptr), &creation);
    m_player.SetWindows(Handle(), m_client);
    m_outside.Boxes().SetMainWindow(Handle());
    m_outside.Status().SetListener([this](const std::string& line) { m_statusBar.ShowLine(line); });
    return m_client != nullptr;
}

void MainFrame::OnSize() {
    if (m_client == nullptr || IsIconic(Handle()))
        return;
    SendMessageW(m_toolbar.Handle(), TB_AUTOSIZE, 0, 0);
    m_statusBar.OnSize();
    RECT client = {};
    GetClientRect(Handle(), &client);
    const int top = m_toolbar.Height();
    MoveWindow(m_client, 0, top, client.right,
               std::max<int>(0, client.bottom - top - m_statusBar.Height()), TRUE);
}

void MainFrame::OnDpiChanged(const RECT& place) {
    m_toolbar.OnDpiChanged();
    m_statusBar.OnDpiChanged();
    m_children.ForEach([](JukeboxMdiChild& child) { child.OnDpiChanged(); });
    SetWindowPos(Handle(), nullptr, place.left, place.top, place.right - place.left,
                 place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
    OnSize();
}

void MainFrame::OnCommand(int command) {
    m_outside.Status().Clear();
    if (command > IDM_TOOLBAR && command <= IDM_TOOLBAR + kToolbarButtons)
        m_commands.ClickButton(command - IDM_TOOLBAR);
    else if (command > IDM_RECENT && command <= IDM_RECENT + static_cast<int>(RecentMenu::kMost))
        m_commands.Files().OpenRecent(command - IDM_RECENT);
    else if (FrameMenu::IsFrameCommand(command))
        m_commands.Do(static_cast<FrameCommand>(command));
    m_barsOutdated = true;
}

void MainFrame::OnInitMenu(HMENU menu, bool isSystemMenu) {
    if (isSystemMenu)
        return;
    m_menu.EnableItems(menu,
                       [this](FrameCommand command) { return m_commands.IsEnabled(command); });
    for (const FrameCommand command : {FrameCommand::NoPicture, FrameCommand::ToggleTile})
        m_menu.TickItem(command, m_commands.IsOn(command));
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
    m_outside.Status().Clear();
    OpenFiles(*files);
    return true;
}

void MainFrame::OpenFiles(const std::vector<std::string>& paths) {
    m_filesToOpen.insert(m_filesToOpen.end(), paths.begin(), paths.end());
    PostMessageW(Handle(), WM_NULL, 0, 0);  // wakes the message loop, which opens them
}

bool MainFrame::TranslateKeys(MSG& message) {
    if (Handle() == nullptr || !IsWindowVisible(Handle()))
        return false;
    return m_player.TranslateKeys(message) ||
           TranslateFrameKeys(Handle(), m_client, m_menu.Keys(), message);
}

void MainFrame::BetweenMessages() {
    m_children.ReleaseClosed();
    m_player.ReleaseClosed();
    if (!m_filesToOpen.empty() && IsWindowVisible(Handle()) && IsWindowEnabled(Handle())) {
        m_commands.Files().OpenFromOutside(std::exchange(m_filesToOpen, {}));
        m_barsOutdated = true;
    }
    if (m_barsOutdated || m_barsOf != ActiveChild())
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
    // Not every system puts a maximised window's title into the frame's caption as it opens.
    if (const HWND active = ActiveChild(); std::exchange(m_barsOf, active) != active)
        SetWindowTextW(Handle(), Wide(kCaption).c_str());
    m_toolbar.Update([this](int button) { return m_commands.IsButtonEnabled(button); });
    const JukeboxWindow* const window = MaybeActiveJukebox();
    m_statusBar.ShowJukebox(window != nullptr ? JukeboxText(window->Model()) : std::string());
    m_statusBar.ShowSelection(window != nullptr ? SelectionText(*window) : std::string());
}

// The end of the Windows session asks what the closing of the frame asks. The windows stay, as
// another program may refuse the end, and a dialog of this one may be open.
bool MainFrame::OnQueryEndSession() {
    SaveDatForm();
    m_children.KeepStates();
    m_children.ForEach([](JukeboxMdiChild& child) { child.Controller().AskBeforeClosing(); });
    return true;
}

// Not below a dialog or a search, whose work is not done.
void MainFrame::OnClose() {
    if (m_closing || !IsWindowEnabled(Handle()))
        return;
    m_closing = true;
    SaveDatForm();
    m_application.Windows().UnloadAll();
}

void MainFrame::OnDestroy() {
    m_application.Settings().OnRecentListChanged([] {});
    m_application.Windows().Remove(m_loadedNumber);
    m_outside.Status().SetListener({});
    m_outside.Boxes().SetMainWindow(nullptr);
    PostQuitMessage(0);
}

HWND MainFrame::ActiveChild() const {
    return m_client != nullptr
               ? reinterpret_cast<HWND>(SendMessageW(m_client, WM_MDIGETACTIVE, 0, 0))
               : nullptr;
}

JukeboxWindow* MainFrame::MaybeActiveJukebox() const {
    JukeboxMdiChild* const child = m_children.MaybeAt(ActiveChild());
    return child != nullptr ? &child->Controller() : nullptr;
}

JukeboxWindow* MainFrame::MaybeVisibleJukebox(
    const std::function<bool(const JukeboxWindow&)>& which) const {
    JukeboxWindow* found = nullptr;
    m_children.ForEach([&](JukeboxMdiChild& child) {
        if (child.IsVisible() && which(child.Controller()))
            found = &child.Controller();
    });
    return found;
}

bool MainFrame::HasChildren() const {
    return ActiveChild() != nullptr;
}

bool MainFrame::HasMinimisedChildren() const {
    for (HWND child = GetWindow(m_client, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT))
        if (IsIconic(child))
            return true;
    return false;
}

void MainFrame::OpenJukeboxWindow(Jukebox& jukebox) {
    JukeboxMdiChild& child = m_children.Open(m_client, jukebox);
    Folder* const all = jukebox.MaybeFind(kAllSongs);
    child.SelectFolder(all != nullptr || jukebox.RootCount() == 0 ? all : &jukebox.Root(0));
    m_barsOutdated = true;
}

bool MainFrame::PlayerCheck() {
    return m_player.Requests().PlayerCheck();
}

void MainFrame::MinimisePlayerPanel() {
    m_player.MinimisePanel();
}

void MainFrame::MinimiseActivePlayerPanel() {
    if (ActiveChild() == nullptr || ActiveChild() != m_player.Panel())
        return;
    m_player.MinimisePanel();
    for (HWND child = GetWindow(m_client, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT))
        if (m_children.MaybeAt(child) != nullptr) {
            SendMessageW(m_client, WM_MDIACTIVATE, reinterpret_cast<WPARAM>(child), 0);
            return;
        }
}

void MainFrame::Arrange(Arrangement arrangement) {
    switch (arrangement) {
        case Arrangement::Cascade:
            SendMessageW(m_client, WM_MDICASCADE, 0, 0);
            break;
        case Arrangement::TileHorizontally:
            SendMessageW(m_client, WM_MDITILE, MDITILE_HORIZONTAL, 0);
            break;
        case Arrangement::Icons:
            SendMessageW(m_client, WM_MDIICONARRANGE, 0, 0);
            break;
    }
}

void MainFrame::ShowAbout() {
    DialogBase().ShowModal(Handle(), IDD_ABOUT);
}

void MainFrame::ShowTips() {
    Tips tips(m_outside.Interfaces(), m_application.Folders().application);
    tips.OpenNoMatterWhat(true);
    TipDialog(tips).Show(Handle());
}

void MainFrame::ShowFind() {
    FindDialog(m_commands.Find()).Show(Handle());
}

void MainFrame::ShowTipsAtStartUp() {
    Tips tips(m_outside.Interfaces(), m_application.Folders().application);
    TipDialog(tips).Show(Handle());
}

std::unique_ptr<SearchingWindow> MainFrame::MakeSearchingWindow() {
    return std::make_unique<SearchingPopup>(Handle());
}

void MainFrame::CloseFrame() {
    SendMessageW(Handle(), WM_CLOSE, 0, 0);
}

void MainFrame::PlayAllSongsInFolder(JukeboxWindow& window) {
    m_player.Requests().PlayAllSongsInFolder(ListedSongs(window));
}

void MainFrame::PlaySelectedSongs(JukeboxWindow& window) {
    m_player.Requests().PlaySelectedSongs(ListedSongs(window));
}

void MainFrame::ChangeBackgroundPicture(JukeboxWindow& /*window*/) {
    PictureChoice choice(m_outside.Interfaces(), m_application.Settings(),
                         [this] { return MaybeActiveJukebox(); });
    PictureDialog(choice, m_children.Pictures()).Show(Handle());
}

void MainFrame::SaveBeforeClosing(JukeboxWindow& window) {
    m_commands.Files().SaveBeforeClosing(window);
}

void MainFrame::OnSelectionChanged(JukeboxWindow& /*window*/) {
    m_barsOutdated = true;
}

}  // namespace tobbin
