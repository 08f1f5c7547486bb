#include "catalogue/CatalogueFile.h"

#include <algorithm>

#include "catalogue/CatalogueRepair.h"
#include "catalogue/clsINI.h"
#include "unit/catalogue/CatalogueFixture.h"
#include "util/Errors.h"

namespace tobbin {
namespace {

using namespace std::string_literals;

// "~" stands for a NUL.
std::string WithNuls(std::string text) {
    std::ranges::replace(text, '~', '\0');
    return text;
}

// Four records: plain with a text in a spare cell, an ANSI name, a free record, a Greek name.
const std::string kGolden = WithNuls(
    "\x05~a.mp3\x05~C:\\M\\\x01~1\x01~1\x01~7\x02~hi~~~~~~~~~~~~"
    "\x08~Caf\xE9.mp3\x05~C:\\M\\\x01~2\x01~1\x01~2~~~~~~~~~~~~~~"
    "~~~~~~~~~~~~~~~~~~~~~~~~"
    "\x09~\xEF\xBB\xBF\xCE\xA9.mp3\x01~0\x01~4\x01~0\x03~odd~~~~~~~~~~~~~~");
constexpr std::size_t kFirstEnd = 39, kSize = 142;

class CatalogueFileTest : public Catalogue {
 protected:
    void Fill() {
        const char* const rows[4][5] = {{"C:\\M\\", "a.mp3", "1", "1", "7"},
                                        {"C:\\M\\", "Caf\xC3\xA9.mp3", "1", "2", "2"},
                                        {"", "", "", "", ""},
                                        {"0", "\xCE\xA9.mp3", "0", "4", "odd"}};
        for (int record = 1; record <= 4; ++record)
            for (int field = 1; field <= 5; ++field)
                catalogue.Mp3Info(field, record, rows[record - 1][field - 1]);
        catalogue.Mp3Info(6, 1, "hi");
    }
};

TEST_F(CatalogueFileTest, IsWrittenByteForByteAndReadBack) {
    ASSERT_EQ(kGolden.size(), kSize);
    EXPECT_FALSE(catalogue.Mp3MainHasSomeMembers());
    Fill();
    EXPECT_TRUE(catalogue.MainIsDirty());
    EXPECT_TRUE(catalogue.Save());
    EXPECT_FALSE(catalogue.MainIsDirty());
    EXPECT_EQ(fake.disk.Content(kCatalogue), kGolden);
    EXPECT_EQ(settings.NumerOfRecordsInTheMain(), 4);
    EXPECT_NE(fake.disk.Content(settings.SettingsPath()).find("\r\n 4 \r\n"), std::string::npos);

    catalogue.MainIsDirty(true);
    EXPECT_TRUE(catalogue.LoadMain());
    EXPECT_FALSE(catalogue.MainIsDirty());
    EXPECT_EQ(Rows(), (Texts{"C:\\M\\|a.mp3|1|1|7", "C:\\M\\|Caf\xC3\xA9.mp3|1|2|2",
                             "0|\xCE\xA9.mp3|0|4|odd", "||||"}));
    EXPECT_EQ(catalogue.Mp3Info(6, 1), "");
    EXPECT_EQ(std::pair(catalogue.Rank(1), catalogue.Rank(3)), std::pair(7, 2));
    EXPECT_TRUE(catalogue.IsPresent(1));
    EXPECT_FALSE(catalogue.IsPresent(3) || catalogue.IsPresent(4));
    EXPECT_EQ(catalogue.SongPath(2), "C:\\M\\Caf\xC3\xA9.mp3");
}

TEST_F(CatalogueFileTest, DamageIsToldAndSoAreCountsThatDisagree) {
    std::string damaged = kGolden;
    damaged[kFirstEnd + 1] = '\x7F';  // the high byte of record 2's first length
    EXPECT_FALSE(Load(damaged, 3));
    EXPECT_EQ(catalogue.LastLoad().message,
              "The song catalog \"C:\\T\\Grouping\\FileLocNames.lmz\" is damaged at byte 39 "
              "(record 2): a text there is longer than the rest of the file.");
    EXPECT_EQ(catalogue.LastLoad().outcome, LoadOutcome::Damaged);
    EXPECT_EQ(Rows(), (Texts{"C:\\M\\|a.mp3|1|1|7", "||||", "||||"}));
    EXPECT_TRUE(catalogue.Save());  // keeps what could not be read
    EXPECT_EQ(fake.disk.Content(kBad), damaged);
    EXPECT_FALSE(Load(kGolden, 2));  // surplus: what was read stays
    EXPECT_EQ(Row(2), "C:\\M\\|Caf\xC3\xA9.mp3|1|2|2");
    EXPECT_EQ(catalogue.UBoundOfMp3Array(), 2);
    EXPECT_FALSE(Load(kGolden, 0));
    EXPECT_TRUE(Load(kGolden, 5));
    EXPECT_EQ(catalogue.UBoundOfMp3Array(), 5);
    EXPECT_EQ(Row(5), "||||");
    EXPECT_TRUE(Load(kGolden, 2147483647));  // a mad count costs nothing
    EXPECT_EQ(catalogue.Mp3Info(2, 2147483647), "");
    EXPECT_TRUE(Load(std::string(48, '\0'), 2));  // free records only
    EXPECT_EQ(Rows(), (Texts{"||||", "||||"}));
    fake.disk.Erase(kCatalogue);
    EXPECT_FALSE(catalogue.LoadMain());
    EXPECT_EQ(catalogue.LastLoad().outcome, LoadOutcome::NotThere);
    EXPECT_EQ(catalogue.UBoundOfMp3Array(), 2);
}

TEST_F(CatalogueFileTest, ATextOfMoreThan65535BytesIsRefused) {
    Load(kGolden, 3);
    catalogue.Mp3Info(2, 2, std::string(65536, 'x'));
    EXPECT_FALSE(catalogue.Save());
    EXPECT_NE(fake.statusLine.lines.at(0).find("field 2 of record 2 "), std::string::npos);
    EXPECT_EQ(fake.disk.Content(kCatalogue), kGolden);
    EXPECT_TRUE(catalogue.MainIsDirty());
    catalogue.Mp3Info(2, 2, std::string(65535, 'x'));
    EXPECT_TRUE(catalogue.Save());
    EXPECT_EQ(fake.disk.Content(kCatalogue).substr(37, 3), "\xFF\xFFx");
    EXPECT_TRUE(catalogue.LoadMain());
    EXPECT_EQ(catalogue.Mp3Info(2, 2).size(), 65535U);
}

TEST_F(CatalogueFileTest, CellsCheckTheirSubscripts) {
    Fill();
    for (const auto& [field, record] : {std::pair(0, 1), {13, 1}, {1, 0}, {1, 5}})
        EXPECT_THROW(catalogue.Mp3Info(field, record), SubscriptOutOfRangeError);
    for (const auto& [field, record] : {std::pair(13, 1), {1, 0}})
        EXPECT_THROW(catalogue.Mp3Info(field, record, "x"), SubscriptOutOfRangeError);
    catalogue.Mp3Info(12, 20, "x");
    EXPECT_EQ(catalogue.UBoundOfMp3Array(), 20);
    EXPECT_EQ(Row(17), "||||");
}

TEST_F(CatalogueFileTest, SalvageFindsTheRecordsBeyondADamage) {
    std::string file;
    for (int i = 1; i <= 9; ++i)
        file += FileRecord("song.mp3", "C:\\M\\", std::to_string(i));
    const std::size_t one = file.size() / 9;
    for (std::size_t byte = 3 * one; byte < 5 * one; ++byte) {
        std::string damaged = file;
        damaged[byte] = '\xFF';
        const CatalogueSummary good = SummariseCatalogue(SalvageCatalogue(damaged));
        EXPECT_TRUE(!good.damage && good.songs >= 8 && good.lastNumber == "9") << byte;
    }
    EXPECT_EQ(SalvageCatalogue(std::string(1000, '\xFF')), "");
    // Records that only their place tells from chance.
    const std::string odd = FileRecord("a", "b", "c", "d", "e");
    EXPECT_EQ(SalvageCatalogue(odd + odd + odd.substr(0, 9)), odd + odd);
    EXPECT_EQ(SalvageCatalogue("\xFF\xFF" + odd), odd);
}

class Repair : public Catalogue {
 protected:
    const std::string three = FileRecord("a.mp3", "C:\\M\\", "1") +
                              FileRecord("b.mp3", "C:\\M\\", "2", "1", "7") +
                              FileRecord("0", "0", "3", "0", "4");

