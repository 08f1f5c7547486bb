#include "ui/JukeboxView_win32.h"

#include <algorithm>
#include <utility>

#include "platform/Dpi_win32.h"
#include "platform/ShownText_win32.h"
#include "platform/Wide_win32.h"
#include "resource.h"
#include "ui/PopUpMenus_win32.h"
#include "ui/WindowState_win32.h"

namespace tobbin {
JukeboxMdiChild::JukeboxMdiChild(JukeboxWindow& controller, PictureLoader& pictures)
    : m_controller(controller), m_explorer(controller.Model(), *this, *this, *this, pictures) {
    m_controller.SetView(this);
    m_controller.Model().AddListener(*this);
}

JukeboxMdiChild::~JukeboxMdiChild() {
    Destroy();
    m_controller.Model().RemoveListener(*this);
    m_controller.SetView(nullptr);
}

bool JukeboxMdiChild::Open(HWND mdiClient, bool maximized, const WindowState* remembered,
                           std::function<void()> closed) {
    m_closed = std::move(closed);
    ClassLook look;
    look.name = kClassName;
    look.background = GetSysColorBrush(COLOR_BTNFACE);
    Placement placement;
    placement.style = WS_CHILD | WS_OVERLAPPEDWINDOW | WS_VISIBLE | WS_CLIPCHILDREN |
                      WS_CLIPSIBLINGS | (maximized ? WS_MAXIMIZE : 0);
    placement.exStyle = WS_EX_MDICHILD;
    placement.parent = mdiClient;
    if (remembered != nullptr) {
        RECT room = {};
        GetClientRect(mdiClient, &room);
        const Area place = UsablePlace(*remembered, {{0, 0, room.right, room.bottom}},
                                       static_cast<int>(GetDpiForWindow(mdiClient)));
        placement.x = place.left;
        placement.y = place.top;
        placement.width = place.width;
        placement.height = place.height;
    }
    if (!Create(look, m_controller.DaCaption(), placement))
        return false;
    m_icons.Show(Handle(), IDI_TOBBIN);
    if (remembered != nullptr)
        RestorePanes(*remembered);
    m_controller.OnOpened();
    return true;
}

LRESULT JukeboxMdiChild::Default(UINT message, WPARAM wParam, LPARAM lParam) {
    return DefMDIChildProcW(Handle(), message, wParam, lParam);
}

LRESULT JukeboxMdiChild::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            OnSize();
            break;  // the system keeps account of MDI children's sizes
        case WM_SETFOCUS:
            Default(message, wParam, lParam);
            OnFocus();
            return 0;
        case WM_GETMINMAXINFO:
            Default(message, wParam, lParam);
            OnGetSizes(*reinterpret_cast<MINMAXINFO*>(lParam));
            return 0;
        case WM_CLOSE:
            m_controller.AskBeforeClosing();
            m_lastState = State();  // Wine 8 restores a maximized child before it goes.
            break;
        case WM_SYSCOMMAND:
            // Ctrl+Tab and Ctrl+F6. Where there is no other window, Wine 8 restores a maximized one
            // and leaves its old picture behind it.
            if (((wParam & 0xFFF0) == SC_NEXTWINDOW || (wParam & 0xFFF0) == SC_PREVWINDOW) &&
                GetWindow(Handle(), GW_HWNDNEXT) == nullptr &&
                GetWindow(Handle(), GW_HWNDPREV) == nullptr)
                return 0;
            break;
        case kFilesDropped:
            OnFilesDropped();
            return 0;
        default:
            break;
    }
    return WindowBase::HandleMessage(message, wParam, lParam);
}

bool JukeboxMdiChild::OnCreate() {
    if (!m_explorer.CreateIn(Handle()))
        return false;
    m_explorer.onMenu = [this](HWND pane, POINT screen, bool byMouse) {
        OnMenu(pane, screen, byMouse);
    };
    m_explorer.onCommand = [this](int command) { m_controller.OnControlCommand(command); };
    m_explorer.List().Background().onFailed = [this](const std::string& path,
                                                     const std::string& problem) {
        m_controller.Picture().OnFailed(path, problem);
    };
    m_explorer.onLayout = [this] {
        if (!m_columnsAreThePersons && !IsIconic(Handle()))
            m_explorer.List().FitColumns();
    };
    OnColumnsChanged();
    return true;
}

