#include "ui/WindowState.h"

#include <gtest/gtest.h>

#include <cctype>
#include <set>
#include <sstream>
#include <string>

#include "fakes/FakeEnvironment.h"
#include "ui/Commands.h"
#include "ui/PaneLayout.h"

namespace tobbin {
namespace {

TEST(WindowStates, AreKeptUnderTheWindowsName) {
    FakeUserSettings settings;
    WindowStates states(settings);
    EXPECT_FALSE(states.MaybeOf("MIX"));
    const WindowState state{{-10, 20, 800, 600}, true, 144, 230, {400, 72}};
    states.Keep("MIX", state);
    EXPECT_EQ(settings.values["Window MIX"], "-10 20 800 600 1 144 230 400 72");
    EXPECT_EQ(states.MaybeOf("MIX"), state);
    for (const char* text : {"", "1 2 3", "1 2 3 4 5 x 7", "1 2 3 4 0 0 7", "1 2 99999 4 0 96 7"})
        EXPECT_FALSE(MaybeState(text)) << text;
}

TEST(UsablePlace, BringsALostWindowBack) {
    const std::vector<Area> screens = {{0, 0, 1920, 1040}, {1920, 0, 1280, 1024}};
    const auto usable = [&](Area place, int dpi = 96) {
        WindowState state;
        state.place = place;
        return UsablePlace(state, screens, dpi);
    };
    EXPECT_EQ(usable({2000, 50, 800, 600}), (Area{2000, 50, 800, 600}));
    EXPECT_EQ(usable({-780, 50, 800, 600}), (Area{560, 220, 800, 600}));  // 20 pixels to be seen
    EXPECT_EQ(usable({100, -5, 800, 600}), (Area{560, 220, 800, 600}));   // its caption above
    EXPECT_EQ(usable({5000, 50, 3000, 2000}), (Area{0, 0, 1920, 1040}));
    EXPECT_EQ(usable({100, 50, 800, 600}, 192), (Area{100, 0, 1600, 1040}));
    EXPECT_EQ(usable({800, 50, 800, 600}, 144), (Area{720, 50, 1200, 900}));
    EXPECT_EQ(usable({100, 50, 1, 1}), (Area{100, 50, 320, 200}));
}

TEST(ResizeControl, FollowsTheWindowOnlyAbove600Twips) {
    const ControlSize old{5000, 4000};
    EXPECT_EQ(ResizeControl(old, 9000, 6000), (ControlSize{9039, 5622}));
    EXPECT_EQ(ResizeControl(old, 601, 601), (ControlSize{640, 223}));
    EXPECT_EQ(ResizeControl(old, 600, 6000), (ControlSize{5000, 5622}));
    EXPECT_EQ(ResizeControl(old, 9000, 600), (ControlSize{9039, 4000}));
}

TEST(SharePanes, KeepsBothPanesOfAUsableWidth) {
    EXPECT_EQ(SharePanes(805, 200, 5, 60), (PaneWidths{200, 5, 600}));
    EXPECT_EQ(SharePanes(805, -40, 5, 60), (PaneWidths{60, 5, 740}));
    EXPECT_EQ(SharePanes(805, 5000, 5, 60), (PaneWidths{740, 5, 60}));
    EXPECT_EQ(SharePanes(85, 70, 5, 60), (PaneWidths{40, 5, 40}));
    EXPECT_EQ(SharePanes(3, 70, 5, 60), (PaneWidths{0, 3, 0}));
}

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
