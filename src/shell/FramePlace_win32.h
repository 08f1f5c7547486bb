#pragma once

#include <windows.h>

#include "platform/Environment.h"

namespace tobbin {

// Puts the frame, not yet seen, where it was left, or else in the middle of the main screen.
// Returns whether it was left maximized.
bool PlaceFrame(HWND frame, UserSettings& settings);

// Keeps the frame's place and size for the next run.
void KeepFramePlace(HWND frame, UserSettings& settings);

}  // namespace tobbin