    CatalogueStart Start(const std::string& file, std::int32_t count) {
        fake.disk.AddFile(kCatalogue, file);
        settings.NumerOfRecordsInTheMain(count);
        settings.Save(settings.SettingsPath());
        return LoadCatalogueAtStart(fake.environment, settings, catalogue);
    }
    std::int32_t SavedCount() {
        clsINI other(fake.environment, "C:\\T\\");
        other.GetandLoadIniInfo(settings.SettingsPath());
        return other.NumerOfRecordsInTheMain();
    }
};

TEST_F(Repair, TakesTheCountFromTheFileAndSaysNothing) {
    for (const std::int32_t count : {0, 2, 3, 4, 2147483647}) {
        const CatalogueStart start = Start(three, count);
        EXPECT_EQ(start.finding, CatalogueFinding::Loaded) << count;
        EXPECT_EQ(start.message, "");
        EXPECT_EQ(catalogue.UBoundOfMp3Array(), 3);
        EXPECT_EQ(Row(2), "C:\\M\\|b.mp3|1|2|7");
        EXPECT_EQ(SavedCount(), 3);
        EXPECT_TRUE(fake.dialogs.boxes.empty() && fake.statusLine.lines.empty());
    }
    EXPECT_EQ(fake.disk.FilesIn("C:\\T\\Grouping"), (Texts{"FileLocNames.lmz"}));
}

TEST_F(Repair, KnowsAFirstRunFromALostFile) {
    EXPECT_EQ(LoadCatalogueAtStart(fake.environment, settings, catalogue).finding,
              CatalogueFinding::FirstRun);
    EXPECT_EQ(Start("", 0).finding, CatalogueFinding::FirstRun);
    EXPECT_EQ(Start("", 3).finding, CatalogueFinding::Gone);
    Start(three, 3);
    fake.disk.Erase(kCatalogue);
    fake.disk.AddFile(kBackup, three);
    const CatalogueStart start = LoadCatalogueAtStart(fake.environment, settings, catalogue);
    EXPECT_EQ(start.finding, CatalogueFinding::Gone);
    EXPECT_EQ(
        start.message,
        "The song catalog \"C:\\T\\Grouping\\FileLocNames.lmz\" is not there any more.  Its "
        "earlier copy \"C:\\T\\Grouping\\FileLocNames.bak\" has taken its place, with the songs "
        "and ranks that it knows.");
    const Texts all{"C:\\M\\|a.mp3|1|1|2", "C:\\M\\|b.mp3|1|2|7", "0|0|0|3|4"};
    EXPECT_EQ(Rows(), all);
    EXPECT_EQ(SavedCount(), 3);
    EXPECT_EQ(fake.disk.Content(kCatalogue), three);

    // Of a damaged one, the copy gives what can't be read.
    const std::string moved = FileRecord("a.mp3", "C:\\New\\", "1", "1", "6") + "\x07";
    EXPECT_NE(
        Start(moved, 3).message.find("Songs that could be read: 1.  Songs that its earlier copy "
                                     "\"C:\\T\\Grouping\\FileLocNames.bak\" knows besides: 2."),
        std::string::npos);
    EXPECT_EQ(Rows(), (Texts{"C:\\New\\|a.mp3|1|1|6", all[1], all[2]}));
}

TEST_F(Repair, KeepsADamagedFileAsideAndEveryReadableRecord) {
    for (std::size_t cut = 1; cut < three.size(); ++cut) {
        const std::string file = three.substr(0, cut);
        const std::int32_t songs = SummariseCatalogue(file).songs;
        const CatalogueStart start = Start(file, 3);
        EXPECT_EQ(catalogue.UBoundOfMp3Array(), songs);
        if (start.finding == CatalogueFinding::Loaded)
            continue;  // cut between two records
        EXPECT_EQ(start.finding, CatalogueFinding::Damaged);
        EXPECT_EQ(start.keptAs, kBad);
        EXPECT_NE(start.message.find("(record " + std::to_string(songs + 1) + ")"),
                  std::string::npos);
        EXPECT_EQ(fake.disk.Content(kBad), file);
        EXPECT_EQ(fake.disk.Has(kCatalogue), songs > 0);
        EXPECT_EQ(SavedCount(), songs > 0 ? songs : 3);
        fake.disk.Erase(kBad);
    }
}

TEST_F(Repair, LosesNothingWhereverAFaultStrikes) {
    std::string damaged = three + three.substr(0, 30);
    damaged[1] = '\x7F';  // Record 1 is lost; records 2 and 3 lie beyond the damage.
    bool untouched = false;
    for (int operation = 1; !untouched; ++operation) {
        fake.disk.Heal();
        for (const char* file : {kBad, "C:\\T\\Grouping\\FileLocNames.bad2"})
            fake.disk.Erase(file);
        fake.disk.AddFile(kCatalogue, damaged);
        settings.NumerOfRecordsInTheMain(3);
        settings.Save(settings.SettingsPath());
        fake.disk.StopDeadAt(operation);
        LoadCatalogueAtStart(fake.environment, settings, catalogue);
        untouched = !fake.disk.HasFailed();
        fake.disk.Heal();
        const bool kept = fake.disk.Has(kBad) && fake.disk.Content(kBad) == damaged;
        EXPECT_TRUE(kept || fake.disk.Content(kCatalogue) == damaged) << operation;
        // The next start mends it.
        LoadCatalogueAtStart(fake.environment, settings, catalogue);
        EXPECT_EQ(Rows(), (Texts{"C:\\M\\|b.mp3|1|2|7", "0|0|0|3|4"})) << operation;
        ASSERT_LT(operation, 60);
    }
}

TEST_F(Repair, DoesNotTouchAFileThatCouldNotBeReadUntilItCan) {
    fake.disk.AddFile(kCatalogue, three);
    for (const std::int32_t count : {0, 3}) {
        fake.disk.Lock(kCatalogue);
        settings.NumerOfRecordsInTheMain(count);
        const CatalogueStart start = LoadCatalogueAtStart(fake.environment, settings, catalogue);
        EXPECT_EQ(start.finding, CatalogueFinding::Unreadable);
        EXPECT_NE(start.message.find("another program is using it"), std::string::npos);
        EXPECT_EQ(settings.NumerOfRecordsInTheMain(), count);
        fake.disk.Unlock(kCatalogue);
        EXPECT_FALSE(catalogue.Save());
        EXPECT_EQ(fake.disk.Content(kCatalogue), three);
    }
    EXPECT_EQ(fake.statusLine.lines.size(), 2U);
    EXPECT_TRUE(catalogue.LoadMain() && catalogue.Save());
}

constexpr char kPath[] = "C:\\T\\Grouping\\System\\TheOrganizer.ini";
constexpr char kGoldenSettings[] =
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
    EXPECT_EQ(fake.disk.Content(kPath), kGoldenSettings);

    clsINI other(fake.environment, "D:\\");
    other.IsItTiled(true);
    EXPECT_EQ(other.GetandLoadIniInfo(kPath).outcome, LoadOutcome::Loaded);
    EXPECT_TRUE(other.Save("C:\\T\\again.ini"));
    EXPECT_EQ(fake.disk.Content("C:\\T\\again.ini"), kGoldenSettings);
    fake.disk.FailAt(2, DiskError::DiskFull, true);
    EXPECT_FALSE(settings.Save(kPath));
    EXPECT_EQ(fake.statusLine.lines, Texts{std::string("The settings \"") + kPath +
                                           "\" were not saved: the disk is full."});
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
    EXPECT_TRUE(settings.CreateNewIniFile(kPath));
    EXPECT_EQ(settings.NumerOfRecordsInTheMain(), 0);
    EXPECT_EQ(settings.LocOfWinAmpExe() + settings.PictureLocation(), "");
}

}  // namespace
}  // namespace tobbin
