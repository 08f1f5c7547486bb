#pragma once

#include <cstddef>
#include <vector>

#include "jukebox/Jukebox.h"

namespace tobbin {

// What a change has done, so that a window can show it.
struct EditResult {
    Folder* maybeFolder = nullptr;   // in the tree now
    std::vector<std::size_t> rows;   // its songs that came with the change, ascending
    std::vector<std::size_t> order;  // not empty: its song k was song order[k] before
};

// One change of a jukebox that can be done, taken back and done again, each time exactly as the
// first. It is made undone.
class JukeboxChange {
 public:
    virtual ~JukeboxChange() = default;

    // Does it; takes it back when it is done. Between two calls for one change, the jukebox must
    // have come back to how the last one left it.
    virtual EditResult Flip(Jukebox& jukebox) = 0;

    // Whether it changes what a jukebox file keeps.
    virtual bool ChangesJukebox() const { return true; }
};

}  // namespace tobbin
