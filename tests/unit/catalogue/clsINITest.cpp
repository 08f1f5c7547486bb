#include "catalogue/clsINI.h"

#include "unit/catalogue/CatalogueFixture.h"

namespace tobbin {
namespace {

constexpr char kPath[] = "C:\\T\\Grouping\\System\\TheOrganizer.ini";
constexpr char kGolden[] =
    "C:\\T\\Grouping\\System\\LocOfMainTargetFiles.lmz\r\n"
    "C:\\T\\Grouping\\\r\n"
    " 1520 \r\n"
    "C:\\Caf\xE9\\player.exe\r\n"
    "c:\\new.juk\r\n"
    "\uFEFFc:\\\xCE\xA9.juk\r\n"
    "c:\\old.juk\r\n"
    "True\r\n"
    "False\r\n"
    "C:\\sea.jpg\r\n";

class Settings : public Catalogue {
 protected:
    LoadResult Load(const std::string& content) {
        fake.disk.AddFile(kPath, content);
        return settings.GetandLoadIniInfo(kPath);
    }
    void FillAsGolden() {
        settings.NumerOfRecordsInTheMain(1520);
        settings.LocOfWinAmpExe("C:\\Caf\xC3\xA9\\player.exe");
        settings.LocOfLastSavedJukeBox("c:\\new.juk");
        settings.LocSecToLastSavedJukeBox("c:\\\xCE\xA9.juk");
        settings.LocOfThirdToLastSaveJukeBox("c:\\old.juk");
        settings.IsThereAPicture(true);
        settings.PictureLocation("C:\\sea.jpg");
    }
};

TEST_F(Settings, AreWrittenByteForByteAndReadBack) {
    FillAsGolden();
    EXPECT_TRUE(settings.Save(settings.SettingsPath()));
    EXPECT_EQ(fake.disk.Content(kPath), kGolden);

    clsINI other(fake.environment, "D:\\");
    other.IsItTiled(true);
    EXPECT_EQ(other.GetandLoadIniInfo(kPath).outcome, LoadOutcome::Loaded);
    EXPECT_TRUE(other.Save("C:\\T\\again.ini"));
    EXPECT_EQ(fake.disk.Content("C:\\T\\again.ini"), kGolden);
    fake.disk.FailAt(2, DiskError::DiskFull, true);
    EXPECT_FALSE(settings.Save(kPath));
    EXPECT_EQ(fake.statusLine.lines,
              (std::vector<std::string>{std::string("The settings \"") + kPath +
                                        "\" were not saved: the disk is full."}));
}

TEST_F(Settings, ShortAndLongFilesChangeWhatTheyName) {
    FillAsGolden();
    // Any line end, blanks around the values; line 5 moves the older entries down.
    EXPECT_EQ(Load("  C:\\list \nC:\\data\\\r\n 7\n\r\n c:\\x.juk").outcome, LoadOutcome::Loaded);
    EXPECT_EQ(settings.FileContainingTargetDirectories(), "C:\\list");
    EXPECT_EQ(settings.NumerOfRecordsInTheMain(), 7);
    EXPECT_EQ(settings.LocOfWinAmpExe(), "");
    EXPECT_EQ(settings.LocOfLastSavedJukeBox(), "c:\\x.juk");
    EXPECT_EQ(settings.LocSecToLastSavedJukeBox(), "c:\\new.juk");
    EXPECT_EQ(settings.LocOfThirdToLastSaveJukeBox(), "c:\\\xCE\xA9.juk");
    EXPECT_EQ(settings.PictureLocation(), "C:\\sea.jpg");
    EXPECT_EQ(Load("a\nb\n1\np\nj\nk\nl\n-1\n5\npic\nmore\nx\n").outcome, LoadOutcome::Loaded);
    EXPECT_TRUE(settings.IsItTiled());
    EXPECT_EQ(settings.PictureLocation(), "pic");
}

TEST_F(Settings, NameTheLineThatIsNoNumber) {
    for (const char* bad : {"many", "", "99999999999", "-1"}) {
        const LoadResult result = Load(std::string("list\ndata\n") + bad + "\nC:\\p.exe\n");
        EXPECT_EQ(result.outcome, LoadOutcome::Damaged) << bad;
        EXPECT_NE(result.message.find("line 3"), std::string::npos);
        EXPECT_NE(result.message.find(kPath), std::string::npos);
        EXPECT_EQ(settings.LocOfGroupingDir(), "data");
        EXPECT_EQ(settings.LocOfWinAmpExe(), "");
    }
    EXPECT_NE(Load("a\nb\n1\n\n\n\n\nyes\n").message.find("line 8"), std::string::npos);
    fake.disk.Lock(kPath);
    EXPECT_EQ(settings.GetandLoadIniInfo(kPath).outcome, LoadOutcome::Unreadable);
    fake.disk.Unlock(kPath);
    fake.disk.Erase(kPath);
    EXPECT_EQ(settings.GetandLoadIniInfo(kPath).outcome, LoadOutcome::NotThere);
}

TEST_F(Settings, RecentListMovesDownAndTellsItsListener) {
    int told = 0;
    settings.OnRecentListChanged([&told] { ++told; });
    for (const char* file : {"1", "2", "3", "4", "4"})
        settings.LocOfLastSavedJukeBox(file);
    EXPECT_EQ(told, 4);
    EXPECT_EQ(settings.LocSecToLastSavedJukeBox(), "3");
    EXPECT_EQ(settings.LocOfThirdToLastSaveJukeBox(), "2");
    settings.LocOfLastSavedJukeBox("3");  // stays second as well
    EXPECT_EQ(settings.LocSecToLastSavedJukeBox(), "4");
    EXPECT_EQ(settings.LocOfThirdToLastSaveJukeBox(), "3");
    settings.LocSecToLastSavedJukeBox("");
    settings.LocOfThirdToLastSaveJukeBox("");
    settings.CreateNewIniFile(kPath);
    EXPECT_EQ(told, 8);
}

TEST_F(Settings, NewFileTakesTheCountFromTheCatalogue) {
    const auto countWith = [this](const std::string& file) {
        Load("list\ndata\n9\np\nj\nk\nl\nTrue\nTrue\npic\n");
        fake.disk.AddFile(kCatalogue, file);
        EXPECT_TRUE(settings.CreateNewIniFile(kPath));
        return settings.NumerOfRecordsInTheMain();
    };
    const std::string first = FileRecord("a.mp3", "C:\\", "12");
    const std::string second = FileRecord("b.mp3", "C:\\", "875");
    EXPECT_EQ(countWith(first + second + FileRecord("", "C:\\", "900")), 875);
    EXPECT_EQ(countWith(first + second.substr(0, 20)), 12);
    EXPECT_EQ(countWith(FileRecord("a.mp3", "C:\\", "x") + FileRecord("b.mp3", "C:\\", "")), 2);
    EXPECT_EQ(countWith(""), 0);
    fake.disk.Erase(kCatalogue);
    settings.NumerOfRecordsInTheMain(9);
    EXPECT_TRUE(settings.CreateNewIniFile(kPath));
    EXPECT_EQ(fake.disk.Content(kPath),
              "C:\\T\\Grouping\\System\\LocOfMainTargetFiles.lmz\r\nC:\\T\\Grouping\\\r\n 0 \r\n"
              "\r\n\r\n\r\n\r\nFalse\r\nFalse\r\n\r\n");
}

}  // namespace
}  // namespace tobbin
