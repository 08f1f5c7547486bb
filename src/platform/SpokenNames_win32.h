#pragma once

#include <windows.h>

namespace tobbin {

// Names for screen readers where a control or a menu item has no text of its own that tells what it
// is. Systems that can't keep them go without.
void NameWindow(HWND window, const wchar_t* name);
// `place` from 0.
void NameMenuItem(HMENU menu, int place, const wchar_t* name);

}  // namespace tobbin
