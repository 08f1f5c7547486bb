#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tobbin {

// The lines of a jukebox file: fields with a tab between them, ended by CR LF. In a field a control
// character, "|" and DEL stand as "|" and two hexadecimal digits, so that any text fits in.

// The first line is these words and the version.
inline constexpr std::string_view kJukeboxFirstWords = "Tobbin jukebox ";
inline constexpr std::string_view kLineEnd = "\r\n";

// Appends a tab and the field.
void PutField(std::string& file, std::string_view text);
void PutField(std::string& file, std::int64_t number);

// The line that ends a file of `lines` lines before it, which are the bytes `before`.
std::string JukeboxEndLine(std::size_t lines, std::string_view before);

// Hands out the lines of a file and their fields.
class JukeboxLines {
 public:
    explicit JukeboxLines(std::string_view bytes) : m_bytes(bytes) {}

    // Goes to the next line. False at the end, and at a line without its CR LF.
    bool Next();
    bool IsCutShort() const { return m_isCutShort; }
    std::size_t Number() const { return m_number; }  // of the line, from 1
    std::string_view Line() const { return m_line; }
    std::size_t Offset() const { return m_offset; }  // of the line, in bytes

    // The fields, the line's kind included, and field `index` (from 0) as a plain decimal number
    // from `least` to `most`, or as a text; nothing when it is none that the writer would write.
    std::size_t FieldCount() const { return m_fields.size(); }
    std::string_view Kind() const { return m_fields.front(); }
    std::optional<std::int32_t> MaybeNumber(std::size_t index, std::int32_t least,
                                            std::int32_t most) const;
    std::optional<std::string> MaybeText(std::size_t index) const;

 private:
    std::string_view m_bytes;
    std::string_view m_line;
    std::vector<std::string_view> m_fields;
    std::size_t m_number = 0;
    std::size_t m_offset = 0;
    std::size_t m_nextOffset = 0;
    bool m_isCutShort = false;
};

}  // namespace tobbin