void JukeboxMdiChild::OnSize() {
    if (m_explorer.Handle() == nullptr)
        return;
    RECT outer = {};
    GetWindowRect(Handle(), &outer);
    m_explorerSize =
        ResizeControl(m_explorerSize, PixelsToTwips(outer.right - outer.left, Handle()),
                      PixelsToTwips(outer.bottom - outer.top, Handle()));
    SetWindowPos(m_explorer.Handle(), nullptr, 0, 0, TwipsToPixels(m_explorerSize.width, Handle()),
                 TwipsToPixels(m_explorerSize.height, Handle()), SWP_NOZORDER | SWP_NOACTIVATE);
    m_explorer.Layout();
}

// The system reckons a maximized child's borders as on its main screen, so that its caption would
// show on a screen of another density.
void JukeboxMdiChild::OnGetSizes(MINMAXINFO& sizes) const {
    ShowSmallestSize(Handle(), sizes);
    RECT place = {};
    GetClientRect(GetParent(Handle()), &place);
    AdjustWindowRectExForDpi(&place, static_cast<DWORD>(GetWindowLongPtrW(Handle(), GWL_STYLE)),
                             FALSE, static_cast<DWORD>(GetWindowLongPtrW(Handle(), GWL_EXSTYLE)),
                             GetDpiForWindow(Handle()));
    sizes.ptMaxPosition = {place.left, place.top};
    sizes.ptMaxSize = {place.right - place.left, place.bottom - place.top};
}

void JukeboxMdiChild::OnDpiChanged() {
    m_icons.Show(Handle(), IDI_TOBBIN);
    m_explorer.OnDpiChanged();
    OnSize();
}

void JukeboxMdiChild::OnFocus() {
    const bool list = m_controller.CurrentPaneWFocus() == Pane::List;
    SetFocus(list ? m_explorer.List().Handle() : m_explorer.Tree().Handle());
}

void JukeboxMdiChild::OnDestroy() {
    m_controller.Model().RemoveListener(*this);
    m_closed();
}

void JukeboxMdiChild::RestorePanes(const WindowState& remembered) {
    if (remembered.splitter > 0)
        m_explorer.SplitterPlace(remembered.splitter);
    m_columnsAreThePersons = !remembered.columns.empty();
    if (m_columnsAreThePersons)
        m_explorer.List().SetColumnWidths(remembered.columns);
    else
        m_explorer.List().FitColumns();
}

WindowState JukeboxMdiChild::State() const {
    if (m_lastState)
        return *m_lastState;
    WindowState state = StateOf(Handle());
    state.splitter = m_explorer.SplitterPlace();
    if (m_columnsAreThePersons)
        state.columns = m_explorer.List().ColumnWidths();
    return state;
}

void JukeboxMdiChild::OnColumnResized() {
    m_columnsAreThePersons = true;
}

// A right click beside every row, or on none, opens the menu for what is selected.
void JukeboxMdiChild::OnMenu(HWND pane, POINT screen, bool byMouse) {
    if (pane == m_explorer.List().Handle()) {
        ShowPopUpMenu(Pane::List, screen);
        return;
    }
    if (byMouse)
        if (Folder* const folder = m_explorer.Tree().MaybeFolderAt(screen); folder != nullptr)
            m_explorer.Tree().SelectFolder(folder);
    ShowPopUpMenu(Pane::Tree, screen);
}

void JukeboxMdiChild::ShowPopUpMenu(Pane pane, POINT screen) {
    PopUpMenu menu(pane == Pane::Tree ? Menu::FolderPopUp : Menu::SongPopUp);
    if (pane == Pane::List && !m_controller.Picture().Pictures().IsEmpty())
        menu.AddControlCommands();
    menu.EnableEntries([&](Command command) {
        return m_controller.SelectedFolder() != nullptr && m_controller.IsEnabled(command, pane);
    });
    m_controller.ActOnPopUpClick(menu.Show(screen, m_explorer.Handle()), static_cast<int>(pane),
                                 m_controller.SelectedFolder());
}

void JukeboxMdiChild::OnFolderRemoving(Folder& folder) {
    if (m_filesTarget != nullptr && m_filesTarget->IsInside(folder))
        m_filesTarget = nullptr;
    if (m_controller.SelectedFolder() == nullptr)  // and the tree has found no other one
        m_explorer.List().Reset();
}

void JukeboxMdiChild::OnSongsChanged(Folder& folder) {
    if (&folder == m_controller.SelectedFolder())
        m_explorer.List().Refresh();
}

void JukeboxMdiChild::OnRanksChanged() {
    m_explorer.List().Refresh();
}

void JukeboxMdiChild::OnColumnsChanged() {
    // Up for what grows downwards: by name, and by rank from the worst on.
    constexpr int kArrows[] = {0, 1, -1, -1, 1};
    m_explorer.List().SetColumns(m_controller.Model().Columns());
    m_explorer.List().ShowArrow(kArrows[m_controller.ShownOrder()]);
}

