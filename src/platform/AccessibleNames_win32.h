#pragma once

#include <windows.h>

namespace tobbin {

// Names for screen readers where a control or a menu item has no text of its own that tells what it
// is. Systems that can't keep them go without.
void NameWindow(HWND window, const wchar_t* name);
// `place` from 0. A menu forgets the names of its items before it goes: the system would keep them.
void NameMenuItem(HMENU menu, int place, const wchar_t* name);
void ForgetMenuItemName(HMENU menu, int place);

}  // namespace tobbin
