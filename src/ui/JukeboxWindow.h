#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "jukebox/Jukebox.h"
#include "jukebox/SpecialFolders.h"
#include "ui/BackgroundPicture.h"
#include "ui/Commands.h"
#include "ui/Dragging.h"
#include "ui/EditingTools.h"
#include "ui/JukeboxEditor.h"
#include "ui/JukeboxView.h"
#include "ui/SongList.h"

namespace tobbin {

class JukeboxWindow;

// What a jukebox window hands on to the main frame.
class JukeboxWindowHost {
 public:
    virtual ~JukeboxWindowHost() = default;

    // Play the songs of the list pane: all of them, or the selected rows.
    virtual void PlayAllSongsInFolder(JukeboxWindow& window) = 0;
    virtual void PlaySelectedSongs(JukeboxWindow& window) = 0;

    // Shows the picture dialog for the window.
    virtual void ChangeBackgroundPicture(JukeboxWindow& window) = 0;

    // The window is about to close, in any case: runs the frame's save command for it if the person
    // wants to save, and lets go of what was kept of it otherwise.
    virtual void PrepareToClose(JukeboxWindow& window, bool save) = 0;

    // Opens jukebox files by their full paths.
    virtual void OpenFiles(const std::vector<std::string>& paths) = 0;

    // Something that the status bar shows has changed.
    virtual void OnSelectionChanged(JukeboxWindow& window) = 0;
};

// The window `frmMain` of one jukebox: takes what the person does in its panes and menus, and turns
// it into changes of the jukebox, questions and calls of the frame. The jukebox outlives it.
class JukeboxWindow : private JukeboxListener {
 public:
    JukeboxWindow(const EditingTools& tools, Jukebox& jukebox, JukeboxWindowHost& host);
    ~JukeboxWindow() override;
    JukeboxWindow(const JukeboxWindow&) = delete;
    JukeboxWindow& operator=(const JukeboxWindow&) = delete;

    Jukebox& Model() const { return m_jukebox; }

    // The view is there from the creation of the window to its end.
    void SetView(JukeboxView* view) { m_view = view; }
    JukeboxView& View() const { return *m_view; }
    bool HasView() const { return m_view != nullptr; }

    // The window is on the screen, or will be with its frame: a jukebox that comes from a file
    // finds its picture again.
    void OnOpened();
    // Selects "All Songs" or, without it, the first folder, if there is one.
    void SelectFirstFolder();

    // The background picture: path of the last one, whether one is shown, whether it is tiled, and
    // what BackgroundPicture says of the operations.
    BackgroundPicture& Picture() { return m_picture; }
    const std::string& LastPicFileLocation() const { return m_picture.LastPicFileLocation(); }
    void LastPicFileLocation(std::string path) { m_picture.LastPicFileLocation(std::move(path)); }
    bool ShowPictt() const { return m_picture.ShowPictt(); }
    void ShowPictt(bool shown) { m_picture.ShowPictt(shown); }
    bool BeItTiled() const { return m_picture.BeItTiled(); }
    void BeItTiled(bool tiled) { m_picture.BeItTiled(tiled); }
    void ReadInImageArray(const std::string& name) { m_picture.ReadInImageArray(name); }
    void ChangePicture(bool forward) { m_picture.ChangePicture(forward); }
    void UpdatePictureStatus() { m_picture.UpdatePictureStatus(); }

    // The pane that last had the focus.
    Pane CurrentPaneWFocus() const { return m_focus; }
    void CurrentPaneWFocus(Pane pane) { m_focus = pane; }

    const std::string& FileLocation() const { return m_jukebox.FileLocation(); }
    void FileLocation(std::string folder) { m_jukebox.FileLocation(std::move(folder)); }
    bool IsFormDirty() const { return m_jukebox.IsFormDirty(); }
    void IsFormDirty(bool dirty) { m_jukebox.IsFormDirty(dirty); }
    bool HasUnsavedChanges() const { return m_jukebox.HasUnsavedChanges(); }
    const std::string& DaCaption() const { return m_jukebox.DaCaption(); }
    void DaCaption(std::string caption) { m_jukebox.DaCaption(std::move(caption)); }

    // Runs the entry at a position (from 1) of a pop-up menu: pane 1 means the folder menu, any
    // other the song menu. `node` is the tree's selected folder; without one nothing happens.
    void ActOnPopUpClick(int command, int pane, Folder* node);

    // A command of the table that acts on a jukebox, on the selected folder or on the selected
    // songs: whether it can act now, whether what it switches is on, and doing it, which does
    // nothing when it can't act. Without a pane it acts in that of PaneFor.
    bool IsEnabled(Command command) const { return IsEnabled(command, PaneFor(RowOf(command))); }
    bool IsEnabled(Command command, Pane pane) const {
        return CanAct(RowOf(command), pane, m_selected);
    }
    bool IsOn(Command command) const;
    void Do(Command command) { Do(RowOf(command), PaneFor(RowOf(command)), m_selected); }
    // The pane that a command of the frame means: the one that had the focus last, unless the
    // command knows only the other.
    Pane PaneFor(const CommandRow& row) const;

    // Undoing and redoing of all that was done to the jukebox, one step at a time. The text names
    // the step: "Undo Cut Folder"; empty when there is none.
    bool CanUndo() const { return m_editor.History().CanUndo(); }
    bool CanRedo() const { return m_editor.History().CanRedo(); }
    std::string UndoText() const;
    std::string RedoText() const;
    void Undo();
    void Redo();

