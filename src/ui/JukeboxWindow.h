#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "catalogue/clsMain.h"
#include "jukebox/Jukebox.h"
#include "jukebox/SpecialFolders.h"
#include "platform/Outside.h"
#include "ui/JukeboxView.h"

namespace tobbin {

class JukeboxWindow;

// How many entries the two pop-up menus have, separators included.
inline constexpr int kFolderMenuEntries = 11;
inline constexpr int kSongMenuEntries = 16;

// What a jukebox window hands on to the main frame.
class JukeboxWindowHost {
 public:
    virtual ~JukeboxWindowHost() = default;

    // Whether the frame can do such a thing now.
    virtual bool CanChangePicture() const = 0;

    // Play the songs of the list pane: all of them, or the selected rows.
    virtual void PlayAllSongsInFolder(JukeboxWindow& window) = 0;
    virtual void PlaySelectedSongs(JukeboxWindow& window) = 0;

    // Shows the picture dialog for the window.
    virtual void ChangeBackgroundPicture(JukeboxWindow& window) = 0;

    // Runs the frame's save command for the window, which is about to close. Nothing that fails
    // keeps it from closing.
    virtual void SaveBeforeClosing(JukeboxWindow& window) = 0;

    // Something that the status bar shows has changed.
    virtual void OnSelectionChanged(JukeboxWindow& window) = 0;
};

// The window `frmMain` of one jukebox: takes what the person does in its panes and menus, and turns
// it into changes of the jukebox, questions and calls of the frame. The jukebox outlives it.
class JukeboxWindow : private JukeboxListener {
 public:
    JukeboxWindow(Outside& outside, const clsMain& catalogue, Jukebox& jukebox,
                  JukeboxWindowHost& host);
    ~JukeboxWindow() override;
    JukeboxWindow(const JukeboxWindow&) = delete;
    JukeboxWindow& operator=(const JukeboxWindow&) = delete;

    Jukebox& Model() const { return m_jukebox; }

    // The view is there from the creation of the window to its end.
    void SetView(JukeboxView* view) { m_view = view; }
    JukeboxView& View() const { return *m_view; }
    bool HasView() const { return m_view != nullptr; }

    // The background picture: path of the last one, whether one is shown, whether it is tiled.
    const std::string& LastPicFileLocation() const { return m_picture; }
    void LastPicFileLocation(std::string path) { m_picture = std::move(path); }
    bool ShowPictt() const { return m_showPicture; }
    void ShowPictt(bool shown) { m_showPicture = shown; }
    bool BeItTiled() const { return m_tiled; }
    void BeItTiled(bool tiled) { m_tiled = tiled; }

    // The pane that last had the focus.
    Pane CurrentPaneWFocus() const { return m_focus; }
    void CurrentPaneWFocus(Pane pane) { m_focus = pane; }

    const std::string& FileLocation() const { return m_jukebox.FileLocation(); }
    void FileLocation(std::string folder) { m_jukebox.FileLocation(std::move(folder)); }
    bool IsFormDirty() const { return m_jukebox.IsFormDirty(); }
    void IsFormDirty(bool dirty) { m_jukebox.IsFormDirty(dirty); }
    const std::string& DaCaption() const { return m_jukebox.DaCaption(); }
    void DaCaption(std::string caption) { m_jukebox.DaCaption(std::move(caption)); }

    // Runs the entry at a place (from 1) of a pop-up menu: pane 1 means the folder menu, any other
    // the song menu. `node` is the tree's selected folder; without one nothing happens.
    void ActOnPopUpClick(int command, int pane, Folder* node);

    // Whether that entry can act now. The caption of a sub-menu and a separator can't.
    bool IsEnabled(int command, int pane) const;

    // Whether a folder may be deleted: every one that the program does not fill.
    static bool OkToDelete(const Folder& node) { return !IsSpecialFolder(node); }

    // Whether the person may edit a folder's text.
    static bool MayEditText(const Folder& node) { return !IsSpecialFolder(node); }

    // The folder whose songs the list pane shows; null when none is selected.
    Folder* SelectedFolder() const { return m_selected; }

    // What the list pane shows: the songs of the selected folder, rows and columns from 0.
    std::size_t RowCount() const;
    std::string RowText(std::size_t row, int column) const;
    // The rank, 2 to 7; 1 for a song without one, 0 for one whose file is missing.
    int RowImage(std::size_t row) const;

    // What the list pane says while the selected folder holds no song.
    std::string EmptyText() const;

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
    void OnFolderRemoving(Folder& folder) override;
    void OnSongsChanged(Folder& folder) override;

    Outside& m_outside;
    const clsMain& m_catalogue;
    Jukebox& m_jukebox;
    JukeboxWindowHost& m_host;
    JukeboxView* m_view = nullptr;
    Folder* m_selected = nullptr;
    Pane m_focus = Pane::Tree;
    std::string m_picture;
    bool m_showPicture = false;
    bool m_tiled = false;
};

}  // namespace tobbin
