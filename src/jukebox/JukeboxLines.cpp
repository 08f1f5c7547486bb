#include "jukebox/JukeboxLines.h"

#include <array>
#include <charconv>

#include "util/LaneSum.h"
#include "util/Words.h"

namespace tobbin {
namespace {

constexpr std::string_view kHexDigits = "0123456789abcdef";
constexpr char kEscape = '|';

bool MustBeEscaped(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < 0x20 || byte == 0x7F || c == kEscape;
}

// Takes a number of up to nine digits and the character behind it.
bool TakeNumber(const char*& at, char behind, std::int32_t& number) {
    const auto digitAt = [](const char* place) {
        return static_cast<std::uint32_t>(static_cast<unsigned char>(*place)) - '0';
    };
    constexpr int kMostDigits = 9;
    std::uint32_t value = 0;
    const char* const start = at;
    for (std::uint32_t digit = 0; (digit = digitAt(at)) <= 9; ++at) {
        if (at - start == kMostDigits)
            return false;
        value = value * 10 + digit;
    }
    number = static_cast<std::int32_t>(value);
    return at != start && *at++ == behind;
}

// Lines so near to the end are left to Next, so that no number need ask where the end is: the last
// line is longer than the five numbers of any other.
constexpr std::size_t kNearEnd = 64;

}  // namespace

std::size_t PlainLength(std::string_view text) {
    std::size_t at = 0;
    for (; at + sizeof(std::uint64_t) <= text.size(); at += sizeof(std::uint64_t)) {
        const std::uint64_t word = WordAt(text.data() + at);
        const std::uint64_t marks =
            MarkBelow(word, 0x20) | MarkEqual(word, 0x7F) | MarkEqual(word, kEscape);
        if (marks != 0)
            return at + FirstMarked(marks);
    }
    while (at < text.size() && !MustBeEscaped(text[at]))
        ++at;
    return at;
}

char* PutField(char* at, std::string_view text) {
    *at++ = '\t';
    while (true) {
        const std::size_t plain = PlainLength(text);
        at += text.copy(at, plain);
        if (plain == text.size())
            return at;
        const auto byte = static_cast<unsigned char>(text[plain]);
        *at++ = kEscape;
        *at++ = kHexDigits[byte >> 4];
        *at++ = kHexDigits[byte & 0xF];
        text.remove_prefix(plain + 1);
    }
}

char* PutField(char* at, std::int64_t number) {
    *at++ = '\t';
    if (number >= 0 && number <= 9) {
        *at++ = static_cast<char>('0' + number);
        return at;
    }
    return std::to_chars(at, at + kLongestNumber - 1, number).ptr;
}

std::string JukeboxEndLine(std::size_t lines, std::string_view before) {
    std::string line = "end\t" + std::to_string(lines) + '\t';
    const std::uint64_t sum = LaneSum(before);
    for (int shift = 60; shift >= 0; shift -= 4)
        line += kHexDigits[sum >> shift & 0xF];
    return line;
}

std::optional<std::string> MaybeUnescape(std::string_view field) {
    std::string text;
    text.reserve(field.size());
    while (true) {
        const std::size_t plain = PlainLength(field);
        text += field.substr(0, plain);
        field.remove_prefix(plain);
        if (field.empty())
            return text;
        if (field[0] != kEscape || field.size() < 3)
            return std::nullopt;
        const std::size_t high = kHexDigits.find(field[1]);
        const std::size_t low = kHexDigits.find(field[2]);
        if (high == std::string_view::npos || low == std::string_view::npos)
            return std::nullopt;
        const auto c = static_cast<char>(high << 4 | low);
        if (!MustBeEscaped(c))
            return std::nullopt;
        text += c;
        field.remove_prefix(3);
    }
}

bool JukeboxLines::TakeSong(SongLine& song) {
    if (m_left.size() < kNearEnd || !m_left.starts_with("song\t"))
        return false;
    const char* at = m_left.data() + 5;
    return TakeNumber(at, '\t', song.number) && TakeNumber(at, '\t', song.image) &&
           TakeNumber(at, '\t', song.selectedImage) && TakeNumber(at, '\t', song.place) &&
           TakeText(at, song.fileName);
}

bool JukeboxLines::TakeAgain(AgainLine& again) {
    if (m_left.size() < kNearEnd || !m_left.starts_with("again\t"))
        return false;
    const char* at = m_left.data() + 6;
    if (!TakeNumber(at, '\t', again.song) || !TakeNumber(at, '\t', again.image) ||
        !TakeNumber(at, '\r', again.selectedImage) || *at != '\n')
        return false;
    Pass(static_cast<std::size_t>(at + 1 - m_left.data()));
    return true;
}

bool JukeboxLines::TakePlace(std::string_view& place) {
    return m_left.size() >= kNearEnd && m_left.starts_with("place\t") &&
           TakeText(m_left.data() + 6, place);
}

// The rest of the line as one field.
bool JukeboxLines::TakeText(const char* at, std::string_view& text) {
    const std::string_view rest = m_left.substr(static_cast<std::size_t>(at - m_left.data()));
    const std::size_t length = PlainLength(rest);
    if (!rest.substr(length).starts_with(kLineEnd))
        return false;
    text = rest.substr(0, length);
    Pass(static_cast<std::size_t>(at - m_left.data()) + length + kLineEnd.size());
    return true;
}

void JukeboxLines::Pass(std::size_t bytes) {
    ++m_number;
    m_nextOffset += bytes;
    m_left.remove_prefix(bytes);
}

bool JukeboxLines::Next() {
    m_offset = m_nextOffset;
    const std::size_t end = m_left.find(kLineEnd);
    m_isCutShort = end == std::string_view::npos && !m_left.empty();
    if (end == std::string_view::npos) {
        m_number += m_isCutShort ? 1 : 0;
        return false;
    }
    m_line = m_left.substr(0, end);
    Pass(end + kLineEnd.size());
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
