// The catalogue file, as a start finds it: no readable record is lost, a damaged file is kept, and
// what is saved is whole.
#include "catalogue/CatalogueFile.h"
#include "catalogue/CatalogueRepair.h"
#include "catalogue/clsMain.h"
#include "Fuzzing.h"

namespace tobbin {

void TakeInput(std::string_view bytes) {
    constexpr char kPath[] = "C:\\T\\Grouping\\FileLocNames.lmz";
    FakeEnvironment fake;
    fake.disk.AddFolder("C:\\T\\Grouping\\System");
    fake.disk.AddFile(kPath, std::string(bytes));
    clsINI settings(fake.environment, "C:\\T\\");
    settings.LocOfGroupingDir("C:\\T\\Grouping\\");
    settings.NumerOfRecordsInTheMain(1);
    SortCity sorter(fake.text);
    FakeProgress progress;
    clsMain catalogue(fake.environment, settings, sorter, progress);
    const CatalogueStart start = LoadCatalogueAtStart(fake.environment, settings, catalogue);
    const std::int32_t songs = SummariseCatalogue(bytes).songs;
    CHECK(catalogue.UBoundOfMp3Array() >= songs);
    if (start.finding == CatalogueFinding::Damaged)
        CHECK(fake.disk.Content(start.keptAs) == bytes);
    const std::int32_t loaded = catalogue.UBoundOfMp3Array();
    if (loaded == 0)
        return;
    CHECK(catalogue.Save());
    const CatalogueSummary saved = SummariseCatalogue(fake.disk.Content(kPath));
    CHECK(!saved.damage && saved.songs == loaded);
}

}  // namespace tobbin
