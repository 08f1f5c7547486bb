#pragma once

#include <windows.h>

#include <shellapi.h>

#include <string>
#include <vector>

namespace tobbin {

// The full paths of the files that WM_DROPFILES brings. Releases the handle.
std::vector<std::string> TakeDroppedFiles(HDROP drop);

}  // namespace tobbin
