#include "ui/frmFind.h"

#include <random>

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

TEST_F(FindTest, WalksRoundOnceAndStartsAfresh) {
    Name(1, "Love Me Do");
    Name(2, "Glove");
    Name(3, "ÉTÉ");
    Select("Decades");
    commands.Do(FrameCommand::Find);
    EXPECT_EQ(frame.seen, (Texts{"find"}));
    frmFind& find = commands.Find();
    find.Load();
    Window().CurrentPaneWFocus(Pane::Tree);
    EXPECT_EQ(Find("LOVE"), "Happy/0");
    EXPECT_EQ(Window().CurrentPaneWFocus(), Pane::List);
    EXPECT_EQ(find.LastLookedFor(), "love");
    EXPECT_FALSE(find.FirstRun());
    EXPECT_TRUE(find.LookingForTheLastNode());
    EXPECT_EQ(Find("LOVE"), "Happy/1");
    EXPECT_EQ(Find("LOVE"), "All Songs/0");
    EXPECT_EQ(Find("LOVE"), "All Songs/1");
    EXPECT_EQ(Find("LOVE"), "Abba/0");
    EXPECT_EQ(Find("LOVE"), "Can't find 'love' Decades");
    EXPECT_TRUE(find.FirstRun());
    EXPECT_FALSE(find.LookingForTheLastNode());
    EXPECT_EQ(Find("LOVE"), "Happy/0");
    // What stands above the first hit of the starting folder comes last.
    Select("By Mood/Happy", {2});
    find.Text1_Change();
    EXPECT_EQ(Find("t"), "Happy/2");
    find.Text1_Change();
    EXPECT_EQ(Find("été"), "Happy/2");
    EXPECT_EQ(Find("été"), "All Songs/2");
    EXPECT_EQ(Find("été"), "Happy/2");
    EXPECT_EQ(Find("été"), "Can't find 'été' Happy");
    // A pattern means nothing; no text means every song; a missing song has the name that is shown.
    EXPECT_EQ(Find("l*e"), "Can't find 'l*e' Happy");
    EXPECT_EQ(Find(""), "Happy/0");
    EXPECT_EQ(Find(""), "Happy/1");
    application.Catalogue().Mp3Info(clsMain::kPresence, 3, "0");
    Name(3, "0");
    find.Text1_Change();
    EXPECT_EQ(Find("C"), "Happy/2");
    find.Unload();
    EXPECT_TRUE(find.FirstRun());
}

TEST_F(FindTest, LooksOnFromTheFocusedSongWithTheDialogClosed) {
    commands.Do(FrameCommand::FindNext);  // nothing was looked for yet
    EXPECT_EQ(frame.seen, (Texts{"find"}));
    Select("All Songs");
    EXPECT_EQ(Find("b"), "All Songs/1");
    commands.Find().Unload();
    commands.Do(FrameCommand::FindNext);
    EXPECT_EQ(Shown(), "Happy/1");
    Select("All Songs", {0});
    commands.Do(FrameCommand::FindNext);
    EXPECT_EQ(Shown(), "All Songs/1");
    View().SelectFolder(nullptr);
    EXPECT_FALSE(commands.IsEnabled(FrameCommand::Find));
    EXPECT_EQ(Find("a"), "nothing");
}

// The steps of the search, one by one, over folders in the order of the tree.
struct LiteralFind {
    std::vector<std::pair<std::string, std::vector<std::string>>> folders;  // key, songs' names
    std::size_t selected = 0;
    int row = -1;  // the selected one
    bool firstRun = true, lookingForTheLastNode = false;
    std::size_t current = 0, start = 0;
    int lastHit = -1;

    bool Press(const std::string& text) {
        if (firstRun) {
            current = 0;
            while (folders[current].first != folders[selected].first)
                ++current;
            start = current;
            lastHit = -1;
            firstRun = lookingForTheLastNode = false;
        }
        if (current == selected)
            row = -1;
        while (true) {
            const auto& songs = folders[current].second;
            for (int i = lastHit + 1; i < static_cast<int>(songs.size()); ++i)
                if (songs[static_cast<std::size_t>(i)].find(text) != std::string::npos) {
                    selected = current;
                    lastHit = row = i;
                    return true;
                }
            if (lookingForTheLastNode && current == start) {
                firstRun = true;
                lookingForTheLastNode = false;
                return false;
            }
            if (current == start)
                lookingForTheLastNode = true;
            current = (current + 1) % folders.size();
            lastHit = -1;
            selected = current;
            row = -1;
        }
    }
};

TEST_F(FindTest, FindsWhatTheStepsOneByOneFind) {
    std::mt19937 random(7);
    for (int round = 0; round < 60; ++round) {
        JukeboxWindow& window = OpenJukebox("ROUND");
        FakeJukeboxView& view = *frame.children.back().view;
        Jukebox& jukebox = window.Model();
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
        Name(1, "ab");
        Name(2, "bc");
        Name(3, "cd");
        LiteralFind literal;
        std::vector<Folder*> inOrder;
        for (Folder* folder = jukebox.Next(nullptr); folder != nullptr;
             folder = jukebox.Next(folder)) {
            inOrder.push_back(folder);
            auto& [key, names] = literal.folders.emplace_back(
                folder->Text() + std::to_string(folder->Level()), Texts{});
            for (const SongItem& song : folder->Songs())
                names.push_back(
                    application.Catalogue().Mp3Info(clsMain::kFileName, song.recordNumber));
        }
        literal.selected = random() % inOrder.size();
        view.SelectFolder(inOrder[literal.selected]);
        commands.Find().Load();
        std::string text;
        for (int press = 0; press < 30; ++press) {
            if (press % 10 == 0) {
                text = std::string(1, "abde"[random() % 4]);
                commands.Find().Text1_Change();
                literal.firstRun = true;
            }
            const bool found = literal.Press(text);
            const std::string box = Find(text);
            ASSERT_EQ(fake.dialogs.boxes.empty(), found) << round << " " << press;
            ASSERT_EQ(window.SelectedFolder(), inOrder[literal.selected]) << round << " " << press;
            ASSERT_EQ(view.rows,
                      literal.row < 0 ? Rows{} : Rows{static_cast<std::size_t>(literal.row)});
        }
        view.closed = true;
        view.visible = false;
    }
}

}  // namespace
}  // namespace tobbin
