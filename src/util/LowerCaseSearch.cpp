#include "util/LowerCaseSearch.h"

namespace tobbin {

std::string_view LowerCaseSearch::Lower(std::string_view text) {
    constexpr unsigned char kBeyondAscii = 0x80;
    constexpr unsigned char kLetters = 26;
    if (m_lower.size() < text.size())
        m_lower.resize(text.size());
    char* const lower = m_lower.data();
    unsigned char all = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        const bool capital = static_cast<unsigned char>(c - 'A') < kLetters;
        all |= c;
        lower[i] = static_cast<char>(capital ? c + ('a' - 'A') : c);
    }
    if ((all & kBeyondAscii) == 0)
        return {lower, text.size()};
    m_lower = m_text.ToLower(text);
    return m_lower;
}

}  // namespace tobbin
