#pragma once

#include <windows.h>

#include <vector>

#include "ui/WindowState.h"

namespace tobbin {

// A window's place as it is now, or would be were it neither minimized nor maximized.
WindowState StateOf(HWND window);

// Answers WM_GETMINMAXINFO with the smallest size that a window can be used in.
void ShowSmallestSize(HWND window, MINMAXINFO& sizes);

// The parts of the screens that windows may fill; the main screen first.
std::vector<Area> ScreenAreas();

}  // namespace tobbin
