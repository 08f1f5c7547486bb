#include "ui/frmFind.h"

#include <deque>
#include <random>
#include <utility>

#include "unit/ui/EditingFixture.h"

namespace tobbin {
namespace {

// "folder/row" of the one selected row; the folder alone when none is selected.
class FindTest : public EditingTest {
 protected:
    std::string Shown() {
        const Folder* const folder = Window().SelectedFolder();
        std::string shown = folder == nullptr ? "nothing" : folder->Text();
        for (const std::size_t row : View().rows)
            shown += "/" + std::to_string(row);
        return shown;
    }
    std::string Find(const std::string& text) {
        fake.dialogs.boxes.clear();
        commands.Find().Command1_Click(text);
        return LastBox().empty() ? Shown() : LastBox() + " " + Shown();
    }
    void Name(std::int32_t record, const std::string& name) {
        application.Catalogue().Mp3Info(clsMain::kFileName, record, name);
    }
};

TEST_F(FindTest, MatchesAnyPartOfANameWhateverTheCase) {
    Name(1, "Love Me Do");
    Name(2, "Glove");
    Name(3, "ÉTÉ");
    Select("Decades");
    commands.Do(Command::Find);
    EXPECT_EQ(frame.seen, (Texts{"find"}));
    frmFind& find = commands.Find();
    find.Load();
    EXPECT_EQ(Find("LOVE"), "Happy/0");
    EXPECT_EQ(LastLine(), "Hit 4 of 5: \"a\" in \"Happy\".");
    EXPECT_EQ(Window().CurrentPaneWFocus(), Pane::List);
    EXPECT_EQ(find.LastLookedFor(), "love");
    EXPECT_TRUE(find.LookingForTheLastNode());
    find.Text1_Change();
    EXPECT_EQ(Find("été"), "Happy/2");
    // A pattern means nothing; no text means every song; a missing song has the name that is shown.
    EXPECT_EQ(Find("l*e"), "Can't find 'l*e' Happy");
    EXPECT_FALSE(find.LookingForTheLastNode());
    EXPECT_EQ(Find(""), "Happy/0");
    application.Catalogue().Mp3Info(clsMain::kPresence, 3, "0");
    Name(3, "0");
    find.Text1_Change();
    EXPECT_EQ(Find("C"), "Happy/2");
    find.Unload();
    EXPECT_TRUE(find.FirstRun());
}

TEST_F(FindTest, LooksOnFromTheFocusedSongWithTheDialogClosed) {
    commands.Do(Command::FindNext);  // nothing was looked for yet
    EXPECT_EQ(frame.seen, (Texts{"find"}));
    Select("All Songs");
    EXPECT_EQ(Find("b"), "All Songs/1");
    commands.Find().Unload();
    commands.Do(Command::FindNext);
    EXPECT_EQ(Shown(), "Happy/1");
    Select("All Songs", {0});
    commands.Do(Command::FindNext);
    EXPECT_EQ(Shown(), "All Songs/1");
    Jukebox& jukebox = Window().Model();
    Folder* twins[2] = {};
    for (Folder*& twin : twins) {
        twin = &jukebox.AddChild(At("Decades"), "Twin");
        jukebox.AppendSongs(*twin, {jukebox.MakeItem("b", 2, 2)});
    }
    View().SelectFolder(twins[0]);
    for (int i = 0; i < 2; ++i) {  // "b" of the one, then of the other
        commands.Do(Command::FindNext);
        EXPECT_EQ(Window().SelectedFolder(), twins[i]);
    }
    View().SelectFolder(nullptr);
    EXPECT_FALSE(commands.IsEnabled(Command::Find));
    EXPECT_EQ(Find("a"), "nothing");
}

// Fills a jukebox with some folders of some songs, and returns them in the order of the tree.
std::vector<Folder*> MakeFolders(Jukebox& jukebox, std::mt19937& random) {
    while (jukebox.RootCount() > 0)
        jukebox.Remove(jukebox.Root(0));
    std::vector<Folder*> made;
    for (std::size_t i = 0; i < 1 + random() % 12; ++i) {
        Folder* const parent =
            made.empty() || random() % 3 == 0 ? nullptr : made[random() % made.size()];
        made.push_back(&jukebox.AddChild(parent, std::string(1, "xyz"[random() % 3])));
        std::vector<SongItem> songs(random() % 5);
        for (SongItem& song : songs)
            song = jukebox.MakeItem("", 1 + static_cast<std::int32_t>(random() % 3), 2);
        jukebox.AppendSongs(*made.back(), songs);
    }
    made.clear();
    for (Folder* folder = jukebox.Next(nullptr); folder != nullptr; folder = jukebox.Next(folder))
        made.push_back(folder);
    return made;
}

TEST_F(FindTest, PassesEachFolderOnceAndTheFirstOneTwice) {
    const char* const names[] = {"ab", "bc", "cd"};
    std::mt19937 random(7);
    for (int round = 0; round < 60; ++round) {
        JukeboxWindow& window = OpenJukebox("ROUND");
        FakeJukeboxView& view = *frame.children.back().view;
        const std::vector<Folder*> folders = MakeFolders(window.Model(), random);
        for (std::int32_t record = 1; record <= 3; ++record)
            Name(record, names[record - 1]);
        view.SelectFolder(folders[random() % folders.size()]);
        commands.Find().Load();
        std::string text;
        std::size_t start = 0;
        std::deque<std::pair<Folder*, std::size_t>> hits;  // those to come
        for (int press = 0; press < 30; ++press) {
            SCOPED_TRACE(round * 100 + press);
            const bool isNewText = press % 10 == 0;
            if (isNewText) {
                text = std::string(1, "abde"[random() % 4]);
                commands.Find().Text1_Change();
            }
            if (isNewText || commands.Find().FirstRun()) {
                const Folder& selected = *window.SelectedFolder();
                for (start = 0; folders[start]->Text() != selected.Text() ||
                                folders[start]->Level() != selected.Level();)
                    ++start;
                hits.clear();
                for (std::size_t i = start; i <= start + folders.size(); ++i) {
                    Folder* const folder = folders[i % folders.size()];
                    for (std::size_t row = 0; row < folder->Songs().size(); ++row)
                        if (std::string(names[folder->Songs()[row].recordNumber - 1]).find(text) !=
                            std::string::npos)
                            hits.emplace_back(folder, row);
                }
            }
            Find(text);
            ASSERT_EQ(LastBox(), hits.empty() ? "Can't find '" + text + "'" : "");
            ASSERT_EQ(commands.Find().FirstRun(), hits.empty());
            ASSERT_EQ(window.SelectedFolder(), hits.empty() ? folders[start] : hits.front().first);
            ASSERT_EQ(view.rows, hits.empty() ? Rows{} : Rows{hits.front().second});
            if (!hits.empty())
                hits.pop_front();
        }
        view.closed = true;
        view.visible = false;
    }
}

}  // namespace
}  // namespace tobbin
