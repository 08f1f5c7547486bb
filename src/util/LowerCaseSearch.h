#pragma once

#include <string>
#include <string_view>

#include "util/SystemText.h"

namespace tobbin {

// Looks for one text in many others, all lower-cased by the system's rules. Plain ASCII is
// lower-cased here, which takes a small part of the time.
class LowerCaseSearch {
 public:
    LowerCaseSearch(const SystemText& text, std::string_view wanted)
        : m_text(text), m_wanted(text.ToLower(wanted)) {}

    const std::string& Wanted() const { return m_wanted; }  // lower-cased
    bool IsIn(std::string_view text) { return Lower(text).find(m_wanted) != text.npos; }
    bool Begins(std::string_view text) { return Lower(text).starts_with(m_wanted); }

 private:
    std::string_view Lower(std::string_view text);

    const SystemText& m_text;
    std::string m_wanted;
    std::string m_lower;
};

}  // namespace tobbin
