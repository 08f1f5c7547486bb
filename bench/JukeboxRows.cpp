#include <memory>
#include <string>

#include "fakes/FakeJukeboxView.h"
#include "fakes/TaggedSong.h"
#include "Files.h"
#include "jukebox/InitialJukebox.h"
#include "jukebox/JukeboxFile.h"
#include "jukebox/SongClipboard.h"
#include "Machine.h"
#include "Rows.h"
#include "ui/frmFind.h"
#include "util/Check.h"

namespace tobbin {
namespace {

constexpr int kItems = 500'000;
constexpr char kPath[] = "C:\\mix.juk";

// A hundred folders with half a million songs in all, from a catalogue of as many.
class BigJukebox : public Machine {
 public:
    explicit BigJukebox(const std::string& root) : Machine(root) {
        constexpr int kFolders = 100;
        FillCatalogue(catalogue, kItems);
        AddListColumns(model);
        for (int i = 0; i < kFolders; ++i) {
            std::vector<SongItem> songs;
            for (int record = 1 + i; record <= kItems; record += kFolders)
                songs.push_back(
                    model.MakeItem(catalogue.Mp3Info(clsMain::kFileName, record), record, 2));
            model.AppendSongs(model.AddChild(nullptr, "Folder " + std::to_string(i)), songs);
        }
    }
    Jukebox model;
};

// Milliseconds.
double Save(const TemporaryFolder& folder) {
    const BigJukebox machine(folder.Path());
    PosixDisk disk(folder.Path());
    return TimeOf([&] {
               CHECK(SaveJukeboxFile(disk, kPath, machine.model, machine.catalogue).Ok());
           }).byClock *
           1000;
}

double Load(const TemporaryFolder& folder) {
    Machine machine(folder.Path());
    FillCatalogue(machine.catalogue, kItems);
    std::unique_ptr<Jukebox> jukebox;
    return TimeOf([&] {
               CHECK(LoadJukeboxFile(machine.disk, kPath, machine.catalogue, machine.fake.text,
                                     jukebox)
                         .outcome == LoadOutcome::Loaded);
           }).byClock *
           1000;
}

// Fills the automatic groups with 100,000 songs, whose files are in memory.
Time FileByArtists(int artists) {
    constexpr int kSongs = 100'000;
    FakeEnvironment fake;
    clsINI settings(fake.environment, "C:\\T\\");
    SortCity sorter(fake.text);
    Progress progress;
    clsMain catalogue(fake.environment, settings, sorter, progress);
    for (int i = 0; i < kSongs; ++i) {
        const std::string folder = "C:\\Music\\" + std::to_string(i / 10) + "\\";
        const std::string name = std::to_string(i) + " A song.mp3";
        fake.disk.AddFile(folder + name, TaggedSong(std::to_string(i % artists) + " and band",
                                                    std::to_string(1920 + i % 90), i % 148));
        catalogue.OnSongFound(folder, name);
    }
    Jukebox jukebox;
    struct OneJukebox : OpenJukeboxes {
        explicit OneJukebox(Jukebox& jukebox) : only(jukebox) {}
        std::size_t Count() const override { return 1; }
        Jukebox& At(std::size_t /*index*/) const override { return only; }
        Jukebox& only;
    } open(jukebox);
    AutomaticGroups groups(fake.environment, catalogue, open);
    return TimeOf([&] { BuildInitialJukebox(jukebox, groups, progress); });
}

// Milliseconds of a search of the whole jukebox that finds nothing.
double FindNothing() {
    BigJukebox machine("");
    machine.jukebox = &machine.model;
    SongClipboard clipboard;
    FakeJukeboxWindowHost host;
    FakeJukeboxView view;
    JukeboxWindow window({machine.environment, machine.catalogue, machine.settings, machine.sorter,
                          clipboard, machine.Open(), machine.groups},
                         machine.model, host);
    view.controller = &window;
    window.SetView(&view);
    view.SelectFolder(machine.model.Next(nullptr));
    frmFind find(machine.environment, machine.catalogue, [&] { return &window; });
    find.Load();
    return TimeOf([&] { find.Command1_Click("no song is called so"); }).byClock * 1000;
}

}  // namespace

void AddJukeboxRows() {
    const auto folder = std::make_shared<TemporaryFolder>();
    AddFigure("save a jukebox, ms", kItems, 250, [=] { return Save(*folder); });
    AddFigure("load a jukebox, ms", kItems, 250, [=] { return Load(*folder); });
    AddRow(
        "file by 20,000 artists; floor: by 20", 100'000, 2, [] { return FileByArtists(20'000); },
        [] { return FileByArtists(20); });
    AddFigure("find nothing, ms", kItems, 100, FindNothing);
}

}  // namespace tobbin
