#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/RecordTable.h"
#include "platform/Environment.h"
#include "search/SongDrives.h"
#include "util/ReadAhead.h"
#include "util/TextHash.h"

namespace tobbin {

// The text of the progress.
inline constexpr char kLookingAtFolders[] = "Looking at the folders of your songs . . .";

// What the listings of one check held besides the songs of the catalogue: for each folder that was
// listed (ending in "\"), the songs that the catalogue does not have in it.
using ListedFolders = TextMap<std::vector<FolderEntry>>;

// One check of which songs of the catalogue have lost their file. What is away (see SongDrives) is
// no answer either way.
class MissingSongs {
 public:
    // `drives` has begun its pass.
    MissingSongs(Environment& environment, const RecordTable& table, SongDrives& drives,
                 Progress& progress)
        : m_environment(environment), m_table(table), m_drives(drives), m_progress(progress) {}

    // The records, ascending, that are not marked as present or whose file is gone, but for those
    // that are away. Each folder is listed once, and the system is asked for a single file only
    // when the listing does not name it. Lets events through and shows its steps; after a wish to
    // stop the other songs are taken for there. Call it once.
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
    struct Listed {
        std::string folder;
        bool isAhead = false;  // listed on another thread
        DiskStatus status;
        FolderListing listing;
    };
    bool WaitForNext(ReadAhead<Listed>& folders);
    void JudgeFolder(Listed& judged, const Song* first, const Song* last);
    bool IsGone(const std::string& path);

    struct Seen {
        std::size_t found = 0, all = 0;
    };
    Environment& m_environment;
    const RecordTable& m_table;
    SongDrives& m_drives;
    Progress& m_progress;
    std::vector<std::int32_t> m_missing;
    std::vector<SeenSong> m_seen;
    TextMap<Seen> m_seenOn;  // how many songs, by root
    ListedFolders m_listed;
};

}  // namespace tobbin
