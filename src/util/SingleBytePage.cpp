#include "util/SingleBytePage.h"

#include <algorithm>

#include "util/Text.h"
#include "util/Utf.h"

namespace tobbin {

SingleBytePage::SingleBytePage(const Table& characters) {
    for (std::size_t byte = 0; byte < characters.size(); ++byte) {
        AppendUtf8(m_utf8[byte], characters[byte]);
        m_characters[byte] = {characters[byte], static_cast<std::uint8_t>(byte)};
        m_keepsAscii = m_keepsAscii && (byte >= 0x80 || characters[byte] == byte);
    }
    std::sort(m_characters.begin(), m_characters.end());
}

std::string SingleBytePage::ToText(std::string_view bytes) const {
    if (m_keepsAscii && IsAscii(bytes))
        return std::string(bytes);
    std::string text;
    text.reserve(bytes.size() * 2);
    for (const char byte : bytes)
        text += m_utf8[static_cast<unsigned char>(byte)];
    return text;
}

std::optional<std::string> SingleBytePage::MaybeToBytes(std::string_view text) const {
    if (m_keepsAscii && IsAscii(text))
        return std::string(text);
    std::string bytes;
    bytes.reserve(text.size());
    while (!text.empty()) {
        char32_t character = 0;
        if (!TakeCodePoint(text, character) || character > 0xFFFF)
            return std::nullopt;
        const std::pair<char16_t, std::uint8_t> least(static_cast<char16_t>(character), 0);
        const auto* const found = std::lower_bound(m_characters.begin(), m_characters.end(), least);
        if (found == m_characters.end() || found->first != least.first)
            return std::nullopt;
        bytes.push_back(static_cast<char>(found->second));
    }
    return bytes;
}

}  // namespace tobbin
