#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "catalogue/clsMain.h"
#include "jukebox/GroupPlaces.h"
#include "jukebox/JukeboxChange.h"
#include "jukebox/TagsRead.h"

namespace tobbin {

// How the folders that the program fills are to change, so that they hold what the catalogue and
// the tags say now. Songs whose files are gone leave them; those that are away, or whose tag can't
// be read, keep their places. In "Artist", "Year", "Decades" and "Genre" a song leaves the folders
// that are not its own any more; a child that is left with nothing goes.
class FillingAnew {
 public:
    // After a check for missing songs, with the tags of the present ones.
    FillingAnew(Environment& environment, clsMain& catalogue, Jukebox& jukebox,
                const TagsRead& tags);

    // Null when there is nothing to change.
    std::unique_ptr<JukeboxChange> TakeChange();

    // Numbers of songs: that came into "All Songs", that left it, that have other groups now, and
    // whose tag could not be read.
    std::size_t added = 0, gone = 0, filedOtherwise = 0, unread = 0;
    bool hasAllSongs = false;  // without it nothing is filled

 private:
    struct NewFolder {
        Folder* group;
        std::unique_ptr<Folder> folder;
    };
    using Songs = std::vector<SongItem>;
    bool IsGone(const SongItem& song);
    Songs WithoutGone(const Folder& folder);
    void FillAllSongs(Folder& all);
    void FindPlaces(GroupPlaces& places);
    Songs SongsOf(const Folder& folder);
    void FillGroup(Folder& folder);
    void Change(Folder& folder, Songs songs);

    Environment& m_environment;
    clsMain& m_catalogue;
    Jukebox& m_jukebox;
    const TagsRead& m_tags;
    std::unordered_map<std::int32_t, bool> m_isGone;  // by record number
    std::vector<SongItem> m_byRecord;                 // of "All Songs"; number 0 for none
    std::unordered_set<std::int32_t> m_added, m_filedOtherwise;
    std::unordered_map<const Folder*, std::vector<std::int32_t>> m_wanted;
    std::vector<NewFolder> m_newFolders;
    std::vector<std::unique_ptr<JukeboxChange>> m_changes;
    std::vector<Folder*> m_emptied;
};

}  // namespace tobbin
