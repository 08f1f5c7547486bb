#include <memory>
#include <numeric>
#include <string>
#include <vector>

#include "fakes/FakeJukeboxView.h"
#include "Files.h"
#include "Machine.h"
#include "Rows.h"

namespace tobbin {
namespace {

constexpr int kSongs = 100'000;
constexpr double kLimit = 200;  // milliseconds: a person doesn't feel it

// A jukebox window on one folder with all songs, every one of them selected.
class FullFolder {
 public:
    FullFolder() : m_machine(m_disk.Path()) {
        FillCatalogue(m_machine.catalogue, kSongs);
        m_machine.jukebox = &m_jukebox;
        m_jukebox.AddColumn(kNameHeading);
        std::vector<SongItem> songs;
        for (int record = 1; record <= kSongs; ++record)
            songs.push_back(m_jukebox.MakeItem(
                m_machine.catalogue.Mp3Info(clsMain::kFileName, record), record, 2));
        m_jukebox.SetSongs(folder, songs);
        m_view.controller = &window;
        window.SetView(&m_view);
        m_view.SelectFolder(&folder);
        std::vector<std::size_t> all(kSongs);
        std::iota(all.begin(), all.end(), 0);
        m_view.SelectRows(all);
    }

 private:
    TemporaryFolder m_disk;
    Machine m_machine;
    Jukebox m_jukebox;
    SongClipboard m_clipboard;
    FakeJukeboxWindowHost m_host;
    FakeJukeboxView m_view;

 public:
    Folder& folder = m_jukebox.AddChild(nullptr, "Songs");
    JukeboxWindow window{{m_machine.environment, m_machine.catalogue, m_machine.settings,
                          m_machine.sorter, m_clipboard, m_machine.Open(), m_machine.groups},
                         m_jukebox,
                         m_host};
    void PopUp(int command) { window.ActOnPopUpClick(command, 2, &folder); }
};

}  // namespace

void AddEditingRows() {
    using Work = std::function<void(FullFolder&)>;
    const auto add = [](const std::string& what, const Work& before, const Work& work) {
        AddFigure(what + ", ms", kSongs, kLimit, [=] {
            FullFolder full;
            before(full);
            return TimeOf([&] { work(full); }).byClock * 1000;
        });
    };
    const auto nothing = [](FullFolder&) {};
    const auto cut = [](FullFolder& full) { full.PopUp(4); };
    const auto rank = [](FullFolder& full) { full.PopUp(9); };
    const auto sort = [](FullFolder& full) { full.window.OnHeaderClicked(); };
    const auto undo = [](FullFolder& full) { full.window.Undo(); };
    add("sort by name", nothing, sort);
    add(
        "sort by rank", [=](FullFolder& full) { sort(full), sort(full); }, sort);
    add("rank", nothing, rank);
    add("undo the ranking", rank, undo);
    add("cut", nothing, cut);
    add("undo the cut", cut, undo);
    add("paste", cut, [](FullFolder& full) { full.PopUp(6); });
}

}  // namespace tobbin
