#pragma once

#include <iterator>

namespace tobbin {

// A rank that a person can give to a song.
struct RankRow {
    const char* catalogueValue;  // what is written into the song's record
    int shown;                   // what the list shows for it: the number of its picture
    const char* name;
    const char* menuName;  // said for the menu entry, which may have no caption
};

// The one table of ranks, the best one first. The worst is written as the one above it.
inline constexpr RankRow kRanks[] = {
    {"7", 7, "rank: best", "Rank: best"},
    {"6", 6, "rank: second-best", "Rank: second-best"},
    {"5", 5, "rank: third-best", "Rank: third-best"},
    {"4", 4, "rank: third-worst", "Rank: third-worst"},
    {"3", 3, "rank: second-worst", "Rank: second-worst"},
    {"3", 2, "rank: worst", "Rank: worst"},
};

// A song that was never ranked is shown as one of the worst rank.
inline constexpr const RankRow& kBestRank = kRanks[0];
inline constexpr const RankRow& kWorstRank = kRanks[std::size(kRanks) - 1];

}  // namespace tobbin
