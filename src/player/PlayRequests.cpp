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
    Play(songs, false);
}

void PlayRequests::PlaySelectedSongs(const std::vector<ListedSong>& songs) {
    Play(songs, true);
}

void PlayRequests::Play(const std::vector<ListedSong>& songs, bool onlySelected) {
    if (!PlayerCheck())
        return;
    std::vector<std::int32_t> records;
    std::string_view firstName;
    for (const ListedSong& song : songs) {
        if (onlySelected && !song.selected)
            continue;
        if (records.empty())
            firstName = song.name;
        records.push_back(song.recordNumber);
    }
    if (records.empty())
        return;
    m_playList.Assign(std::move(records), std::string(firstName));
    m_host.PlayInPanel();
}

}  // namespace tobbin
