#pragma once

#include <windows.h>

namespace tobbin {

// What is selected in a pane has to stand out while the other pane, or a dialog such as the one
// that finds songs, has the focus. The grey that the controls take can't be told from the white
// around it on many a screen. Goes with the colour of window text.
inline COLORREF QuietSelectionColor() {
    const COLORREF strong = GetSysColor(COLOR_HIGHLIGHT);
    const COLORREF plain = GetSysColor(COLOR_WINDOW);
    const auto mixed = [&](int shift) {
        return static_cast<BYTE>(((strong >> shift & 0xFF) + 2 * (plain >> shift & 0xFF)) / 3);
    };
    return RGB(mixed(0), mixed(8), mixed(16));
}

}  // namespace tobbin
