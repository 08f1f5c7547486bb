#include "search/SongSearch.h"

#include <gtest/gtest.h>

#include "fakes/FakeEnvironment.h"
#include "fakes/FakeSearching.h"
#include "search/PlayerDiscovery.h"

namespace tobbin {
namespace {

class Search : public testing::Test, public SongSink {
 protected:
    std::int32_t OnSongFound(const std::string& folder, const std::string& name,
                             std::uint64_t /*size*/) override {
        m_found.push_back(folder + name);
        return static_cast<std::int32_t>(m_found.size());
    }
    void AddFiles(const std::vector<std::string>& paths) {
        for (const std::string& path : paths)
            m_fake.disk.AddFile(path);
    }

    void SearchFolder(const std::string& folder) {
        FolderListing listing;
        ASSERT_TRUE(m_fake.disk.List(folder, listing).Ok());
        m_search.SearchFolder(folder, listing);
    }

    FakeEnvironment m_fake;
    FakeProgress m_progress;
    std::vector<std::string> m_found;
    SongSearch m_search{m_fake.environment, m_progress, *this};
};

using Paths = std::vector<std::string>;

TEST_F(Search, TakesAFoldersFilesFirstAndThenItsFoldersInOrder) {
    AddFiles({"C:\\b\\x\\1.mp3", "C:\\b\\2.MP3", "C:\\a\\3.mp3", "C:\\4.mp3", "C:\\5.mp3x",
              "C:\\mp3", "C:\\b\\.mp3"});
    m_fake.disk.AddFolder("C:\\folder.mp3");
    m_search.SearchHardDrives();
    EXPECT_EQ(m_found, (Paths{"C:\\4.mp3", "C:\\b\\2.MP3", "C:\\b\\.mp3", "C:\\b\\x\\1.mp3",
                              "C:\\a\\3.mp3"}));
    EXPECT_EQ(m_progress.texts.front(), "Looking for Mp3s in C:\\");
    EXPECT_EQ(m_progress.texts.back(), "Found 5 Mp3s");
    EXPECT_GE(m_fake.events.count, 2000 + 5);

    m_found.clear();
    SearchFolder("C:\\b\\");  // stays in it
    EXPECT_EQ(m_found, (Paths{"C:\\b\\2.MP3", "C:\\b\\.mp3"}));
}

TEST_F(Search, LeavesOutFoldersNotFileNames) {
    AddFiles({"C:\\Downloads\\INCOMPLETE\\a\\1.mp3", "C:\\RECYCLED\\2.mp3", "C:\\recycled\\3.mp3",
              "C:\\$Recycle.Bin\\S-1-5\\$R1.mp3", "C:\\Recycler\\5.mp3",
              "C:\\Music\\incomplete.mp3", "C:\\Music\\RECYCLED\\4.mp3"});
    m_fake.disk.AddLink("C:\\Downloads\\incomplete\\link", "C:\\Music");
    m_search.SearchHardDrives();
    EXPECT_EQ(m_found, (Paths{"C:\\Music\\incomplete.mp3", "C:\\Music\\RECYCLED\\4.mp3"}));
    SearchFolder("C:\\Recycled\\");
    EXPECT_EQ(m_found.size(), 2U);
}

TEST_F(Search, SearchesHardDrivesOnly) {
    m_fake.drives.drives = {{"A:\\", 2}, {"C:\\", 3}, {"D:\\", 5}, {"E:\\", 3}, {"N:\\", 4}};
    AddFiles({"A:\\1.mp3", "C:\\2.mp3", "D:\\3.mp3", "E:\\4.mp3", "N:\\5.mp3"});
    m_search.SearchHardDrives();
    EXPECT_EQ(m_found, (Paths{"C:\\2.mp3", "E:\\4.mp3"}));
    EXPECT_EQ(DriveTypeText(2, "b:\\"), "Floppy drive");
    EXPECT_EQ(DriveTypeText(2, "F:\\"), "Removable drive");
    EXPECT_EQ(DriveTypeText(1, "F:\\"), "The root directory does not exist");
}

// Folders of two volumes may have the same number.
TEST_F(Search, EntersEachFolderOnceWhateverLeadsToIt) {
    AddFiles({"C:\\a\\1.mp3", "C:\\b\\c\\2.mp3", "V:\\m\\n\\3.mp3"});
    m_fake.disk.AddLink("C:\\a\\loop", "C:\\a");
    m_fake.disk.AddLink("C:\\d", "V:\\m");
    m_fake.disk.AddLink("C:\\d\\aside", "C:\\b");
    m_fake.disk.SetId("C:\\a", {1, 101});
    m_fake.disk.SetId("C:\\b\\c", {1, 102});
    m_fake.disk.SetId("V:\\m", {2, 101});
    m_fake.disk.SetId("V:\\m\\n", {2, 102});
    m_search.SearchHardDrives();
    EXPECT_EQ(m_found, (Paths{"C:\\b\\c\\2.mp3", "C:\\d\\n\\3.mp3", "C:\\a\\1.mp3"}));
}

TEST_F(Search, PassesOverWhatCannotBeListedAndStandsAnyDepth) {
    std::string deep = "C:\\";
    for (int level = 0; level < 500; ++level)
        deep += "d\\";
    AddFiles({"C:\\closed\\1.mp3", deep + "2.mp3"});
    m_fake.disk.Lock("C:\\closed", DiskError::AccessDenied);
    m_search.SearchHardDrives();
    EXPECT_EQ(m_found, Paths{deep + "2.mp3"});
}

using Texts = std::vector<std::string>;

class Discovery : public testing::Test {
 protected:
    Discovery() {
        fake.drives.drives = {{"A:\\", 2U}, {"C:\\", 3U}, {"D:\\", 5U}, {"E:\\", 3U}, {"F:\\", 3U}};
    }
    FakeEnvironment fake;
    FakePlayerLocation location;
    FakeProgress progress;
    PlayerDiscovery discovery{fake.environment, location, "C:\\Tobbin\\Player\\TobbinPlayer.exe"};
};

TEST_F(Discovery, TakesTheFirstHardDriveThatHoldsThePlayer) {
    fake.drives.treeFinds["A:\\"] = "A:\\winamp.exe";
    fake.drives.treeFinds["C:\\"] = "C:\\$Recycle.Bin\\S-1\\winamp.exe";
    fake.drives.treeFinds["E:\\"] = "E:\\Program Files\\\xC3\x89\\WinAmp.EXE";
    fake.drives.treeFinds["F:\\"] = "F:\\winamp.exe";
    EXPECT_EQ(discovery.Search(progress), PlayerDiscovery::Outcome::Found);
    EXPECT_EQ(location.path, "e:\\program files\\\xC3\xA9\\winamp.exe");
    EXPECT_EQ(fake.drives.treeSearches, (Texts{"C:\\ winamp.exe", "E:\\ winamp.exe"}));
    EXPECT_EQ(progress.texts, (Texts{"Looking for WinAmp in A:\\", "Looking for WinAmp in C:\\",
                                     "Looking for WinAmp in D:\\", "Looking for WinAmp in E:\\",
                                     "Found WinAmp!!"}));
    EXPECT_GE(fake.events.count, 3 * 2000);
}

TEST_F(Discovery, OnlyAStoppedSearchIsPendingAndWithoutAFindThePlaceStays) {
    fake.drives.treeFinds["F:\\"] = "F:\\winamp.exe";
    progress.stopAfter = 2;  // while C: is searched
    EXPECT_EQ(discovery.Search(progress), PlayerDiscovery::Outcome::Stopped);
    EXPECT_EQ(fake.drives.treeSearches, (Texts{"C:\\ winamp.exe"}));
    EXPECT_TRUE(discovery.IsSearchPending());
    progress.stopAfter = -1;
    fake.drives.drives.pop_back();
    EXPECT_EQ(discovery.Search(progress), PlayerDiscovery::Outcome::NotFound);
    EXPECT_FALSE(discovery.IsSearchPending());
    EXPECT_EQ(location.path, "as before");
    fake.disk.AddFile("C:\\Tobbin\\Player\\TobbinPlayer.exe");  // in the package: it serves then
    EXPECT_EQ(discovery.Search(progress), PlayerDiscovery::Outcome::Found);
    EXPECT_EQ(location.path, "c:\\tobbin\\player\\tobbinplayer.exe");
}

TEST_F(Discovery, OwnPlayerGivesWayToARegisteredOneUnlessItWasChosen) {
    const std::string own = "c:\\tobbin\\player\\tobbinplayer.exe";
    fake.disk.AddFile("C:\\Tobbin\\Player\\TobbinPlayer.exe");
    EXPECT_FALSE(discovery.LookWhereRegistered());  // another player is stored
    location.path = "d:\\copied from\\player\\tobbinplayer.exe";
    EXPECT_TRUE(discovery.LookWhereRegistered());
    EXPECT_EQ(location.path, own);
    for (const std::string folder : {"C:\\gone\\", "C:\\$Recycle.Bin\\", "C:\\W\\"}) {
        if (folder != "C:\\gone\\")
            fake.disk.AddFile(folder + "Winamp.exe");
        fake.programs.registered = folder + "Winamp.exe";
        discovery.LookWhereRegistered();
        EXPECT_EQ(location.path, folder == "C:\\W\\" ? "c:\\w\\winamp.exe" : own) << folder;
    }
    EXPECT_TRUE(discovery.OffersOwnPlayer());
    discovery.UseOwnPlayer();
    EXPECT_TRUE(discovery.LookWhereRegistered());
    EXPECT_EQ(location.path, own);
    EXPECT_TRUE(fake.drives.treeSearches.empty());
}

TEST_F(Discovery, StartsTheInstallerOrSaysWhichFileIsMissing) {
    EXPECT_FALSE(discovery.RunInstaller("C:\\Tobbin\\"));
    ASSERT_EQ(fake.dialogs.boxes.size(), 1U);
    EXPECT_NE(fake.dialogs.boxes[0].text.find("C:\\Tobbin\\winamp265_lite.exe"), std::string::npos);
    fake.disk.AddFile("C:\\Tobbin\\winamp265_lite.exe");
    EXPECT_TRUE(discovery.RunInstaller("C:\\Tobbin\\"));
    ASSERT_EQ(fake.programs.started.size(), 1U);
    EXPECT_EQ(fake.programs.started[0].program, "C:\\Tobbin\\winamp265_lite.exe");
    EXPECT_EQ(fake.programs.started[0].show, ShowProgram::Normal);
}

}  // namespace
}  // namespace tobbin
