#include "tags/Id3v2Text.h"

#include <algorithm>
#include <cstdint>
#include <optional>

#include "tags/MP3TagEditor.h"
#include "util/Text.h"
#include "util/Utf.h"

namespace tobbin {
namespace {

enum Encoding : unsigned char { kLatin1, kUtf16, kUtf16BigEndian, kUtf8 };

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";  // in UTF-8

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Without a mark the first character tells: it is a letter of ours more often than not, and the
// byte above it 0. Otherwise the order is that of the systems on which the mark is forgotten.
bool IsBigEndian(std::string_view bytes, unsigned char encoding) {
    if (bytes.starts_with("\xFF\xFE"))
        return false;
    return encoding == kUtf16BigEndian || bytes.starts_with("\xFE\xFF") || bytes[0] == '\0';
}

std::string FromUtf16(std::string_view bytes, unsigned char encoding) {
    std::u16string units;
    if (bytes.size() < 2)
        return {};
    const std::size_t high = IsBigEndian(bytes, encoding) ? 0 : 1;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        units.push_back(static_cast<char16_t>(static_cast<unsigned char>(bytes[i + high]) << 8 |
                                              static_cast<unsigned char>(bytes[i + 1 - high])));
    return Utf16ToUtf8(units);
}

std::optional<std::string> MaybeDecode(std::string_view content, const SystemText& text) {
    if (content.empty())
        return std::nullopt;
    const auto encoding = static_cast<unsigned char>(content[0]);
    content.remove_prefix(1);
    switch (encoding) {
        case kLatin1:
            return text.FromAnsi(content);
        case kUtf16:
        case kUtf16BigEndian:
            return FromUtf16(content, encoding);
        case kUtf8:
            return IsGeneralisedUtf8(content) ? std::string(content) : text.FromAnsi(content);
        default:
            return std::nullopt;
    }
}

// The name of a genre that is called by its number or one of two abbreviations; empty when it is
// not one of them.
std::string GenreCalled(std::string_view code) {
    if (code == "RX")
        return "Remix";
    if (code == "CR")
        return "Cover";
    if (code.empty() || code.size() > 3 || !std::ranges::all_of(code, IsDigit))
        return {};
    const auto id = static_cast<std::int16_t>(std::stoi(std::string(code)));
    return id == MP3TagEditor::kNoGenra ? "" : MP3TagEditor::GenraLookupByID(id);
}

std::string GenreNamed(std::string_view text) {
    // "(51)(39)Text": numbers in front of a text that says the same or more.
    while (text.starts_with('(') && !text.starts_with("((")) {
        const std::size_t end = text.find(')');
        if (end == std::string_view::npos)
            break;
        const std::string_view code = text.substr(1, end - 1);
        if (std::string name = GenreCalled(code); !name.empty())
            return name;
        if (!std::ranges::all_of(code, IsDigit))
            break;
        text.remove_prefix(end + 1);
    }
    if (text.starts_with("(("))  // a text that itself begins with a bracket
        text.remove_prefix(1);
    text = TrimBlanks(text);
    if (std::string name = GenreCalled(text); !name.empty())
        return name;
    const bool isUnknownNumber = text.size() <= 3 && std::ranges::all_of(text, IsDigit);
    const MP3Genra* const known = GenraCollection::MaybeByName(text);
    return isUnknownNumber ? "" : known != nullptr ? known->Name() : std::string(text);
}

}  // namespace

std::vector<std::string> Id3v2Texts(std::string_view content, const SystemText& text) {
    std::vector<std::string> texts;
    const std::string decoded = MaybeDecode(content, text).value_or("");
    for (std::string_view rest = decoded; !rest.empty();) {
        std::string_view value = rest.substr(0, rest.find('\0'));
        rest.remove_prefix(std::min(value.size() + 1, rest.size()));
        if (value.starts_with(kByteOrderMark))
            value.remove_prefix(kByteOrderMark.size());
        texts.emplace_back(TrimBlanks(value));
    }
    return texts;
}

std::string Id3v2Year(std::string_view text) {
    std::size_t digits = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        digits = IsDigit(text[i]) ? digits + 1 : 0;
        if (digits == 4)
            return std::string(text.substr(i - 3, 4));
    }
    return {};
}

std::string Id3v2Genre(const std::vector<std::string>& texts) {
    for (const std::string& text : texts)
        if (std::string name = GenreNamed(text); !name.empty())
            return name;
    return {};
}

}  // namespace tobbin
