#include "shell/FrameCommands.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <optional>
#include <string_view>

#include "jukebox/InitialJukebox.h"
#include "util/Text.h"

namespace tobbin {

const char* const kToolTips[kToolbarButtons] = {
    "Play Selected Songs",
    "Play All Songs in Folder",
    "Play Next Track",
    "Play Previous Track",
    "Pause",
    "Un-Pause",
    "Stop After Current Track",
    "",
    "Add Folder To Root",
    "Add Folder To Current",
    "New Juke Box",
    "Find Song",
    "",
    "Bring In New Songs (Search Normal Directories)",
    "Bring In New Songs (Search entire computer)",
    "Background Picture",
    "Help",
};

namespace {

// A command that the active jukebox window carries out: its numbers for `ActOnPopUpClick` while the
// tree pane or the list pane has the focus; 0 where it does nothing.
struct JukeboxCommand {
    FrameCommand command;
    Pane paneWhenTree;
    int numberWhenTree;
    Pane paneWhenList;
    int numberWhenList;
};

constexpr JukeboxCommand kJukeboxCommands[] = {
    {FrameCommand::Cut, Pane::Tree, 6, Pane::List, 4},
    {FrameCommand::Copy, Pane::Tree, 7, Pane::List, 5},
    {FrameCommand::Paste, Pane::Tree, 8, Pane::List, 6},
    {FrameCommand::Delete, Pane::Tree, 9, Pane::List, 7},
    {FrameCommand::AddFolderToSelectedFolder, Pane::Tree, 4, Pane::Tree, 4},
    {FrameCommand::AddFolderToRoot, Pane::Tree, 5, Pane::Tree, 5},
    {FrameCommand::PlaySelectedSongs, Pane::List, 2, Pane::List, 2},
    {FrameCommand::PlayAllSongsInFolder, Pane::List, 1, Pane::List, 1},
};

struct PopUpEntry {
    int number;
    Pane pane;
};

// What the command means in a window; nothing when it is no such command or no pane has the focus.
std::optional<PopUpEntry> MaybeEntry(FrameCommand command, const JukeboxWindow& window) {
    const auto* const found =
        std::ranges::find(kJukeboxCommands, command, &JukeboxCommand::command);
    if (found == std::end(kJukeboxCommands))
        return std::nullopt;
    switch (window.CurrentPaneWFocus()) {
        case Pane::Tree:
            return PopUpEntry{found->numberWhenTree, found->paneWhenTree};
        case Pane::List:
            return PopUpEntry{found->numberWhenList, found->paneWhenList};
        default:
            return std::nullopt;
    }
}

// What a command sends to the player; nothing when it is no such command.
std::optional<PlayerCommand> MaybePlayerCommand(FrameCommand command) {
    switch (command) {
        case FrameCommand::NextTrack:
            return PlayerCommand::NextTrack;
        case FrameCommand::PreviousTrack:
            return PlayerCommand::PreviousTrack;
        case FrameCommand::Pause:
            return PlayerCommand::Pause;
        case FrameCommand::Play:
            return PlayerCommand::Play;
        case FrameCommand::Stop:
            return PlayerCommand::Stop;
        case FrameCommand::StopAfterTrack:
            return PlayerCommand::StopAfterTrack;
        case FrameCommand::ClosePlayer:
            return PlayerCommand::Close;
        default:
            return std::nullopt;
    }
}

// Carries out a command of the Picture menu; false when it is no such command.
bool DoPictureCommand(FrameCommand command, JukeboxWindow& window) {
    switch (command) {
        case FrameCommand::ChangePicture:
            window.Picture().choose();
            return true;
        case FrameCommand::NoPicture:
            window.ShowPictt(!window.ShowPictt());
            window.UpdatePictureStatus();
            return true;
        case FrameCommand::ToggleTile:
            window.BeItTiled(!window.BeItTiled());
            window.UpdatePictureStatus();
            return true;
        case FrameCommand::NextPicture:
        case FrameCommand::PreviousPicture:
            window.ChangePicture(command == FrameCommand::NextPicture);
            return true;
        default:
            return false;
    }
}

// "Un-Pause" and the two folder buttons demand a known player; the menu items don't.
bool NeedsPlayerCheck(int button) {
    return button == 6 || button == 9 || button == 10;
}

// The menu command behind each button; nothing for a separator.
constexpr std::optional<FrameCommand> kButtons[kToolbarButtons] = {
    FrameCommand::PlaySelectedSongs,
    FrameCommand::PlayAllSongsInFolder,
    FrameCommand::NextTrack,
    FrameCommand::PreviousTrack,
    FrameCommand::Pause,
    FrameCommand::Play,
    FrameCommand::StopAfterTrack,
    std::nullopt,
    FrameCommand::AddFolderToRoot,
    FrameCommand::AddFolderToSelectedFolder,
    FrameCommand::New,
    FrameCommand::Find,
    std::nullopt,
    FrameCommand::NewSongsNormalLocations,
    FrameCommand::NewSongsWholeComputer,
    FrameCommand::ChangePicture,
    FrameCommand::Help,
};

std::optional<FrameCommand> MaybeButtonCommand(int button) {
    return button >= 1 && button <= kToolbarButtons ? kButtons[button - 1] : std::nullopt;
}

}  // namespace

FrameCommands::FrameCommands(Application& application, FrameView& view)
    : m_application(application),
      m_view(view),
      m_files(application, view),
      m_newSongs(application, view),
      m_find(application.TheEnvironment(), application.Catalogue(),
             [&view] { return view.MaybeActiveJukebox(); }) {}

bool FrameCommands::IsEnabled(FrameCommand command) const {
    switch (command) {
        case FrameCommand::New:
        case FrameCommand::Open:
        case FrameCommand::NewSongsNormalLocations:
        case FrameCommand::NewSongsWholeComputer:
            return !m_application.Groups().IsBuilding();
        case FrameCommand::Exit:
        case FrameCommand::Help:
        case FrameCommand::Tip:
        case FrameCommand::About:
            return true;
        case FrameCommand::Close:
        case FrameCommand::ChangePicture:
        case FrameCommand::NoPicture:
        case FrameCommand::ToggleTile:
        case FrameCommand::NextPicture:
        case FrameCommand::PreviousPicture:
            return m_view.MaybeActiveJukebox() != nullptr;
        case FrameCommand::Find:
        case FrameCommand::FindNext:
        case FrameCommand::SortList:
            return HasSelectedFolder();
        case FrameCommand::Undo:
            return m_view.MaybeActiveJukebox() != nullptr && m_view.MaybeActiveJukebox()->CanUndo();
        case FrameCommand::Redo:
            return m_view.MaybeActiveJukebox() != nullptr && m_view.MaybeActiveJukebox()->CanRedo();
        case FrameCommand::Save:
        case FrameCommand::SaveAs:
        case FrameCommand::Cascade:
        case FrameCommand::Tile:
            return m_view.HasChildren();
        case FrameCommand::ArrangeIcons:
            return m_view.HasMinimizedChildren();
        default:  // A command to a player that isn't there tells how to get it.
            return MaybePlayerCommand(command) || IsJukeboxCommandEnabled(command);
    }
}

bool FrameCommands::IsOn(FrameCommand command) const {
    const JukeboxWindow* const window = m_view.MaybeActiveJukebox();
    return window != nullptr && ((command == FrameCommand::NoPicture && window->ShowPictt()) ||
                                 (command == FrameCommand::ToggleTile && window->BeItTiled()));
}

void FrameCommands::Do(FrameCommand command) {
    if (!IsEnabled(command) || DoJukeboxCommand(command))
        return;
    if (const std::optional<PlayerCommand> toPlayer = MaybePlayerCommand(command)) {
        m_application.Player().SendPlayerCommand(*toPlayer);
        return;
    }
    switch (command) {
        case FrameCommand::New:
            NewJukeboxWindow();
            break;
        case FrameCommand::Open:
            m_files.Open();
            break;
        case FrameCommand::Find:
            m_view.ShowFind();
            break;
        case FrameCommand::FindNext:
            if (m_find.CanFindNext())
                m_find.FindNext();
            else
                m_view.ShowFind();
            break;
        case FrameCommand::SortList:
            m_view.MaybeActiveJukebox()->OnHeaderClicked();
            break;
        case FrameCommand::Undo:
            m_view.MaybeActiveJukebox()->Undo();
            break;
        case FrameCommand::Redo:
            m_view.MaybeActiveJukebox()->Redo();
            break;
        case FrameCommand::Close:
            m_view.MaybeActiveJukebox()->View().Close();
            break;
        case FrameCommand::Save:
            m_files.Save();
            break;
        case FrameCommand::SaveAs:
            m_files.SaveAs();
            break;
        case FrameCommand::Exit:
            m_view.CloseFrame();
            break;
        case FrameCommand::NewSongsNormalLocations:
            m_newSongs.LookInKnownFolders();
            break;
        case FrameCommand::NewSongsWholeComputer:
            m_newSongs.SearchWholeComputer();
            break;
        case FrameCommand::Cascade:
            m_view.MinimizePlayerPanel();
            m_view.Arrange(Arrangement::Cascade);
            break;
        case FrameCommand::Tile:
            m_view.MinimizePlayerPanel();
            m_view.Arrange(Arrangement::TileHorizontally);
            break;
        case FrameCommand::ArrangeIcons:
            m_view.Arrange(Arrangement::Icons);
            break;
        case FrameCommand::Help:
            StartHelp();
            break;
        case FrameCommand::Tip:
            m_view.ShowTips();
            break;
        case FrameCommand::About:
            m_view.ShowAbout();
            break;
        default:
            break;
    }
}

bool FrameCommands::IsButtonEnabled(int button) const {
    const std::optional<FrameCommand> command = MaybeButtonCommand(button);
    return command && IsEnabled(*command);
}

void FrameCommands::ClickButton(int button) {
    const std::optional<FrameCommand> command = MaybeButtonCommand(button);
    if (command && (!NeedsPlayerCheck(button) || m_view.PlayerCheck()))
        Do(*command);
}

bool FrameCommands::HasSelectedFolder() const {
    const JukeboxWindow* const window = m_view.MaybeActiveJukebox();
    return window != nullptr && window->SelectedFolder() != nullptr;
}

bool FrameCommands::IsJukeboxCommandEnabled(FrameCommand command) const {
    if (!HasSelectedFolder())
        return false;
    const JukeboxWindow* const window = m_view.MaybeActiveJukebox();
    const std::optional<PopUpEntry> entry = MaybeEntry(command, *window);
    return entry && window->IsEnabled(entry->number, static_cast<int>(entry->pane));
}

bool FrameCommands::DoJukeboxCommand(FrameCommand command) {
    JukeboxWindow* const window = m_view.MaybeActiveJukebox();
    if (window == nullptr)
        return false;
    if (DoPictureCommand(command, *window))
        return true;
    const std::optional<PopUpEntry> entry = MaybeEntry(command, *window);
    const bool asksFirst = command == FrameCommand::Cut && entry && entry->pane == Pane::Tree;
    if (entry && (!asksFirst || MayCutFolder()))
        window->ActOnPopUpClick(entry->number, static_cast<int>(entry->pane),
                                window->SelectedFolder());
    return entry.has_value();
}

bool FrameCommands::MayCutFolder() {
    return m_application.TheEnvironment().dialogs.Ask(
               "Are you sure you want to cut this folder and all it's contents?",
               Buttons::YesNoCancel, BoxIcon::Question) == Answer::Yes;
}

// With no jukebox open, the sample jukebox is built first and opens in a window of its own.
void FrameCommands::NewJukeboxWindow() {
    if (m_application.Count() == 0) {
        Jukebox& sample = m_application.AddJukebox(std::make_unique<Jukebox>());
        m_files.BuildSample(sample);
        m_view.OpenJukeboxWindow(sample);
    }
    auto jukebox = std::make_unique<Jukebox>();
    AddListColumns(*jukebox);
    CopyJukebox(m_application.At(0), *jukebox);
    jukebox->DaCaption("JukeBox" + std::to_string(m_view.JukeboxWindowsOpened() + 1));
    m_view.OpenJukeboxWindow(m_application.AddJukebox(std::move(jukebox)));
}

// The help program lies in the folder above the system's own. It tells of a missing help file
// itself. Newer systems have no such program: they get the manual.
void FrameCommands::StartHelp() {
    Environment& environment = m_application.TheEnvironment();
    std::string_view folder = m_application.Folders().system;
    folder.remove_suffix(std::min<std::size_t>(folder.size(), 1));
    if (environment.programs.Start(FolderOfPath(folder) + "WinHelp.exe", m_application.HelpFile(),
                                   ShowProgram::Normal))
        return;
    const std::string manual = m_application.Folders().application + "Help\\index.html";
    if (!FileExists(environment.disk, manual) || !environment.programs.Open(manual))
        environment.statusLine.Say("The manual " + manual + " could not be opened.");
}

}  // namespace tobbin
