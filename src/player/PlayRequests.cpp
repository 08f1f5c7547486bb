#include "player/PlayRequests.h"

namespace tobbin {

PlayRequests::PlayRequests(Environment& environment, PlayerLocation& location,
                           PlayerDiscovery& discovery, WinAMP_Control& control, PlayList& playList,
                           PlayHost& host)
    : m_environment(environment),
      m_location(location),
      m_discovery(discovery),
      m_control(control),
      m_playList(playList),
      m_host(host) {}

bool PlayRequests::PlayerCheck() {
    if (m_discovery.IsSearchPending()) {
        const std::unique_ptr<SearchingWindow> window = m_host.MakeSearchingWindow();
        window->Open();
        const PlayerDiscovery::Outcome outcome = m_discovery.Search(*window);
        window->Close();
        if (outcome == PlayerDiscovery::Outcome::Stopped)
            return false;  // Nobody knows yet whether there is a player.
    }
    m_control.PlayerProgramPath(m_location.PlayerPath());
    if (!m_location.PlayerPath().empty())
        return true;
    const Answer answer = m_environment.dialogs.Ask(
        "WinAmp is not installed on your system.  You need Winamp to play music.  Would you like "
        "to have a free copy of WinAmp installed on you system now?",
        Buttons::YesNoCancel, BoxIcon::Question);
    if (answer == Answer::Yes) {
        m_environment.dialogs.Tell(
            "WinAmp will now be installed on your system.  After WinAmp is installed, close down "
            "both WinAmp and Tobbin.  Then just open Tobbin.  When you request to play songs "
            "WinAmp will then automatically open.");
        m_host.InstallPlayer();
    }
    return false;
}

void PlayRequests::PlayAllSongsInFolder(const std::vector<ListedSong>& songs) {
    if (!PlayerCheck())
        return;
    std::vector<std::int32_t> records;
    records.reserve(songs.size());
    for (const ListedSong& song : songs)
        records.push_back(song.recordNumber);
    Play(std::move(records));
}

void PlayRequests::PlaySelectedSongs(const std::vector<ListedSong>& songs) {
    if (!PlayerCheck())
        return;
    std::vector<std::int32_t> records;
    for (const ListedSong& song : songs)
        if (song.selected)
            records.push_back(song.recordNumber);
    Play(std::move(records));
}

void PlayRequests::Play(std::vector<std::int32_t> records) {
    if (records.empty())
        return;
    m_playList.Assign(std::move(records));
    m_host.PlayInPanel();
}

}  // namespace tobbin
