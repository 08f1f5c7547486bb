#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "platform/Disk.h"

namespace tobbin {

// Two ways to list a folder. Both give everything but "." and "..", in the file system's order.

// By the folder's open handle, many entries at a time. `supported` tells whether the file system
// knows this way; where it does not, the status says nothing.
DiskStatus ListByHandle(HANDLE folder, std::vector<FolderEntry>& entries, bool& supported);

// By the search that every file system knows. Takes the folder in its long form.
DiskStatus ListBySearch(const std::wstring& longFolder, std::vector<FolderEntry>& entries);

}  // namespace tobbin
