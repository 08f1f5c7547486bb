#include "catalogue/CatalogueRepair.h"

#include "catalogue/CatalogueFile.h"
#include "unit/catalogue/CatalogueFixture.h"

namespace tobbin {
namespace {

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
        "The song catalogue \"C:\\T\\Grouping\\FileLocNames.lmz\" is not there any more.  Its "
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

}  // namespace
}  // namespace tobbin
