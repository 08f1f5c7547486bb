#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tobbin {

// The lines of a jukebox file: fields with a tab between them, ended by CR LF. In a field a control
// character, "|" and DEL stand as "|" and two hexadecimal digits, so that any text fits in. No file
// name can hold one of them, so nearly every text stands as it is.

// The first line is these words and the version.
inline constexpr std::string_view kJukeboxFirstWords = "Tobbin jukebox ";
inline constexpr std::string_view kLineEnd = "\r\n";

// Writes a tab and the field, and returns the place behind it. A text takes up to LongestField
// bytes, a number kLongestNumber.
char* PutField(char* at, std::string_view text);
char* PutField(char* at, std::int64_t number);
constexpr std::size_t LongestField(std::string_view text) {
    return 1 + 3 * text.size();
}
inline constexpr std::size_t kLongestNumber = 24;

// The line that ends a file of `lines` lines before it, which are the bytes `before`.
std::string JukeboxEndLine(std::size_t lines, std::string_view before);

// How many bytes at the front of a text stand in a field as they are.
std::size_t PlainLength(std::string_view text);

// The text of a field; nothing when it holds an escape that the writer would not make.
std::optional<std::string> MaybeUnescape(std::string_view field);

// Lines of the kinds that a file is full of, with numbers that are not negative.
struct SongLine {
    std::int32_t number = 0;
    std::int32_t image = 0;
    std::int32_t selectedImage = 0;
    std::int32_t place = 0;
    std::string_view fileName;
};
struct AgainLine {
    std::int32_t song = 0;
    std::int32_t image = 0;
    std::int32_t selectedImage = 0;
};

// Hands out the lines of a file and their fields.
class JukeboxLines {
 public:
    explicit JukeboxLines(std::string_view bytes) : m_left(bytes) {}

    // Go to the next line, if it is one of that kind with nothing out of the ordinary in it: no
    // escape, no sign, no text of the song's own, no number of over nine digits. Next takes any
    // line, these do it in a tenth of the time.
    bool TakeSong(SongLine& song);
    bool TakeAgain(AgainLine& again);
    bool TakePlace(std::string_view& place);

    // Goes to the next line. False at the end, and at a line without its CR LF.
    bool Next();
    bool IsCutShort() const { return m_isCutShort; }
    std::size_t Number() const { return m_number; }  // of the line, from 1
    std::string_view Line() const { return m_line; }
    std::size_t Offset() const { return m_offset; }  // of the line, in bytes
    const std::vector<std::string_view>& Fields() const { return m_fields; }

    // Field `index` (from 0) as a plain decimal number from `least` to `most`.
    std::optional<std::int32_t> MaybeNumber(std::size_t index, std::int32_t least,
                                            std::int32_t most) const;

 private:
    bool TakeText(const char* at, std::string_view& text);
    void Pass(std::size_t bytes);

    std::string_view m_left;
    std::string_view m_line;
    std::vector<std::string_view> m_fields;
    std::size_t m_number = 0;
    std::size_t m_offset = 0;
    std::size_t m_nextOffset = 0;
    bool m_isCutShort = false;
};

}  // namespace tobbin
