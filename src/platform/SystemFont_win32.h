#pragma once

#include <windows.h>

#include "platform/UniqueHandle_win32.h"

namespace tobbin {

// The person's font for messages, in the size for the screen that the window is on.
inline UniqueFont MessageFont(HWND window) {
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof(metrics);
    SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0,
                               GetDpiForWindow(window));
    return UniqueFont(CreateFontIndirectW(&metrics.lfMessageFont));
}

inline void UseFont(HWND control, const UniqueFont& font) {
    SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(font.Get()), TRUE);
}

}  // namespace tobbin
