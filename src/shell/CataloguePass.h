#pragma once

#include <functional>

#include "shell/Application.h"

namespace tobbin {

// Runs a pass over the catalogue that may move its records, such as a search for new songs, while
// jukeboxes are open: their songs and those to be played stay the same songs. Returns what the
// pass returns; without running it, false while automatic groups are being built.
bool RunCataloguePass(Application& application, const std::function<bool()>& pass);

}  // namespace tobbin
