#include "platform/ImageStrip_win32.h"

#include <iterator>

#include "platform/Twips_win32.h"

namespace tobbin {
namespace {

constexpr int kSizes[] = {16, 24, 32};  // pixels, of the strips in the order of their numbers

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
    UniqueImageList list(ImageList_Create(size, size, ILC_COLOR32, measures.bmWidth / size, 1));
    if (bitmap)
        ImageList_Add(list.Get(), bitmap.Get(), nullptr);
    return list;
}

}  // namespace tobbin
