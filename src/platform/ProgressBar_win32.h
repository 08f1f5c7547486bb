#pragma once

#include <windows.h>

#include "platform/Environment.h"

namespace tobbin {

// Shows in a progress bar how many steps are done. While nobody knows how many there are, the bar
// just moves.
void ShowStepsIn(HWND bar, const StepsDone& steps);

}  // namespace tobbin
