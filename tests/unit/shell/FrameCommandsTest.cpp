#include "shell/FrameCommands.h"

#include "shell/StatusTexts.h"
#include "unit/shell/FrameFixture.h"
#include "util/Text.h"

namespace tobbin {
namespace {

using Lines = std::vector<std::string>;

class FrameCommandsTest : public FrameTest {};

TEST_F(FrameCommandsTest, JukeboxCommandsNeedAnActiveJukebox) {
    OpenSample();
    EXPECT_FALSE(commands.IsEnabled(Command::PlaySelectedSongs));
    frame.children[0].view->rows = {1};
    commands.Do(Command::PlaySelectedSongs);
    commands.Do(Command::PlayAllSongsInFolder);
    commands.ClickButton(2);
    EXPECT_EQ(std::exchange(frame.host.asked, {}),
              (Lines{"play selected", "play all", "play all"}));

    frame.panelOpen = frame.panelActive = true;
    for (const Command command : {Command::Close, Command::PlayAllSongsInFolder, Command::Cut,
                                  Command::Delete, Command::AddFolderToRoot}) {
        EXPECT_FALSE(commands.IsEnabled(command));
        commands.Do(command);
    }
    EXPECT_FALSE(frame.children[0].view->closed);
    EXPECT_TRUE(frame.host.asked.empty());
    EXPECT_TRUE(fake.dialogs.boxes.empty());
}

TEST_F(FrameCommandsTest, TransportCommandsReachThePlayerWithoutAJukeboxAndUnPauseChecksFirst) {
    application.Player().FindPlayerWindow();
    for (const Command command :
         {Command::Play, Command::Pause, Command::Stop, Command::NextTrack, Command::PreviousTrack,
          Command::StopAfterTrack, Command::ClosePlayer})
        commands.Do(command);
    for (const int button : {3, 4, 5, 7})
        commands.ClickButton(button);
    EXPECT_EQ(frame.playerChecks, 0);
    commands.ClickButton(6);  // while no player is known
    frame.playerIsKnown = true;
    commands.ClickButton(6);
    EXPECT_EQ(frame.playerChecks, 2);
    EXPECT_EQ(fake.player.log, (Lines{"273 40045 0", "273 40046 0", "273 40047 0", "273 40048 0",
                                      "273 40044 0", "273 40157 0", "273 40001 0", "273 40048 0",
                                      "273 40044 0", "273 40046 0", "273 40157 0", "273 40045 0"}));
}

TEST_F(FrameCommandsTest, ArrangingMinimizesTheOpenPlayerPanelButForIcons) {
    frame.panelOpen = true;
    for (const Command command :
         {Command::ArrangeIcons, Command::Cascade, Command::Tile, Command::ArrangeIcons,
          Command::Tip, Command::About, Command::Exit})
        commands.Do(command);
    EXPECT_EQ(frame.seen, (Lines{"minimize panel", "cascade", "minimize panel", "tile", "icons",
                                 "tips", "about", "close frame"}));
}

TEST_F(FrameCommandsTest, HelpStartsTheHelpProgramOrShowsTheManual) {
    commands.ClickButton(17);
    ASSERT_EQ(fake.programs.started.size(), 1U);
    EXPECT_EQ(fake.programs.started[0].program, "C:\\Windows\\WinHelp.exe");
    EXPECT_EQ(fake.programs.started[0].arguments, "C:\\App\\quhelp.hlp");
    EXPECT_TRUE(fake.programs.opened.empty());
    fake.programs.succeeds = false;
    commands.Do(Command::Help);
    EXPECT_EQ(LastLine(), "The manual C:\\App\\Help\\index.html could not be opened.");
    fake.disk.AddFile("C:\\App\\Help\\index.html");
    commands.Do(Command::Help);
    EXPECT_EQ(fake.programs.opened, Lines{"C:\\App\\Help\\index.html"});
}

TEST_F(FrameCommandsTest, NewJukeboxCopiesTheFirstOneAndBuildsTheSampleWhenThereIsNone) {
    commands.Do(Command::New);
    ASSERT_EQ(frame.children.size(), 2U);
    EXPECT_EQ(frame.children[0].window->DaCaption(), kSampleCaption);
    EXPECT_EQ(frame.children[1].window->DaCaption(), "JukeBox2");
    const Jukebox& copy = frame.children[1].window->Model();
    EXPECT_EQ(copy.FolderCount(), frame.children[0].window->Model().FolderCount());
    ASSERT_EQ(copy.Root(0).Songs().size(), 3U);
    EXPECT_EQ(copy.Root(0).Songs()[2].recordNumber, 3);
    EXPECT_EQ(copy.Columns(), (Lines{"Name    --        (click to sort)", "Key"}));
    EXPECT_EQ(copy.FileLocation(), "");
    commands.ClickButton(11);
    EXPECT_EQ(frame.children[2].window->DaCaption(), "JukeBox3");
}

TEST_F(FrameCommandsTest, NewSongsFindTheirWayIntoEveryOpenJukebox) {
    commands.Do(Command::New);
    fake.disk.AddFile("C:\\M\\d.mp3", "no tag");
    fake.disk.AddFile("C:\\Elsewhere\\e.mp3", "no tag");
    commands.Do(Command::NewSongsNormalLocations);
    EXPECT_EQ(LastLine(), "1 new song was found.");
    commands.ClickButton(15);
    EXPECT_EQ(LastLine(), "1 new song was found.");
    for (const FakeFrame::Child& child : frame.children)
        EXPECT_EQ(child.window->Model().MaybeFind("All Songs")->Songs().size(), 5U);
    EXPECT_EQ(frame.searchTexts.front(), "open");
    EXPECT_EQ(frame.searchTexts[1], "Searching to add new songs  . . . ");
    EXPECT_EQ(frame.searchTexts.back(), "closed");
    EXPECT_NE(
        fake.disk.Content("C:\\App\\Grouping\\System\\LocOfMainTargetFiles.lmz").find("Elsewhere"),
        std::string::npos);

    // Esc stops the filing; the next search goes on with it.
    fake.disk.AddFile("C:\\M\\f.mp3", "no tag");
    fake.disk.AddFile("C:\\M\\g.mp3", "no tag");
    fake.events.onEvents = [&] { frame.stopsSearch = application.Groups().IsBuilding(); };
    const auto& songs = frame.children.back().window->Model().MaybeFind("All Songs")->Songs();
    for (const auto& [line, count] : std::vector<std::pair<std::string, std::size_t>>{
             {"2 new songs were found.  Stopped: the tags of 1 of 2 songs are read.  \"Bring In "
              "New "
              "Songs\" goes on with the others.",
              6},
             {"No new songs were found.", 7}}) {
        commands.Do(Command::NewSongsWholeComputer);
        EXPECT_EQ(LastLine(), line);
        EXPECT_EQ(songs.size(), count);
        fake.events.onEvents = [] {};
        frame.stopsSearch = false;
    }
}

// The pass drops a twin in the middle, which is the same song as the one that is kept, and a new
// song takes the number of the last one.
TEST_F(FrameCommandsTest, NoSongBecomesAnotherOneWhenRecordsMove) {
    clsMain& catalogue = application.Catalogue();
    for (const char* folder : {"C:\\N\\", "C:\\M\\"}) {
        const std::string name = folder == std::string("C:\\N\\") ? "a.mp3" : "d.mp3";
        fake.disk.AddFile(folder + name, "no tag");
        catalogue.OnSongFound(folder, name);
    }
    const Jukebox& jukebox = OpenSample().Model();
    application.SongsToPlay().Assign({5, 4, 1});
    fake.disk.AddFile("C:\\M\\e.mp3", "no tag");
    commands.Do(Command::NewSongsNormalLocations);
    Lines songs;
    for (const SongItem& song : jukebox.MaybeFind("All Songs")->Songs())
        songs.push_back(catalogue.SongPath(song.recordNumber));
    EXPECT_EQ(songs, (Lines{"C:\\M\\a.mp3", "C:\\M\\b.mp3", "C:\\M\\c.mp3", "C:\\M\\d.mp3",
                            "C:\\M\\e.mp3"}));
    EXPECT_EQ(application.SongsToPlay().Song(1), 4);
    EXPECT_EQ(application.SongsToPlay().Song(2), 1);
    EXPECT_EQ(application.SongsToPlay().Song(3), 1);
}

TEST_F(FrameCommandsTest, StatusTextsCountAndGroupTheirDigits) {
    EXPECT_EQ(GroupedNumber(999), "999");
    EXPECT_EQ(GroupedNumber(1000), "1,000");
    EXPECT_EQ(GroupedNumber(12345678), "12,345,678");
    JukeboxWindow& window = OpenSample();
    EXPECT_EQ(JukeboxText(window.Model()), "35 folders, 3 songs");
    frame.children[0].view->rows = {0, 1};
    EXPECT_EQ(SelectionText(window), "All Songs: 3 songs, 2 selected");
    frame.children[0].view->rows = {1};
    EXPECT_EQ(SelectionText(window), "All Songs: 3 songs, 1 selected, rank 6 of 6");
}

}  // namespace
}  // namespace tobbin
