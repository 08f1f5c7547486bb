#include "ui/JukeboxWindow.h"

#include <algorithm>

#include "jukebox/InitialJukebox.h"

namespace tobbin {
namespace {

constexpr int kKeyColumn = 1;

// Pictures of songs.
constexpr int kMissingImage = 0;
constexpr int kWorstRankImage = 2;

// Entries of the song menu.
constexpr int kPlayAll = 1;
constexpr int kPlaySelected = 2;
constexpr int kChangePicture = 16;

// The folder menu's first entry does what the song menu's first does.
bool IsPlayAll(int command, int /*pane*/) {
    return command == kPlayAll;
}

bool IsInMenu(int command, int pane) {
    const int entries =
        pane == static_cast<int>(Pane::Tree) ? kFolderMenuEntries : kSongMenuEntries;
    return command >= 1 && command <= entries;
}

}  // namespace

JukeboxWindow::JukeboxWindow(const EditingTools& tools, Jukebox& jukebox, JukeboxWindowHost& host)
    : m_tools(tools),
      m_jukebox(jukebox),
      m_host(host),
      m_history(jukebox),
      m_picture(tools.outside, tools.settings, tools.sorter) {
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
    if (node == nullptr || !IsInMenu(command, pane) || !IsEnabled(command, pane))
        return;
    if (IsPlayAll(command, pane))
        m_host.PlayAllSongsInFolder(*this);
    else if (command == kPlaySelected)
        m_host.PlaySelectedSongs(*this);
    else if (command == kChangePicture)
        m_host.ChangeBackgroundPicture(*this);
}

void JukeboxWindow::OnControlCommand(int command) {
    if (command == kNextPic || command == kPrevPic)
        ChangePicture(command == kNextPic);
}

bool JukeboxWindow::IsEnabled(int command, int pane) const {
    if (m_selected == nullptr)
        return false;
    if (IsPlayAll(command, pane))
        return !m_selected->Songs().empty();
    if (pane == static_cast<int>(Pane::Tree))
        return false;
    if (command == kPlaySelected)
        return HasView() && m_view->SelectedCount() > 0;
    return command == kChangePicture;
}

std::string JukeboxWindow::UndoText() const {
    return CanUndo() ? "Undo " + m_history.UndoName() : std::string();
}

std::string JukeboxWindow::RedoText() const {
    return CanRedo() ? "Redo " + m_history.RedoName() : std::string();
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

std::size_t JukeboxWindow::RowCount() const {
    return m_selected != nullptr ? m_selected->Songs().size() : 0;
}

std::string JukeboxWindow::RowText(std::size_t row, int column) const {
    const SongItem& song = m_selected->Songs()[row];
    if (column == 0)
        return std::string(m_jukebox.TextOf(song));
    return column == kKeyColumn && !song.IsMissing() ? std::to_string(song.recordNumber)
                                                     : std::string();
}

int JukeboxWindow::RowImage(std::size_t row) const {
    const SongItem& song = m_selected->Songs()[row];
    const clsMain& catalogue = m_tools.catalogue;
    if (song.IsMissing() || song.recordNumber > catalogue.UBoundOfMp3Array() ||
        !catalogue.IsPresent(song.recordNumber))
        return kMissingImage;
    return m_jukebox.IsShownAsWorst(song.recordNumber) ? kWorstRankImage
                                                       : catalogue.Rank(song.recordNumber);
}

std::string JukeboxWindow::EmptyText() const {
    if (m_selected == nullptr)
        return "Select a folder on the left to see its songs.";
    if (m_selected->ChildCount() > 0)
        return "This folder holds no songs of its own. Open one of the folders in it.";
    return IsSpecialFolder(*m_selected)
               ? "There are no songs in this folder yet."
               : "There are no songs in this folder yet. Copy songs from another folder and paste "
                 "them here.";
}

bool JukeboxWindow::OnFolderTextEdited(Folder& folder, const std::string& text) {
    if (text.empty() || text == folder.Text() || !MayEditText(folder))
        return false;
    m_jukebox.SetText(folder, text);
    return true;
}

void JukeboxWindow::AskBeforeClosing() {
    if (!IsFormDirty())
        return;
    const std::string question =
        DaCaption() == kSampleCaption
            ? "You should save this initial Jukebox to speed up the program.  Do you want to save "
              "this Jukebox?"
            : "Do you want to save changes to " + DaCaption();
    if (m_tools.outside.dialogs.Ask(question, Buttons::YesNo, BoxIcon::Question) == Answer::Yes)
        m_host.SaveBeforeClosing(*this);
}

void JukeboxWindow::OnFolderRemoving(Folder& folder) {
    for (const Folder* at = m_selected; at != nullptr; at = at->Parent())
        if (at == &folder)
            m_selected = nullptr;
}

void JukeboxWindow::OnSongsChanged(Folder& folder) {
    if (&folder == m_selected)
        m_host.OnSelectionChanged(*this);
}

}  // namespace tobbin
