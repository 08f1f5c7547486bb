#include "shell/FrameCommands.h"

#include <algorithm>
#include <memory>
#include <string_view>

#include "jukebox/InitialJukebox.h"
#include "util/Text.h"

namespace tobbin {

FrameCommands::FrameCommands(Application& application, FrameView& view)
    : m_application(application),
      m_view(view),
      m_files(application, view),
      m_newSongs(application, view),
      m_find(application.TheEnvironment(), application.Catalogue(),
             [&view] { return view.MaybeActiveJukebox(); }) {}

CommandState FrameCommands::StateOf(Command command) const {
    CommandState state{IsEnabled(command), IsOn(command)};
    if (command == Command::Undo || command == Command::Redo) {
        state.caption = RowOf(command).places[0].caption;
        if (state.enabled) {
            const JukeboxWindow& window = *m_view.MaybeActiveJukebox();
            state.caption = command == Command::Undo ? window.UndoText() : window.RedoText();
        }
    }
    return state;
}

bool FrameCommands::IsEnabled(Command command) const {
    switch (RowOf(command).acts.frame) {
        case When::Always:
            return true;
        case When::NotGrouping:
            return !m_application.Groups().IsBuilding();
        case When::JukeboxToFill:
            return !m_application.Groups().IsBuilding() && m_view.MaybeActiveJukebox() != nullptr;
        case When::AnyChild:
            return m_view.HasChildren();
        case When::MinimizedChild:
            return m_view.HasMinimizedChildren();
        default:
            const JukeboxWindow* const window = m_view.MaybeActiveJukebox();
            return window != nullptr && window->IsEnabled(command);
    }
}

bool FrameCommands::IsOn(Command command) const {
    const JukeboxWindow* const window = m_view.MaybeActiveJukebox();
    return window != nullptr && window->IsOn(command);
}

void FrameCommands::Do(Command command) {
    if (!IsEnabled(command))
        return;
    const CommandRow& row = RowOf(command);
    if (row.acts.toPlayer) {
        m_application.Player().SendPlayerCommand(*row.acts.toPlayer);
        return;
    }
    switch (command) {
        case Command::New:
            return NewJukeboxWindow();
        case Command::Open:
            return m_files.Open();
        case Command::Save:
            return m_files.Save();
        case Command::SaveAs:
            return m_files.SaveAs();
        case Command::Exit:
            return m_view.CloseFrame();
        case Command::Find:
            return m_view.ShowFind();
        case Command::FindNext:
            return m_find.CanFindNext() ? m_find.FindNext() : m_view.ShowFind();
        case Command::NewSongsNormalLocations:
            return m_newSongs.LookInKnownFolders();
        case Command::NewSongsWholeComputer:
            return m_newSongs.SearchWholeComputer();
        case Command::FillAnew:
            return m_newSongs.FillAnew(*m_view.MaybeActiveJukebox());
        case Command::Cascade:
            m_view.MinimizePlayerPanel();
            return m_view.Arrange(Arrangement::Cascade);
        case Command::Tile:
            m_view.MinimizePlayerPanel();
            return m_view.Arrange(Arrangement::TileHorizontally);
        case Command::ArrangeIcons:
            return m_view.Arrange(Arrangement::Icons);
        case Command::Help:
            return StartHelp();
        case Command::Tip:
            return m_view.ShowTips();
        case Command::About:
            return m_view.ShowAbout();
        default:
            return DoInJukebox(row);
    }
}

void FrameCommands::DoInJukebox(const CommandRow& row) {
    JukeboxWindow& window = *m_view.MaybeActiveJukebox();
    const bool asks = *row.acts.folderQuestion != '\0' && window.PaneFor(row) == Pane::Tree;
    if (!asks ||
        m_application.TheEnvironment().dialogs.Ask(row.acts.folderQuestion, Buttons::YesNoCancel,
                                                   BoxIcon::Question) == Answer::Yes)
        window.Do(row.command);
}

void FrameCommands::ClickButton(int button) {
    const CommandRow* const row = MaybeRowOfButton(button);
    if (row != nullptr && (!row->button.asksForPlayer || m_view.PlayerCheck()))
        Do(row->command);
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
