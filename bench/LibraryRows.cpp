#include <dirent.h>
#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
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

// Reads the last 128 bytes of a file and, where they are no ID3v1 tag, the ID3v2 tag at its begin.
void ReadTag(const std::string& song) {
    std::array<char, 128> tag{};
    const int file = open(song.c_str(), O_RDONLY);
    const off_t size = lseek(file, 0, SEEK_END);
    CHECK(pread(file, tag.data(), tag.size(), size - 128) == 128);
    if (std::string_view(tag.data(), 3) != "TAG") {
        CHECK(pread(file, tag.data(), 10, 0) == 10);
        std::size_t bytes = 0;
        for (std::size_t i = 6; i < 10; ++i)
            bytes = bytes << 7 | static_cast<unsigned char>(tag[i]);
        std::string frames(std::string_view(tag.data(), 3) == "ID3" ? bytes : 0, '\0');
        CHECK(pread(file, frames.data(), frames.size(), 10) == static_cast<ssize_t>(frames.size()));
    }
    close(file);
}

// Calls `work` with the numbers from 0 to below `count`, on so many threads; 0 is this one.
void SideBySide(unsigned threads, std::size_t count, const std::function<void(std::size_t)>& work) {
    std::atomic<std::size_t> next = 0;
    const auto run = [&] {
        for (std::size_t at = next++; at < count; at = next++)
            work(at);
    };
    std::vector<std::jthread> others;
    while (others.size() < threads)
        others.emplace_back(run);
    if (threads == 0)
        run();
}

Time ListAndReadTags(const std::string& library, unsigned threads) {
    return TimeOf([&] {
        PlainWalk walk;
        walk.Walk(library);
        SideBySide(threads, walk.songs.size(), [&](std::size_t at) { ReadTag(walk.songs[at]); });
    });
}

std::vector<std::string> FoldersOf(const std::string& library) {
    PlainWalk walk;
    walk.Walk(library);
    return walk.folders;
}

Time ListFolders(const std::vector<std::string>& folders, unsigned threads) {
    return TimeOf([&] {
        SideBySide(threads, folders.size(), [&](std::size_t at) {
            DIR* const stream = opendir(folders[at].c_str());
            CHECK(stream != nullptr);
            while (readdir(stream) != nullptr) {
            }
            closedir(stream);
        });
    });
}

// Lets the system forget what it holds of the disk. Takes the rights of an administrator.
void DropCaches() {
    sync();
    std::ofstream caches("/proc/sys/vm/drop_caches");
    caches << "3" << std::flush;
    CHECK(caches.good());
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

void AddLibraryRows(const std::string& library, int songs, bool cold) {
    if (cold) {
        constexpr unsigned kThreads = 16;
        const auto folders = FoldersOf(library);
        const auto forgotten = [](const Timed& work) {
            return [=] {
                DropCaches();
                return work();
            };
        };
        AddRow("a first run, cold", songs, 1.6, forgotten([=] { return FirstRun(library); }),
               forgotten([=] { return ListAndReadTags(library, kThreads); }));
        AddRow("a start with nothing changed, cold", songs, 1.6,
               forgotten([=] { return SecondStart(library); }),
               forgotten([=] { return ListFolders(folders, kThreads); }));
        return;
    }
    AddRow(
        "a first run", songs, 2.5, [=] { return FirstRun(library); },
        [=] { return ListAndReadTags(library, 0); });
    AddRow(
        "a start with nothing changed", songs, 4, [=] { return SecondStart(library); },
        [=] { return ListFolders(FoldersOf(library), 0); });
    AddFigure("peak memory of a first run, MB", songs, 0,
              [=] { return PeakOf([&] { return FirstRun(library); }); });
    AddFigure("peak memory of a start, MB", songs, 0,
              [=] { return PeakOf([&] { return SecondStart(library); }); });
    AddFigure("memory of a song, bytes", songs, 500, [=] { return BytesOfASong(library); });
}

}  // namespace tobbin
