#include "ui/Commands.h"

#include <gtest/gtest.h>

#include <cctype>
#include <set>
#include <sstream>
#include <string>

namespace tobbin {
namespace {

// What two commands claim: the same number, key or button, or in one menu the same position or
// access key.
TEST(Commands, DoNotClaimTheSame) {
    std::set<std::string> claims;
    std::string twice;
    const auto claim = [&](const std::string& what) {
        if (!claims.insert(what).second)
            twice += what + "\n";
    };
    for (const CommandRow& row : kCommands) {
        claim("number " + std::to_string(static_cast<int>(row.command)));
        if (row.button.index > 0)
            claim("button " + std::to_string(row.button.index));
        std::istringstream keys(row.keys);
        for (std::string key; keys >> key;)
            claim(key);
        for (const MenuPlace& place : row.places) {
            if (place.menu == Menu::None)
                continue;
            const std::string menu = "menu " + std::to_string(static_cast<int>(place.menu)) + ": ";
            claim(menu + std::to_string(place.position));
            const std::string caption = place.caption;
            if (const std::size_t mark = caption.find('&'); mark != std::string::npos)
                claim(menu + static_cast<char>(std::tolower(caption[mark + 1])));
        }
    }
    // "Bring In" and "Previous Track" share their letter, which goes from one to the other.
    EXPECT_EQ(twice, "menu 2: r\n");
}

}  // namespace
}  // namespace tobbin
