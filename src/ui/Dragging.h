#pragma once

#include <cstddef>
#include <vector>

#include "jukebox/Folder.h"

namespace tobbin {

class JukeboxWindow;

// What the person drags out of a jukebox window: songs of a folder, or the folder itself.
struct Dragged {
    JukeboxWindow* from = nullptr;
    Folder* folder = nullptr;
    std::vector<std::size_t> rows = {};  // ascending, from 0; empty for the folder
    bool IsFolder() const { return rows.empty(); }
};

enum class DropMode { Move, Copy };

}  // namespace tobbin
