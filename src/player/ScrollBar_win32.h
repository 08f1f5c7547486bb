#pragma once

#include <windows.h>

#include <algorithm>

namespace tobbin {

inline SCROLLINFO InfoOf(HWND bar) {
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    info.fMask = SIF_ALL;
    GetScrollInfo(bar, SB_CTL, &info);
    return info;
}

// Where a move leads to; a drag's place while the thumb is held.
inline int TargetOf(const SCROLLINFO& info, int smallStep, int largeStep, int code) {
    const auto by = [&](int step) { return std::clamp(info.nPos + step, info.nMin, info.nMax); };
    switch (code) {
        case SB_LINELEFT:
            return by(-smallStep);
        case SB_LINERIGHT:
            return by(smallStep);
        case SB_PAGELEFT:
            return by(-largeStep);
        case SB_PAGERIGHT:
            return by(largeStep);
        case SB_LEFT:
            return info.nMin;
        case SB_RIGHT:
            return info.nMax;
        case SB_THUMBTRACK:
        case SB_THUMBPOSITION:
            return info.nTrackPos;
        default:
            return info.nPos;
    }
}

}  // namespace tobbin
