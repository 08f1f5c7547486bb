#include "util/Text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "util/Utf.h"

namespace tobbin {
namespace {

char AsciiLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

std::string_view TrimBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

bool EqualsIgnoringAsciiCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return AsciiLower(x) == AsciiLower(y); });
}

bool EndsWithIgnoringAsciiCase(std::string_view text, std::string_view ending) {
    return text.size() >= ending.size() &&
           EqualsIgnoringAsciiCase(text.substr(text.size() - ending.size()), ending);
}

bool IsAscii(std::string_view text) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080U;
    std::uint64_t eight = 0;
    for (; text.size() >= sizeof(eight); text.remove_prefix(sizeof(eight))) {
        std::memcpy(&eight, text.data(), sizeof(eight));
        if ((eight & kHighBits) != 0)
            return false;
    }
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::vector<std::string_view> SplitLines(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        lines.push_back(text.substr(0, end));
        const bool pair = text.substr(end).starts_with("\r\n");
        text.remove_prefix(std::min(end + (pair ? 2 : 1), text.size()));
    }
    return lines;
}

bool MatchesPattern(std::string_view text, std::string_view pattern) {
    // The usual walk with one way back: to the last "*", which then takes one character more.
    std::string_view afterStar;
    std::string_view starText;
    bool sawStar = false;
    while (true) {
        if (pattern.starts_with('*')) {
            pattern.remove_prefix(1);
            afterStar = pattern;
            starText = text;
            sawStar = true;
        } else if (text.empty() && pattern.empty()) {
            return true;
        } else if (!text.empty() && pattern.starts_with('?')) {
            char32_t ignored = 0;
            TakeCodePoint(text, ignored);
            pattern.remove_prefix(1);
        } else if (!text.empty() && !pattern.empty() && text.front() == pattern.front()) {
            text.remove_prefix(1);
            pattern.remove_prefix(1);
        } else if (sawStar && !starText.empty()) {
            char32_t ignored = 0;
            TakeCodePoint(starText, ignored);
            text = starText;
            pattern = afterStar;
        } else {
            return false;
        }
    }
}

std::string GroupedNumber(std::size_t number) {
    std::string digits = std::to_string(number);
    for (std::size_t left = digits.size(); left > 3; left -= 3)
        digits.insert(left - 3, 1, ',');
    return digits;
}

std::string Counted(std::size_t number, std::string_view noun) {
    return GroupedNumber(number) + " " + std::string(noun) + (number == 1 ? "" : "s");
}

std::string Sentences(std::initializer_list<std::string_view> sentences) {
    std::string text;
    for (const std::string_view sentence : sentences)
        if (!sentence.empty())
            text += (text.empty() ? "" : "  ") + std::string(sentence);
    return text;
}

std::string TimeText(std::int64_t milliseconds) {
    if (milliseconds < 0)
        return "--:--";
    const auto twoDigits = [](std::int64_t number) {
        return (number < 10 ? "0" : "") + std::to_string(number);
    };
    return twoDigits(milliseconds / 60'000) + ":" + twoDigits(milliseconds / 1000 % 60);
}

std::string FolderOfPath(std::string_view path) {
    path = TrimBlanks(path);
    return std::string(path.substr(0, path.rfind('\\') + 1));
}

std::string FileNameOfPath(std::string_view path) {
    return std::string(path.substr(path.rfind('\\') + 1));
}

std::string RootOfPath(std::string_view path) {
    if (path.starts_with("\\\\")) {
        const std::size_t server = path.find('\\', 2);
        const std::size_t share =
            server == std::string_view::npos ? server : path.find('\\', server + 1);
        if (server == 2 || share == std::string_view::npos || share == server + 1)
            return {};
        return std::string(path.substr(0, share + 1));
    }
    const char letter = path.empty() ? '\0' : AsciiLower(path.front());
    if (letter < 'a' || letter > 'z' || !path.substr(1).starts_with(":\\"))
        return {};
    return {static_cast<char>(letter - 'a' + 'A'), ':', '\\'};
}

std::string FolderWithSeparator(std::string_view folder) {
    std::string result(folder);
    if (!result.ends_with('\\'))
        result.push_back('\\');
    return result;
}

}  // namespace tobbin
