// Measures a jukebox of half a million song items and a run of the automatic groups, and prints
// milliseconds. The disk is in memory: what is measured is the program's own work.
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "catalogue/clsMain.h"
#include "fakes/FakeOutside.h"
#include "fakes/TaggedSong.h"
#include "jukebox/InitialJukebox.h"
#include "jukebox/JukeboxFile.h"

using namespace tobbin;

namespace {

constexpr int kSongs = 100'000;
constexpr int kArtists = 20'000;
constexpr int kItems = 500'000;

class OneJukebox : public OpenJukeboxes {
 public:
    explicit OneJukebox(Jukebox& jukebox) : m_jukebox(jukebox) {}
    std::size_t Count() const override { return 1; }
    Jukebox& At(std::size_t) const override { return m_jukebox; }

 private:
    Jukebox& m_jukebox;
};

template <typename Work>
void Measure(const char* what, Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
    std::printf("%-44s %8.0f ms\n", what, time.count());
}

}  // namespace

int main() {
    FakeOutside fake;
    clsINI settings(fake.outside, "C:\\T\\");
    SortCity sorter(fake.text);
    Progress progress;
    clsMain catalogue(fake.outside, settings, sorter, progress);
    for (int i = 0; i < kSongs; ++i) {
        const std::string folder = "C:\\Music\\Artist " + std::to_string(i % kArtists) + "\\";
        const std::string name = "A song of a common length " + std::to_string(i) + ".mp3";
        fake.disk.AddFile(folder + name,
                          TaggedSong("Artist " + std::to_string(i % kArtists) + " and band",
                                     std::to_string(1920 + i % 90), i % 148));
        catalogue.OnSongFound(folder, name);
    }

    Jukebox jukebox;
    OneJukebox open(jukebox);
    AutomaticGroups groups(fake.outside, catalogue, open);
    Measure("group 100,000 songs of 20,000 artists",
            [&] { BuildInitialJukebox(jukebox, groups, progress); });
    Measure("group again, nothing new", [&] { groups.BuildAutomaticGroups(0, true, ""); });

    std::size_t items = 0;
    for (const Folder* f = jukebox.Next(nullptr); f != nullptr; f = jukebox.Next(f))
        items += f->Songs().size();
    std::vector<SongItem> more = jukebox.MaybeFind("All Songs")->Songs();
    more.resize(kItems > items ? std::min(more.size(), kItems - items) : 0);
    jukebox.AppendSongs(*jukebox.MaybeFind("Dad's"), more);
    std::printf("items: %zu\n", items + more.size());

    std::string bytes;
    Measure("write the jukebox file", [&] { bytes = WriteJukebox(jukebox, catalogue); });
    std::printf("bytes: %zu\n", bytes.size());
    std::unique_ptr<Jukebox> loaded;
    Measure("read the jukebox file", [&] {
        const LoadResult result = ReadJukebox(bytes, "bench", catalogue, fake.text, loaded);
        if (result.outcome != LoadOutcome::Loaded)
            std::printf("%s\n", result.message.c_str());
    });
    Measure("copy it", [&] {
        Jukebox copy;
        CopyJukebox(jukebox, copy);
    });
    Measure("close it", [&] { loaded.reset(); });
    return 0;
}
