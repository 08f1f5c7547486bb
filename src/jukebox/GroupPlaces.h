#pragma once

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "jukebox/GroupFiling.h"
#include "jukebox/Jukebox.h"
#include "jukebox/TagsRead.h"

namespace tobbin {

// Says into which folders of "Artist", "Year", "Decades" and "Genre" a song goes by its tag, as far
// as the jukebox has them. "All Songs" and "New" are not among them.
class GroupPlaces {
 public:
    // The jukebox's folders must not be changed by others meanwhile.
    GroupPlaces(const Jukebox& jukebox, const SystemText& text,
                const GroupFiling::AddChild& addChild);

    // Adds children to the groups where none fits.
    std::vector<Folder*> For(const TagsRead& tags, const FilingTag& tag);

    // All such folders that the jukebox has. A decade counts only beside "Year".
    std::vector<Folder*> All() const;

 private:
    std::optional<GroupFiling> m_artists, m_years, m_genres;
    std::unordered_map<std::string, Folder*> m_decades;  // by text; null for one that is not there
    std::vector<Folder*> m_groups;
};

}  // namespace tobbin
