#pragma once

#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "jukebox/JukeboxFile.h"
#include "unit/shell/FrameFixture.h"

namespace tobbin {

// Where a, b and c are the songs of the catalogue.
inline constexpr char kStart[] =
    "All Songs(abc) Artist[Abba(a)] Decades[70's 10's] By Mood[Happy(abc)]";

// The frame with one jukebox window, which holds this.
class EditingTest : public FrameTest {
 protected:
    using Rows = std::vector<std::size_t>;
    using Texts = std::vector<std::string>;

    EditingTest() { OpenJukebox("MINE"); }

    JukeboxWindow& OpenJukebox(const std::string& caption) {
        Jukebox& jukebox = application.AddJukebox(std::make_unique<Jukebox>());
        AddListColumns(jukebox);
        Folder& all = jukebox.AddChild(nullptr, "All Songs");
        Folder& abba = jukebox.AddChild(&jukebox.AddChild(nullptr, "Artist"), "Abba");
        Folder& decades = jukebox.AddChild(nullptr, "Decades");
        jukebox.AddChild(&decades, "70's");
        jukebox.AddChild(&decades, "10's");
        Folder& happy = jukebox.AddChild(&jukebox.AddChild(nullptr, "By Mood"), "Happy");
        for (int record = 1; record <= 3; ++record) {
            const SongItem song =
                jukebox.MakeItem(std::string(1, static_cast<char>('`' + record)), record, 2);
            for (Folder* const folder : {&all, &happy, &abba})
                if (folder != &abba || record == 1)
                    jukebox.AppendSongs(*folder, {song});
        }
        jukebox.DaCaption(caption);
        jukebox.IsFormDirty(false);
        frame.OpenJukeboxWindow(jukebox);
        return *frame.children.back().window;
    }

    JukeboxWindow& Window(std::size_t index = 0) { return *frame.children[index].window; }
    FakeJukeboxView& View(std::size_t index = 0) { return *frame.children[index].view; }

    // The folder at a path such as "By Mood/Happy"; null when there is none.
    Folder* At(const std::string& path, std::size_t window = 0) {
        std::istringstream parts(path);
        std::string part;
        std::getline(parts, part, '/');
        Folder* folder = Window(window).Model().MaybeFind(part);
        while (folder != nullptr && std::getline(parts, part, '/'))
            folder = folder->MaybeChild(part);
        return folder;
    }
    // Selects a folder, and rows of it when there are any, and gives that pane the focus.
    void Select(const std::string& path, const Rows& rows = {}, std::size_t window = 0) {
        View(window).SelectFolder(At(path, window));
        View(window).SelectRows(rows);
        Window(window).CurrentPaneWFocus(rows.empty() ? Pane::Tree : Pane::List);
    }
    // An entry of the pop-up menu of a folder, or of its songs when rows are given.
    void PopUp(int command, const std::string& path, const Rows& rows = {},
               std::size_t window = 0) {
        Select(path, rows, window);
        Window(window).ActOnPopUpClick(command, rows.empty() ? 1 : 2, At(path, window));
    }

    // The tree in one line, as above; a song is its text.
    static std::string Dump(const Jukebox& jukebox) {
        std::string dump;
        for (std::size_t i = 0; i < jukebox.RootCount(); ++i)
            dump += (i > 0 ? " " : "") + Dump(jukebox, jukebox.Root(i));
        return dump;
    }
    static std::string Dump(const Jukebox& jukebox, const Folder& folder) {
        std::string dump = folder.Text();
        for (const SongItem& song : folder.Songs())
            dump += (&song == folder.Songs().data() ? "(" : "") + std::string(jukebox.TextOf(song));
        dump += folder.Songs().empty() ? "" : ")";
        for (std::size_t i = 0; i < folder.ChildCount(); ++i)
            dump += (i > 0 ? " " : "[") + Dump(jukebox, folder.Child(i));
        return dump + (folder.ChildCount() > 0 ? "]" : "");
    }
    std::string Tree(std::size_t window = 0) { return Dump(Window(window).Model()); }
    // What is written down of the jukebox and the catalogue.
    std::string Bytes(std::size_t window = 0) {
        return WriteJukebox(Window(window).Model(), application.Catalogue()) +
               fake.disk.Content("C:\\App\\Grouping\\FileLocNames.lmz");
    }
    std::string Ranks() {
        std::string ranks;
        for (std::int32_t i = 1; i <= application.Catalogue().UBoundOfMp3Array(); ++i)
            ranks += application.Catalogue().Mp3Info(clsMain::kRank, i);
        return ranks;
    }
};

}  // namespace tobbin
