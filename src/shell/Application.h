#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/clsINI.h"
#include "catalogue/clsMain.h"
#include "jukebox/AutomaticGroups.h"
#include "jukebox/Jukebox.h"
#include "jukebox/SongClipboard.h"
#include "platform/Environment.h"
#include "platform/ProgressRelay.h"
#include "player/PlayList.h"
#include "player/SettingsPlayerLocation.h"
#include "player/WinAMP_Control.h"
#include "search/PlayerDiscovery.h"
#include "shell/LoadedWindows.h"
#include "ui/EditingTools.h"
#include "util/SortCity.h"

namespace tobbin {

// Where the program lies, where the system does, where the program may keep what is the person's
// own (it need not be there), and where a 64-bit system has the libraries of 32-bit programs; the
// last two are empty when there is none. Each ends in "\".
struct ProgramFolders {
    std::string application;
    std::string system;
    std::string personal = {};
    std::string systemOf32Bit = {};
};

// The objects that live as long as the program. The program's main creates the one instance and
// hands it, or parts of it, down by reference.
class Application : public OpenJukeboxes {
 public:
    Application(Environment& environment, ProgramFolders folders);

    Environment& TheEnvironment() { return m_environment; }
    const ProgramFolders& Folders() const { return m_folders; }
    // The data folder beside the program; ends in "\".
    std::string DataFolder() const { return m_folders.application + "Grouping\\"; }
    std::string HelpFile() const { return m_folders.application + "quhelp.hlp"; }

    clsINI& Settings() { return m_settings; }
    SortCity& Sorter() { return m_sorter; }
    clsMain& Catalogue() { return m_catalogue; }
    AutomaticGroups& Groups() { return m_groups; }
    ProgressRelay& LongWork() { return m_longWork; }
    LoadedWindows& Windows() { return m_windows; }

    // The external player: where its program lies, its window, and what it is to play.
    PlayerLocation& PlayerPlace() { return m_playerPlace; }
    PlayerDiscovery& Discovery() { return m_discovery; }
    WinAMP_Control& Player() { return m_player; }
    PlayList& SongsToPlay() { return m_songsToPlay; }

    // What was last cut or copied, and all that jukebox windows work with.
    SongClipboard& Clipboard() { return m_clipboard; }
    EditingTools Tools() {
        return {m_environment, m_catalogue, m_settings, m_sorter, m_clipboard, *this, m_groups};
    }

    // Keeps a file open until the program ends.
    void KeepOpen(std::unique_ptr<File> file) { m_keptOpen.push_back(std::move(file)); }

    // The open jukeboxes, in the order of their opening. A jukebox lives until its window closes.
    Jukebox& AddJukebox(std::unique_ptr<Jukebox> jukebox);
    // The jukebox of a file; null where it can't be loaded, and the status line says why.
    // `outcome` tells it, too.
    Jukebox* MaybeLoadJukebox(const std::string& path, LoadOutcome* outcome = nullptr);
    void RemoveJukebox(Jukebox& jukebox);
    std::size_t Count() const override { return m_jukeboxes.size(); }
    Jukebox& At(std::size_t index) const override { return *m_jukeboxes[index]; }

 private:
    Environment& m_environment;
    ProgramFolders m_folders;
    std::vector<std::unique_ptr<File>> m_keptOpen;
    ProgressRelay m_longWork;
    clsINI m_settings;
    SortCity m_sorter;
    clsMain m_catalogue;
    AutomaticGroups m_groups;
    LoadedWindows m_windows;
    SettingsPlayerLocation m_playerPlace;
    PlayerDiscovery m_discovery;
    WinAMP_Control m_player;
    PlayList m_songsToPlay;
    SongClipboard m_clipboard;
    std::vector<std::unique_ptr<Jukebox>> m_jukeboxes;
};

}  // namespace tobbin
