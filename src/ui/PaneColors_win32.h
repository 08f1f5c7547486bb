#pragma once

#include <windows.h>

namespace tobbin {

// Two of the system's colors mixed, so many parts of each: whatever colors the person has chosen,
// what they make goes with them.
inline COLORREF MixedColor(int first, int firstParts, int second, int secondParts) {
    const COLORREF a = GetSysColor(first);
    const COLORREF b = GetSysColor(second);
    const auto mixed = [&](int shift) {
        return static_cast<BYTE>(
            ((a >> shift & 0xFF) * firstParts + (b >> shift & 0xFF) * secondParts) /
            (firstParts + secondParts));
    };
    return RGB(mixed(0), mixed(8), mixed(16));
}

// What is selected in a pane has to stand out while the other pane, or a dialog such as the one
// that finds songs, has the focus. The gray that the controls take can't be told from the white
// around it on many a screen. Goes with the color of window text.
inline COLORREF QuietSelectionColor() {
    const bool dark = GetGValue(GetSysColor(COLOR_WINDOW)) < 128;
    return MixedColor(COLOR_HIGHLIGHT, 1, COLOR_WINDOW, dark ? 1 : 2);
}

// For a text that says something about a pane: quieter than what is in panes, but well readable.
inline COLORREF QuietTextColor() {
    return MixedColor(COLOR_WINDOWTEXT, 2, COLOR_WINDOW, 1);
}

// For a song that can't be played now; still readable.
inline COLORREF MissingTextColor() {
    return MixedColor(COLOR_WINDOWTEXT, 5, COLOR_WINDOW, 4);
}

}  // namespace tobbin
