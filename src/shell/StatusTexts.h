#pragma once

#include <string>

#include "ui/JukeboxWindow.h"

namespace tobbin {

// What the status bar says of the active jukebox: how many folders and songs it holds, such as
// "61 folders, 1,204 songs".
std::string JukeboxText(const Jukebox& jukebox);

// What is selected, such as "Artist: 12 songs, 3 selected". Empty without a selected folder.
std::string SelectionText(const JukeboxWindow& window);

}  // namespace tobbin
