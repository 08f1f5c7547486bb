#include "util/ShownText.h"

#include "util/Utf.h"

namespace tobbin {
namespace {

bool IsHidden(char32_t c, ShownIn place) {
    if (place == ShownIn::Box && (c == '\n' || c == '\r' || c == '\t'))
        return false;
    return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x061C || c == 0x200E || c == 0x200F ||
           (c >= 0x2028 && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
}

}  // namespace

std::string ShownText(std::string_view text, ShownIn place) {
    std::string shown;
    shown.reserve(text.size());
    while (!text.empty()) {
        const std::string_view before = text;
        char32_t c = 0;
        if (!TakeCodePoint(text, c) || !IsHidden(c, place))
            shown += before.substr(0, before.size() - text.size());
    }
    return shown;
}

}  // namespace tobbin
