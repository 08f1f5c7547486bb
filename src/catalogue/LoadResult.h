#pragma once

#include <string>

namespace tobbin {

// How reading one of the program's files went. Bad data is a value: the message names the file, the
// place in it and what is wrong.
enum class LoadOutcome { Loaded, NotThere, Damaged, Unreadable };
struct LoadResult {
    LoadOutcome outcome = LoadOutcome::Loaded;
    std::string message;  // empty when loaded
};

}  // namespace tobbin
