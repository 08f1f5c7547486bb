#pragma once

#include <string>

#include "shell/Application.h"
#include "shell/FrameView.h"
#include "shell/JukeboxFiles.h"
#include "shell/NewSongs.h"
#include "ui/frmFind.h"

namespace tobbin {

// The commands of the main frame's menus; the numbers are those in assets/resource.h.
enum class FrameCommand : int {
    New = 1001,
    Open,
    Close,
    Save,
    SaveAs,
    Exit,
    Cut = 1101,
    Copy,
    Paste,
    Delete,
    Find,
    AddFolderToRoot,
    AddFolderToSelectedFolder,
    Undo,  // from here to SortList by key only
    Redo,
    FindNext,
    SortList,
    NewSongsNormalLocations = 1201,
    NewSongsWholeComputer,
    PlaySelectedSongs,
    PlayAllSongsInFolder,
    NextTrack,
    PreviousTrack,
    Pause,
    Play,
    Stop,
    StopAfterTrack,
    ClosePlayer,
    ChangePicture = 1301,
    NoPicture,
    ToggleTile,
    NextPicture,
    PreviousPicture,
    Cascade = 1401,
    Tile,
    ArrangeIcons,
    Help = 1501,
    Tip,
    About,
};

// Decides for each command of the main frame whether it can act now, and does it. A command that
// can't act does nothing and shows nothing.
class FrameCommands {
 public:
    FrameCommands(Application& application, FrameView& view);

    bool IsEnabled(FrameCommand command) const;
    // Whether what the command switches is on, for the active jukebox.
    bool IsOn(FrameCommand command) const;
    void Do(FrameCommand command);

    // Buttons of the toolbar count from 1.
    bool IsButtonEnabled(int button) const;
    void ClickButton(int button);

    JukeboxFiles& Files() { return m_files; }
    // The state of the find dialog, which the frame's window shows.
    frmFind& Find() { return m_find; }

 private:
    bool HasSelectedFolder() const;
    bool IsJukeboxCommandEnabled(FrameCommand command) const;
    bool DoJukeboxCommand(FrameCommand command);
    bool MayCutFolder();
    void NewJukeboxWindow();
    void StartHelp();

    Application& m_application;
    FrameView& m_view;
    JukeboxFiles m_files;
    NewSongs m_newSongs;
    frmFind m_find;
};

// The tool-tips of the toolbar's 17 buttons, the first at 0; empty for a separator.
inline constexpr int kToolbarButtons = 17;
extern const char* const kToolTips[kToolbarButtons];

}  // namespace tobbin
