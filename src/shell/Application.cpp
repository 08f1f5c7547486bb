#include "shell/Application.h"

#include <utility>

#include "jukebox/JukeboxFile.h"
#include "jukebox/MovedSongs.h"
#include "platform/ProgressTexts.h"

namespace tobbin {

Application::Application(Environment& environment, ProgramFolders folders)
    : m_environment(environment),
      m_folders(std::move(folders)),
      m_settings(environment, m_folders.application),
      m_sorter(environment.text),
      m_catalogue(environment, m_settings, m_sorter, m_longWork),
      m_groups(environment, m_catalogue, *this),
      m_windows(environment.text),
      m_playerPlace(m_settings),
      m_discovery(environment, m_playerPlace, m_folders.application + "Player\\TobbinPlayer.exe"),
      m_player(environment, m_discovery) {
    environment.hosts.KnowNow(m_folders.application);
    environment.hosts.KnowNow(m_folders.personal);
}

Jukebox& Application::AddJukebox(std::unique_ptr<Jukebox> jukebox) {
    return *m_jukeboxes.emplace_back(std::move(jukebox));
}

Jukebox* Application::MaybeLoadJukebox(const std::string& path, LoadOutcome* outcome) {
    std::unique_ptr<Jukebox> loaded;
    StatusLineProgress progress(m_environment.statusLine);
    progress.Show("Opening " + path + " . . .");
    const LoadResult result =
        LoadJukeboxFile(m_environment.disk, path, m_catalogue, m_environment.text, loaded);
    if (outcome != nullptr)
        *outcome = result.outcome;
    if (loaded != nullptr) {
        if (TellOfClearedSongs(*loaded, m_catalogue))
            m_catalogue.Save();
        return &AddJukebox(std::move(loaded));
    }
    m_environment.statusLine.Say(result.message);
    return nullptr;
}

void Application::RemoveJukebox(Jukebox& jukebox) {
    std::erase_if(m_jukeboxes, [&](const auto& open) { return open.get() == &jukebox; });
}

}  // namespace tobbin
