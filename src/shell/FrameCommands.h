#pragma once

#include <string>

#include "shell/Application.h"
#include "shell/FrameView.h"
#include "shell/JukeboxFiles.h"
#include "shell/NewSongs.h"
#include "ui/Commands.h"
#include "ui/frmFind.h"

namespace tobbin {

// Whether a command can act, and whether what it switches is on for the active jukebox; and what it
// is called now, where its caption changes.
struct CommandState {
    bool enabled;
    bool on;
    std::string caption = {};
};

// Decides for each command of the main frame whether it can act now, and does it. A command that
// can't act does nothing and shows nothing.
class FrameCommands {
 public:
    FrameCommands(Application& application, FrameView& view);

    CommandState StateOf(Command command) const;
    bool IsEnabled(Command command) const;
    void Do(Command command);

    // Buttons of the toolbar count from 1.
    void ClickButton(int button);

    JukeboxFiles& Files() { return m_files; }
    // The state of the find dialog, which the frame's window shows.
    frmFind& Find() { return m_find; }

 private:
    bool IsOn(Command command) const;
    void DoInJukebox(const CommandRow& row);
    void NewJukeboxWindow();
    void StartHelp();

    Application& m_application;
    FrameView& m_view;
    JukeboxFiles m_files;
    NewSongs m_newSongs;
    frmFind m_find;
};

}  // namespace tobbin
