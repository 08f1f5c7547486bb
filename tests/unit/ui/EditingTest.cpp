#include <algorithm>

#include "fakes/TaggedSong.h"
#include "shell/CataloguePass.h"
#include "unit/ui/EditingFixture.h"

namespace tobbin {
namespace {

TEST_F(EditingTest, GuardsAndConfirmsWordForWord) {
    const std::string cut = "Are you sure you want to cut this folder and all it's contents?";
    const std::string erase = "Are you sure you want to delete this folder and all it's contents?";
    const std::string special =
        "This is a special node that can not be cut.  It can be copied if you wish.";
    const std::string song =
        "Can not cut a song from 'All Songs.'  You can copy a song if you wish.";
    const std::string withoutA =
        "All Songs(abc) Artist[Abba] Decades[70's 10's] By Mood[Happy(abc)]";
    const std::string withoutHappy = "All Songs(abc) Artist[Abba(a)] Decades[70's 10's] By Mood";
    const struct {
        const char* folder;
        Rows rows;
        Command command;
        Answer answer;
        std::vector<std::string> boxes;
        std::string tree;
        bool dirty;
    } cases[] = {
        {"All Songs", {}, Command::Cut, Answer::Yes, {cut, special}, kStart, true},
        {"By Mood/Happy", {}, Command::Cut, Answer::No, {cut}, kStart, false},
        {"Decades/70's", {}, Command::Delete, Answer::Yes, {}, kStart, false},
        {"Decades/10's", {}, Command::Delete, Answer::Cancel, {erase}, kStart, false},
        {"By Mood/Happy", {}, Command::Delete, Answer::Yes, {erase}, withoutHappy, true},
        {"All Songs", {0, 2}, Command::Cut, Answer::Yes, {song}, kStart, true},
        {"Artist/Abba", {0}, Command::Cut, Answer::Yes, {}, withoutA, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.folder) + " " + std::to_string(static_cast<int>(c.command)));
        Select(c.folder, c.rows);
        fake.dialogs.boxes.clear();
        fake.dialogs.answers = {c.answer};
        commands.Do(c.command);
        std::vector<std::string> boxes;
        for (const auto& box : fake.dialogs.boxes) {
            const bool asks = box.text == cut || box.text == erase;
            EXPECT_EQ(box.buttons, asks ? Buttons::YesNoCancel : Buttons::Ok);
            boxes.push_back(box.text);
        }
        EXPECT_EQ(boxes, c.boxes);
        EXPECT_EQ(Tree(), c.tree);
        EXPECT_EQ(Window().IsFormDirty(), c.dirty);
        commands.Do(Command::Undo);
        Window().IsFormDirty(false);
    }
}

TEST_F(EditingTest, AddsFoldersAndOpensTheirLabels) {
    Select("By Mood");
    Window().CurrentPaneWFocus(Pane::List);  // counts for nothing here
    commands.Do(Command::AddFolderToSelectedFolder);
    EXPECT_EQ(View().edited, At("By Mood/New Folder"));
    EXPECT_EQ(Window().SelectedFolder(), At("By Mood/New Folder"));
    Window().OnFolderTextEdited(*View().edited, "Sad");
    commands.Do(Command::AddFolderToRoot);
    EXPECT_EQ(View().edited, At("New Folder"));
    for (int i = 0; i < 3; ++i)
        commands.Do(Command::Undo);
    View().SelectFolder(nullptr);
    commands.Do(Command::AddFolderToRoot);
    commands.Do(Command::Redo);  // needs no selection
    EXPECT_EQ(commands.StateOf(Command::Undo).caption, "Undo Add Folder");
    EXPECT_EQ(commands.StateOf(Command::Redo).caption, "Redo Rename Folder");
    Select("By Mood");
    for (const int button : {9, 10})  // which want a known player
        commands.ClickButton(button);
    EXPECT_EQ(frame.playerChecks, 2);
    commands.Do(Command::Undo);
    EXPECT_EQ(Tree(), kStart);
}

TEST_F(EditingTest, PastesAnyNumberOfTimesIntoAnyJukebox) {
    OpenJukebox("OTHER");
    EXPECT_FALSE(commands.IsEnabled(Command::Paste));
    PopUp(7, "By Mood");  // copy
    Select("Artist", {}, 1);
    commands.Do(Command::Paste);
    commands.Do(Command::Paste);
    EXPECT_EQ(Dump(Window(1).Model(), *At("Artist", 1)),
              "Artist[Abba(a) By Mood[Happy(abc)] By Mood[Happy(abc)]]");
    PopUp(8, "By Mood");
    PopUp(8, "By Mood/Happy");
    EXPECT_EQ(LastLine(), "A folder can't be pasted into itself.");
    EXPECT_EQ(Tree(), kStart);
    PopUp(8, "By Mood", {}, 1);  // the same folder of another jukebox is another one
    EXPECT_NE(At("By Mood/By Mood/Happy", 1), nullptr);
    PopUp(4, "By Mood/Happy", {1, 2});  // cut
    EXPECT_EQ(View().focusedRow, 0U);
    PopUp(6, "Artist/Abba", {0}, 1);
    PopUp(6, "Artist/Abba", {0}, 1);
    EXPECT_EQ(Dump(Window(1).Model(), *At("Artist/Abba", 1)), "Abba(abcbc)");
    EXPECT_EQ(View(1).rows, (Rows{1, 2}));  // behind the focused song
    EXPECT_EQ(LastLine(), "Pasted 2 songs, both here already. Alt+Backspace takes it back.");
    PopUp(6, "All Songs", {0}, 1);
    EXPECT_EQ(At("All Songs", 1)->Songs().size(), 3U);
    EXPECT_EQ(LastLine(), "\"All Songs\" holds all of these songs already.");
    PopUp(8, "By Mood");  // songs pasted in the tree pane go to the folder's songs
    EXPECT_EQ(Dump(Window().Model(), *At("By Mood")), "By Mood(bc)[Happy(a)]");
}

TEST_F(EditingTest, RanksInTheCatalogueAndEveryJukeboxWithOneSave) {
    OpenJukebox("OTHER");
    const char* const written[] = {"7", "6", "5", "4", "3", "3"};
    const int shown[] = {7, 6, 5, 4, 3, 2};
    Select("All Songs", {}, 1);
    for (int i = 0; i < 6; ++i) {
        PopUp(9 + i, "By Mood/Happy", {0, 2});
        EXPECT_EQ(Ranks(), std::string(written[i]) + "2" + written[i]);
        EXPECT_EQ(Window().RowImage(2), shown[i]);
        EXPECT_EQ(Window(1).RowImage(2), shown[i]);
        EXPECT_EQ(Window().RowImage(1), 2);
    }
    fake.disk.ClearLog();
    Select("By Mood/Happy");
    commands.Do(Command::SelectAll);
    commands.Do(Command::Rank1);
    EXPECT_EQ(Ranks(), "777");
    const auto catalogueSaves = [&] {
        return std::ranges::count_if(fake.disk.Log(), [](const std::string& line) {
            return line.starts_with("replace") && line.ends_with("FileLocNames.lmz");
        });
    };
    EXPECT_EQ(catalogueSaves(), 1);
    EXPECT_FALSE(Window().IsFormDirty());
    PopUp(14, "By Mood/Happy", {0});
    OpenJukebox("THIRD");
    Select("By Mood/Happy", {}, 2);
    EXPECT_EQ(Window().RowImage(0), 2);
    EXPECT_EQ(Window(2).RowImage(0), 3);              // what is written of the worst rank
    EXPECT_FALSE(commands.IsEnabled(Command::Undo));  // of what was done in another window
    PopUp(12, "All Songs", {1}, 1);
    for (int i = 0; i < 8; ++i)
        Window().Undo();
    EXPECT_EQ(Ranks(), "242");  // what was ranked elsewhere meanwhile stays
    EXPECT_EQ(Window().RowImage(2), 2);
}

TEST_F(EditingTest, CyclesThroughTheFourOrders) {
    Jukebox& jukebox = Window().Model();
    std::vector<SongItem> songs;
    for (const char* const name : {"beta", "Alpha", "Zebra", "gamma"})
        songs.push_back(
            jukebox.MakeItem(name, application.Catalogue().OnSongFound("C:\\M\\", name), 2));
    jukebox.SetSongs(*At("By Mood/Happy"), songs);
    for (int record = 4; record <= 7; ++record)  // 6, 4, 7, 5
        application.Catalogue().Mp3Info(clsMain::kRank, record,
                                        std::to_string("6475"[record - 4] - '0'));
    const std::string before = Bytes();
    Select("By Mood/Happy", {0, 3});  // beta, gamma
    View().FocusRow(1);               // Alpha
    const struct {
        const char* order;
        const char* heading;
        Rows selected;
        std::size_t focus;
    } cycle[] = {
        {"Happy(AlphabetagammaZebra)", "Name    --   ", {1, 2}, 0},
        {"Happy(ZebragammabetaAlpha)", "Name    --   ", {1, 2}, 3},
        {"Happy(ZebrabetagammaAlpha)", "By Rank -- best to worst", {1, 2}, 3},
        {"Happy(AlphagammabetaZebra)", "By Rank -- worst to best", {1, 2}, 0},
        {"Happy(AlphabetagammaZebra)", "Name    --   ", {1, 2}, 0},
    };
    for (const auto& state : cycle) {
        Window().OnHeaderClicked();
        EXPECT_EQ(Dump(jukebox, *At("By Mood/Happy")), state.order);
        EXPECT_EQ(jukebox.Columns()[0], state.heading);
        EXPECT_EQ(View().rows, state.selected);
        EXPECT_EQ(View().focusedRow, state.focus);
    }
    EXPECT_EQ(fake.events.count, 5);
    // The heading is the shown folder's, as long as it is in that order.
    const auto& heading = jukebox.Columns()[0];
    Select("By Mood");
    EXPECT_EQ(heading, "Name    --        (click to sort)");
    Select("By Mood/Happy", {1, 2});
    View().FocusRow(0);
    EXPECT_EQ(heading, "Name    --   ");
    for (const Command command : {Command::MoveDown, Command::MoveUp, Command::MoveUp}) {
        Window().Do(command);
        EXPECT_EQ(Window().ShownOrder(), command == Command::MoveUp && View().rows[0] == 1 ? 1 : 0);
    }
    EXPECT_EQ(Dump(jukebox, *At("By Mood/Happy")), "Happy(betagammaAlphaZebra)");
    EXPECT_EQ(View().rows, (Rows{0, 1}));
    EXPECT_EQ(View().focusedRow, 2U);
    for (int i = 0; i < 3; ++i)
        Window().Undo();
    EXPECT_EQ(heading, "Name    --   ");
    Window().MoveSongs({0, 3}, 2);
    EXPECT_EQ(Dump(jukebox, *At("By Mood/Happy")), "Happy(betaAlphaZebragamma)");
    Window().Undo();
    Window().MoveSongs({0, 1}, 1);  // where they are
    EXPECT_EQ(Window().UndoText(), "Undo Sort Songs");
    for (int i = 0; i < 5; ++i)
        Window().Undo();
    EXPECT_EQ(Bytes(), before);
    EXPECT_EQ(View().rows, (Rows{0, 3}));
    EXPECT_EQ(View().focusedRow, 1U);
    Window().OnHeaderClicked();
    EXPECT_EQ(Dump(jukebox, *At("By Mood/Happy")), cycle[0].order);
}

// What a drag does without a key, with Ctrl and with Shift: a move, a copy or nothing.
TEST_F(EditingTest, CopiesWhatIsDraggedOutOfFoldersThatTheProgramFills) {
    const struct {
        const char* from;
        Rows rows;
        const char* to;
        const char* modes;
    } drags[] = {
        {"All Songs", {0}, "By Mood/Happy", "CCC"},
        {"Artist/Abba", {0}, "By Mood/Happy", "CCM"},
        {"Artist/Abba", {0}, "Artist/Abba", "-C-"},
        {"Artist/Abba", {}, "By Mood", "CCM"},
        {"Artist/Abba", {}, "Artist", "-C-"},
        {"Decades", {}, "By Mood", "CCC"},
        {"By Mood/Happy", {0}, "Artist/Abba", "MCM"},
        {"By Mood/Happy", {}, "", "MCM"},
        {"By Mood", {}, "", "-C-"},
        {"By Mood", {}, "By Mood/Happy", "---"},
    };
    for (const auto& drag : drags) {
        std::string modes;
        for (const std::optional<DropMode> wish :
             {std::optional<DropMode>(), std::optional(DropMode::Copy),
              std::optional(DropMode::Move)}) {
            const auto mode =
                Window().MaybeDropMode({&Window(), At(drag.from), drag.rows},
                                       *drag.to != '\0' ? At(drag.to) : nullptr, wish);
            modes += !mode ? '-' : *mode == DropMode::Copy ? 'C' : 'M';
        }
        EXPECT_EQ(modes, drag.modes) << drag.from << " to " << drag.to;
    }
}

TEST_F(EditingTest, DropsInOneStepAlsoBetweenWindows) {
    OpenJukebox("OTHER");
    const auto drop = [&](std::size_t from, const std::string& path, const Rows& rows,
                          std::size_t to, const std::string& target, DropMode mode) {
        const Dragged dragged{&Window(from), At(path, from), rows};
        Folder* const folder = target.empty() ? nullptr : At(target, to);
        const bool can = Window(to).CanDrop(dragged, folder, mode);
        Window(to).Drop(dragged, folder, mode);
        return can;
    };
    // Refused: into itself, and what may not be cut.
    EXPECT_FALSE(drop(0, "By Mood", {}, 0, "By Mood/Happy", DropMode::Copy));
    EXPECT_EQ(LastLine(), "A folder can't be pasted into itself.");
    EXPECT_TRUE(fake.dialogs.boxes.empty());
    drop(0, "Decades", {}, 1, "Artist", DropMode::Move);
    EXPECT_TRUE(LastBox().starts_with("This is a special node"));
    drop(0, "All Songs", {0}, 0, "Artist", DropMode::Move);
    EXPECT_TRUE(LastBox().starts_with("Can not cut a song"));
    EXPECT_EQ(Tree() + Tree(1), std::string(kStart) + kStart);
    // Between windows: undone and done again in both, from either.
    EXPECT_TRUE(drop(0, "By Mood", {}, 1, "", DropMode::Move));
    EXPECT_TRUE(drop(0, "Artist/Abba", {0}, 1, "Artist", DropMode::Move));
    const std::string moved0 = "All Songs(abc) Artist[Abba] Decades[70's 10's]";
    const std::string moved1 =
        "All Songs(abc) Artist(a)[Abba(a)] Decades[70's 10's] "
        "By Mood[Happy(abc)] By Mood[Happy(abc)]";
    EXPECT_EQ(Tree(), moved0);
    EXPECT_EQ(Tree(1), moved1);
    Window(1).Undo();
    Window(0).Undo();
    EXPECT_EQ(Tree() + Tree(1), std::string(kStart) + kStart);
    Window(0).Redo();
    Window(1).Redo();
    EXPECT_EQ(Tree() + Tree(1), moved0 + moved1);
    PopUp(5, "Artist", {}, 1);  // Where the other one was changed since, neither is undone.
    Window(0).Undo();
    EXPECT_EQ(Tree(), moved0);
    EXPECT_EQ(LastLine(),
              "\"Move Songs\" can't be undone: the other jukebox, \"OTHER\", has been changed "
              "since.");
    Window(1).Undo();
    Window(0).Undo();
    EXPECT_EQ(Tree(1), std::string(kStart) + " By Mood[Happy(abc)]");
    PopUp(5, "Artist", {}, 1);
    EXPECT_FALSE(Window().CanRedo());  // Nor done again in one of them.
    Window(1).Undo();
    Window(0).Undo();
    Window(0).Redo();
    frame.children.pop_back();
    Window(0).Undo();  // only brings back
    EXPECT_EQ(Tree(), kStart);
    Window(0).Redo();
    EXPECT_EQ(LastLine(), "\"Move Folder\" can't be redone: the other jukebox was closed.");
    OpenJukebox("THIRD");
    drop(1, "By Mood/Happy", {}, 0, "", DropMode::Move);
    EXPECT_EQ(LastLine(),
              "Moved \"Happy\" (3 songs) to the top level. Alt+Backspace takes it back.");
    frame.children.pop_back();
    Window(0).Undo();
    EXPECT_EQ(LastLine(), "\"Move Folder\" can't be undone: the other jukebox was closed.");
    EXPECT_EQ(Tree(), std::string(kStart) + " Happy(abc)");
}

TEST_F(EditingTest, PastesWhatCameLast) {
    fake.disk.AddFile("D:\\New\\d.mp3", "no tag");
    PopUp(7, "By Mood/Happy", {0});  // Del
    EXPECT_TRUE(fake.clipboard.paths.empty());
    EXPECT_EQ(LastLine(), "Deleted 1 song from \"Happy\". Alt+Backspace brings it back.");
    fake.clipboard.Fill({"D:\\New\\d.mp3"}, true);
    PopUp(8, "By Mood");
    EXPECT_EQ(Dump(Window().Model(), *At("By Mood")), "By Mood(d.mp3)[Happy(bc)]");
    PopUp(7, "By Mood/Happy", {0});
    PopUp(8, "By Mood");
    EXPECT_EQ(Dump(Window().Model(), *At("By Mood")), "By Mood(d.mp3b)[Happy(c)]");
    fake.clipboard.Fill({}, false);  // Another program's text is nothing to paste.
    PopUp(8, "By Mood");
    EXPECT_EQ(LastLine(), "Pasted 1 song, here already. Alt+Backspace takes it back.");
}

TEST_F(EditingTest, TakesDroppedFilesIntoTheCatalogueAndTheFolder) {
    fake.disk.AddFile("D:\\New\\d.MP3", "no tag");
    fake.disk.AddFile("D:\\New\\b.mp3", "no tag");  // its name is known
    fake.disk.AddFile("D:\\New\\notes.txt");
    Window().DropFiles({"D:\\New\\notes.txt", "D:\\New\\gone.mp3"}, At("Decades/10's"));
    EXPECT_EQ(LastLine(), "There is no MP3 file among these files.");
    EXPECT_FALSE(Window().CanDropFiles({"D:\\New\\d.MP3"}, nullptr));
    EXPECT_TRUE(Window().CanDropFiles({"D:\\New\\d.MP3", "D:\\Box.JUK"}, nullptr));
    Window().DropFiles({"D:\\New\\d.MP3", "D:\\Box.JUK"}, nullptr);
    EXPECT_EQ(frame.host.asked, std::vector<std::string>{"open D:\\Box.JUK"});
    Window().DropFiles({"D:\\New\\d.MP3", "D:\\New\\notes.txt", "D:\\New\\b.mp3", "C:\\M\\a.mp3"},
                       At("Decades/10's"));
    EXPECT_EQ(application.Catalogue().UBoundOfMp3Array(), 4);
    EXPECT_EQ(application.Catalogue().SongPath(4), "D:\\New\\d.MP3");
    EXPECT_EQ(Window().SelectedFolder(), At("Decades/10's"));
    ASSERT_EQ(Window().RowCount(), 3U);
    EXPECT_EQ(Window().RowText(0, 0) + Window().RowText(1, 1) + Window().RowText(2, 1), "d.MP321");
    EXPECT_EQ(LastLine(),
              "Added 3 songs to \"10's\".  \"C:\\M\\b.mp3\" is known by that name and was added in "
              "the place of \"D:\\New\\b.mp3\". Alt+Backspace takes it back.");
    EXPECT_EQ(Tree().substr(0, 20), "All Songs(abcd.MP3) ");

    std::string lost;
    for (int i = 1; i <= 13; ++i)
        lost += "lost" + std::to_string(i) + ".mp3\n";
    fake.disk.AddFile("D:\\New\\Mine.M3U", "b.mp3\nnotes.txt\n..\\..\\New\\d.mp3\n" + lost);
    fake.drives.drives.push_back({"D:\\", 3});
    Window().DropFiles({"D:\\New\\Mine.M3U", "D:\\gone.m3u8"}, At("Decades/70's"));
    EXPECT_EQ(Dump(Window().Model(), *At("Decades/70's")), "70's(b.mp3d.MP3)");
    ASSERT_EQ(fake.dialogs.boxes.size(), 1U);
    const std::string& box = fake.dialogs.boxes[0].text;
    EXPECT_TRUE(box.starts_with(
        "The list D:\\gone.m3u8 could not be read: it does not exist.\r\n\r\n14 of 16 songs were "
        "not added, since there are no such MP3 files:\r\n\r\nnotes.txt\r\nlost1.mp3\r\n"));
    EXPECT_TRUE(box.ends_with("lost9.mp3\r\n... and 4 more"));
}

TEST_F(EditingTest, WhatIsHeldFollowsTheSongsWhenRecordsMove) {
    PopUp(4, "By Mood/Happy", {2});
    PopUp(14, "By Mood/Happy", {1});
    RunCataloguePass(application, [&] {
        application.Catalogue().Mp3Info(clsMain::kFileName, 1, "");
        return application.Catalogue().DeleteIdenticalFileNamesAndPaths();
    });
    EXPECT_FALSE(Window().CanUndo());
    PopUp(6, "By Mood", {0});
    EXPECT_EQ(Window().RowText(0, 0) + Window().RowText(0, 1), "c2");
    EXPECT_EQ(Window().RowImage(0), 2);
}

TEST_F(EditingTest, FindsTheNextRowByItsBeginning) {
    Jukebox& jukebox = Window().Model();
    std::vector<SongItem> songs;
    for (const char* const name : {"Love Me Do", "glove", "LOVELY", "Éclair"})
        songs.push_back(jukebox.MakeItem(name, 1, 2));
    jukebox.SetSongs(*At("By Mood"), songs);
    EXPECT_EQ(Window().MaybeRowBeginningWith("a", 0), 0U);  // in "All Songs"
    Select("By Mood");
    EXPECT_EQ(Window().MaybeRowBeginningWith("love", 0), 0U);
    EXPECT_EQ(Window().MaybeRowBeginningWith("lOVE", 1), 2U);
    EXPECT_EQ(Window().MaybeRowBeginningWith("love", 3), 0U);
    EXPECT_EQ(Window().MaybeRowBeginningWith("éc", 9), 3U);
    EXPECT_EQ(Window().MaybeRowBeginningWith("x", 0), std::nullopt);
    Select("Artist");
    EXPECT_EQ(Window().MaybeRowBeginningWith("", 0), std::nullopt);
}

}  // namespace
}  // namespace tobbin
