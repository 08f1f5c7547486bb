#include "shell/Tips.h"

#include <gtest/gtest.h>

#include "fakes/FakeEnvironment.h"

namespace tobbin {
namespace {

class TipsTest : public testing::Test, protected TipView {
 protected:
    FakeEnvironment fake;
    Tips tips{fake.environment, "C:\\App\\"};
    std::string text = "designed";
    bool ticked = false;

    void ShowTip(const std::string& tip) override { text = tip; }
    void TickTipsAtStartUp(bool value) override { ticked = value; }
};

TEST_F(TipsTest, ShowsARandomLineTheLastOneToo) {
    fake.disk.AddFile("C:\\App\\TIPOFDAY.TXT", "one\r\n\r\nthree \xE9\r\n");
    tips.Load(*this);
    EXPECT_EQ(text, "one");
    fake.clock.random = 0.34;
    tips.OnNextTip(*this);
    EXPECT_EQ(text, "");
    fake.clock.random = 0.999999;
    tips.OnNextTip(*this);
    EXPECT_EQ(text, "three \xC3\xA9");
    fake.disk.AddFile("C:\\App\\TIPOFDAY.TXT", "\xEF\xBB\xBFone\r\n\xCE\xA9\r\n");
    tips.Load(*this);
    EXPECT_EQ(text, "\xCE\xA9");
}

TEST_F(TipsTest, TellsHowToMakeAMissingFileAndLeavesAnEmptyOneAlone) {
    tips.Load(*this);
    tips.OnNextTip(*this);
    EXPECT_TRUE(text.starts_with("That the TIPOFDAY.TXT file was not found? \r\n\r\nCreate a"));
    text = "designed";
    fake.disk.AddFile("C:\\App\\TIPOFDAY.TXT", "");
    tips.Load(*this);
    EXPECT_EQ(text, "designed");
}

TEST_F(TipsTest, TheSettingTurnsTheStartUpOffAndNotTheMenu) {
    EXPECT_TRUE(tips.MayOpen());
    tips.Load(*this);
    EXPECT_TRUE(ticked);
    tips.OnTipsAtStartUpClicked(false);
    EXPECT_EQ(fake.userSettings.values["Show Tips at Startup"], "0");
    EXPECT_FALSE(tips.MayOpen());
    tips.OpenNoMatterWhat(true);
    EXPECT_TRUE(tips.MayOpen());
    tips.Load(*this);
    EXPECT_FALSE(ticked);
}

}  // namespace
}  // namespace tobbin
