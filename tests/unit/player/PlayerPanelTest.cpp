#include "player/PlayerPanel.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "fakes/FakeEnvironment.h"
#include "fakes/FakeSearching.h"

namespace tobbin {
namespace {

using Log = std::vector<std::string>;

class FakePanelView : public PlayerPanelView {
 public:
    std::string caption, button, status, song, choice;
    bool buttonEnabled = false, stopOffered = false, timer = false;
    std::pair<int, int> size;  // twips
    std::map<PlayerBar, BarState> bars;
    std::map<PlayerBar, std::string> texts;
    std::optional<int> workIn;
    void SetCaption(const std::string& text) override { caption = text; }
    void SetOuterSize(int width, int height) override { size = {width, height}; }
    void SetButton(const std::string& text, bool enabled) override {
        button = text;
        buttonEnabled = enabled;
    }
    void SetStatus(const std::string& text) override { status = text; }
    void SetSong(const std::string& text) override { song = text; }
    void SetBarText(PlayerBar bar, const std::string& text) override { texts[bar] = text; }
    void SetChoice(const std::string& text) override { choice = text; }
    void SetBar(PlayerBar bar, const BarState& state) override { bars[bar] = state; }
    void OfferStop(bool offered) override { stopOffered = offered; }
    void SetTimer(bool enabled) override { timer = enabled; }
    void WorkIn(int milliseconds) override { workIn = milliseconds; }
};

class Panel : public testing::Test {
 protected:
    Panel() {
        control.PlayerProgramPath("c:\\program files\\winamp.exe");
        for (int record = 1; record <= 10; ++record)
            fake.disk.AddFile(PathOf(record));
    }
    static constexpr int kNoPath = 99, kNoAnsiName = 98;
    static std::string PathOf(int record) {
        const std::string name = record == kNoAnsiName ? "\xE6\xBC\xA2" : std::to_string(record);
        return record == kNoPath ? "" : "C:\\M\\" + name + ".mp3";
    }
    Log TakeLog() { return std::exchange(fake.player.log, {}); }

