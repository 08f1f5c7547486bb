#pragma once

#include <vector>

#include "player/PlayRequests.h"
#include "ui/JukeboxWindow.h"

namespace tobbin {

// The items of a jukebox window's list pane in its order, for a request to play.
std::vector<ListedSong> ListedSongs(const JukeboxWindow& window);

}  // namespace tobbin
