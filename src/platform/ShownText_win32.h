#pragma once

#include <string>
#include <string_view>

#include "platform/Wide_win32.h"
#include "util/ShownText.h"

namespace tobbin {

// A text for a control: ShownText in UTF-16. Whatever may hold a name from a file goes through it.
inline std::wstring WideShown(std::string_view text, ShownIn place = ShownIn::Line) {
    return Wide(ShownText(text, place));
}

}  // namespace tobbin
