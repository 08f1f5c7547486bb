#pragma once

#include <windows.h>

#include <vector>

#include "ui/WindowState.h"

namespace tobbin {

// A window's place as it is now, or would be were it neither minimized nor maximized.
WindowState StateOf(HWND window);

// The parts of the screens that windows may fill; the main screen first.
std::vector<Area> ScreenAreas();

}  // namespace tobbin
