#include "player/PlayRequests.h"

#include <gtest/gtest.h>

#include "fakes/FakeEnvironment.h"
#include "fakes/FakePlayerLocation.h"
#include "player/SongPaths.h"

namespace tobbin {
namespace {

class FakeHost : public PlayHost {
 public:
    std::string did;
    bool stops = false;
    std::unique_ptr<SearchingWindow> MakeSearchingWindow() override {
        class Window : public SearchingWindow {
         public:
            explicit Window(FakeHost& host) : m_host(host) {}
            void Open() override { m_host.did += "open "; }
            void Close() override { m_host.did += "close "; }
            bool StopRequested() const override { return m_host.stops; }

         private:
            FakeHost& m_host;
        };
        return std::make_unique<Window>(*this);
    }
    void PlayInPanel() override { did += "play "; }
    void InstallPlayer() override { did += "install "; }
};

class Requests : public testing::Test {
 protected:
    Requests() {
        for (std::int32_t record = 10; record > 0; --record)
            songs.push_back({record, record == 9 || record == 4 || record == 2});
    }
    std::vector<std::int32_t> Listed() const {
        std::vector<std::int32_t> records;
        for (std::int32_t place = 1; place <= playList.UpperBound(); ++place)
            records.push_back(playList.Song(place));
        return records;
    }

    FakeEnvironment fake;
    FakePlayerLocation location;
    FakeHost host;
    PlayerDiscovery discovery{fake.environment, location, "C:\\none"};
    WinAMP_Control control{fake.environment};
    PlayList playList;
    PlayRequests requests{fake.environment, location, discovery, control, playList, host};
    std::vector<ListedSong> songs;  // records 10 to 1; 9, 4 and 2 are selected
};

TEST_F(Requests, PlayInTheListsOrder) {
    location.path = "c:\\winamp.exe";
    requests.PlaySelectedSongs(songs);
    EXPECT_EQ(Listed(), (std::vector<std::int32_t>{9, 4, 2}));
    EXPECT_EQ(control.PlayerProgramPath(), "c:\\winamp.exe");
    requests.PlayAllSongsInFolder(songs);
    EXPECT_EQ(Listed(), (std::vector<std::int32_t>{10, 9, 8, 7, 6, 5, 4, 3, 2, 1}));
    EXPECT_EQ(host.did, "play play ");
    requests.PlaySelectedSongs({{1, false}});
    requests.PlayAllSongsInFolder({});
    EXPECT_EQ(host.did, "play play ");
    EXPECT_TRUE(fake.dialogs.boxes.empty());
}

TEST_F(Requests, RunAPendingSearchFirstUntilItHasEnded) {
    FakeProgress stopped;
    stopped.stopAfter = 0;
    discovery.Search(stopped);
    host.stops = true;
    requests.PlaySelectedSongs(songs);
    EXPECT_TRUE(fake.dialogs.boxes.empty());
    host.stops = false;
    fake.drives.treeFinds["C:\\"] = "C:\\Winamp.exe";
    requests.PlaySelectedSongs(songs);
    EXPECT_EQ(host.did, "open close open close play ");
    EXPECT_EQ(control.PlayerProgramPath(), "c:\\winamp.exe");
    requests.PlaySelectedSongs(songs);
    EXPECT_EQ(host.did, "open close open close play play ");
}

TEST(SongPaths, AreFolderAndNameOfRecordsThatHaveBoth) {
    FakeEnvironment fake;
    clsINI settings(fake.environment, "C:\\Tobbin\\");
    SortCity sorter(fake.text);
    Progress progress;
    clsMain catalogue(fake.environment, settings, sorter, progress);
    const auto pathOf = SongPathsOf(catalogue);
    EXPECT_EQ(pathOf(1), "");
    catalogue.OnSongFound("C:\\M\\", "a.mp3");
    catalogue.OnSongFound("0", "0");  // cleared
    catalogue.OnSongFound("C:\\M\\", "");
    EXPECT_EQ(pathOf(1), "C:\\M\\a.mp3");
    for (const std::int32_t record : {-1, 0, 2, 3, 4})
        EXPECT_EQ(pathOf(record), "") << record;
}

}  // namespace
}  // namespace tobbin
