#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "catalogue/RecordTable.h"
#include "platform/Environment.h"

namespace tobbin {

// What the listings of one check held besides the songs of the catalogue: for each folder that was
// listed (ending in "\"), the songs that the catalogue does not have in it.
using ListedFolders = std::unordered_map<std::string, std::vector<FolderEntry>>;

// One check of which songs of the catalogue have lost their file. A drive or network share that
// can't be reached says nothing of its songs: they are no answer either way.
class MissingSongs {
 public:
    MissingSongs(Environment& environment, const RecordTable& table);

    // The records, ascending, that are not marked as present or whose file is gone, but for those
    // on a drive that can't be reached. Each folder is listed once, and the system is asked for a
    // single file only when the listing does not name it. Lets events through. Call it once.
    std::vector<std::int32_t> Find();

    // The songs whose file was in a listing, with its size in bytes; call it once, after Find.
    struct SeenSong {
        std::int32_t record = 0;
        std::uint64_t size = 0;
    };
    std::vector<SeenSong> TakeSeen() { return std::move(m_seen); }

    // What the same listings held of other songs; call it once, after Find.
    ListedFolders TakeListed() { return std::move(m_listed); }

 private:
    struct Song {
        RecordTable::CellId folder;
        std::int32_t record;
    };
    void JudgeFolder(const std::string& folder, const Song* first, const Song* last);
    bool IsGone(const std::string& path);
    bool WasReachable(const std::string& root);

    Environment& m_environment;
    const RecordTable& m_table;
    std::vector<std::int32_t> m_missing;
    std::unordered_map<std::string, bool> m_reachable;  // by root, as first found
    std::vector<SeenSong> m_seen;
    ListedFolders m_listed;
};

}  // namespace tobbin
