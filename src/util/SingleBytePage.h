#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace tobbin {

// A code page in which every byte is one character, both ways by a table.
class SingleBytePage {
 public:
    // The character (a UTF-16 code unit) of each byte. Where two bytes share one, the smaller byte
    // stands for it.
    using Table = std::array<char16_t, 256>;
    explicit SingleBytePage(const Table& characters);

    std::string ToText(std::string_view bytes) const;

    // Nothing when the page lacks one of the characters.
    std::optional<std::string> MaybeToBytes(std::string_view text) const;

 private:
    std::array<std::string, 256> m_utf8;                              // by byte
    std::array<std::pair<char16_t, std::uint8_t>, 256> m_characters;  // sorted
    bool m_keepsAscii = true;
};

}  // namespace tobbin
