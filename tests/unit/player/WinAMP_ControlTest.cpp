#include "player/WinAMP_Control.h"

#include <gtest/gtest.h>

#include "fakes/FakeEnvironment.h"

namespace tobbin {
namespace {

using Log = std::vector<std::string>;

class PlayerControl : public testing::Test {
 protected:
    void FindPlayer() { ASSERT_TRUE(control.FindPlayerWindow()); }
    Log TakeLog() { return std::exchange(fake.player.log, {}); }

    FakeEnvironment fake;
    WinAMP_Control control{fake.environment};
};

TEST_F(PlayerControl, SendsShortPathsAndOnlyValuesInRange) {
    FindPlayer();
    const std::string greek = "C:\\M\\\xCE\xA9.mp3";
    fake.disk.shortPaths[greek] = "C:\\M\\ABCD~1.MP3";
    control.AddFileToPlaylist("C:\\M\\Caf\xC3\xA9.mp3");
    EXPECT_EQ(control.LastAddResult(), 1);
    control.AddFileToPlaylist(greek);
    control.AddFileToPlaylist("C:\\M\\\xE6\xBC\xA2.mp3");  // no short path
    EXPECT_EQ(TakeLog(), (Log{"copy 100 C:\\M\\Caf\xE9.mp3|", "copy 100 C:\\M\\ABCD~1.MP3|"}));
    for (const int level : {-1, 0, 255, 256})
        control.SetVolume(level);
    for (const int balance : {-128, -127, -1, 0, 127, 128})
        control.SetBalance(balance);
    EXPECT_EQ(TakeLog(), (Log{"1024 0 122", "1024 255 122", "1024 128 123", "1024 254 123",
                              "1024 0 123", "1024 127 123"}));
    fake.player.lengthSeconds = 30;
    for (const int seconds : {-1, 31, 30})
        control.SetTrackPosition(seconds);
    EXPECT_EQ(TakeLog(), (Log{"1024 1 105", "1024 1 105", "1024 30000 106"}));
}

TEST_F(PlayerControl, UnderstandsReplies) {
    FindPlayer();
    for (const auto& [reply, status] : std::map<int, std::string>{
             {1, "PLAYING"}, {3, "PAUSED"}, {0, "STOPPED"}, {2, "STOPPED"}, {-1, "STOPPED"}}) {
        fake.player.status = reply;
        EXPECT_EQ(control.GetPlayerStatus(), status) << reply;
    }
    for (const auto& [reply, seconds] :
         std::map<int, int>{{1999, 1}, {0, 0}, {-1, -1}, {-999, 0}}) {
        fake.player.positionMilliseconds = reply;
        EXPECT_EQ(control.GetTrackPosition(), seconds) << reply;
    }
    fake.player.lengthSeconds = -1;
    EXPECT_EQ(control.GetTrackLength(), -1);
    for (const auto& [reply, version] : std::map<int, std::string>{{0x2091, "2.01"},
                                                                   {0x1A2B3, "1.AB3"},
                                                                   {0xFFF, "UNKNOWN"},
                                                                   {0, "UNKNOWN"},
                                                                   {-1, "F.FFFFFF"}}) {
        fake.player.version = reply;
        EXPECT_EQ(control.GetPlayerVersion(), version) << reply;
    }
}

TEST_F(PlayerControl, WithoutAWindowAsksToPlayASongFirst) {
    control.AddFileToPlaylist("C:\\a.mp3");
    EXPECT_TRUE(fake.dialogs.boxes.empty());
    EXPECT_EQ(control.GetPlayerStatus() + control.GetPlayerVersion(), "");
    EXPECT_EQ(control.GetTrackPosition() | control.GetTrackLength(), 0);
    control.SetVolume(256);
    control.SetBalance(0);
    control.SetTrackPosition(0);
    control.ClearPlaylist();
    control.SendPlayerCommand(PlayerCommand::NextTrack);
    ASSERT_EQ(fake.dialogs.boxes.size(), 9U);
    for (const auto& box : fake.dialogs.boxes) {
        EXPECT_EQ(box.title, "First Play a Song");
        EXPECT_EQ(box.icon, BoxIcon::Stop);
        EXPECT_EQ(box.text,
                  "You have to first play a song to use this function.  Try selecting some songs "
                  "you wish to play and hitting 'Enter'");
    }
    EXPECT_TRUE(fake.player.limits.empty());
}

TEST_F(PlayerControl, SendsNothingMoreToAPlayerThatDoesNotAnswer) {
    FindPlayer();
    fake.player.hangs = true;
    control.SetVolume(1);
    EXPECT_FALSE(control.IsAnswering());
    control.SetVolume(2);
    EXPECT_EQ(control.GetPlayerStatus(), "");
    EXPECT_EQ(control.GetTrackPosition(), -1);
    ASSERT_EQ(fake.player.limits.size(), 4U);
    EXPECT_LT(fake.player.limits[0], 500);
    EXPECT_LE(fake.player.limits[3], 50);  // mere questions
    EXPECT_EQ(fake.statusLine.lines.size(), 1U);
    fake.player.hangs = false;
    control.SetVolume(3);
    EXPECT_EQ(TakeLog(), (Log{"0 0 0", "1024 3 122"}));
}

TEST_F(PlayerControl, TellsOfFilesThatCanNotBeJudged) {
    fake.disk.AddFile("C:\\M\\a.mp3");
    EXPECT_TRUE(control.FileExists("C:\\M\\a.mp3"));
    EXPECT_FALSE(control.FileExists("C:\\M\\b.mp3"));
    for (const auto error : {DiskError::NotFound, DiskError::NotReady}) {
        fake.disk.FailAt(1, error, true);
        EXPECT_FALSE(control.FileExists("C:\\M\\a.mp3"));
    }
    EXPECT_TRUE(fake.dialogs.boxes.empty());
    fake.disk.FailAt(1, DiskError::AccessDenied, true);
    EXPECT_FALSE(control.FileExists("C:\\M\\a.mp3"));
    ASSERT_EQ(fake.dialogs.boxes.size(), 1U);
    EXPECT_EQ(fake.dialogs.boxes[0].title, "Error");
    EXPECT_EQ(fake.dialogs.boxes[0].text, "Error Number: 0  access is denied\n\nC:\\M\\a.mp3");
}

}  // namespace
}  // namespace tobbin
