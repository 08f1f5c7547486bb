#include "jukebox/JukeboxLines.h"

#include <array>
#include <charconv>

#include "util/Crc32.h"

namespace tobbin {
namespace {

constexpr std::string_view kHexDigits = "0123456789abcdef";

bool MustBeEscaped(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7F || c == '\\';
}

}  // namespace

void AppendField(std::string& line, std::string_view text) {
    line += '\t';
    for (const char c : text) {
        if (MustBeEscaped(c)) {
            const auto byte = static_cast<unsigned char>(c);
            line += {'\\', kHexDigits[byte >> 4], kHexDigits[byte & 0xF]};
        } else {
            line += c;
        }
    }
}

void AppendField(std::string& line, std::int64_t number) {
    std::array<char, 24> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    line += '\t';
    line.append(digits.data(), end);
}

std::string JukeboxEndLine(std::size_t lines, std::string_view before) {
    std::string line = "end";
    AppendField(line, static_cast<std::int64_t>(lines));
    line += '\t';
    const std::uint32_t sum = Crc32(before);
    for (int shift = 28; shift >= 0; shift -= 4)
        line += kHexDigits[sum >> shift & 0xF];
    return line;
}

std::optional<std::string> MaybeUnescape(std::string_view field) {
    std::string text;
    text.reserve(field.size());
    for (std::size_t i = 0; i < field.size(); ++i) {
        if (field[i] != '\\') {
            if (MustBeEscaped(field[i]))
                return std::nullopt;
            text += field[i];
            continue;
        }
        if (i + 2 >= field.size())
            return std::nullopt;
        const std::size_t high = kHexDigits.find(field[i + 1]);
        const std::size_t low = kHexDigits.find(field[i + 2]);
        if (high == std::string_view::npos || low == std::string_view::npos)
            return std::nullopt;
        const auto c = static_cast<char>(high << 4 | low);
        if (!MustBeEscaped(c))
            return std::nullopt;
        text += c;
        i += 2;
    }
    return text;
}

bool JukeboxLines::Next() {
    m_offset = m_nextOffset;
    const std::size_t end = m_left.find(kLineEnd);
    m_isCutShort = end == std::string_view::npos && !m_left.empty();
    if (end == std::string_view::npos) {
        m_number += m_isCutShort ? 1 : 0;
        return false;
    }
    ++m_number;
    m_line = m_left.substr(0, end);
    m_left.remove_prefix(end + kLineEnd.size());
    m_nextOffset += end + kLineEnd.size();
    m_fields.clear();
    for (std::string_view rest = m_line;;) {
        const std::size_t tab = rest.find('\t');
        m_fields.push_back(rest.substr(0, tab));
        if (tab == std::string_view::npos)
            return true;
        rest.remove_prefix(tab + 1);
    }
}

std::optional<std::int32_t> JukeboxLines::MaybeNumber(std::size_t index, std::int32_t least,
                                                      std::int32_t most) const {
    if (index >= m_fields.size())
        return std::nullopt;
    const std::string_view field = m_fields[index];
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), number);
    if (error != std::errc() || end != field.data() + field.size() || number < least ||
        number > most)
        return std::nullopt;
    return number;
}

}  // namespace tobbin
