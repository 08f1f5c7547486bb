#pragma once

#include <windows.h>

#include <shellapi.h>

#include <string>
#include <string_view>
#include <vector>

namespace tobbin {

// The system's form of a set of files, CF_HDROP: full paths both ways.
std::vector<std::string> FilesOf(HDROP drop);
// Movable memory for whoever takes it over; null when there is none. The second is the same for a
// text.
HGLOBAL MakeFileDrop(const std::vector<std::string>& paths);
HGLOBAL MakeUnicodeText(std::string_view text);
// `size` in bytes.
HGLOBAL MakeMemory(const void* data, std::size_t size);

// The full paths of the files that WM_DROPFILES brings. Releases the handle.
std::vector<std::string> TakeDroppedFiles(HDROP drop);

}  // namespace tobbin
