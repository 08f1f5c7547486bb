// Measures the core on a library of real files: measure_library FOLDER
//
// FOLDER stands for drive C:; the program's own files go into FOLDER/Tobbin, made anew. Prints what
// each step of a first run and of a second start takes, and the peak memory.

#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>

#include "catalogue/clsINI.h"
#include "catalogue/clsMain.h"
#include "fakes/FakeOutside.h"
#include "PosixDisk.h"
#include "tags/MP3TagEditor.h"
#include "util/Check.h"

namespace tobbin {
namespace {

template <typename Work>
void Step(const char* name, Work work) {
    const auto start = std::chrono::steady_clock::now();
    CHECK(work());
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("%-34s %8.3f s   peak %6ld MB\n", name, seconds.count(), usage.ru_maxrss / 1024);
}

// The outside with real files; everything else is the tests' own.
struct Machine {
    explicit Machine(const std::string& root) : disk(root) {}

    FakeOutside fake;
    PosixDisk disk;
    Outside outside{fake.text,     disk,        fake.drives, fake.dialogs,    fake.userSettings,
                    fake.programs, fake.events, fake.clock,  fake.statusLine, fake.player};
    SortCity sorter{fake.text};
    Progress progress;
    clsINI settings{outside, "C:\\Tobbin\\"};
    clsMain catalogue{outside, settings, sorter, progress};
};

void Measure(const std::string& root) {
    {
        Machine first(root);
        CHECK(first.settings.CreateNewIniFile(first.settings.SettingsPath()));
        Step("first run: search, sort, save", [&] { return first.catalogue.SearchHardDrives(); });
        std::printf("songs: %d\n", first.catalogue.UBoundOfMp3Array());
        int tags = 0;
        Step("read every tag", [&] {
            MP3TagEditor editor(first.disk, first.fake.text);
            for (std::int32_t record = 1; record <= first.catalogue.UBoundOfMp3Array(); ++record)
                tags += editor.LoadMP3(first.catalogue.SongPath(record)) && editor.TagExists();
            return true;
        });
        std::printf("tags: %d\n", tags);
    }
    Machine second(root);
    Step("second start: settings", [&] {
        return second.settings.GetandLoadIniInfo(second.settings.SettingsPath()).outcome ==
               LoadOutcome::Loaded;
    });
    Step("second start: load", [&] { return second.catalogue.LoadMain(); });
    Step("second start: missing files", [&] {
        second.catalogue.CheckToSeeIfFilesAreMissingAndMakeFalse();
        return true;
    });
    const std::int32_t songs = second.catalogue.UBoundOfMp3Array();
    Step("second start: new files",
         [&] { return second.catalogue.AddAnyAdditionalMp3FromTheNormalDirectories(); });
    CHECK(second.catalogue.UBoundOfMp3Array() == songs);
}

}  // namespace
}  // namespace tobbin

int main(int count, char** arguments) {
    if (count != 2) {
        std::fprintf(stderr, "usage: measure_library FOLDER\n");
        return 2;
    }
    const std::string root = arguments[1];
    std::filesystem::remove_all(root + "/Tobbin");
    std::filesystem::create_directories(root + "/Tobbin/Grouping/System");
    tobbin::Measure(root);
    return 0;
}
