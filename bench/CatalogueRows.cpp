#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Files.h"
#include "Machine.h"
#include "Rows.h"
#include "util/Check.h"

namespace tobbin {

void FillCatalogue(clsMain& catalogue, int songs) {
    for (int i = 0; i < songs; ++i)
        catalogue.OnSongFound("C:\\Music\\Artist " + std::to_string(i / 40) + "\\Album " +
                                  std::to_string(i / 9) + "\\",
                              std::to_string(i) + " A song.mp3");
}

namespace {

constexpr int kSongs = 1'000'000;

// A catalogue of a million songs on the disk.
struct Saved {
    Saved() {
        std::filesystem::create_directories(folder.Path() + "/Tobbin/Grouping/System");
        Machine machine(folder.Path());
        CHECK(machine.settings.CreateNewIniFile(machine.settings.SettingsPath()));
        FillCatalogue(machine.catalogue, kSongs);
        CHECK(machine.catalogue.Save());
    }
    std::string File() const { return folder.Path() + "/Tobbin/Grouping/FileLocNames.lmz"; }
    TemporaryFolder folder;
};

Time Load(const Saved& saved) {
    Machine machine(saved.folder.Path());
    CHECK(machine.settings.GetandLoadIniInfo(machine.settings.SettingsPath()).outcome ==
          LoadOutcome::Loaded);
    return TimeOf([&] { CHECK(machine.catalogue.LoadMain()); });
}

// With one rank changed, so that there is something to write.
Time Save(const Saved& saved) {
    Machine machine(saved.folder.Path());
    static_cast<void>(machine.settings.GetandLoadIniInfo(machine.settings.SettingsPath()));
    CHECK(machine.catalogue.LoadMain());
    machine.catalogue.Mp3Info(clsMain::kRank, 1,
                              machine.catalogue.Mp3Info(clsMain::kRank, 1) == "7" ? "2" : "7");
    return TimeOf([&] { CHECK(machine.catalogue.Save()); });
}

// Songs whose names are all the same, or all different, each of which a search found twice.
Time DropDuplicates(bool equal) {
    Machine machine("");
    for (int i = 0; i < kSongs; ++i)
        machine.catalogue.OnSongFound("C:\\Music\\" + std::to_string(i / 9) + "\\",
                                      equal ? "Track.mp3" : std::to_string(i) + " A song.mp3");
    machine.settings.LocOfGroupingDir(
        "/nowhere\\");  // The save that belongs to it is not measured.
    return TimeOf([&] { static_cast<void>(machine.catalogue.DeleteIdenticalFileNamesAndPaths()); });
}

Time OneSort(bool equal) {
    std::vector<std::pair<std::string, int>> names;
    for (int i = 0; i < kSongs; ++i)
        names.emplace_back(equal ? "Track.mp3" : std::to_string(i) + " A song.mp3", i);
    return TimeOf([&] { std::sort(names.begin(), names.end()); });
}

}  // namespace

void AddCatalogueRows() {
    const auto saved = [kept = std::make_shared<std::unique_ptr<Saved>>()]() -> const Saved& {
        if (*kept == nullptr)  // Made when it is first asked for.
            *kept = std::make_unique<Saved>();
        return **kept;
    };
    AddRow(
        "load the catalogue", kSongs, 8, [=] { return Load(saved()); },
        [=] { return ReadPlainly(saved().File()); });
    AddRow(
        "save the catalogue", kSongs, 8, [=] { return Save(saved()); },
        [=] { return WritePlainly(saved().File()); });
    AddRow(
        "drop duplicates, all names different", kSongs, 3, [] { return DropDuplicates(false); },
        [] { return OneSort(false); });
    AddRow(
        "drop duplicates, all names equal", kSongs, 3, [] { return DropDuplicates(true); },
        [] { return OneSort(true); });
}

}  // namespace tobbin
