#include "unit/shell/FrameFixture.h"

namespace tobbin {
namespace {

using Log = std::vector<std::string>;

class TransportCommands : public FrameTest {};

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
    EXPECT_EQ(frame.playerChecks, 0);
}

TEST_F(TransportCommands, ButtonsSendThemTooAndUnPauseChecksFirst) {
    application.Player().FindPlayerWindow();
    frame.playerIsKnown = true;
    for (const int button : {3, 4, 5, 7})
        commands.ClickButton(button);
    EXPECT_EQ(frame.playerChecks, 0);
    commands.ClickButton(6);
    frame.playerIsKnown = false;
    commands.ClickButton(6);
    EXPECT_EQ(frame.playerChecks, 2);
    EXPECT_EQ(fake.player.log,
              (Log{"273 40048 0", "273 40044 0", "273 40046 0", "273 40157 0", "273 40045 0"}));
}

}  // namespace
}  // namespace tobbin
