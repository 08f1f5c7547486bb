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
    {"7", 7, "rank 1 of 6", "Rank 1 of 6, best"}, {"6", 6, "rank 2 of 6", "Rank 2 of 6"},
    {"5", 5, "rank 3 of 6", "Rank 3 of 6"},       {"4", 4, "rank 4 of 6", "Rank 4 of 6"},
    {"3", 3, "rank 5 of 6", "Rank 5 of 6"},       {"3", 2, "rank 6 of 6", "Rank 6 of 6, worst"},
};

// A song that was never ranked is shown as one of the worst rank.
inline constexpr const RankRow& kBestRank = kRanks[0];
inline constexpr const RankRow& kWorstRank = kRanks[std::size(kRanks) - 1];

}  // namespace tobbin
