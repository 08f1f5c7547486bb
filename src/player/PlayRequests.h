#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/Environment.h"
#include "player/PlayList.h"
#include "player/WinAMP_Control.h"
#include "search/PlayerDiscovery.h"

namespace tobbin {

// A song in the list pane.
struct ListedSong {
    std::int32_t recordNumber = 0;
    bool selected = false;
    std::string_view name = {};  // as the jukebox shows it
};

// What a request to play needs of the main frame.
class PlayHost {
 public:
    virtual ~PlayHost() = default;
    // The window `frmSearching`, not yet open. While it is, the frame takes no input.
    virtual std::unique_ptr<SearchingWindow> MakeSearchingWindow() = 0;

    // Calls Playstuff of the open player panel, or opens the panel, whose load plays.
    virtual void PlayInPanel() = 0;

    // Starts the player's installer, then shows `frmSearching` through the searches behind it.
    virtual void InstallPlayer() = 0;
};

// Turns what the person asks to hear into the play list, and hands that to the player panel.
class PlayRequests {
 public:
    PlayRequests(Environment& environment, PlayerLocation& location, PlayerDiscovery& discovery,
                 WinAMP_Control& control, PlayList& playList, PlayHost& host);

    // `songs` are all items of the list pane in its order. Nothing is played when there is none
    // (none selected).
    void PlayAllSongsInFolder(const std::vector<ListedSong>& songs);
    void PlaySelectedSongs(const std::vector<ListedSong>& songs);

    // Whether the player's place is known. Runs a pending search first, with the frame disabled;
    // when the place is still not known, offers to install the player.
    bool PlayerCheck();

 private:
    void Play(const std::vector<ListedSong>& songs, bool onlySelected);

    Environment& m_environment;
    PlayerLocation& m_location;
    PlayerDiscovery& m_discovery;
    WinAMP_Control& m_control;
    PlayList& m_playList;
    PlayHost& m_host;
};

}  // namespace tobbin
