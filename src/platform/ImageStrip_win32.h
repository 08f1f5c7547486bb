#pragma once

#include <windows.h>

#include "platform/UniqueHandle_win32.h"

namespace tobbin {

// An image list of square pictures from a strip of them in the program's resources, in the size for
// the screen that the window is on and for the colors of the system. Strips of several sizes stand
// under consecutive numbers, the smallest (for 96 to the inch) under `firstResource`; see
// assets/resource.h.
UniqueImageList LoadImageStrip(int firstResource, HWND window);

}  // namespace tobbin
