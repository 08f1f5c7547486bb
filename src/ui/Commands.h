#pragma once

#include <optional>

#include "catalogue/Ranks.h"
#include "player/WinAMP_Control.h"

namespace tobbin {

// All commands. The value of each is the number that its menu items and its keys send. Each
// menu item has a name of its own, and so have the separators that follow some.
enum class Command : int {
    New = 1001,                 // mnuNew
    Open,                       // mnuOpen
    Close,                      // mnuClose; then mnusep
    Save,                       // mnuSave
    SaveAs,                     // mnuSaveAs
    Exit,                       // mnuExit; then mnuTheFiles
    Cut = 1101,                 // mnuCut
    Copy,                       // mnuCopy
    Paste,                      // mnuPaste
    Delete,                     // mnuDelete; then mnugaqq
    Find,                       // mnuFind; then aksdjfalks
    AddFolderToRoot,            // mnuAddFolderToRoot
    AddFolderToSelectedFolder,  // mnuAddFolderToSelectedFolder
    Undo,
    Redo,
    FindNext,
    SortList,
    SortNodes,
    MoveUp,
    MoveDown,
    SelectAll,
    FillAnew,
    NewSongsNormalLocations = 1201,  // mnuNewSongsNormalLocations
    NewSongsWholeComputer,           // mnuNewSongsWholeComputerSearch; then mnusdfssdf
    PlaySelectedSongs,               // mnuPlaySeletedSongs
    PlayAllSongsInFolder,            // mnuPlayAllTheSongInNode; then mnuhshshsqqq
    NextTrack,                       // mnuNextTrack
    PreviousTrack,                   // mnuPreviousTrack
    Pause,                           // mnuPause
    Play,                            // mnuPlay
    Stop,                            // mnuStop
    StopAfterTrack,                  // mnuStopAfterTrack
    ClosePlayer,                     // mnuCloseWinAmp
    ChangePicture = 1301,            // mnuChangeBackgroup
    NoPicture,                       // mnuNoPicture
    ToggleTile,                      // mnuToggleTile
    NextPicture,                     // mnuNextPicture
    PreviousPicture,                 // mnuPreviousPic
    Cascade = 1401,                  // mnuCascade
    Tile,                            // mnuTile
    ArrangeIcons,                    // mnuArrageIcons
    Help = 1501,                     // mnuHelpp
    Tip,                             // mnuTip
    About,                           // mnuAbout
    Rank1 = 1701,                    // the best
    Rank2,
    Rank3,
    Rank4,
    Rank5,
    Rank6,
};

// Beside them, recent jukebox k (1 to 3) sends kRecentNumber + k, button k of the toolbar
// kToolbarNumber + k, and the window list counts from kFirstChildNumber.
inline constexpr int kRecentNumber = 1600;
inline constexpr int kToolbarNumber = 2200;
inline constexpr int kFirstChildNumber = 40000;

// When a command can act. The folder is the selected one.
enum class When {
    Never,
    Always,
    NotGrouping,  // no automatic groups are being built
    AnyChild,     // a child window is open
    MinimizedChild,
    JukeboxActive,
    JukeboxToFill,  // the same, and no automatic groups are being built
    CanUndo,
    CanRedo,
    FolderSelected,
    FolderHasSongs,
    FolderMayGo,  // it is none that the program fills
    FoldersToSort,
    SongsSelected,
    CanPaste,
};

// The menus of the menu bar, in its order, the pop-up menus, and the commands of the jukebox
// window's own control, which stand at the end of the songs' menu.
enum class Menu : int {
    None = -1,
    File,        // mnuFile
    Edit,        // mnuEdit
    Songs,       // mnuSongs
    Picture,     // mnuPicture
    WindowList,  // mnuWindowList
    Help,        // mnuHelp
    FolderPopUp,
    SongPopUp,
    Control,
};
inline constexpr const char* kMenuBar[] = {"&File",    "&Edit",       "&Songs",
                                           "&Picture", "&WindowList", "&Help"};

// A place in a menu. Positions count from 1; one that no command has is a separator or, before an
// entry of a sub-menu, the sub-menu's caption. In Menu::Control it is the command's identifier.
struct MenuPlace {
    Menu menu = Menu::None;
    int position = 0;
    const char* caption = "";  // without the key
    const char* maybeSubMenu = nullptr;
};

// No menu and no toolbar is longer.
inline constexpr int kMostPositions = 30;

// A button of the toolbar. Indexes count from 1; one that no command has is a separator.
struct ToolbarPlace {
    int index = 0;
    const char* toolTip = "";
    bool asksForPlayer = false;  // demands a known player first
};

// Where a command acts, and when it can: on the frame or a jukebox as a whole, whatever is
// selected; on the selected folder, from the tree pane; on songs, from the list pane. The pop-up
// menu, or the pane that had the focus last, says which of the last two it is.
struct Acting {
    When frame = When::Never;
    When folder = When::Never;
    When songs = When::Never;
    const char* folderQuestion = "";  // asked by the frame before it acts on a folder
    std::optional<PlayerCommand> toPlayer = std::nullopt;
    const RankRow* maybeRank = nullptr;  // that it gives to songs
};

struct CommandRow {
    Command command;
    Acting acts;
    MenuPlace places[3] = {};
    const char* keys = "";  // "Ctrl+N"; further ones behind a blank
    ToolbarPlace button = {};
};

// The one table of commands.
// clang-format off
inline constexpr CommandRow kCommands[] = {
    {Command::New, {.frame = When::NotGrouping}, {{Menu::File, 1, "&New Jukebox"}}, "Ctrl+N",
     {11, "New Juke Box"}},
    {Command::Open, {.frame = When::NotGrouping}, {{Menu::File, 2, "&Open..."}}, "Ctrl+O"},
    {Command::Close, {.frame = When::JukeboxActive}, {{Menu::File, 3, "&Close"}}},
    {Command::Save, {.frame = When::AnyChild}, {{Menu::File, 5, "&Save"}}, "Ctrl+S"},
    {Command::SaveAs, {.frame = When::AnyChild}, {{Menu::File, 6, "Save &As..."}}},
    {Command::Exit, {.frame = When::Always}, {{Menu::File, 7, "E&xit"}}},
    // Cutting a folder that the program fills says why it can't be.
    {Command::Cut, {.folder = When::FolderSelected, .songs = When::SongsSelected,
     .folderQuestion = "Are you sure you want to cut this folder and all it's contents?"},
     {{Menu::Edit, 1, "Cu&t"}, {Menu::FolderPopUp, 6, "Cu&t"}, {Menu::SongPopUp, 4, "Cu&t"}},
     "Ctrl+X"},
    {Command::Copy, {.folder = When::FolderSelected, .songs = When::SongsSelected},
     {{Menu::Edit, 2, "&Copy"}, {Menu::FolderPopUp, 7, "&Copy"}, {Menu::SongPopUp, 5, "&Copy"}},
     "Ctrl+C"},
    {Command::Paste, {.folder = When::CanPaste, .songs = When::CanPaste},
     {{Menu::Edit, 3, "&Paste"}, {Menu::FolderPopUp, 8, "&Paste"}, {Menu::SongPopUp, 6, "&Paste"}},
     "Ctrl+V"},
    {Command::Delete, {.folder = When::FolderMayGo, .songs = When::SongsSelected},
     {{Menu::Edit, 4, "Delete"},  {Menu::FolderPopUp, 9, "&Delete"},
      {Menu::SongPopUp, 7, "&Delete"}}, "Del"},
    {Command::Find, {.frame = When::FolderSelected}, {{Menu::Edit, 6, "&Find"}}, "Ctrl+F",
     {12, "Find Song"}},
    {Command::AddFolderToRoot, {.folder = When::FolderSelected},
     {{Menu::Edit, 8, "&Add Folder To Root"},
      {Menu::FolderPopUp, 5, "Add Folder to Root", "New Folder"}}, "",
     {9, "Add Folder To Root", true}},
    {Command::AddFolderToSelectedFolder, {.folder = When::FolderSelected},
     {{Menu::Edit, 9, "A&dd Folder To Selected Folder"},
      {Menu::FolderPopUp, 4, "Add Folder to Selected Folder", "New Folder"}}, "",
     {10, "Add Folder To Current", true}},
    // The step is named behind these two when the menu opens.
    {Command::Undo, {.frame = When::CanUndo}, {{Menu::Edit, 11, "Undo"}}, "Alt+Backspace"},
    {Command::Redo, {.frame = When::CanRedo}, {{Menu::Edit, 12, "Redo"}},
     "Alt+Shift+Backspace Ctrl+Shift+Z"},
    {Command::FindNext, {.frame = When::FolderSelected}, {}, "F3"},
    {Command::SortList, {.frame = When::FolderSelected}, {}, "Ctrl+H"},
    {Command::SelectAll, {.frame = When::FolderHasSongs}, {}, "Ctrl+Shift+A"},
    {Command::FillAnew, {.frame = When::JukeboxToFill}, {}, "F5"},
    {Command::MoveUp, {.songs = When::SongsSelected}, {}, "Alt+Up"},
    {Command::MoveDown, {.songs = When::SongsSelected}, {}, "Alt+Down"},
    {Command::SortNodes, {.folder = When::FoldersToSort}, {{Menu::FolderPopUp, 11, "Sort Nodes"}}},
    {Command::NewSongsNormalLocations, {.frame = When::NotGrouping},
     {{Menu::Songs, 1, "&Bring In New Songs (Look where I normally keep them)"}}, "",
     {14, "Bring In New Songs (Search Normal Directories)"}},
    {Command::NewSongsWholeComputer, {.frame = When::NotGrouping},
     {{Menu::Songs, 2, "B&ring In New Songs (Search my whole computer)"}}, "",
     {15, "Bring In New Songs (Search entire computer)"}},
    {Command::PlaySelectedSongs, {.songs = When::SongsSelected},
     {{Menu::Songs, 4, "&Play Selected Songs"}, {Menu::SongPopUp, 2, "Play Selected Songs"}},
     "Ctrl+P", {1, "Play Selected Songs"}},
    {Command::PlayAllSongsInFolder, {.folder = When::FolderHasSongs, .songs = When::FolderHasSongs},
     {{Menu::Songs, 5, "P&lay All Songs In Folder"},
      {Menu::FolderPopUp, 1, "Play All Songs in Folder"},
      {Menu::SongPopUp, 1, "Play All Songs in Folder"}}, "Ctrl+L", {2, "Play All Songs in Folder"}},
    // A command to a player that isn't there tells how to get it.
    {Command::NextTrack, {.frame = When::Always, .toPlayer = PlayerCommand::NextTrack},
     {{Menu::Songs, 7, "&Next Track"}}, "Ctrl+T", {3, "Play Next Track"}},
    {Command::PreviousTrack, {.frame = When::Always, .toPlayer = PlayerCommand::PreviousTrack},
     {{Menu::Songs, 8, "P&revious Track"}}, "Ctrl+R", {4, "Play Previous Track"}},
    {Command::Pause, {.frame = When::Always, .toPlayer = PlayerCommand::Pause},
     {{Menu::Songs, 9, "P&ause"}}, "Ctrl+U", {5, "Pause"}},
    {Command::Play, {.frame = When::Always, .toPlayer = PlayerCommand::Play},
     {{Menu::Songs, 10, "Pla&y"}}, "Ctrl+Y", {6, "Un-Pause", true}},
    {Command::Stop, {.frame = When::Always, .toPlayer = PlayerCommand::Stop},
     {{Menu::Songs, 11, "&Stop"}}},
    {Command::StopAfterTrack, {.frame = When::Always, .toPlayer = PlayerCommand::StopAfterTrack},
     {{Menu::Songs, 12, "S&top After Track"}}, "", {7, "Stop After Current Track"}},
    {Command::ClosePlayer, {.frame = When::Always, .toPlayer = PlayerCommand::Close},
     {{Menu::Songs, 13, "&Close WinAmp"}}},
    {Command::ChangePicture, {.frame = When::JukeboxActive},
     {{Menu::Picture, 1, "&Change Backgroup Picture"},
      {Menu::SongPopUp, 16, "Change Background Picture . . ."}}, "", {16, "Background Picture"}},
    {Command::NoPicture, {.frame = When::JukeboxActive},
     {{Menu::Picture, 2, "Picture \\ No Picture"}}},
    {Command::ToggleTile, {.frame = When::JukeboxActive}, {{Menu::Picture, 3, "Tile \\ No Tile"}}},
    {Command::NextPicture, {.frame = When::JukeboxActive},
     {{Menu::Picture, 4, "Next Picture"}, {Menu::Control, 601, "Next Pic"}}, "Ctrl+Z"},
    {Command::PreviousPicture, {.frame = When::JukeboxActive},
     {{Menu::Picture, 5, "Previous Picture"}, {Menu::Control, 602, "Prev. Pic"}}, "Ctrl+A"},
    {Command::Cascade, {.frame = When::AnyChild}, {{Menu::WindowList, 1, "&Cascade"}}, "Shift+F4"},
    {Command::Tile, {.frame = When::AnyChild}, {{Menu::WindowList, 2, "&Tile"}}, "Shift+F5"},
    {Command::ArrangeIcons, {.frame = When::MinimizedChild},
     {{Menu::WindowList, 3, "&Arrange Icons"}}},
    {Command::Help, {.frame = When::Always}, {{Menu::Help, 1, "&Help"}}, "", {17, "Help"}},
    {Command::Tip, {.frame = When::Always}, {{Menu::Help, 2, "&Tip"}}},
    {Command::About, {.frame = When::Always}, {{Menu::Help, 3, "&About"}}},
    // The ranks between the best and the worst have nothing but their pictures.
    {Command::Rank1, {.songs = When::SongsSelected, .maybeRank = &kRanks[0]},
     {{Menu::SongPopUp, 9, "Rank it - Best"}}, "Ctrl+1"},
    {Command::Rank2, {.songs = When::SongsSelected, .maybeRank = &kRanks[1]},
     {{Menu::SongPopUp, 10}}, "Ctrl+2"},
    {Command::Rank3, {.songs = When::SongsSelected, .maybeRank = &kRanks[2]},
     {{Menu::SongPopUp, 11}}, "Ctrl+3"},
    {Command::Rank4, {.songs = When::SongsSelected, .maybeRank = &kRanks[3]},
     {{Menu::SongPopUp, 12}}, "Ctrl+4"},
    {Command::Rank5, {.songs = When::SongsSelected, .maybeRank = &kRanks[4]},
     {{Menu::SongPopUp, 13}}, "Ctrl+5"},
    {Command::Rank6, {.songs = When::SongsSelected, .maybeRank = &kRanks[5]},
     {{Menu::SongPopUp, 14, ".  .  .   to worst"}}, "Ctrl+6"},
};
// clang-format on

// The rows of a command, of a number, of a place in a menu and of a button of the toolbar; null
// when there is none.
const CommandRow& RowOf(Command command);
const CommandRow* MaybeRowOf(int number);
const CommandRow* MaybeRowAt(Menu menu, int position);
const CommandRow* MaybeRowOfButton(int index);

// Where a command stands in a menu; null when it doesn't.
const MenuPlace* MaybePlaceIn(Menu menu, const CommandRow& row);

}  // namespace tobbin
