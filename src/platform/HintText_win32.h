#pragma once

#include <windows.h>

#include <string>

namespace tobbin {

// Says in an empty place what it is for: in the message font, a quarter larger, a third down, and
// in lines that are not too long. `text` is UTF-8 with LF.
void PaintHint(HDC dc, HWND window, const RECT& place, const std::string& text, COLORREF color);

}  // namespace tobbin
