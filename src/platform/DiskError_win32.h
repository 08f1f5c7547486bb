#pragma once

#include <windows.h>

#include "platform/Disk.h"

namespace tobbin {

// The status for a number of the system's; ERROR_SUCCESS gives success.
DiskStatus StatusOf(DWORD systemCode);

// The status for what GetLastError says now. Call it at once after the call that failed.
DiskStatus LastStatus();

}  // namespace tobbin
