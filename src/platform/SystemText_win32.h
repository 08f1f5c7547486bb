#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "util/SingleBytePage.h"
#include "util/SystemText.h"

namespace tobbin {

// The system's ANSI code page and its rules for letter case.
class WindowsText : public SystemText {
 public:
    // The number of the page to use: 1252 where the system's is UTF-8, since the data files and
    // the tags are made of single-byte characters there too.
    static unsigned SystemPage();

    explicit WindowsText(unsigned codePage = SystemPage());

    std::string FromAnsi(std::string_view bytes) const override;
    std::optional<std::string> MaybeToAnsi(std::string_view text) const override;
    std::optional<std::string> MaybeToSystemPage(std::string_view text) const override;
    std::string ToLower(std::string_view text) const override;
    std::string ToUpper(std::string_view text) const override;

 private:
    unsigned m_codePage;
    std::optional<SingleBytePage> m_table;  // nothing for a page with characters of several bytes
};

}  // namespace tobbin
