#include "search/PlayerDiscovery.h"

#include <gtest/gtest.h>

#include "fakes/FakeEnvironment.h"
#include "fakes/FakePlayerLocation.h"

namespace tobbin {
namespace {

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