void JukeboxMdiChild::OnCaptionChanged() {
    SetWindowTextW(Handle(), WideShown(m_controller.DaCaption()).c_str());
}

void JukeboxMdiChild::SelectFolder(Folder* folder) {
    m_explorer.Tree().SelectFolder(folder);
}

void JukeboxMdiChild::ExpandFolder(Folder& folder, bool open) {
    m_explorer.Tree().ExpandFolder(folder, open);
}

void JukeboxMdiChild::EditFolderText(Folder& folder) {
    m_explorer.Tree().EditText(folder);
}

std::vector<std::size_t> JukeboxMdiChild::SelectedRows() const {
    return m_explorer.List().SelectedRows();
}

std::size_t JukeboxMdiChild::SelectedCount() const {
    return m_explorer.List().SelectedCount();
}

void JukeboxMdiChild::SelectRows(const std::vector<std::size_t>& rows) {
    m_explorer.List().SelectRows(rows);
}

std::optional<std::size_t> JukeboxMdiChild::MaybeFocusedRow() const {
    return m_explorer.List().MaybeFocusedRow();
}

void JukeboxMdiChild::FocusRow(std::size_t row) {
    m_explorer.List().FocusRow(row);
}

void JukeboxMdiChild::MakeRowVisible(std::size_t row) {
    m_explorer.List().MakeVisible(row);
}

void JukeboxMdiChild::FocusList() {
    m_controller.CurrentPaneWFocus(Pane::List);
    if (IsChild(Handle(), GetFocus()))
        OnFocus();
}

void JukeboxMdiChild::SetBackground(const std::string& address, bool tiled,
                                    const std::string& next) {
    constexpr std::string_view kFile = R"(file:\\)";
    m_explorer.List().Background().Show(
        address.starts_with(kFile) ? address.substr(kFile.size()) : std::string(), tiled, next);
}

void JukeboxMdiChild::Activate() {
    const HWND client = GetParent(Handle());
    if (IsIconic(Handle()))
        SendMessageW(client, WM_MDIRESTORE, reinterpret_cast<WPARAM>(Handle()), 0);
    SendMessageW(client, WM_MDIACTIVATE, reinterpret_cast<WPARAM>(Handle()), 0);
}

void JukeboxMdiChild::Close() {
    SendMessageW(Handle(), WM_CLOSE, 0, 0);
}

void JukeboxMdiChild::OnFolderSelected(Folder* folder) {
    m_controller.OnFolderSelected(folder);
    m_explorer.List().Reset();
}

void JukeboxMdiChild::OnTreeFocused() {
    m_controller.CurrentPaneWFocus(Pane::Tree);
}

bool JukeboxMdiChild::MayEditText(const Folder& folder) {
    return JukeboxWindow::MayEditText(folder);
}

bool JukeboxMdiChild::OnTextEdited(Folder& folder, const std::string& text) {
    return m_controller.OnFolderTextEdited(folder, text);
}

bool JukeboxMdiChild::OnTreeKey(UINT key) {
    if (key != VK_F2 || m_controller.SelectedFolder() == nullptr)
        return false;
    EditFolderText(*m_controller.SelectedFolder());
    return true;
}

std::size_t JukeboxMdiChild::RowCount() const {
    return m_controller.RowCount();
}

std::string JukeboxMdiChild::RowText(std::size_t row, int column) const {
    return m_controller.RowText(row, column);
}

int JukeboxMdiChild::RowImage(std::size_t row) const {
    return m_controller.RowImage(row);
}

std::optional<std::size_t> JukeboxMdiChild::MaybeRowBeginningWith(const std::string& text,
                                                                  std::size_t start) const {
    return m_controller.MaybeRowBeginningWith(text, start);
}

std::string JukeboxMdiChild::AccessibleRowText(std::size_t row) const {
    return m_controller.AccessibleRowText(row);
}

std::string JukeboxMdiChild::EmptyText() const {
    return m_controller.EmptyText();
}

std::string JukeboxMdiChild::WhyMissing(std::size_t row) const {
    return m_controller.WhyMissing(row);
}

std::int32_t JukeboxMdiChild::LargestNumber() const {
    return m_controller.LargestKey();
}

void JukeboxMdiChild::OnRowsSelected() {
    m_controller.OnRowsSelected();
}

void JukeboxMdiChild::OnListFocused() {
    m_controller.CurrentPaneWFocus(Pane::List);
}

void JukeboxMdiChild::OnColumnClicked(int /*column*/) {
    m_controller.OnHeaderClicked();
}

void JukeboxMdiChild::OnRowOpened() {
    m_controller.OnRowOpened();
}

}  // namespace tobbin
