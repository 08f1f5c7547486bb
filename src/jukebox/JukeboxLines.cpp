#include "jukebox/JukeboxLines.h"

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
    for (const char c : text) {
        if (MustBeEscaped(c)) {
            const auto byte = static_cast<unsigned char>(c);
            file += {kEscape, kHexDigits[byte >> 4], kHexDigits[byte & 0xF]};
        } else {
            file += c;
        }
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
    text.reserve(field.size());
    for (std::size_t at = 0; at < field.size(); ++at) {
        char c = field[at];
        if (c == kEscape) {
            if (field.size() - at < 3)
                return std::nullopt;
            const std::size_t high = kHexDigits.find(field[++at]);
            const std::size_t low = kHexDigits.find(field[++at]);
            if (high == std::string_view::npos || low == std::string_view::npos)
                return std::nullopt;
            c = static_cast<char>(high << 4 | low);
            if (!MustBeEscaped(c))
                return std::nullopt;
        } else if (MustBeEscaped(c)) {
            return std::nullopt;
        }
        text += c;
    }
    return text;
}

}  // namespace tobbin
