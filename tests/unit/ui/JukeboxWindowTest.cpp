#include "ui/JukeboxWindow.h"

#include "fakes/TaggedSong.h"
#include "ui/ListedSongs.h"
#include "unit/ui/EditingFixture.h"

namespace tobbin {
namespace {

class JukeboxWindowTest : public EditingTest {
 protected:
    JukeboxWindow& window = Window();
    Jukebox& jukebox = window.Model();
    FakeJukeboxView& view = View();
    Folder& songs = *At("By Mood/Happy");
    std::vector<std::string>& asked = frame.host.asked;

    std::string Close() {
        view.Close();
        return LastBox();
    }
};

TEST_F(JukeboxWindowTest, ListsTheSongsOfTheSelectedFolder) {
    view.SelectFolder(nullptr);
    EXPECT_EQ(window.RowCount(), 0U);
    view.SelectFolder(&songs);
    ASSERT_EQ(window.RowCount(), 3U);
    EXPECT_EQ(window.RowText(1, 0), "b");
    EXPECT_EQ(window.RowText(1, 1), "2");
    application.Catalogue().Mp3Info(clsMain::kRank, 2, "7");
    EXPECT_EQ(window.RowImage(1), 7);
    EXPECT_EQ(window.AccessibleRowText(1), "b, rank: best, 2 of 3");
    EXPECT_EQ(window.FocusedSongDetails(), "");
    view.FocusRow(1);
    EXPECT_EQ(window.FocusedSongDetails(), "C:\\M\\b.mp3");
    fake.disk.AddFile("C:\\M\\b.mp3", TaggedSong("Abba", "1976"));
    EXPECT_EQ(window.FocusedSongDetails(), "Title - Abba - Album - 1976:  C:\\M\\b.mp3");
    fake.drives.drives = {{"C:\\", 4}};
    EXPECT_EQ(window.FocusedSongDetails(), "C:\\M\\b.mp3");
    application.Catalogue().Mp3Info(clsMain::kPresence, 2, "0");
    EXPECT_EQ(window.RowImage(1), 0);
    EXPECT_EQ(window.AccessibleRowText(1), "b, missing, 2 of 3");
    jukebox.SetSongs(songs, {jukebox.MakeItem("gone.mp3", 9, 5),
                             jukebox.MakeMissingItem("lost.mp3", MissingSong{}, 5)});
    EXPECT_EQ(window.RowImage(0), 0);
    EXPECT_EQ(window.RowImage(1), 0);
    EXPECT_EQ(window.RowText(1, 1), "");
    EXPECT_EQ(window.List().DetailsOf(1, fake.environment), "lost.mp3:  Not found");
    view.rows = {0, 1};
    window.ActOnPopUpClick(9, 2, &songs);  // there is nothing to rank
    EXPECT_FALSE(window.CanUndo());
    view.SelectFolder(&jukebox.AddChild(&songs, "Child"));
    jukebox.Remove(songs);
    EXPECT_EQ(window.SelectedFolder(), nullptr);
    EXPECT_EQ(window.RowCount(), 0U);
}

TEST_F(JukeboxWindowTest, PlaysTheFolderFromBothMenusAndTheSelectionFromOne) {
    view.SelectFolder(&songs);
    window.ActOnPopUpClick(1, 1, &songs);
    window.ActOnPopUpClick(1, 2, &songs);
    window.ActOnPopUpClick(2, 2, &songs);  // nothing is selected
    view.rows = {2};
    window.ActOnPopUpClick(2, 2, &songs);
    EXPECT_EQ(asked, (Texts{"play all", "play all", "play selected"}));
    EXPECT_EQ(ListedSongs(window).at(2).recordNumber, 3);
    EXPECT_TRUE(!ListedSongs(window)[0].selected && ListedSongs(window)[2].selected);
}

TEST_F(JukeboxWindowTest, AllSongsTakesWhatItDoesNotHold) {
    PopUp(5, "By Mood/Happy", {0, 1, 2});  // copy
    jukebox.SetSongs(*At("All Songs"), {jukebox.MakeItem("b", 2, 2)});
    PopUp(6, "All Songs", {0});
    EXPECT_EQ(Dump(jukebox, *At("All Songs")), "All Songs(bac)");
}

TEST_F(JukeboxWindowTest, DoesNothingForPlacesOutsideTheMenusOrWithoutAFolder) {
    view.SelectFolder(&songs);
    view.rows = {0};
    for (const int command : {-1, 0, 3, 12, 17})
        window.ActOnPopUpClick(command, 1, &songs);
    window.ActOnPopUpClick(17, 2, &songs);
    window.ActOnPopUpClick(1, 1, nullptr);
    EXPECT_TRUE(asked.empty());
}

TEST_F(JukeboxWindowTest, AsksBeforeClosingOnlyWhenChanged) {
    jukebox.MarkAsFilled();  // by a grouping run that added nothing
    EXPECT_TRUE(window.IsFormDirty());
    EXPECT_EQ(Close(), "");
    window.ActOnPopUpClick(6, 1, At("All Songs"));  // a refused cut
    EXPECT_EQ(Close(), "Do you want to save changes to MINE");
    EXPECT_TRUE(asked.empty());
    fake.dialogs.answers.push_back(Answer::Yes);
    window.DaCaption("Jukebox One  (sample Jukebox you can use as a starting point)");
    EXPECT_EQ(Close(),
              "You should save this initial Jukebox to speed up the program.  Do you want to save "
              "this Jukebox?");
    EXPECT_EQ(asked, std::vector<std::string>{"save"});
    EXPECT_EQ(fake.dialogs.boxes.back().buttons, Buttons::YesNo);
}

}  // namespace
}  // namespace tobbin