    // Fills the folders that the program fills anew (see JukeboxEditor).
    void FillAnew();

    // A click on the list pane's heading: sorts by name and by rank, up and down, in turn.
    void OnHeaderClicked();

    // The order in which the list pane stands: a state of that cycle, or 0 when the folder was not
    // sorted or is not in that order any more.
    int ShownOrder() const { return m_shownOrder; }

    // Brings songs of the list, by their rows, together before another row; the number of rows is
    // the end.
    void MoveSongs(const std::vector<std::size_t>& rows, std::size_t before);

    // What is dragged over or dropped on a folder of this window; null is the place below all
    // folders, the top level. `wish` is what the keys ask for: a copy, or a move, which is one only
    // where a cut is allowed. Without any, a drag moves, but copies out of the folders that the
    // program fills. Nothing when a drop would do nothing.
    std::optional<DropMode> MaybeDropMode(const Dragged& dragged, const Folder* target,
                                          std::optional<DropMode> wish) const;
    bool CanDrop(const Dragged& dragged, const Folder* target, DropMode mode) const;
    void Drop(const Dragged& dragged, Folder* target, DropMode mode);
    // The song files that another program gets of it, by their full paths.
    std::vector<std::string> PathsOf(const Dragged& dragged) const {
        return m_editor.PathsOf(*dragged.folder, dragged.rows);
    }
    // Files from outside, by their full paths. Jukebox files are opened, wherever they are dropped.
    // MP3 files, and those that a list of songs names, come into the catalogue, unless it has them,
    // and to the end of the folder; a message names what is not there.
    static bool CanDropFiles(const std::vector<std::string>& paths, const Folder* target);
    void DropFiles(const std::vector<std::string>& paths, Folder* target);

    // Runs a command of the window's control: "Next Pic" or "Prev. Pic".
    void OnControlCommand(int command);

    // Whether a folder may be deleted: every one that the program does not fill.
    static bool OkToDelete(const Folder& node) { return !IsSpecialFolder(node); }

    // Whether there is anything among the rows that were gathered for a command.
    static bool IsBoundedd(const std::vector<std::size_t>& rows) { return !rows.empty(); }

    // Whether the person may edit a folder's text.
    static bool MayEditText(const Folder& node) { return !IsSpecialFolder(node); }

    // The folder whose songs the list pane shows; null when none is selected.
    Folder* SelectedFolder() const { return m_selected; }

    // What the list pane shows: the songs of the selected folder.
    SongList List() const { return {m_jukebox, m_tools.catalogue, m_selected}; }
    std::size_t RowCount() const { return List().RowCount(); }
    std::string RowText(std::size_t row, int column) const { return List().RowText(row, column); }
    int RowImage(std::size_t row) const { return List().RowImage(row); }
    std::string AccessibleRowText(std::size_t row) const { return List().AccessibleRowText(row); }
    // What is known of the focused song besides; empty without one.
    std::string FocusedSongDetails() const;
    std::string EmptyText() const { return List().EmptyText(); }
    std::string WhyMissing(std::size_t row) const { return List().WhyMissing(row); }
    std::int32_t LargestKey() const { return m_tools.catalogue.UBoundOfMp3Array(); }
    std::optional<std::size_t> MaybeRowBeginningWith(std::string_view text,
                                                     std::size_t start) const {
        return List().MaybeRowBeginningWith(m_tools.environment.text, text, start);
    }

    // What the view reports. A text that stays as it is or is empty changes nothing; returns
    // whether the text was taken.
    void OnFolderSelected(Folder* folder);
    void OnRowsSelected();
    void OnRowOpened();  // a double click on a song, or the Enter key: plays what is selected
    bool OnFolderTextEdited(Folder& folder, const std::string& text);

    // Called when the window is about to close: asks whether to save and saves. The window closes
    // in any case.
    void AskBeforeClosing();

 private:
    bool CanAct(const CommandRow& row, Pane pane, const Folder* node) const;
    void Do(const CommandRow& row, Pane pane, Folder* node);
    void DoAsWhole(Command command);
    void DoOnFolder(Command command, Folder& node);
    void DoOnSongs(const CommandRow& row, Folder& node, const std::vector<std::size_t>& rows);
    void SelectAll();
    void AddFolder(Folder* parent);
    void ShowWithout(const EditResult& place, std::size_t firstRow);
    void Paste(Folder& into, Pane pane);
    void UpdateHeading();
    void Step(const std::string& why, const std::string& line,
              EditResult (JukeboxHistory::*step)());
    void Show(const EditResult& place);
    template <typename Change>
    void ShowWithSelection(Change change);

    void OnFolderAdded(Folder& folder) override;
    void OnFolderRemoving(Folder& folder) override;
    void OnFolderTextChanged(Folder& folder) override;
    void OnSongsChanged(Folder& folder) override;
    void OnRanksChanged() override;

    EditingTools m_tools;
    Jukebox& m_jukebox;
    JukeboxWindowHost& m_host;
    JukeboxView* m_view = nullptr;
    Folder* m_selected = nullptr;
    Pane m_focus = Pane::Tree;
    JukeboxEditor m_editor;
    int m_sortState = 0;
    int m_shownOrder = 0;
    std::unordered_map<std::uint64_t, int> m_sortedBy;  // states, by the folders' serials
    BackgroundPicture m_picture;
};

}  // namespace tobbin
