#pragma once

#include <string>
#include <string_view>

namespace tobbin {

// A text from a file or a tag as it may be shown: without control characters and those that turn
// the direction of what follows, by which a name could pass for another one ("gpj.exe" for
// "exe.jpg"). In a box lines are kept, which end with LF or CR LF, and tabs.
enum class ShownIn { Line, Box };
std::string ShownText(std::string_view text, ShownIn place = ShownIn::Line);

}  // namespace tobbin
