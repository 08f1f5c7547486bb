#include "ui/WindowState.h"

#include <gtest/gtest.h>

#include "fakes/FakeEnvironment.h"

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

}  // namespace
}  // namespace tobbin
