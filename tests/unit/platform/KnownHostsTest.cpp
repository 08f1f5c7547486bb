#include "platform/KnownHosts.h"

#include <gtest/gtest.h>

#include "catalogue/DroppedSongs.h"
#include "fakes/FakeEnvironment.h"
#include "search/SongSearch.h"

namespace tobbin {
namespace {

TEST(Paths, OfDevicesAndNoFullPathsNameNothing) {
    FakeEnvironment fake;
    for (const char* path :
         {"\\\\.\\PhysicalDrive0", "//./C:/a.mp3", "\\\\?\\GLOBALROOT\\Device\\x.mp3",
          "\\\\?\\UNC\\host\\share\\x.mp3", "/\\?/C:/a.mp3", "\\??\\C:\\a.mp3", "C:\\M\\NUL",
          "C:\\M\\aux.mp3", "C:\\com1 .mp3", "C:\\LPT\xC2\xB2\\a.mp3", "C:\\conin$", "C:a.mp3",
          "a.mp3", "\\\\", "\\\\\\share\\a.mp3", "", "http://host/a.mp3"}) {
        EXPECT_FALSE(CanBeFile(path)) << path;
        EXPECT_FALSE(FileExists(fake.environment.disk, path)) << path;
    }
    EXPECT_TRUE(fake.disk.Log().empty());
    for (const char* path : {"C:\\", "c:/M/a.mp3", "C:\\M\\auxiliary.mp3", "C:\\com10.mp3",
                             "\\\\host\\share\\com.mp3", "//host@80/DavWWWRoot/a.mp3"})
        EXPECT_TRUE(CanBeFile(path)) << path;
}

// What a list, or a catalogue that was copied here, names must not make this computer log on
// somewhere.
TEST(Hosts, AreTouchedOnceThePersonHasAgreed) {
    FakeEnvironment fake;
    const std::string list =
        "\\\\EVIL\\a\\1.mp3\n//evil@80/DavWWWRoot/2.mp3\n\\\\mapped\\b\\3.mp3\n"
        "..\\4.mp3\n\\\\known\\c\\5.mp3\n\\\\.\\x\\6.mp3\n";
    fake.drives.mapped = {"MAPPED"};
    fake.userSettings.values["Host known"] = "Yes";
    fake.disk.AddFile("\\\\own\\d\\l\\list.m3u", list);
    fake.disk.AddFile("\\\\own\\d\\4.mp3");
    for (const std::string path :
         {"\\\\evil\\a\\1.mp3", "\\\\mapped\\b\\3.mp3", "\\\\known\\c\\5.mp3"})
        fake.disk.AddFile(path);
    const auto drop = [&] {
        return DroppedSongs(fake.environment, {"\\\\own\\d\\l\\list.m3u"}).Paths().size();
    };
    EXPECT_EQ(drop(), 3U);
    ASSERT_EQ(fake.dialogs.boxes.size(), 1U);
    EXPECT_NE(fake.dialogs.boxes[0].text.find("\"list.m3u\" names songs on these computers of the "
                                              "network:\n\n\\\\evil\n\\\\evil@80\n\n"),
              std::string::npos);
    EXPECT_EQ(drop(), 3U);
    for (const std::string& line : fake.disk.Log())
        EXPECT_EQ(line.find("evil"), std::string::npos) << line;
    fake.environment.hosts.Trust("\\\\evil\\x");  // went there by a dialog
    EXPECT_EQ(drop(), 4U);
    EXPECT_EQ(fake.dialogs.boxes.size(), 1U);
    EXPECT_EQ(fake.userSettings.values["Host evil"], "Yes");
    EXPECT_EQ(fake.userSettings.values["Host evil@80"], "No");
}

TEST(Hosts, AreNotReachedThroughALinkInTheTreeThatIsSearched) {
    struct Sink : SongSink {
        std::int32_t songs = 0;
        std::int32_t OnSongFound(const std::string&, const std::string&, std::uint64_t) override {
            return ++songs;
        }
    } sink;
    FakeEnvironment fake;
    Progress progress;
    fake.disk.AddFile("\\\\evil\\a\\1.mp3");
    fake.disk.AddFile("C:\\M\\2.mp3");
    fake.disk.AddLink("C:\\away", "\\\\evil\\a");
    fake.disk.AddLink("C:\\here", "C:\\M");
    SongSearch(fake.environment, progress, sink).SearchHardDrives();
    EXPECT_EQ(sink.songs, 1);
}

}  // namespace
}  // namespace tobbin
