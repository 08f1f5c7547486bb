#include <gtest/gtest.h>

#include "fakes/FakeOutside.h"
#include "shell/FrameCommands.h"

namespace tobbin {
namespace {

using Log = std::vector<std::string>;

class FrameWithoutJukebox : public FrameView {
 public:
    bool playerIsKnown = true;
    int checks = 0;
    JukeboxWindow* MaybeActiveJukebox() const override { return nullptr; }
    bool HasChildren() const override { return true; }
    bool HasMinimisedChildren() const override { return false; }
    void OpenJukeboxWindow(Jukebox&) override {}
    int JukeboxWindowsOpened() const override { return 0; }
    bool PlayerCheck() override {
        ++checks;
        return playerIsKnown;
    }
    void MinimisePlayerPanel() override {}
    void MinimiseActivePlayerPanel() override {}
    void Arrange(Arrangement) override {}
    void ShowAbout() override {}
    void ShowTips() override {}
    void CloseFrame() override {}
};

class TransportCommands : public testing::Test {
 protected:
    FakeOutside fake;
    Application application{fake.outside, {"C:\\Tobbin\\", "C:\\windows\\system32\\"}};
    FrameWithoutJukebox view;
    FrameCommands commands{application, view};
};

TEST_F(TransportCommands, ReachThePlayerWhateverChildIsActive) {
    application.Player().FindPlayerWindow();
    for (const FrameCommand command :
         {FrameCommand::Play, FrameCommand::Pause, FrameCommand::Stop, FrameCommand::NextTrack,
          FrameCommand::PreviousTrack, FrameCommand::StopAfterTrack, FrameCommand::ClosePlayer}) {
        EXPECT_TRUE(commands.IsEnabled(command));
        commands.Do(command);
    }
    EXPECT_EQ(fake.player.log, (Log{"273 40045 0", "273 40046 0", "273 40047 0", "273 40048 0",
                                    "273 40044 0", "273 40157 0", "273 40001 0"}));
    EXPECT_EQ(view.checks, 0);
}

TEST_F(TransportCommands, ButtonsSendThemTooAndUnPauseChecksFirst) {
    application.Player().FindPlayerWindow();
    for (const int button : {3, 4, 5, 7})
        commands.ClickButton(button);
    EXPECT_EQ(view.checks, 0);
    commands.ClickButton(6);
    view.playerIsKnown = false;
    commands.ClickButton(6);
    EXPECT_EQ(view.checks, 2);
    EXPECT_EQ(fake.player.log,
              (Log{"273 40048 0", "273 40044 0", "273 40046 0", "273 40157 0", "273 40045 0"}));
}

TEST_F(TransportCommands, WithoutAPlayersWindowAskToPlayASongFirst) {
    commands.Do(FrameCommand::NextTrack);
    ASSERT_EQ(fake.dialogs.boxes.size(), 1U);
    EXPECT_EQ(fake.dialogs.boxes[0].title, "First Play a Song");
}

}  // namespace
}  // namespace tobbin
