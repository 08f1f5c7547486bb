#pragma once

#include <windows.h>

#include "platform/UniqueHandle_win32.h"

namespace tobbin {

// The large and the small icon of a window; must live as long as it.
class WindowIcons {
 public:
    // Gives the window an icon of the program's resources, in the sizes for the screen it is on.
    // Not with LR_SHARED: LoadImage then hands back the size that was loaded first, whatever is
    // asked for.
    void Show(HWND window, int resource);

 private:
    UniqueIcon m_large, m_small;
};

}  // namespace tobbin
