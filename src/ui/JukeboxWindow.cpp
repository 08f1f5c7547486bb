#include "ui/JukeboxWindow.h"

#include <algorithm>

#include "catalogue/DroppedSongs.h"
#include "jukebox/InitialJukebox.h"
#include "util/Text.h"

namespace tobbin {
namespace {

// Entries of both menus, of the folder menu, and of the song menu.
constexpr int kPlayAll = 1;

constexpr int kAddToFolder = 4;
constexpr int kAddToRoot = 5;
constexpr int kCutFolder = 6;
constexpr int kCopyFolder = 7;
constexpr int kPasteInTree = 8;
constexpr int kDeleteFolder = 9;
constexpr int kSortNodes = 11;

constexpr int kPlaySelected = 2;
constexpr int kCutSongs = 4;
constexpr int kCopySongs = 5;
constexpr int kPasteInList = 6;
constexpr int kDeleteSongs = 7;
constexpr int kRankBest = 9;
constexpr int kRankWorst = 14;
constexpr int kChangePicture = 16;

bool IsJukeboxFile(std::string_view path) {
    return EndsWithIgnoringAsciiCase(path, ".juk");
}

bool IsTree(int pane) {
    return pane == static_cast<int>(Pane::Tree);
}

}  // namespace

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

void JukeboxWindow::ActOnPopUpClick(int command, int pane, Folder* node) {
    if (!CanAct(command, pane, node))
        return;
    if (command == kPlayAll)
        m_host.PlayAllSongsInFolder(*this);
    else if (IsTree(pane))
        ActOnFolder(command, *node);
    else
        ActOnSongs(command, *node);
}

bool JukeboxWindow::CanAct(int command, int pane, const Folder* node) const {
    if (node == nullptr)
        return false;
    if (command == kPlayAll)
        return !node->Songs().empty();
    if (IsTree(pane)) {
        switch (command) {
            case kAddToFolder:
            case kAddToRoot:
            case kCutFolder:  // which says why a special folder can't be cut
            case kCopyFolder:
                return true;
            case kPasteInTree:
                return !m_tools.clipboard.IsEmpty();
            case kDeleteFolder:
                return OkToDelete(*node);
            case kSortNodes:
                return node->ChildCount() > 1;
            default:
                return false;
        }
    }
    if (command == kPasteInList)
        return !m_tools.clipboard.IsEmpty();
    if (command == kChangePicture)
        return true;
    const bool needsSongs = command == kPlaySelected || command == kCutSongs ||
                            command == kCopySongs || command == kDeleteSongs ||
                            (command >= kRankBest && command <= kRankWorst);
    return needsSongs && node == m_selected && HasView() && m_view->SelectedCount() > 0;
}

void JukeboxWindow::ActOnFolder(int command, Folder& node) {
    switch (command) {
        case kAddToFolder:
            AddFolder(&node);
            break;
        case kAddToRoot:
            AddFolder(nullptr);
            break;
        case kCutFolder:
            Show(m_editor.CutFolder(node));
            break;
        case kCopyFolder:
            m_editor.CopyFolder(node);
            break;
        case kPasteInTree:
            Paste(node);
            break;
        case kDeleteFolder:
            Show(m_editor.DeleteFolder(node));
            break;
        case kSortNodes:
            m_editor.SortNodes(node);
            break;
        default:
            break;
    }
}

void JukeboxWindow::ActOnSongs(int command, Folder& node) {
    if (command == kPasteInList) {
        Paste(node);
        return;
    }
    if (command == kChangePicture) {
        m_host.ChangeBackgroundPicture(*this);
        return;
    }
    const std::vector<std::size_t> rows = View().SelectedRows();
    if (!IsBoundedd(rows))
        return;
    if (command == kPlaySelected)
        m_host.PlaySelectedSongs(*this);
    else if (command == kCutSongs || command == kDeleteSongs)
        CutSongs(node, rows);
    else if (command == kCopySongs)
        m_editor.CopySongs(node, rows);
    else
        m_editor.RankSongs(command, node, rows);
}

// A new folder's text is open for editing at once.
void JukeboxWindow::AddFolder(Folder* parent) {
    const EditResult place = m_editor.AddFolder(parent);
    Show(place);
    if (HasView())
        View().EditFolderText(*place.maybeFolder);
}

void JukeboxWindow::CutSongs(Folder& folder, const std::vector<std::size_t>& rows) {
    if (m_editor.CutSongs(folder, rows).maybeFolder != nullptr)
        ShowWithout(folder, rows.front());
}

// Songs were taken out of a folder: the next one gets the focus.
void JukeboxWindow::ShowWithout(const Folder& folder, std::size_t firstRow) {
    if (!HasView() || &folder != m_selected)
        return;
    View().SelectRows({});
    if (!folder.Songs().empty())
        View().FocusRow(std::min(firstRow, folder.Songs().size() - 1));
}

// What was pasted is shown, but the selected folder stays the selected one: the next paste goes
// there, too.
void JukeboxWindow::Paste(Folder& into) {
    const EditResult place = m_editor.Paste(into);
    if (place.maybeFolder == &into)
        Show(place);
    else if (place.maybeFolder != nullptr && HasView())
        View().ExpandFolder(into, true);
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
    if (command == kNextPic || command == kPrevPic)
        ChangePicture(command == kNextPic);
}

std::string JukeboxWindow::UndoText() const {
    return CanUndo() ? "Undo " + m_editor.History().UndoName() : std::string();
}

std::string JukeboxWindow::RedoText() const {
    return CanRedo() ? "Redo " + m_editor.History().RedoName() : std::string();
}

void JukeboxWindow::Undo() {
    if (!CanUndo())
        return;
    m_tools.environment.statusLine.Say("Undone: " + m_editor.History().UndoName() + ".");
    ShowWithSelection([this] { return m_editor.History().Undo(); });
}

void JukeboxWindow::Redo() {
    if (!CanRedo())
        return;
    m_tools.environment.statusLine.Say("Done again: " + m_editor.History().RedoName() + ".");
    ShowWithSelection([this] { return m_editor.History().Redo(); });
}

void JukeboxWindow::OnHeaderClicked() {
    if (m_selected == nullptr)
        return;
    const int state = std::max(m_sortState, 1);
    ShowWithSelection([&] { return m_editor.SortSongs(*m_selected, state, m_sortState); });
    m_tools.environment.events.LetEventsThrough();
}

bool JukeboxWindow::CanDrop(const Dragged& dragged, const Folder* target, DropMode mode) const {
    return JukeboxEditor::CanDrop(dragged.from->m_editor, dragged, m_editor, target, mode);
}

void JukeboxWindow::Drop(const Dragged& dragged, Folder* target, DropMode mode) {
    const EditResult place =
        JukeboxEditor::Drop(dragged.from->m_editor, dragged, m_editor, target, mode);
    if (dragged.IsFolder())
        Show(place);
    else if (mode == DropMode::Move && place.maybeFolder != nullptr)
        dragged.from->ShowWithout(*dragged.folder, dragged.rows.front());
}

bool JukeboxWindow::CanDropFiles(const std::vector<std::string>& paths, const Folder* target) {
    return target != nullptr || std::ranges::any_of(paths, IsJukeboxFile);
}

void JukeboxWindow::DropFiles(const std::vector<std::string>& paths, Folder* target) {
    std::vector<std::string> songs = paths;
    const auto firstJukebox = std::stable_partition(
        songs.begin(), songs.end(), [](const std::string& path) { return !IsJukeboxFile(path); });
    const std::vector<std::string> jukeboxes(firstJukebox, songs.end());
    songs.erase(firstJukebox, songs.end());
    if (!jukeboxes.empty())
        m_host.OpenFiles(jukeboxes);
    if (target == nullptr || songs.empty())
        return;
    const DroppedSongs dropped(m_tools.environment, songs);
    Show(m_editor.AddFiles(*target, dropped.Paths()));
    if (const std::string complaint = dropped.Complaint(); !complaint.empty())
        m_tools.environment.dialogs.Tell(complaint, BoxIcon::Information);
}

void JukeboxWindow::OnFolderSelected(Folder* folder) {
    m_selected = folder;
    m_host.OnSelectionChanged(*this);
}

void JukeboxWindow::OnRowsSelected() {
    m_host.OnSelectionChanged(*this);
}

void JukeboxWindow::OnRowOpened() {
    ActOnPopUpClick(kPlaySelected, static_cast<int>(Pane::List), m_selected);
}

bool JukeboxWindow::OnFolderTextEdited(Folder& folder, const std::string& text) {
    if (text.empty() || text == folder.Text() || !MayEditText(folder))
        return false;
    m_editor.RenameFolder(folder, text);
    return true;
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
    m_host.OnSelectionChanged(*this);
}

void JukeboxWindow::OnFolderTextChanged(Folder& /*folder*/) {
    m_host.OnSelectionChanged(*this);
}

void JukeboxWindow::OnSongsChanged(Folder& /*folder*/) {
    m_host.OnSelectionChanged(*this);
}

void JukeboxWindow::OnRanksChanged() {
    m_host.OnSelectionChanged(*this);
}

}  // namespace tobbin
