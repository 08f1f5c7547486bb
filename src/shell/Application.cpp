#include "shell/Application.h"

#include <utility>

#include "jukebox/JukeboxFile.h"
#include "platform/ProgressTexts.h"

namespace tobbin {

Application::Application(Outside& outside, ProgramFolders folders)
    : m_outside(outside),
      m_folders(std::move(folders)),
      m_settings(outside, m_folders.application),
      m_sorter(outside.text),
      m_catalogue(outside, m_settings, m_sorter, m_longWork),
      m_groups(outside, m_catalogue, *this),
      m_windows(outside.text),
      m_playerPlace(m_settings),
      m_discovery(outside, m_playerPlace),
      m_player(outside) {}

Jukebox& Application::AddJukebox(std::unique_ptr<Jukebox> jukebox) {
    return *m_jukeboxes.emplace_back(std::move(jukebox));
}

Jukebox* Application::MaybeLoadJukebox(const std::string& path) {
    std::unique_ptr<Jukebox> loaded;
    StatusLineProgress progress(m_outside.statusLine);
    progress.Show("Opening " + path + " . . .");
    const LoadResult result =
        LoadJukeboxFile(m_outside.disk, path, m_catalogue, m_outside.text, loaded);
    if (loaded != nullptr)
        return &AddJukebox(std::move(loaded));
    m_outside.statusLine.Say(result.message);
    return nullptr;
}

void Application::RemoveJukebox(Jukebox& jukebox) {
    std::erase_if(m_jukeboxes, [&](const auto& open) { return open.get() == &jukebox; });
}

}  // namespace tobbin
