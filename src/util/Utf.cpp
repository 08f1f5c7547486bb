#include "util/Utf.h"

#include <cstddef>

namespace tobbin {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

constexpr bool IsHighSurrogate(char32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
constexpr bool IsLowSurrogate(char32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

}  // namespace

void AppendUtf8(std::string& text, char32_t codePoint) {
    const auto put = [&text](char32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (codePoint < 0x80) {
        put(codePoint);
    } else if (codePoint < 0x800) {
        put(0xC0 | codePoint >> 6);
        put(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        put(0xE0 | codePoint >> 12);
        put(0x80 | (codePoint >> 6 & 0x3F));
        put(0x80 | (codePoint & 0x3F));
    } else {
        put(0xF0 | codePoint >> 18);
        put(0x80 | (codePoint >> 12 & 0x3F));
        put(0x80 | (codePoint >> 6 & 0x3F));
        put(0x80 | (codePoint & 0x3F));
    }
}

bool TakeCodePoint(std::string_view& text, char32_t& codePoint) {
    const auto byteAt = [&text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned lead = byteAt(0);
    std::size_t length = 1;
    char32_t least = 0;
    if (lead < 0x80) {
        codePoint = lead;
    } else if (lead >= 0xC2 && lead < 0xE0) {
        length = 2;
        codePoint = lead & 0x1F;
        least = 0x80;
    } else if (lead >= 0xE0 && lead < 0xF0) {
        length = 3;
        codePoint = lead & 0x0F;
        least = 0x800;
    } else if (lead >= 0xF0 && lead < 0xF5) {
        length = 4;
        codePoint = lead & 0x07;
        least = 0x10000;
    } else {
        text.remove_prefix(1);
        return false;
    }
    bool good = text.size() >= length;
    for (std::size_t i = 1; good && i < length; ++i) {
        good = (byteAt(i) & 0xC0) == 0x80;
        codePoint = codePoint << 6 | (byteAt(i) & 0x3F);
    }
    good = good && codePoint >= least && codePoint <= 0x10FFFF;
    text.remove_prefix(good ? length : 1);
    return good;
}

std::string Utf16ToUtf8(std::u16string_view units) {
    std::string text;
    text.reserve(units.size());
    for (std::size_t i = 0; i < units.size(); ++i) {
        char32_t codePoint = units[i];
        if (IsHighSurrogate(codePoint) && i + 1 < units.size() && IsLowSurrogate(units[i + 1])) {
            codePoint = 0x10000 + ((codePoint - 0xD800) << 10) + (units[i + 1] - 0xDC00U);
            ++i;
        }
        AppendUtf8(text, codePoint);
    }
    return text;
}

std::u16string Utf8ToUtf16(std::string_view text) {
    std::u16string units;
    units.reserve(text.size());
    while (!text.empty()) {
        char32_t codePoint = 0;
        if (!TakeCodePoint(text, codePoint))
            codePoint = kReplacement;
        if (codePoint < 0x10000) {
            units.push_back(static_cast<char16_t>(codePoint));
        } else {
            units.push_back(static_cast<char16_t>(0xD800 + ((codePoint - 0x10000) >> 10)));
            units.push_back(static_cast<char16_t>(0xDC00 + ((codePoint - 0x10000) & 0x3FF)));
        }
    }
    return units;
}

bool IsGeneralisedUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        char32_t codePoint = 0;
        if (!TakeCodePoint(bytes, codePoint))
            return false;
    }
    return true;
}

}  // namespace tobbin
