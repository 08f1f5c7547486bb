#include <algorithm>

#include "catalogue/CatalogueFile.h"
#include "unit/catalogue/CatalogueFixture.h"
#include "util/Text.h"

namespace tobbin {
namespace {

constexpr std::int64_t kDay = 24 * 60 * 60;

class Passes : public Catalogue {
 protected:
    auto CountInLog(const std::string& prefix) const {
        return std::ranges::count_if(
            fake.disk.Log(), [&](const std::string& line) { return line.starts_with(prefix); });
    }
    void AddThreeAndSave() {
        Add("C:\\A\\", "1.mp3");
        Add("C:\\A\\", "2.mp3");
        Add("C:\\B\\", "3.mp3");
        ASSERT_TRUE(catalogue.Save());
    }
};

TEST_F(Passes, CheckClearsWhatIsGoneAndListsEachFolderOnce) {
    for (int i = 0; i < 50; ++i)
        Add(i % 2 == 0 ? "C:\\A\\" : "C:\\B\\", "song" + std::to_string(i) + ".mp3");
    catalogue.Save();
    fake.disk.Erase("C:\\A\\song4.mp3");
    catalogue.Mp3Info(2, 7, "SONG6.MP3");    // the same file to the file system
    catalogue.Mp3Info(3, 9, "0");            // missing once is missing for good
    catalogue.Mp3Info(1, 11, "no\\path\\");  // can't name a file
    catalogue.Mp3Info(2, 52, "");            // two free records
    fake.disk.ClearLog();
    catalogue.CheckToSeeIfFilesAreMissingAndMakeFalse();
    for (const int cleared : {5, 9, 11})
        EXPECT_EQ(Row(cleared), "0|0|0|" + std::to_string(cleared) + "|2");
    EXPECT_EQ(Row(7), "C:\\A\\|SONG6.MP3|1|7|2");
    EXPECT_EQ(Row(50) + Row(52), "C:\\B\\|song49.mp3|1|50|20|0|0||");
    EXPECT_EQ(CountInLog("list "), 2);
    EXPECT_EQ(CountInLog("stat C:\\A\\"), 2);  // records 5 and 7
    EXPECT_TRUE(catalogue.MainIsDirty());
    EXPECT_GT(fake.events.count, 0);
}

// Drives that are switched off, empty under their letter, replaced by another disk with the same
// folders, or mounted in a folder that leads nowhere: the songs stay. Gone they are when the folder
// is there on the disk that was seen last, without them.
TEST_F(Passes, CheckLeavesSongsThatAreAwayAlone) {
    fake.environment.diskReaders = 4;
    fake.drives.drives = {{"C:\\", 3}, {"E:\\", 3}, {"N:\\", 4}};
    fake.drives.volumes = {{"E:\\", 1}, {"N:\\", 2}};
    for (const char* folder :
         {"C:\\A\\", "e:\\A\\", "\\\\box\\music\\A\\", "N:\\A\\", "C:\\Mnt\\A\\"})
        Add(folder, std::to_string(catalogue.UBoundOfMp3Array() + 1) + ".mp3");
    Add("E:\\A\\", "6.mp3");
    catalogue.Mp3Info(3, 6, "0");
    for (int i = 7; i < 50; ++i)
        Add("N:\\" + std::to_string(i) + "\\", std::to_string(i) + ".mp3");
    catalogue.Save();
    catalogue.CheckToSeeIfFilesAreMissingAndMakeFalse();  // 6 is cleared; the volumes are kept
    EXPECT_EQ(fake.disk.Content("C:\\T\\Grouping\\System\\SongDrives.ini"),
              "0000000000000001 E:\\\r\n0000000000000002 N:\\\r\n");
    catalogue.Mp3Info(3, 6, "0");
    catalogue.Mp3Info(1, 6, "E:\\A\\");
    catalogue.WriteOutMp3DirectoryLocations();
    const Texts before = Rows();
    const auto check = [&](const Texts& expected, const char* when) {
        SCOPED_TRACE(when);
        fake.disk.ClearLog();
        fake.drives.asked.clear();
        clsMain restarted(fake.environment, settings, sorter, progress);
        restarted.LoadMain();
        const ListedFolders listed = restarted.CheckToSeeIfFilesAreMissingAndMakeFalse();
        restarted.AddAnyAdditionalMp3FromTheNormalDirectories(&listed);
        catalogue.LoadMain();
        EXPECT_EQ(Rows(), expected);
        EXPECT_EQ(std::ranges::count(fake.drives.asked, "N:\\"), 1);
    };
    fake.drives.unreachable = {"E:\\", "N:\\"};
    fake.disk.Erase("\\\\box\\music");
    fake.disk.Erase("C:\\Mnt");
    fake.disk.AddLink("C:\\Mnt", "V:\\nowhere");
    fake.disk.FailBelow("N:", DiskError::NotReady);
    check(before, "switched off");
    EXPECT_EQ(CountInLog("list N:") + CountInLog("stat N:"), 0);
    fake.disk.FailBelow("N:", DiskError::None);
    fake.drives.unreachable.clear();
    fake.disk.Erase("E:");
    fake.disk.AddFolder("E:");
    fake.disk.AddFolder("\\\\box\\music");
    check(before, "empty");
    fake.drives.volumes["E:\\"] = 3;
    fake.disk.AddFile("E:\\A\\other.txt");
    check(before, "another disk");
    fake.drives.volumes["E:\\"] = 1;
    Texts gone = before;
    gone[1] = "0|0|0|2|2";
    gone[5] = "0|0|0|6|2";
    check(gone, "gone");
}

TEST_F(Passes, ASearchThatFindsNothingSaysWhereElseToLook) {
    AddThreeAndSave();
    fake.disk.AddFile("C:\\A\\Covers\\front.jpg");
    const auto remark = [&] {
        EXPECT_TRUE(catalogue.AddAnyAdditionalMp3FromTheNormalDirectories());
        return catalogue.SearchRemark();
    };
    EXPECT_EQ(remark(), "");
    fake.disk.AddFile("C:\\B\\New Album\\CD1\\9.mp3");
    EXPECT_EQ(remark(),
              "The folder \"C:\\B\\New Album\\\" is new: \"Bring In New Songs (Search my whole "
              "computer)\" looks there, too.");
    fake.disk.AddFile("C:\\A\\new.mp3");
    EXPECT_EQ(remark(), "");
    fake.drives.drives = {{"C:\\", 2}, {"N:\\", 4}};
    catalogue.SearchHardDrives();
    EXPECT_EQ(catalogue.SearchRemark(),
              "Only fixed drives are searched, and there is none.  Songs from other drives can be "
              "dropped on a folder.");
}

TEST_F(Passes, AStoppedCheckAndAFailedReadLeaveWhatIsInMemory) {
    AddThreeAndSave();
    catalogue.SearchHardDrives();
    const Texts before = Rows();
    int operation = 0;
    do {  // With jukeboxes open, a table emptied by a failed read would lose all their songs.
        fake.disk.FailAt(++operation, DiskError::AccessDenied, true);
        catalogue.SearchHardDrives();
        EXPECT_EQ(Rows(), before) << fake.disk.Log().back();
    } while (fake.disk.HasFailed());
    fake.disk.Heal();
    fake.disk.Erase("C:\\A\\1.mp3");
    progress.texts.clear();
    progress.stopAfter = 1;
    catalogue.CheckToSeeIfFilesAreMissingAndMakeFalse();
    EXPECT_EQ(Rows(), before);
}

TEST_F(Passes, CheckAsksForEachFileWhereAFolderCanNotBeListed) {
    AddThreeAndSave();
    fake.disk.Lock("C:\\A", DiskError::AccessDenied);
    fake.disk.Erase("C:\\A\\2.mp3");
    catalogue.CheckToSeeIfFilesAreMissingAndMakeFalse();
    EXPECT_EQ(Rows(), (Texts{"C:\\A\\|1.mp3|1|1|2", "0|0|0|2|2", "C:\\B\\|3.mp3|1|3|2"}));
    // No answer is no "it is gone".
    fake.disk.StopDeadAt(1);
    catalogue.CheckToSeeIfFilesAreMissingAndMakeFalse();
    EXPECT_EQ(Row(1), "C:\\A\\|1.mp3|1|1|2");
    // Nor is that of a drive which goes away meanwhile.
    fake.disk.Heal();
    fake.disk.Erase("C:\\A");
    fake.drives.unplugAfter = 1;
    catalogue.CheckToSeeIfFilesAreMissingAndMakeFalse();
    EXPECT_EQ(Row(1), "C:\\A\\|1.mp3|1|1|2");
}

// Names, whether present, numbers and ranks; a twin that is away counts as another song.
TEST_F(Passes, OfPresentTwinsTheOneWithTheSmallestNumberIsKept) {
    const char* const rows[][4] = {
        {"a.mp3", "1", "7", "3"},  {"b.mp3", "1", "4", "4"},  {"a.mp3", "1", "1", "5"},
        {"A.mp3", "1", "10", "6"}, {"a.mp3", "0", "13", "7"}, {"", "1", "16", "2"},
        {"a.mp3", "1", "19", "2"}, {"0", "0", "22", "2"},     {"0", "0", "25", "3"}};
    for (std::int32_t record = 1; record <= 9; ++record)
        for (int field = 2; field <= 5; ++field)
            catalogue.Mp3Info(field, record, rows[record - 1][field - 2]);
    ASSERT_TRUE(catalogue.DeleteIdenticalFileNamesAndPaths());
    EXPECT_EQ(Rows(), (Texts{"|a.mp3|1|1|5", "|b.mp3|1|2|4", "|A.mp3|1|3|6", "|a.mp3|0|4|7",
                             "|0|0|5|2", "|0|0|6|3"}));
    EXPECT_EQ(settings.NumerOfRecordsInTheMain(), 6);
    EXPECT_EQ(SummariseCatalogue(fake.disk.Content(kCatalogue)).songs, 6);
}

TEST_F(Passes, SortOrdersNumbersByValueAndFieldsAsText) {
    for (const char* name : {"b.mp3", "C.mp3", "a.mp3"})
        Add("C:\\", name);
    catalogue.Mp3Info(4, 1, "10");
    catalogue.Mp3Info(4, 3, "no number");
    const auto sorted = [&](bool ascending, int key) {
        EXPECT_TRUE(catalogue.Sort(ascending, 99, key));
        return catalogue.Mp3Info(2, 1) + catalogue.Mp3Info(2, 2) + catalogue.Mp3Info(2, 3);
    };
    EXPECT_EQ(sorted(true, 2), "a.mp3b.mp3C.mp3");
    EXPECT_EQ(sorted(true, 4), "C.mp3b.mp3a.mp3");
    EXPECT_EQ(Row(1), "C:\\|C.mp3|1|2|2");
    EXPECT_EQ(sorted(false, 4), "a.mp3b.mp3C.mp3");
    EXPECT_EQ(sorted(false, 2), "C.mp3b.mp3a.mp3");
    EXPECT_FALSE(catalogue.Sort(true, 0, 13) || catalogue.Sort(true, 0, 0));
    EXPECT_TRUE(catalogue.RenumberBasedOnArrayNumber());
    EXPECT_EQ(catalogue.Mp3Info(4, 3), "3");
}

TEST_F(Passes, FolderListIsWrittenSortedAndReadBackWithoutZeros) {
    for (const char* folder : {"C:\\b\\", "C:\\A\\", "C:\\b\\", "C:\\\u03A9\\", "C:\\Caf\u00E9\\"})
        Add(folder, std::to_string(catalogue.UBoundOfMp3Array() + 1) + ".mp3");
    catalogue.OnSongFound("0", "0");
    catalogue.Mp3Info(2, 8, "x");  // no folder
    const Texts before = Rows();
    EXPECT_TRUE(catalogue.WriteOutMp3DirectoryLocations());
    EXPECT_EQ(Rows(), before);
    EXPECT_EQ(fake.disk.Content(kFolders),
              "0\r\nC:\\A\\\r\nC:\\b\\\r\nC:\\Caf\xE9\\\r\n\uFEFFC:\\\xCE\xA9\\\r\n");
    fake.disk.AddFile("C:\\\u03A9\\new.mp3");
    EXPECT_TRUE(catalogue.AddAnyAdditionalMp3FromTheNormalDirectories());
    EXPECT_EQ(Row(8), "C:\\\u03A9\\|new.mp3|1|8|2");
}

TEST_F(Passes, NewSongsOfKnownFoldersAreAddedAndKnownOnesKeepTheirRanks) {
    AddThreeAndSave();
    catalogue.Mp3Info(5, 2, "7");
    fake.disk.AddFile("C:\\A\\new.mp3");
    fake.disk.AddFile("C:\\A\\Deep\\far.mp3");
    fake.disk.AddFile("C:\\B\\1.mp3");  // known by its name
    const Texts wanted{"C:\\A\\|1.mp3|1|1|2", "C:\\A\\|2.mp3|1|2|7", "C:\\B\\|3.mp3|1|3|2",
                       "C:\\A\\|new.mp3|1|4|2"};
    EXPECT_TRUE(catalogue.AddAnyAdditionalMp3FromTheNormalDirectories());  // The list was lost.
    EXPECT_EQ(Rows(), wanted);
    EXPECT_EQ(fake.disk.Content(kFolders), "C:\\A\\\r\nC:\\B\\\r\n");
    fake.disk.ClearLog();
    EXPECT_TRUE(catalogue.AddAnyAdditionalMp3FromTheNormalDirectories());
    EXPECT_EQ(Rows(), wanted);
    EXPECT_FALSE(fake.disk.Has(kBackup));  // Nothing of the file was dropped,
    EXPECT_EQ(CountInLog("write C:\\T\\Grouping\\FileLocNames"), 0);  // and nothing changed.
    fake.disk.Lock(kFolders);
    EXPECT_FALSE(catalogue.AddAnyAdditionalMp3FromTheNormalDirectories());
    EXPECT_EQ(Rows(), wanted);
}

TEST_F(Passes, TheCatalogueAsItWasIsKeptBeforeSongsAreLost) {
    AddThreeAndSave();
    const std::string three = fake.disk.Content(kCatalogue);
    catalogue.CheckToSeeIfFilesAreMissingAndMakeFalse();
    EXPECT_FALSE(fake.disk.Has(kBackup));
    fake.disk.Erase("C:\\A\\1.mp3");
    catalogue.CheckToSeeIfFilesAreMissingAndMakeFalse();
    EXPECT_EQ(fake.disk.Content(kBackup), three);
    catalogue.LoadMain();
    catalogue.Mp3Info(5, 1, "7");  // As many songs with a newer rank take its place.
    catalogue.Save();
    EXPECT_TRUE(catalogue.KeepBackup());
    const std::string ranked = fake.disk.Content(kCatalogue);
    EXPECT_EQ(fake.disk.Content(kBackup), ranked);
    catalogue.CheckToSeeIfFilesAreMissingAndMakeFalse();
    catalogue.Save();

    // The next loss has fewer present songs to keep, until the copy is over 30 days old.
    fake.disk.Erase("C:\\A\\2.mp3");
    fake.clock.unixTime += 30 * kDay;
    catalogue.CheckToSeeIfFilesAreMissingAndMakeFalse();
    EXPECT_EQ(fake.disk.Content(kBackup), ranked);
    fake.clock.unixTime += 1;
    const std::string two = fake.disk.Content(kCatalogue);
    bool kept = false;
    for (int operation = 1; !kept; ++operation) {
        fake.statusLine.lines.clear();
        fake.disk.FailAt(operation, DiskError::DiskFull, true);
        kept = catalogue.KeepBackup();
        EXPECT_EQ(fake.disk.Content(kBackup), kept ? two : ranked) << operation;
        EXPECT_EQ(fake.statusLine.lines.size(), kept ? 0U : 1U);
        ASSERT_LT(operation, 20);
    }
}

TEST_F(Passes, WithoutTheCopyNoSongOfTheFileIsClearedOrDropped) {
    AddThreeAndSave();
    fake.disk.AddFile(kBackup, "");
    fake.disk.Lock(kBackup);
    fake.disk.Erase("C:\\A\\1.mp3");
    catalogue.Mp3Info(2, 2, "3.mp3");
    const Texts before = Rows();
    catalogue.CheckToSeeIfFilesAreMissingAndMakeFalse();
    EXPECT_EQ(Rows(), before);
    EXPECT_NE(fake.statusLine.lines.at(0).find(kBackup), std::string::npos);
    catalogue.OnSongFound("C:\\B\\", "3.mp3");
    catalogue.DeleteIdenticalFileNamesAndPaths();
    EXPECT_EQ(Rows(), before);  // only the new one is gone
    fake.disk.Unlock(kBackup);
    catalogue.DeleteIdenticalFileNamesAndPaths();
    EXPECT_EQ(catalogue.UBoundOfMp3Array(), 2);
}

TEST(RootOfPath, IsADriveOrAShare) {
    EXPECT_EQ(RootOfPath("c:\\Music\\"), "C:\\");
    EXPECT_EQ(RootOfPath("\\\\box\\music\\a\\"), "\\\\box\\music\\");
    for (const char* none :
         {"", "0", "0\\", "C:", "C:music", "\\music\\", "\\\\box\\", "\\\\\\x\\y\\"})
        EXPECT_EQ(RootOfPath(none), "") << none;
}

}  // namespace
}  // namespace tobbin
