#include "platform/ImageStrip_win32.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "platform/Dpi_win32.h"

namespace tobbin {
namespace {

// Pixels, of the strips in the order of their numbers.
constexpr int kSizes[] = {16, 20, 24, 32, 48};

int Brightness(COLORREF color) {  // 0 to 255
    return (GetRValue(color) * 3 + GetGValue(color) * 6 + GetBValue(color)) / 10;
}

// On a dark screen the dark lines of the pictures would not be seen.
void LightenDarkPixels(const BITMAP& bitmap) {
    auto* const pixels = static_cast<std::uint32_t*>(bitmap.bmBits);
    std::for_each_n(pixels, bitmap.bmWidth * bitmap.bmHeight, [](std::uint32_t& pixel) {
        const COLORREF color = pixel & 0xFFFFFF;
        const int brightness =
            Brightness(RGB(GetBValue(color), GetGValue(color), GetRValue(color)));
        if (brightness < 110)  // half the way to white, each part
            pixel = (pixel & 0xFF000000) | ((pixel >> 1 & 0x7F7F7F) + 0x7F7F7F);
    });
}

}  // namespace

UniqueImageList LoadImageStrip(int firstResource, HWND window) {
    const int wanted = ScalePixels(kSizes[0], window);
    int strip = 0;
    while (strip + 1 < static_cast<int>(std::size(kSizes)) && kSizes[strip + 1] <= wanted)
        ++strip;
    const int size = kSizes[strip];
    const UniqueBitmap bitmap(static_cast<HBITMAP>(
        LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(firstResource + strip), IMAGE_BITMAP,
                   0, 0, LR_CREATEDIBSECTION)));
    BITMAP measures = {};
    GetObjectW(bitmap.Get(), sizeof(measures), &measures);
    if (measures.bmBits != nullptr && measures.bmBitsPixel == 32 &&
        Brightness(GetSysColor(COLOR_WINDOW)) < 128)
        LightenDarkPixels(measures);
    UniqueImageList list(ImageList_Create(size, size, ILC_COLOR32, measures.bmWidth / size, 1));
    if (bitmap)
        ImageList_Add(list.Get(), bitmap.Get(), nullptr);
    return list;
}

}  // namespace tobbin
