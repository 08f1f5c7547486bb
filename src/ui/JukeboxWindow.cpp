#include "ui/JukeboxWindow.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "jukebox/InitialJukebox.h"
#include "ui/ListSort.h"
#include "util/Text.h"

namespace tobbin {

JukeboxWindow::JukeboxWindow(const EditingTools& tools, Jukebox& jukebox, JukeboxWindowHost& host)
    : m_tools(tools),
      m_jukebox(jukebox),
      m_host(host),
      m_editor(tools, jukebox),
      m_picture(tools.environment, tools.settings, tools.sorter) {
    m_jukebox.AddListener(*this);
    m_picture.show = [this](const std::string& address, bool tiled, const std::string& next) {
        if (HasView())
            m_view->SetBackground(address, tiled, next);
    };
    m_picture.choose = [this] { m_host.ChangeBackgroundPicture(*this); };
}

JukeboxWindow::~JukeboxWindow() {
    m_jukebox.RemoveListener(*this);
}

void JukeboxWindow::OnOpened() {
    if (!FileLocation().empty())
        ReadInImageArray(DaCaption() + ".poc");
}

void JukeboxWindow::SelectFirstFolder() {
    Folder* const all = m_jukebox.MaybeFind(kAllSongs);
    View().SelectFolder(all != nullptr || m_jukebox.RootCount() == 0 ? all : &m_jukebox.Root(0));
}

void JukeboxWindow::ActOnPopUpClick(int command, int pane, Folder* node) {
    const bool inTree = pane == static_cast<int>(Pane::Tree);
    const CommandRow* const row = MaybeRowAt(inTree ? Menu::FolderPopUp : Menu::SongPopUp, command);
    if (row != nullptr && node != nullptr)
        Do(*row, inTree ? Pane::Tree : Pane::List, node);
}

Pane JukeboxWindow::PaneFor(const CommandRow& row) const {
    if (row.acts.songs == When::Never && m_focus != Pane::None)
        return Pane::Tree;
    return row.acts.folder == When::Never && m_focus != Pane::None ? Pane::List : m_focus;
}

bool JukeboxWindow::CanAct(const CommandRow& row, Pane pane, const Folder* node) const {
    const When inPane = pane == Pane::Tree   ? row.acts.folder
                        : pane == Pane::List ? row.acts.songs
                                             : When::Never;
    switch (row.acts.frame != When::Never ? row.acts.frame : inPane) {
        case When::JukeboxActive:
            return true;
        case When::CanUndo:
            return CanUndo();
        case When::CanRedo:
            return CanRedo();
        case When::FolderSelected:
            return node != nullptr;
        case When::FolderHasSongs:
            return node != nullptr && !node->Songs().empty();
        case When::FolderMayGo:
            return node != nullptr && OkToDelete(*node);
        case When::FoldersToSort:
            return node != nullptr && node->ChildCount() > 1;
        case When::SongsSelected:
            return node != nullptr && node == m_selected && HasView() &&
                   m_view->SelectedCount() > 0;
        case When::CanPaste:
            return node != nullptr && m_editor.CanPaste();
        default:
            return false;
    }
}

bool JukeboxWindow::IsOn(Command command) const {
    return (command == Command::NoPicture && ShowPictt()) ||
           (command == Command::ToggleTile && BeItTiled());
}

void JukeboxWindow::Do(const CommandRow& row, Pane pane, Folder* node) {
    if (!CanAct(row, pane, node))
        return;
    if (row.acts.frame != When::Never)
        DoAsWhole(row.command);
    else if (row.command == Command::PlayAllSongsInFolder)
        m_host.PlayAllSongsInFolder(*this);
    else if (row.command == Command::Paste)
        Paste(*node, pane);
    else if (pane == Pane::Tree)
        DoOnFolder(row.command, *node);
    else
        DoOnSongs(row, *node, View().SelectedRows());
}

void JukeboxWindow::DoAsWhole(Command command) {
    switch (command) {
        case Command::Close:
            return View().Close();
        case Command::Undo:
            return Undo();
        case Command::Redo:
            return Redo();
        case Command::SortList:
            return OnHeaderClicked();
        case Command::SelectAll:
            return SelectAll();
        case Command::ChangePicture:
            return m_picture.choose();
        case Command::NoPicture:
            ShowPictt(!ShowPictt());
            return UpdatePictureStatus();
        case Command::ToggleTile:
            BeItTiled(!BeItTiled());
            return UpdatePictureStatus();
        case Command::NextPicture:
        case Command::PreviousPicture:
            return ChangePicture(command == Command::NextPicture);
        default:
            return;
    }
}

void JukeboxWindow::DoOnFolder(Command command, Folder& node) {
    switch (command) {
        case Command::AddFolderToSelectedFolder:
            return AddFolder(&node);
        case Command::AddFolderToRoot:
            return AddFolder(nullptr);
        case Command::Cut:
            return Show(m_editor.CutFolder(node));
        case Command::Copy:
            return m_editor.CopyFolder(node);
        case Command::Delete:
            return Show(m_editor.DeleteFolder(node));
        case Command::SortNodes:
            m_editor.SortNodes(node);
            return;
        default:
            return;
    }
}

void JukeboxWindow::DoOnSongs(const CommandRow& row, Folder& node,
                              const std::vector<std::size_t>& rows) {
    if (!IsBoundedd(rows))
        return;
    if (row.acts.maybeRank != nullptr)
        m_editor.RankSongs(*row.acts.maybeRank, node, rows);
    else if (row.command == Command::PlaySelectedSongs)
        m_host.PlaySelectedSongs(*this);
    else if (row.command == Command::Copy)
        m_editor.CopySongs(node, rows);
    else if (row.command == Command::MoveUp)
        MoveSongs(rows, std::max<std::size_t>(rows.front(), 1) - 1);
    else if (row.command == Command::MoveDown)
        MoveSongs(rows, rows.back() + 2);
    else
        ShowWithout(row.command == Command::Cut ? m_editor.CutSongs(node, rows)
                                                : m_editor.DeleteSongs(node, rows),
                    rows.front());
}

// A new folder's text is open for editing at once.
void JukeboxWindow::AddFolder(Folder* parent) {
    const EditResult place = m_editor.AddFolder(parent);
    Show(place);
    if (HasView())
        View().EditFolderText(*place.maybeFolder);
}

// Songs were taken out of a folder: the next one gets the focus.
void JukeboxWindow::ShowWithout(const EditResult& place, std::size_t firstRow) {
    if (!HasView() || place.maybeFolder == nullptr || place.maybeFolder != m_selected)
        return;
    View().SelectRows({});
    if (m_selected->Songs().empty())
        return;
    View().FocusRow(std::min(firstRow, m_selected->Songs().size() - 1));
}

void JukeboxWindow::SelectAll() {
    const std::optional<std::size_t> focused = View().MaybeFocusedRow();
    std::vector<std::size_t> rows(RowCount());
    std::iota(rows.begin(), rows.end(), 0);
    View().SelectRows(rows);
    View().FocusRow(focused.value_or(0));
    View().FocusList();
}

void JukeboxWindow::MoveSongs(const std::vector<std::size_t>& rows, std::size_t before) {
    if (m_selected != nullptr)
        ShowWithSelection([&] { return m_editor.MoveSongs(*m_selected, rows, before); });
}

// Songs go behind the focused one of a list that is not sorted. What was pasted is shown, but the
// selected folder stays the selected one: the next paste goes there, too, behind this one.
void JukeboxWindow::Paste(Folder& into, Pane pane) {
    if (const std::vector<std::string> files = m_editor.FilesToPaste(); !files.empty()) {
        DropFiles(files, &into);
        return;
    }
    std::optional<std::size_t> before;
    if (pane == Pane::List && &into == m_selected && HasView() && m_shownOrder == 0)
        before = View().MaybeFocusedRow();
    if (before)
        before = std::min(*before + 1, into.Songs().size());
    const EditResult place = m_editor.Paste(into, before);
    if (place.maybeFolder == &into) {
        Show(place);
        if (HasView() && !place.rows.empty())
            View().FocusRow(place.rows.back());
    } else if (place.maybeFolder != nullptr && HasView()) {
        View().ExpandFolder(into, true);
    }
}

// The heading is that of the folder that is shown.
void JukeboxWindow::UpdateHeading() {
    const auto known =
        m_selected != nullptr ? m_sortedBy.find(m_selected->Serial()) : m_sortedBy.end();
    int order = known != m_sortedBy.end() ? known->second : 0;
    if (order != 0 &&
        !IsSorted(m_tools.environment.text, m_tools.catalogue, m_jukebox, *m_selected, order))
        order = 0;
    if (order != std::exchange(m_shownOrder, order))
        m_jukebox.SetColumn(0, order == 0 ? kNameHeading : SortHeading(order));
}

void JukeboxWindow::Show(const EditResult& place) {
    if (!HasView() || place.maybeFolder == nullptr)
        return;
    if (place.maybeFolder != m_selected)
        View().SelectFolder(place.maybeFolder);
    if (place.rows.empty())
        return;
    View().SelectRows(place.rows);
    View().MakeRowVisible(place.rows.front());
}

// Where the songs only change their places, the selection and the focused row go with them.
template <typename Change>
void JukeboxWindow::ShowWithSelection(Change change) {
    const Folder* const shown = m_selected;
    std::vector<std::size_t> rows = HasView() ? View().SelectedRows() : std::vector<std::size_t>();
    std::optional<std::size_t> focused = HasView() ? View().MaybeFocusedRow() : std::nullopt;
    const EditResult place = change();
    UpdateHeading();
    Show(place);
    if (!HasView() || place.order.empty() || place.maybeFolder != shown)
        return;
    std::vector<bool> selected(place.order.size());
    for (const std::size_t row : rows)
        if (row < selected.size())
            selected[row] = true;
    rows.clear();
    std::optional<std::size_t> newFocus;
    for (std::size_t row = 0; row < place.order.size(); ++row) {
        if (selected[place.order[row]])
            rows.push_back(row);
        if (focused == place.order[row])
            newFocus = row;
    }
    View().SelectRows(rows);
    if (newFocus) {
        View().FocusRow(*newFocus);
        View().MakeRowVisible(*newFocus);
    }
}

void JukeboxWindow::OnControlCommand(int command) {
    if (const CommandRow* const row = MaybeRowAt(Menu::Control, command))
        Do(row->command);
}

std::string JukeboxWindow::UndoText() const {
    return CanUndo() ? "Undo " + m_editor.History().UndoName() : std::string();
}

std::string JukeboxWindow::RedoText() const {
    return CanRedo() ? "Redo " + m_editor.History().RedoName() : std::string();
}

void JukeboxWindow::Undo() {
    JukeboxHistory& history = m_editor.History();
    if (CanUndo())
        Step(history.WhyNotUndo(), history.UndoneText() + " Alt+Shift+Backspace redoes it.",
             &JukeboxHistory::Undo);
}

void JukeboxWindow::Redo() {
    JukeboxHistory& history = m_editor.History();
    if (CanRedo())
        Step(history.WhyNotRedo(),
             WithWayBack("Redone: " + history.RedoName() + ".", WayBack::TakesItBack),
             &JukeboxHistory::Redo);
}

void JukeboxWindow::Step(const std::string& why, const std::string& line,
                         EditResult (JukeboxHistory::*step)()) {
    m_tools.environment.statusLine.Say(why.empty() ? line : why);
    if (why.empty())
        ShowWithSelection([&] { return (m_editor.History().*step)(); });
}

void JukeboxWindow::FillAnew() {
    m_editor.FillAnew();
    UpdateHeading();
    if (m_selected == nullptr && HasView())
        SelectFirstFolder();
}

void JukeboxWindow::OnHeaderClicked() {
    if (m_selected == nullptr)
        return;
    const int state = std::max(m_sortState, 1);
    int& sortedBy = m_sortedBy[m_selected->Serial()];
    ShowWithSelection(
        [&] { return m_editor.SortSongs(*m_selected, state, m_sortState, sortedBy); });
    m_tools.environment.events.LetEventsThrough();
}

void JukeboxWindow::OnFolderSelected(Folder* folder) {
    m_selected = folder;
    UpdateHeading();
    m_host.OnSelectionChanged(*this);
}

void JukeboxWindow::OnRowsSelected() {
    m_host.OnSelectionChanged(*this);
}

std::string JukeboxWindow::FocusedSongDetails() const {
    const auto row = HasView() ? View().MaybeFocusedRow() : std::nullopt;
    return row && *row < RowCount() ? List().DetailsOf(*row, m_tools.environment) : std::string();
}

void JukeboxWindow::OnRowOpened() {
    Do(Command::PlaySelectedSongs);
}

bool JukeboxWindow::OnFolderTextEdited(Folder& folder, const std::string& text) {
    return text != folder.Text() && MayEditText(folder) &&
           m_editor.RenameFolder(folder, text).maybeFolder != nullptr;
}

void JukeboxWindow::AskBeforeClosing() {
    const bool isSample = DaCaption() == kSampleCaption;
    const std::string question =
        isSample
            ? "You should save this initial Jukebox to speed up the program.  Do you want to save "
              "this Jukebox?"
            : "Do you want to save changes to " + DaCaption();
    const bool asks = isSample ? IsFormDirty() : HasUnsavedChanges();
    m_host.PrepareToClose(
        *this, asks && m_tools.environment.dialogs.Ask(question, Buttons::YesNo,
                                                       BoxIcon::Question) == Answer::Yes);
}

void JukeboxWindow::OnFolderAdded(Folder& /*folder*/) {
    m_host.OnSelectionChanged(*this);
}

void JukeboxWindow::OnFolderRemoving(Folder& folder) {
    if (m_selected != nullptr && m_selected->IsInside(folder))
        m_selected = nullptr;
    UpdateHeading();
    m_host.OnSelectionChanged(*this);
}

void JukeboxWindow::OnFolderTextChanged(Folder& /*folder*/) {
    m_host.OnSelectionChanged(*this);
}

void JukeboxWindow::OnSongsChanged(Folder& folder) {
    if (&folder == m_selected)
        UpdateHeading();
    m_host.OnSelectionChanged(*this);
}

void JukeboxWindow::OnRanksChanged() {
    UpdateHeading();
    m_host.OnSelectionChanged(*this);
}

}  // namespace tobbin
