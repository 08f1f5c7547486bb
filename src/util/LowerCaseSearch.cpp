#include "util/LowerCaseSearch.h"

namespace tobbin {

const std::string& LowerCaseSearch::Lower(std::string_view text) {
    constexpr unsigned char kBeyondAscii = 0x80;
    constexpr unsigned char kLetters = 26;
    m_lower.resize(text.size());
    unsigned char all = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        const bool capital = static_cast<unsigned char>(c - 'A') < kLetters;
        all |= c;
        m_lower[i] = static_cast<char>(capital ? c + ('a' - 'A') : c);
    }
    if ((all & kBeyondAscii) != 0)
        m_lower = m_text.ToLower(text);
    return m_lower;
}

}  // namespace tobbin
