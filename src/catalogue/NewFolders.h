#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/Environment.h"
#include "search/SongDrives.h"

namespace tobbin {

// What to say of the first of these subfolders (each ends in "\") that holds songs or folders,
// while neither it nor a folder in it is among the known ones: which command looks there. Empty
// when there is none, and once `keepOn` answers false.
std::string RemarkOnNewFolder(Environment& environment, SongDrives& drives,
                              const std::vector<std::string>& knownFolders,
                              const std::vector<std::string>& subfolders,
                              const std::function<bool()>& keepOn);

}  // namespace tobbin
