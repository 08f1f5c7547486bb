#pragma once

#include <windows.h>

#include <cmath>

namespace tobbin {

// Measures in twips, 1440 to the inch whatever the screen. Pixels are those of the screen that the
// window is on.
constexpr int kTwipsPerInch = 1440;

inline int TwipsToPixels(double twips, HWND window) {
    return static_cast<int>(std::lround(twips * GetDpiForWindow(window) / kTwipsPerInch));
}

inline int PixelsToTwips(int pixels, HWND window) {
    return static_cast<int>(
        std::lround(static_cast<double>(pixels) * kTwipsPerInch / GetDpiForWindow(window)));
}

// Pixels given for 96 to the inch, as many as they are on the window's screen.
inline int ScalePixels(int pixelsAt96, HWND window) {
    return MulDiv(pixelsAt96, static_cast<int>(GetDpiForWindow(window)), 96);
}

}  // namespace tobbin
