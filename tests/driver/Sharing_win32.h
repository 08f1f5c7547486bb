#pragma once

namespace tobbin::driver {

// Opens a small window "tobbin_catch" at the left top of the screen for files to be dropped on, one
// that would rather move them than copy them, and waits for a drop. Prints "move" or "copy", as the
// source allows, and the paths.
void CatchFiles();

// Prints the lines of text on the clipboard, then "files" and the paths of the files on it.
void PrintClipboard();

}  // namespace tobbin::driver
