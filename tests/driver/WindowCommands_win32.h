#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace tobbin::driver {

// The commands that deal with windows as such. `frame` is the program's main frame. Returns false
// when the command is none of them; throws std::runtime_error when it can't be done.
//
//   name TEXT                  writes a name into the edit of the file dialog that is open
//   titles                     the captions of the jukebox windows, the active one first
//   drop PATH...               drops files on the frame
//   send MESSAGE [WPARAM]      sends the frame a message and prints its reply
//   key CODE                   presses and releases a key in the control that has the focus
//   place                      the frame's left, top, width and height
//   move LEFT TOP WIDTH HEIGHT puts the frame there
bool RunWindowCommand(HWND frame, const std::wstring& command,
                      const std::vector<std::wstring>& words);

}  // namespace tobbin::driver
