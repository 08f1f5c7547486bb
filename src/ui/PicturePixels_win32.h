#pragma once

#include <windows.h>

#include "ui/PicturePixels.h"

namespace tobbin {

// How a picture's pixels lie in memory, for the system's drawing.
inline BITMAPINFO LayoutOf(const PicturePixels& pixels) {
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = pixels.size.width;
    info.bmiHeader.biHeight = -pixels.size.height;  // from the top
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    return info;
}

}  // namespace tobbin
