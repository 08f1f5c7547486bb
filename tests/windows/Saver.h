#pragma once

#include <string>
#include <string_view>

namespace tobbin {

// What a test starts as "another program", which it ends at a moment of its choice.

// The n-th content of a file that is saved again and again: `bytes` bytes, a multiple of 8.
std::string NthContent(int n, std::size_t bytes);

// Whether the content is one of those, whole.
bool IsWholeContent(std::string_view content, std::size_t bytes);

enum class Manner {
    Careful,  // as the program saves
    Naive,    // into the file itself, as a control
};

// Saves until it is ended. Calls `started` after the first save.
[[noreturn]] void SaveForEver(const std::string& path, std::size_t bytes, Manner manner,
                              void (*started)());

// Opens the file for itself alone for 60 of every 80 milliseconds, until it is ended. Calls
// `started` when it holds it for the first time.
[[noreturn]] void HoldForEver(const std::string& path, void (*started)());

}  // namespace tobbin
