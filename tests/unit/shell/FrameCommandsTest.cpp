#include "shell/FrameCommands.h"

#include <gtest/gtest.h>

#include "fakes/FakeEnvironment.h"
#include "jukebox/JukeboxFile.h"
#include "shell/StatusTexts.h"
#include "shell/Tips.h"
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
    EXPECT_EQ(fake.programs.started.at(0).program, "C:\\Windows\\WinHelp.exe");
    EXPECT_EQ(fake.programs.started[0].arguments, "C:\\App\\quhelp.hlp");
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
    Jukebox& copy = frame.children[1].window->Model();
    EXPECT_EQ(copy.DaCaption() + copy.FileLocation(), "JukeBox2");
    EXPECT_EQ(WriteJukebox(copy, application.Catalogue()),
              WriteJukebox(frame.children[0].window->Model(), application.Catalogue()));
    commands.ClickButton(11);
    EXPECT_EQ(frame.children[2].window->DaCaption(), "JukeBox3");
}

TEST_F(FrameCommandsTest, NewSongsFindTheirWayIntoEveryOpenJukebox) {
    commands.Do(Command::New);
    fake.disk.AddFile("C:\\M\\d.mp3", "no tag");
    fake.disk.AddFile("C:\\Elsewhere\\e.mp3", "no tag");
    commands.Do(Command::NewSongsNormalLocations);
    EXPECT_EQ(LastLine(), "1 new song found.  See the folder \"New\".");
    fake.disk.AddFile("C:\\Incomplete\\h.mp3");
    fake.drives.drives.emplace_back("R:\\", 2);
    commands.ClickButton(15);
    EXPECT_EQ(
        LastLine(),
        "1 new song found.  See the folder \"New\".  Not searched: R:\\ (not a fixed drive), 1 "
        "folder with \"incomplete\" in the path.");
    fake.drives.drives.pop_back();
    fake.disk.Erase("C:\\Incomplete");
    for (const FakeFrame::Child& child : frame.children)
        EXPECT_EQ(child.window->Model().MaybeFind("All Songs")->Songs().size(), 5U);
    EXPECT_EQ(frame.searchTexts.at(1), "Searching to add new songs  . . . ");
    EXPECT_EQ(frame.searchTexts.front() + frame.searchTexts.back(), "openclosed");

    // Esc stops the filing; the next search goes on with it.
    fake.disk.AddFile("C:\\M\\f.mp3", "no tag");
    fake.disk.AddFile("C:\\M\\g.mp3", "no tag");
    fake.events.onEvents = [&] { frame.stopsSearch = application.Groups().IsBuilding(); };
    const auto& songs = frame.children.back().window->Model().MaybeFind("All Songs")->Songs();
    for (const auto& [line, count] : std::vector<std::pair<std::string, std::size_t>>{
             {"2 new songs found.  See the folder \"New\".  Stopped after the tags of 1 of 2 "
              "songs; "
              "\"Bring In New Songs\" reads the rest.",
              6},
             {"No new songs found.", 7}}) {
        commands.Do(Command::NewSongsWholeComputer);
        EXPECT_EQ(LastLine(), line);
        EXPECT_EQ(songs.size(), count);
        fake.events.onEvents = [] {};
        frame.stopsSearch = false;
    }
}

// The pass drops a twin in the middle, and a new song takes the number of the last one.
TEST_F(FrameCommandsTest, NoSongToPlayBecomesAnotherOneWhenRecordsMove) {
    for (const std::string path : {"C:\\N\\a.mp3", "C:\\M\\d.mp3", "C:\\M\\e.mp3"}) {
        fake.disk.AddFile(path, "no tag");
        if (path != "C:\\M\\e.mp3")
            application.Catalogue().OnSongFound(path.substr(0, 5), path.substr(5));
    }
    application.SongsToPlay().Assign({5, 4, 1});
    commands.Do(Command::NewSongsNormalLocations);
    EXPECT_EQ(application.Catalogue().SongPath(5), "C:\\M\\e.mp3");
    for (const auto& [place, record] : {std::pair(1, 4), {2, 1}, {3, 1}})
        EXPECT_EQ(application.SongsToPlay().Song(place), record);
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
    EXPECT_EQ(SelectionText(window), "All Songs: 3 songs, 1 selected, rank: worst");
}

TEST(LoadedWindows, AreKnownByNameInAnyCase) {
    const FakeText text;
    LoadedWindows windows(text);
    Lines unloaded;
    const int first = windows.Add("frmMain", [&] { unloaded.push_back("first"); });
    windows.Add("frmMain", [&] {
        unloaded.push_back("second");
        windows.Remove(first);
    });
    EXPECT_TRUE(windows.IsLoaded("FRMMAIN"));
    EXPECT_FALSE(windows.IsLoaded("frmMai"));
    windows.UnloadAll();
    EXPECT_EQ(unloaded, (Lines{"second"}));  // the first was taken off with it
}

class TipsTest : public testing::Test, protected TipView {
 protected:
    FakeEnvironment fake;
    Tips tips{fake.environment, "C:\\App\\"};
    std::string text = "designed";
    bool ticked = false;

    void ShowTip(const std::string& tip) override { text = tip; }
    void TickTipsAtStartUp(bool value) override { ticked = value; }
};

TEST_F(TipsTest, ShowsARandomLineTheLastOneToo) {
    fake.disk.AddFile("C:\\App\\TIPOFDAY.TXT", "one\r\n\r\nthree \xE9\r\n");
    tips.Load(*this);
    for (const auto& [random, line] :
         {std::pair(0.33, "one"), {0.34, ""}, {0.999999, "three \u00E9"}}) {
        fake.clock.random = random;
        tips.OnNextTip(*this);
        EXPECT_EQ(text, line);
    }
    fake.disk.AddFile("C:\\App\\TIPOFDAY.TXT", "\xEF\xBB\xBFone\r\n\u03A9\r\n");
    tips.Load(*this);
    EXPECT_EQ(text, "\u03A9");
}

TEST_F(TipsTest, TellsHowToMakeAMissingFileAndLeavesAnEmptyOneAlone) {
    tips.Load(*this);
    tips.OnNextTip(*this);
    EXPECT_TRUE(text.starts_with("That the TIPOFDAY.TXT file was not found? \r\n\r\nCreate a"));
    text = "designed";
    fake.disk.AddFile("C:\\App\\TIPOFDAY.TXT", "");
    tips.Load(*this);
    EXPECT_EQ(text, "designed");
}

TEST_F(TipsTest, TheSettingTurnsTheStartUpOffAndNotTheMenu) {
    EXPECT_TRUE(tips.MayOpen());
    tips.Load(*this);
    EXPECT_TRUE(ticked);
    tips.OnTipsAtStartUpClicked(false);
    EXPECT_EQ(fake.userSettings.values["Show Tips at Startup"], "0");
    EXPECT_FALSE(tips.MayOpen());
    tips.OpenNoMatterWhat(true);
    EXPECT_TRUE(tips.MayOpen());
    tips.Load(*this);
    EXPECT_FALSE(ticked);
}

}  // namespace
}  // namespace tobbin
