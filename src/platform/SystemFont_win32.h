#pragma once

#include <windows.h>

#include <utility>

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

// Gives a window and its children the font for messages; `kept` is to live as long as they use it.
inline void UseMessageFont(HWND window, UniqueFont& kept) {
    UniqueFont font = MessageFont(window);
    UseFont(window, font);
    for (HWND child = GetWindow(window, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT))
        UseFont(child, font);
    kept = std::move(font);
}

}  // namespace tobbin