    // One turn of the message loop. Returns whether there was work.
    bool Turn() {
        const auto wait = std::exchange(view.workIn, std::nullopt);
        if (!wait)
            return false;
        fake.clock.milliseconds += *wait;
        panel.Work();
        return true;
    }
    void RunToTheEnd() {
        for (int turns = 0; Turn(); ++turns)
            ASSERT_LT(turns, 10'000);
    }
    void Play(std::vector<std::int32_t> records) {
        playList.Assign(std::move(records));
        panel.Playstuff();
        RunToTheEnd();
    }
    Log LoadAndPlay(std::vector<std::int32_t> records) {
        playList.Assign(std::move(records));
        panel.Load();
        RunToTheEnd();
        return TakeLog();
    }

    FakeEnvironment fake;
    FakePlayerLocation location;
    PlayerDiscovery discovery{fake.environment, location, "C:\\Tobbin\\Player\\TobbinPlayer.exe"};
    WinAMP_Control control{fake.environment, discovery};
    PlayList playList;
    FakePanelView view;
    PlayerPanel panel{fake.environment, control, playList, PathOf, discovery, view};
};

// What the player gets when the panel loads with three songs.
const Log kLoading = {"1024 0 0",
                      "1024 128 122",
                      "1024 0 123",
                      "273 40047 0",
                      "1024 0 101",
                      "copy 100 C:\\M\\3.mp3|",
                      "273 40045 0",
                      "1024 1 105",
                      "copy 100 C:\\M\\7.mp3|",
                      "copy 100 C:\\M\\5.mp3|"};

TEST_F(Panel, LoadsAndPlaysExactlyTheSongsInTheirOrder) {
    EXPECT_EQ(LoadAndPlay({3, 7, 5}), kLoading);
    EXPECT_EQ(view.caption, "WinAMP Version# 2.01");
    EXPECT_EQ(view.size, std::pair(4740, 2100));
    EXPECT_EQ(view.bars[PlayerBar::Volume], (BarState{0, 255, 128}));
    EXPECT_EQ(view.bars[PlayerBar::Balance], (BarState{-127, 127, 0}));
    EXPECT_EQ(view.bars[PlayerBar::Track], (BarState{0, 180, 0}));
    EXPECT_EQ(view.button, "&Pause");
    EXPECT_TRUE(view.buttonEnabled && view.timer && !view.stopOffered);
    EXPECT_EQ(fake.statusLine.progress.back(), "");
    ASSERT_EQ(fake.programs.started.size(), 2U);  // by the load and by Playstuff
    EXPECT_EQ(fake.programs.started[0].program, "c:\\program files\\winamp.exe");
    EXPECT_EQ(fake.programs.started[0].arguments, "");
    EXPECT_EQ(fake.programs.started[0].show, ShowProgram::MinimizedInactive);
    EXPECT_TRUE(fake.dialogs.boxes.empty());
}

TEST_F(Panel, TheFirstSongDecidesAndLaterMissingOnesAreSkipped) {
    LoadAndPlay({1});
    Play({11, 1, 2});
    playList.Assign({kNoPath, 1}, "Blue Skies");
    panel.Playstuff();
    RunToTheEnd();
    Play({});
    EXPECT_TRUE(fake.player.log.empty());
    Play({2, 11, kNoPath, 4});
    EXPECT_EQ(TakeLog(), (Log{"273 40047 0", "1024 0 101", "copy 100 C:\\M\\2.mp3|", "273 40045 0",
                              "1024 1 105", "copy 100 C:\\M\\4.mp3|"}));
    fake.disk.AddFile("C:\\M\\\xE6\xBC\xA2.mp3");  // has no name that the player understands
    Play({1, kNoAnsiName});
    EXPECT_EQ(fake.statusLine.lines,
              (Log{"Nothing played: \"C:\\M\\11.mp3\", the first song, is missing.",
                   "Nothing played: \"Blue Skies\", the first song, is missing.",
                   "2 songs skipped. The first: \"C:\\M\\11.mp3\" is missing.",
                   "1 song skipped: \"C:\\M\\\xE6\xBC\xA2.mp3\" has a name that the player can't "
                   "be told."}));
}

TEST_F(Panel, WaitsForALatePlayerButNotForever) {
    fake.player.findsBeforeItOpens = 20;
    playList.Assign({1});
    panel.Load();
    EXPECT_TRUE(panel.IsBusy());
    panel.Playstuff();  // A second request meanwhile: the load's own Playstuff serves it.
    RunToTheEnd();
    EXPECT_EQ(fake.player.log.front(), "1024 0 0");
    EXPECT_TRUE(fake.dialogs.boxes.empty());

    fake.player.isOpen = false;
    const std::int64_t start = fake.clock.milliseconds;
    Play({1});
    EXPECT_NEAR(fake.clock.milliseconds - start, 10'500, 500);
    EXPECT_FALSE(view.timer);
    ASSERT_EQ(fake.dialogs.boxes.size(), 1U);
    EXPECT_TRUE(fake.dialogs.boxes[0].text.starts_with(
        "Tobbin can't seem to find WinAmp.\n\nHere's what you should do:"));
}

TEST_F(Panel, SaysThatThePlayerCouldNotBeStarted) {
    fake.programs.succeeds = false;
    panel.Load();
    fake.programs.succeeds = true;
    control.PlayerProgramPath("");
    Play({1});
    EXPECT_TRUE(fake.player.limits.empty());
    panel.Close();
    ASSERT_EQ(fake.dialogs.boxes.size(), 3U);
    EXPECT_EQ(fake.dialogs.boxes[0].text, "Couldn't start WinAMP");
    EXPECT_EQ(fake.dialogs.boxes[1].text, "Couldn't start WinAMP");
    EXPECT_EQ(fake.dialogs.boxes[2].title, "First Play a Song");
}

TEST_F(Panel, TheTimerFollowsThePlayer) {
    LoadAndPlay({1});
    const auto tick = [&](int milliseconds, int status) {
        fake.player.positionMilliseconds = milliseconds;
        fake.player.status = status;
        panel.OnTimer();
        return view.status + " " + std::to_string(view.bars[PlayerBar::Track].value) + view.button;
    };
    EXPECT_EQ(tick(42'999, 3), "PAUSED 42&Pause");
    EXPECT_EQ(tick(181'000, 3), "PAUSED 42&Pause");  // beyond the first song's length
    EXPECT_EQ(tick(180'000, 1), "PLAYING 180&Play");
    for (const std::string& line : TakeLog())
        EXPECT_TRUE(line == "1024 0 105" || line == "1024 0 104") << line;
    fake.player.hangs = true;
    EXPECT_EQ(tick(7'000, 1), "The player doesn't answer 180&Play");
    EXPECT_EQ(fake.statusLine.lines.size(), 1U);
    fake.player.hangs = false;
    EXPECT_EQ(tick(7'000, 1), "PLAYING 7&Play");
}

TEST_F(Panel, ADragSeeksOnceAtItsEnd) {
    LoadAndPlay({1});
    panel.OnTrackScroll(20);
    panel.OnTrackScroll(20);
    panel.OnTimer();  // leaves the bar to the person
    EXPECT_EQ(TakeLog(), (Log{"1024 0 104"}));
    panel.OnTrackChange(30);
    EXPECT_EQ(TakeLog(), (Log{"1024 1 105", "1024 30000 106"}));
    panel.OnTrackChange(31);
    EXPECT_TRUE(fake.player.log.empty());
    panel.OnVolume(200);
    panel.OnBalance(-1);
    EXPECT_EQ(TakeLog(), (Log{"1024 200 122", "1024 254 123"}));
}

TEST_F(Panel, AddingThousandsShowsProgressAndCanBeStopped) {
    playList.Assign(std::vector<std::int32_t>(10'000, 1));
    panel.Load();
    while (!view.stopOffered)
        ASSERT_TRUE(Turn());
    const StepsDone steps = fake.statusLine.steps.back();
    EXPECT_EQ(view.status, "Song " + std::to_string(steps.done) + " of 10,000");
    EXPECT_EQ(steps.all, 10'000U);
    const std::size_t sent = fake.player.log.size();
    EXPECT_LT(sent, 200U);
    panel.OnStopAdding();
    RunToTheEnd();
    EXPECT_EQ(fake.player.log.size(), sent);
    EXPECT_FALSE(view.stopOffered);
    EXPECT_EQ(fake.statusLine.progress.back(), "");
    EXPECT_TRUE(view.timer);
    EXPECT_EQ(view.button, "&Pause");
}

TEST_F(Panel, FollowsOurOwnPlayerFromSongToSong) {
    fake.player.isOurs = true;
    fake.player.track = 1;
    fake.player.tracks = 3;
    fake.disk.AddFile(PathOf(kNoAnsiName));
    const Log log = LoadAndPlay({3, kNoAnsiName, 5});
    EXPECT_EQ(log[0], "50002 2 0");
    EXPECT_EQ(log[6], "copy 50001 C|:|\\|M|\\|3|.|m|p|3|");
    EXPECT_EQ(log[9], "copy 50001 C|:|\\|M|\\|\x22\x6F.|m|p|3|");
    panel.OnTimer();  // tells of another song; the next one asks for what there is to know of it
    fake.player.caption = "Ella - Blue Skies - Tobbin Player";
    for (const auto& [track, seconds, song] : {std::tuple{1, 180, "1 of 3:  Ella - Blue Skies"},
                                               {2, 61, "2 of 3:  Ella - Blue Skies"}}) {
        fake.player.track = track;
        fake.player.lengthSeconds = seconds;
        panel.OnTimer();
        panel.OnTimer();
        EXPECT_EQ(view.song, song);
        EXPECT_EQ(view.bars[PlayerBar::Track].maximum, seconds);
    }
    fake.player.positionMilliseconds = 9'000;
    panel.OnTimer();
    EXPECT_EQ(view.texts[PlayerBar::Track], "00:09 / 01:01");
    EXPECT_EQ(view.texts[PlayerBar::Volume], "50 %");
    fake.player.status = 0;
    panel.OnTimer();
    EXPECT_EQ(view.button, "&Play");
}

TEST_F(Panel, AsksAnotherPlayerForALengthOnlyWhileItHasNone) {
    fake.player.lengthSeconds = -1;
    LoadAndPlay({1, 2});
    EXPECT_EQ(view.song, "2 songs in the player's list");
    panel.OnTimer();
    EXPECT_EQ(TakeLog()[0], "1024 1 105");
    fake.player.lengthSeconds = 90;
    panel.OnTimer();
    EXPECT_EQ(view.bars[PlayerBar::Track].maximum, 90);
    TakeLog();
    panel.OnTimer();
    EXPECT_EQ(TakeLog(), (Log{"1024 0 105", "1024 0 104"}));
}

TEST_F(Panel, TellsOnceOfAPlayerWithMoreRightsAndTriesNoMore) {
    LoadAndPlay({1});
    fake.player.hasMoreRights = true;
    panel.OnTimer();
    EXPECT_FALSE(view.timer);
    Play({1});
    EXPECT_FALSE(panel.IsBusy());
    const std::size_t tries = fake.player.limits.size();
    control.SendPlayerCommand(PlayerCommand::NextTrack);
    EXPECT_EQ(fake.player.limits.size(), tries);
    ASSERT_EQ(fake.dialogs.boxes.size(), 2U);  // for each request one
    EXPECT_TRUE(fake.dialogs.boxes[1].text.starts_with("The player runs as administrator"));
    EXPECT_EQ(view.status, "The player runs as administrator");
}

TEST_F(Panel, TellsOfAPlayerThatEndsAndOnceOfFilesThatCanNotBeLookedAt) {
    LoadAndPlay({1});
    fake.player.onMessage = [&](int) { fake.player.isOpen = fake.player.log.size() < 6; };
    Play({1, 2, 3, 4});
    EXPECT_TRUE(view.timer);
    fake.player.onMessage = [](int) {};
    fake.player.isOpen = true;
    fake.disk.FailAt(2, DiskError::AccessDenied, false);
    Play({1, 2, 3, 4});
    EXPECT_EQ(fake.dialogs.boxes.size(), 1U);
    EXPECT_EQ(fake.statusLine.lines,
              (Log{"The player ended before it had all songs: it had got 2 of 4 songs.",
                   "3 songs skipped. The first: \"C:\\M\\2.mp3\" can't be looked at."}));
}

TEST_F(Panel, ChangesOverToThePlayerThatIsChosen) {
    const std::string own = "C:\\Tobbin\\Player\\TobbinPlayer.exe";
    fake.disk.AddFile(own);
    LoadAndPlay({1});
    EXPECT_EQ(view.choice, "O&wn Player");
    panel.OnChoosePlayer();
    EXPECT_EQ(view.choice, "Ot&her Player...");
    EXPECT_EQ(location.path, "c:\\tobbin\\player\\tobbinplayer.exe");
    EXPECT_EQ(TakeLog().back(), "273 40001 0");
    EXPECT_TRUE(Turn());
    EXPECT_EQ(TakeLog(), Log{});  // The one before has not gone yet.
    fake.player.isOpen = false;
    Turn();
    fake.player.isOpen = true;
    RunToTheEnd();
    EXPECT_EQ(fake.programs.started.back().program, location.path);
    EXPECT_EQ(TakeLog().back(), "1024 1 105");
    panel.OnChoosePlayer();  // cancelled
    EXPECT_FALSE(panel.IsBusy());
    fake.dialogs.files = {"D:\\Other\\Play.exe"};
    panel.OnChoosePlayer();
    EXPECT_EQ(location.path, "d:\\other\\play.exe");
}

// Where any user of the PC may have put it. No to running it means ours; and the window of a
// program that was not agreed to gets nothing, whichever was to be run.
TEST_F(Panel, AsksOnceBeforeAStrangePlayerIsRunOrSentAnything) {
    const std::string own = "C:\\Tobbin\\Player\\TobbinPlayer.exe";
    fake.disk.AddFile(own);
    fake.programs.registered = "C:\\W\\Winamp.exe";
    fake.dialogs.answers = {Answer::Yes, Answer::No, Answer::No,
                            Answer::No,  Answer::No, Answer::No};
    const auto run = [&](const std::string& stored, const std::string& open) {
        const std::size_t before = fake.dialogs.boxes.size();
        control.PlayerProgramPath(stored);
        fake.player.program = open;
        fake.programs.started.clear();
        LoadAndPlay({1});
        return fake.programs.started.at(0).program + (view.timer ? "" : " unsent") + " " +
               std::to_string(fake.dialogs.boxes.size() - before);
    };
    const std::string ours = "c:\\tobbin\\player\\tobbinplayer.exe";
    EXPECT_EQ(run("c:\\w\\winamp.exe", own), "c:\\w\\winamp.exe 0");
    EXPECT_EQ(run("c:\\aaa\\winamp.exe", "C:\\AAA\\winamp.exe"), "c:\\aaa\\winamp.exe 1");
    EXPECT_NE(fake.dialogs.boxes.at(0).text.find("\n\nc:\\aaa\\winamp.exe\n\n"),
              Log::value_type::npos);
    EXPECT_EQ(run("c:\\aaa\\winamp.exe", "C:\\AAA\\winamp.exe"), "c:\\aaa\\winamp.exe 0");
    for (const std::string path : {"c:\\bbb\\winamp.exe", "c:\\program files\\cmd.exe",
                                   "c:\\program files\\..\\bbb\\winamp.exe"}) {
        EXPECT_EQ(run(path, own), ours + " 1");
        EXPECT_EQ(run(path, own), ours + " 0");
    }
    EXPECT_EQ(run(ours, "C:\\CCC\\winamp.exe"), ours + " unsent 1");
    EXPECT_EQ(run(ours, "C:\\CCC\\winamp.exe"), ours + " unsent 0");
    EXPECT_EQ(run(ours, ""), ours + " unsent 1");
    EXPECT_TRUE(fake.player.limits.size() > 0 && TakeLog().empty());
}

// Whichever message the player hangs at: it is told so, nothing is sent until it answers, and then
// every further song gets to it, none twice.
class HungPanel : public Panel, public testing::WithParamInterface<int> {};
INSTANTIATE_TEST_SUITE_P(EachMessage, HungPanel, testing::Range(0, 10));

TEST_P(HungPanel, GoesOnWhenThePlayerAnswersAgain) {
    playList.Assign({3, 7, 5});
    fake.player.hangsAfter = GetParam();
    panel.Load();
    for (int turn = 0; turn < 5; ++turn) {
        EXPECT_EQ(view.status, "The player doesn't answer");
        EXPECT_GE(view.workIn.value_or(0), 500);
        panel.Work();
    }
    fake.player.hangs = false;
    for (int turn = 0; panel.IsBusy(); ++turn) {
        ASSERT_LT(turn, 10);
        panel.Work();
    }
    Log sent = TakeLog(), expected = kLoading;
    std::erase(sent, "0 0 0");  // the questions whether it answers
    if (expected[GetParam()].starts_with("copy"))
        expected.erase(expected.begin() + GetParam());
    EXPECT_EQ(sent, expected);
    EXPECT_TRUE(view.timer);
}

// However late the replies come, each just within its limit, and wherever they stop coming.
TEST_F(Panel, NoCommandWaitsForMoreThan600Milliseconds) {
    std::int64_t longest = 0;
    fake.player.onMessage = [this](int limit) { fake.clock.milliseconds += limit; };
    for (int hangsAfter = -1; hangsAfter < 3; ++hangsAfter) {
        for (const bool hungBefore : {false, true}) {
            LoadAndPlay({1, 2});
            const std::function<void()> commands[] = {[&] { panel.OnTimer(); },
                                                      [&] { panel.OnTrackScroll(20), panel.OnTrackChange(20); },
                                                      [&] { panel.OnVolume(7); },
                                                      [&] { panel.OnPlayPauseClick(); },
                                                      [&] { panel.Playstuff(); },
                                                      [&] { panel.Work(); },
                                                      [&] { panel.Close(); }};
            for (const auto& command : commands) {
                fake.player.hangs = hungBefore;
                if (hungBefore)
                    control.SetVolume(1);
                fake.player.hangs = false;
                fake.player.hangsAfter = hangsAfter;
                TakeLog();
                const std::int64_t begin = fake.clock.milliseconds;
                command();
                longest = std::max(longest, fake.clock.milliseconds - begin);
                fake.player.hangs = false;
                fake.player.hangsAfter = -1;
                control.AnswersAgain();
            }
        }
    }
    EXPECT_LE(longest, 600);
}

TEST_F(Panel, TheButtonTogglesByItsCaptionAndClosingClosesThePlayer) {
    LoadAndPlay({1});
    for (const char* caption : {"&Play", "&Pause"}) {
        panel.OnPlayPauseClick();
        EXPECT_EQ(view.button, caption);
    }
    panel.Close();
    EXPECT_EQ(TakeLog(),
              (Log{"273 40046 0", "273 40045 0", "273 40047 0", "1024 0 101", "273 40001 0"}));
    EXPECT_FALSE(view.timer || panel.IsBusy());
}

}  // namespace
}  // namespace tobbin
