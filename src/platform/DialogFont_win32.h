#pragma once

#include <windows.h>

#include <vector>

namespace tobbin {

// A dialog's template (DIALOGEX, with a font) from the program's resources, with the person's font
// for messages in place of its own; the dialog's measures follow the font. Empty when there is no
// such template. As long-words, as the system wants it aligned.
std::vector<DWORD> TemplateWithMessageFont(int resource);

}  // namespace tobbin
