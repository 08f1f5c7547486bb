#pragma once

#include <cstdint>
#include <unordered_map>

#include "catalogue/TextPool.h"

namespace tobbin {

// What the groups want to know of a song's tag; texts are numbers in a pool.
struct FilingTag {
    std::uint32_t artist = 0;
    std::uint32_t year = 0;
    std::uint32_t genre = 0;
    bool unread = false;  // its file can't be read now
};

// The tags that one run has read, by catalogue record, so that several jukeboxes share them.
struct TagsRead {
    TextPool texts;
    std::unordered_map<std::int32_t, FilingTag> byRecord;
};

}  // namespace tobbin
