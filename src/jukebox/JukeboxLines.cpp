#include "jukebox/JukeboxLines.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "util/Crc32c.h"

namespace tobbin {
namespace {

constexpr std::string_view kHexDigits = "0123456789abcdef";
constexpr char kEscape = '|';

bool MustBeEscaped(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7F || c == kEscape;
}

}  // namespace

void PutField(std::string& file, std::string_view text) {
    file += '\t';
    for (auto at = text.begin();;) {
        const auto plainEnd = std::find_if(at, text.end(), MustBeEscaped);
        file.append(at, plainEnd);
        if (plainEnd == text.end())
            return;
        const auto byte = static_cast<unsigned char>(*plainEnd);
        file += {kEscape, kHexDigits[byte >> 4], kHexDigits[byte & 0xF]};
        at = plainEnd + 1;
    }
}

void PutField(std::string& file, std::int64_t number) {
    std::array<char, 24> digits{};
    file += '\t';
    file.append(digits.data(),
                std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr);
}

std::string JukeboxEndLine(std::size_t lines, std::string_view before) {
    std::string line = "end\t" + std::to_string(lines) + '\t';
    const std::uint32_t sum = Crc32c(before);
    for (int shift = 28; shift >= 0; shift -= 4)
        line += kHexDigits[sum >> shift & 0xF];
    return line;
}

bool JukeboxLines::Next() {
    m_offset = m_nextOffset;
    const std::size_t end = m_bytes.find(kLineEnd, m_offset);
    m_isCutShort = end == std::string_view::npos && m_offset < m_bytes.size();
    m_number += end != std::string_view::npos || m_isCutShort ? 1 : 0;
    if (end == std::string_view::npos)
        return false;
    m_line = m_bytes.substr(m_offset, end - m_offset);
    m_nextOffset = end + kLineEnd.size();
    m_fields.clear();
    std::string_view rest = m_line;
    for (std::size_t tab = 0; (tab = rest.find('\t')) != std::string_view::npos;) {
        m_fields.push_back(rest.substr(0, tab));
        rest.remove_prefix(tab + 1);
    }
    m_fields.push_back(rest);
    return true;
}

std::optional<std::int32_t> JukeboxLines::MaybeNumber(std::size_t index, std::int32_t least,
                                                      std::int32_t most) const {
    const std::string_view field = m_fields[index];
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), number);
    if (error != std::errc() || end != field.data() + field.size() || number < least ||
        number > most)
        return std::nullopt;
    return number;
}

std::optional<std::string> JukeboxLines::MaybeText(std::size_t index) const {
    const std::string_view field = m_fields[index];
    std::string text;
    for (auto at = field.begin();;) {
        const auto plainEnd = std::find_if(at, field.end(), MustBeEscaped);
        text.append(at, plainEnd);
        if (plainEnd == field.end())
            return text;
        if (*plainEnd != kEscape || field.end() - plainEnd < 3)
            return std::nullopt;
        const std::size_t high = kHexDigits.find(plainEnd[1]);
        const std::size_t low = kHexDigits.find(plainEnd[2]);
        if (high == std::string_view::npos || low == std::string_view::npos)
            return std::nullopt;
        const auto c = static_cast<char>(high << 4 | low);
        if (!MustBeEscaped(c))
            return std::nullopt;
        text += c;
        at = plainEnd + 3;
    }
}

}  // namespace tobbin
