#include "platform/HintText_win32.h"

#include <algorithm>

#include "platform/Dpi_win32.h"
#include "platform/SystemFont_win32.h"
#include "platform/Wide_win32.h"

namespace tobbin {
namespace {

constexpr int kMargin = 12, kWidest = 420;  // pixels at 96 to the inch

}  // namespace

void PaintHint(HDC dc, HWND window, const RECT& place, const std::string& text, COLORREF color) {
    LOGFONTW look = {};
    GetObjectW(MessageFont(window).Get(), sizeof(look), &look);
    look.lfHeight = MulDiv(look.lfHeight, 5, 4);
    const UniqueFont font(CreateFontIndirectW(&look));
    const std::wstring wide = Wide(text);
    const int room = place.right - place.left - 2 * ScalePixels(kMargin, window);
    const int width = std::min(room, ScalePixels(kWidest, window));
    RECT lines = {0, 0, width, 0};
    const int saved = SaveDC(dc);
    SelectObject(dc, font.Get());
    SetTextColor(dc, color);
    SetBkMode(dc, TRANSPARENT);
    const UINT format = DT_CENTER | DT_WORDBREAK | DT_NOPREFIX;
    DrawTextW(dc, wide.c_str(), -1, &lines, format | DT_CALCRECT);
    const int height = place.bottom - place.top;
    const int third = (height - static_cast<int>(lines.bottom)) / 3;
    const int left = (place.left + place.right - width) / 2;
    const int top = place.top + std::max(third, std::min(ScalePixels(kMargin, window), height));
    lines = {left, top, left + width, top + lines.bottom};
    DrawTextW(dc, wide.c_str(), -1, &lines, format);
    RestoreDC(dc, saved);
}

}  // namespace tobbin
