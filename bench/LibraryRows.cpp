#include <dirent.h>
#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "jukebox/InitialJukebox.h"
#include "jukebox/JukeboxFile.h"
#include "Machine.h"
#include "Rows.h"
#include "util/Check.h"

namespace tobbin {
namespace {

constexpr char kJukebox[] = "C:\\Tobbin\\Grouping\\mix.juk";

// A first run, but for the windows: find, sort, drop duplicates, save, read every tag, fill all
// groups, save the jukebox. Makes the program's folder anew.
Time FirstRun(const std::string& library) {
    std::filesystem::remove_all(library + "/Tobbin");
    std::filesystem::create_directories(library + "/Tobbin/Grouping/System");
    Machine machine(library);
    return TimeOf([&] {
        CHECK(machine.settings.CreateNewIniFile(machine.settings.SettingsPath()));
        CHECK(machine.catalogue.SearchHardDrives());
        Jukebox jukebox;
        machine.jukebox = &jukebox;
        BuildInitialJukebox(jukebox, machine.groups, machine.progress);
        CHECK(SaveJukeboxFile(machine.disk, kJukebox, jukebox, machine.catalogue).Ok());
    });
}

// A start with nothing changed: load, check every song, look for new ones, drop duplicates, load
// the jukebox, group again.
Time SecondStart(const std::string& library) {
    Machine machine(library);
    int songs = 0;
    const Time time = TimeOf([&] {
        CHECK(machine.settings.GetandLoadIniInfo(machine.settings.SettingsPath()).outcome ==
              LoadOutcome::Loaded);
        CHECK(machine.catalogue.LoadMain());
        songs = machine.catalogue.UBoundOfMp3Array();
        const ListedFolders listed = machine.catalogue.CheckToSeeIfFilesAreMissingAndMakeFalse();
        CHECK(machine.catalogue.AddAnyAdditionalMp3FromTheNormalDirectories(&listed));
        std::unique_ptr<Jukebox> jukebox;
        CHECK(LoadJukeboxFile(machine.disk, kJukebox, machine.catalogue, machine.fake.text, jukebox)
                  .outcome == LoadOutcome::Loaded);
        machine.jukebox = jukebox.get();
        machine.groups.BuildAutomaticGroups(0, true, jukebox->DaCaption());
        machine.jukebox = nullptr;
    });
    CHECK(machine.catalogue.UBoundOfMp3Array() == songs);
    return time;
}

// Lists every folder; the paths of the files that are songs are kept, and so are the folders.
struct PlainWalk {
    std::vector<std::string> folders, songs;
    void Walk(const std::string& folder) {
        DIR* const stream = opendir(folder.c_str());
        CHECK(stream != nullptr);
        folders.push_back(folder);
        std::vector<std::string> below;
        while (const dirent* const entry = readdir(stream)) {
            const std::string name = entry->d_name;
            if (name.ends_with(".mp3"))
                songs.push_back(folder + "/" + name);
            else if (entry->d_type == DT_DIR && name != "." && name != "..")
                below.push_back(folder + "/" + name);
        }
        closedir(stream);
        for (const std::string& next : below)
            Walk(next);
    }
};

Time ListAndReadTags(const std::string& library) {
    return TimeOf([&] {
        PlainWalk walk;
        walk.Walk(library);
        std::array<char, 128> tag{};
        for (const std::string& song : walk.songs) {
            const int file = open(song.c_str(), O_RDONLY);
            const off_t size = lseek(file, 0, SEEK_END);
            CHECK(pread(file, tag.data(), tag.size(), size - 128) == 128);
            close(file);
        }
    });
}

Time ListKnownFolders(const std::string& library) {
    PlainWalk walk;
    walk.Walk(library);
    std::size_t names = 0;
    return TimeOf([&] {
        for (const std::string& folder : walk.folders) {
            DIR* const stream = opendir(folder.c_str());
            while (readdir(stream) != nullptr)
                ++names;
            closedir(stream);
        }
        CHECK(names > 0);
    });
}

// Bytes on the heap for each song, with the catalogue and a jukebox of all groups open.
double BytesOfASong(const std::string& library) {
    const auto inUse = [] {
        const struct mallinfo2 info = mallinfo2();
        return info.uordblks + info.hblkhd;
    };
    const std::size_t before = inUse();
    Machine machine(library);
    static_cast<void>(machine.settings.GetandLoadIniInfo(machine.settings.SettingsPath()));
    CHECK(machine.catalogue.LoadMain());
    Jukebox jukebox;
    machine.jukebox = &jukebox;
    BuildInitialJukebox(jukebox, machine.groups, machine.progress);
    return static_cast<double>(inUse() - before) / machine.catalogue.UBoundOfMp3Array();
}

// By how many megabytes the process grows at most during some work.
double PeakOf(const Timed& work) {
    const auto kilobytes = [](const std::string& which) {
        std::ifstream status("/proc/self/status");
        for (std::string line; std::getline(status, line);)
            if (line.starts_with(which))
                return std::atof(line.c_str() + which.size());
        return 0.0;
    };
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5";  // The peak is now what is in use.
    const double before = kilobytes("VmRSS:");
    work();
    return (kilobytes("VmHWM:") - before) / 1024;
}

}  // namespace

void AddLibraryRows(const std::string& library, int songs) {
    AddRow(
        "a first run", songs, 2.5, [=] { return FirstRun(library); },
        [=] { return ListAndReadTags(library); });
    AddRow(
        "a start with nothing changed", songs, 4, [=] { return SecondStart(library); },
        [=] { return ListKnownFolders(library); });
    AddFigure("peak memory of a first run, MB", songs, 0,
              [=] { return PeakOf([&] { return FirstRun(library); }); });
    AddFigure("peak memory of a start, MB", songs, 0,
              [=] { return PeakOf([&] { return SecondStart(library); }); });
    AddFigure("memory of a song, bytes", songs, 500, [=] { return BytesOfASong(library); });
}

}  // namespace tobbin
