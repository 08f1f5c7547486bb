#include "ui/frmFind.h"

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

TEST_F(FindTest, PassesEachFolderOnceAndTheFirstOneTwice) {
    for (const auto& [record, name] : {std::pair(1, "ab"), {2, "bc"}, {3, "cd"}})
        Name(record, name);
    commands.Find().Load();
    const auto expect = [&](const std::string& text, const Texts& shown) {
        commands.Find().Text1_Change();
        for (const std::string& each : shown)
            EXPECT_EQ(Find(text), each) << text;
    };
    Select("Artist/Abba");
    expect("b", {"Abba/0", "Happy/0", "Happy/1", "All Songs/0", "All Songs/1", "Abba/0",
                 "Can't find 'b' Abba", "Abba/0", "Happy/0"});
    expect("D", {"Happy/2", "All Songs/2", "Happy/2", "Can't find 'd' Happy", "Happy/2"});
    expect("x", {"Can't find 'x' Happy", "Can't find 'x' Happy"});
    // The walk begins at the first folder of the selected one's text and level.
    Window().Model().AddChild(At("Artist"), "Happy");
    expect("d", {"Happy/2", "All Songs/2", "Can't find 'd' Happy"});
    EXPECT_EQ(Window().SelectedFolder(), At("Artist/Happy"));
}

}  // namespace
}  // namespace tobbin
