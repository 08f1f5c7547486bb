#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "catalogue/clsMain.h"
#include "jukebox/Jukebox.h"
#include "util/SortCity.h"
#include "util/SystemText.h"

namespace tobbin {

// The four orders of the song list, which the clicks on its heading go through: by name up (1) and
// down (2), by rank, best first (3) and worst first (4).
inline constexpr int kSortStates = 4;

// The first column's heading after a sort by a state.
std::string SortHeading(int state);

// The songs of a folder in the order of a state: row k of it is row result[k] now.
std::vector<std::size_t> SortedOrder(SortCity& sorter, const clsMain& catalogue,
                                     const Jukebox& jukebox, const Folder& folder, int state);

// Whether they stand in that order already.
bool IsSorted(const SystemText& system, const clsMain& catalogue, const Jukebox& jukebox,
              const Folder& folder, int state);

// The order of `count` rows, as above, in which some of them, ascending, have come together before
// a row; `before` is `count` for the end.
std::vector<std::size_t> OrderWithRowsBefore(std::size_t count,
                                             const std::vector<std::size_t>& rows,
                                             std::size_t before);

}  // namespace tobbin
