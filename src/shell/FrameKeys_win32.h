#pragma once

#include <windows.h>

namespace tobbin {

// Whether a message is the Esc key, pressed where it does not end the editing of a text.
bool IsEscKey(const MSG& message);

// The keys of the frame's menus and of MDI, and F6 for the next pane, before a message goes to its
// window. `maybePanel` is the player panel, if it is open; `keys` are the menus' shortcuts. Returns
// whether the message is dealt with.
bool TranslateFrameKeys(HWND frame, HWND mdiClient, HWND maybePanel, HACCEL keys, MSG& message);

}  // namespace tobbin
