#include "player/PlayRequests.h"

#include <gtest/gtest.h>

#include "fakes/FakeEnvironment.h"
#include "fakes/FakeSearching.h"
#include "player/PanelPlace.h"
#include "player/SongPaths.h"
#include "player/WinAMP_Control.h"
#include "unit/catalogue/CatalogueFixture.h"

namespace tobbin {
namespace {

using Log = std::vector<std::string>;

class FakeHost : public PlayHost {
 public:
    std::vector<std::string> did;
    bool stops = false;
    std::unique_ptr<SearchingWindow> MakeSearchingWindow() override {
        return std::make_unique<FakeSearchingWindow>(did, stops);
    }
    void PlayInPanel() override { did.push_back("play"); }
    void InstallPlayer() override { did.push_back("install"); }
};

class Requests : public testing::Test {
 protected:
    Requests() {
        for (std::int32_t record = 10; record > 0; --record)
            songs.push_back({record, record == 9 || record == 4 || record == 2});
    }
    std::string Listed() const {
        std::string records;
        for (std::int32_t place = 1; place <= playList.UpperBound(); ++place)
            records += std::to_string(playList.Song(place)) + " ";
        return records;
    }
    // What the host was asked for since.
    Log Did() { return std::exchange(host.did, {}); }

    FakeEnvironment fake;
    FakePlayerLocation location;
    FakeHost host;
    PlayerDiscovery discovery{fake.environment, location, "C:\\none"};
    WinAMP_Control control{fake.environment, discovery};
    PlayList playList;
    PlayRequests requests{fake.environment, location, discovery, control, playList, host};
    std::vector<ListedSong> songs;  // records 10 to 1; 9, 4 and 2 are selected
};

TEST_F(Requests, PlayInTheListsOrder) {
    location.path = "c:\\winamp.exe";
    requests.PlaySelectedSongs(songs);
    EXPECT_EQ(Listed(), "9 4 2 ");
    EXPECT_EQ(control.PlayerProgramPath(), "c:\\winamp.exe");
    requests.PlayAllSongsInFolder(songs);
    EXPECT_EQ(Listed(), "10 9 8 7 6 5 4 3 2 1 ");
    EXPECT_EQ(Did(), (Log{"play", "play"}));
    requests.PlaySelectedSongs({{1, false}});
    requests.PlayAllSongsInFolder({});
    EXPECT_EQ(Did(), Log{});
    EXPECT_TRUE(fake.dialogs.boxes.empty());
}

TEST_F(Requests, RunAPendingSearchFirstUntilItHasEnded) {
    FakeProgress stopped;
    stopped.stopAfter = 0;
    discovery.Search(stopped);
    host.stops = true;
    requests.PlaySelectedSongs(songs);
    EXPECT_EQ(Did().back(), "closed");
    EXPECT_TRUE(fake.dialogs.boxes.empty());
    host.stops = false;
    fake.drives.treeFinds["C:\\"] = "C:\\Winamp.exe";
    requests.PlaySelectedSongs(songs);
    EXPECT_EQ(Did(),
              (Log{"open", "Looking for WinAmp in C:\\", "Found WinAmp!!", "closed", "play"}));
    EXPECT_EQ(control.PlayerProgramPath(), "c:\\winamp.exe");
    requests.PlaySelectedSongs(songs);
    EXPECT_EQ(Did(), Log{"play"});
}

TEST_F(Requests, OfferToInstallAPlayerWhenThereIsNone) {
    location.path = "";
    fake.dialogs.answers = {Answer::No, Answer::Yes};
    requests.PlaySelectedSongs(songs);
    EXPECT_EQ(Did(), Log{});
    requests.PlayAllSongsInFolder(songs);
    EXPECT_EQ(Did(), Log{"install"});
    ASSERT_EQ(fake.dialogs.boxes.size(), 3U);
    EXPECT_TRUE(fake.dialogs.boxes[1].text.starts_with("WinAmp is not installed on your system."));
    EXPECT_TRUE(fake.dialogs.boxes[2].text.starts_with("WinAmp will now be installed"));
}

class SongPaths : public Catalogue {};

TEST_F(SongPaths, AreFolderAndNameOfRecordsThatHaveBoth) {
    const auto pathOf = SongPathsOf(catalogue);
    EXPECT_EQ(pathOf(1), "");
    Add("C:\\M\\", "a.mp3");
    catalogue.OnSongFound("0", "0");  // cleared
    catalogue.OnSongFound("C:\\M\\", "");
    catalogue.OnSongFound("C:\\M\\", "0");
    EXPECT_EQ(pathOf(1), "C:\\M\\a.mp3");
    for (const std::int32_t record : {-1, 0, 2, 3, 4, 5})
        EXPECT_EQ(pathOf(record), "") << record;
}

TEST(PanelPlaceTest, FollowsTheLowerRightCornerAndNeverLiesOutside) {
    PanelPlace place(20, 2);
    const PixelRect room{5, 70, 1005, 770};
    EXPECT_EQ(place.In(room, 316, 140), (PixelRect{669, 628, 985, 768}));
    EXPECT_EQ(place.In({5, 70, 205, 170}, 316, 140), (PixelRect{5, 70, 321, 210}));
    place.Remember(room, PanelPlace::Inside(room, 900, 100, 316, 140));  // moved by the person
    EXPECT_EQ(place.In({5, 70, 905, 670}, 316, 140), (PixelRect{589, 70, 905, 210}));
}

class PlayerControl : public testing::Test {
 protected:
    void FindPlayer() { ASSERT_TRUE(control.FindPlayerWindow()); }
    Log TakeLog() { return std::exchange(fake.player.log, {}); }

    FakeEnvironment fake;
    FakePlayerLocation location;
    PlayerDiscovery discovery{fake.environment, location, "C:\\none"};
    WinAMP_Control control{fake.environment, discovery};
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
    for (const auto& [reply, version] :
         {std::pair(0x2091, "2.01"), {0x1A2B3, "1.AB3"}, {0xFFF, "UNKNOWN"}, {-1, "F.FFFFFF"}}) {
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
    EXPECT_EQ(fake.dialogs.boxes.size(), 9U);
    for (const auto& box : fake.dialogs.boxes)
        EXPECT_EQ(box.title + ": " + box.text,
                  "First Play a Song: You have to first play a song to use this function.  Try "
                  "selecting some songs you wish to play and hitting 'Enter'");
    EXPECT_TRUE(fake.player.limits.empty());
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
    EXPECT_EQ(fake.dialogs.boxes.at(0).title, "Error");
    EXPECT_EQ(fake.dialogs.boxes[0].text, "Error Number: 0  access is denied\n\nC:\\M\\a.mp3");
}

}  // namespace
}  // namespace tobbin
