#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "catalogue/RecordTable.h"
#include "platform/Environment.h"

namespace tobbin {

// The file LocOfMainTargetFiles.lmz: the folders of the catalogue's songs, one a line (see
// docs/song-folder-list.md).

inline constexpr std::uint64_t kLargestSongFolderList = Megabytes(64);

// Every distinct folder of the table once, in no order.
std::vector<std::string> SongFoldersOf(const RecordTable& table);

// Writes every distinct folder of the table once, in ascending order of the lower-cased texts.
DiskStatus WriteSongFolderList(Environment& environment, const std::string& path,
                               const RecordTable& table);

// The folders of the list that are full paths, each ending in "\". Other lines, such as the "0" of
// songs that are gone, name no folder.
DiskStatus ReadSongFolderList(Environment& environment, const std::string& path,
                              std::vector<std::string>& folders);

}  // namespace tobbin
