#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace tobbin {

// The program's UTF-8 and the system's UTF-16. Lone surrogates survive both ways.
std::wstring Wide(std::string_view text);
std::string Utf8(std::wstring_view text);

// An absolute path as the system takes it at any length: "\\?\C:\Music", "\\?\UNC\server\share".
// In that form the system no longer cleans paths up, so "/", doubled "\", "." and ".." parts and a
// "\" at the end are dealt with here; names that end in a blank or a dot are left as they are. A
// path that is not absolute is taken from the current folder.
std::wstring LongPath(std::string_view path);

// The text of a window.
std::string WindowText(HWND window);

}  // namespace tobbin
