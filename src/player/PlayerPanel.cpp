#include "player/PlayerPanel.h"

#include <algorithm>

#include "player/RaisedFlag.h"
#include "util/Text.h"

namespace tobbin {
namespace {

constexpr std::int32_t kFirstVolume = 128;

// Milliseconds.
constexpr std::int64_t kWindowPatience = 10'000;
constexpr int kWindowInterval = 50;     // between two looks for the window
constexpr int kQuestionInterval = 500;  // between two questions whether the player answers again
constexpr std::int64_t kSlice = 25;     // of work before events are let through
constexpr int kAtOnce = 0;

constexpr char kNoStart[] = "Couldn't start WinAMP";

constexpr char kAdvice[] =
    "Tobbin can't seem to find WinAmp.\n\n"
    "Here's what you should do:\n\n"
    "1. IF WinAmp is opened, close it.  When you double click a song, Tobbin will open it.  Always "
    "open Tobbin first or else it can't find WinAmp. . .      OR\n\n"
    "2.  IF you think you're getting this error because WinAmp is always trying to connect you "
    "with the internet (and you don't want that) then close the 'browser' portion of Winamp by "
    "clicking the 'x' in the right hand corner of the WinAmp browser. . .   OR\n\n"
    "3. IF you for some reason you moved the WinAmp.exe from where it used to be you might want to "
    "make Tobbin start over by deleting Tobbin's ini file.  First close Tobbin then delete the ini "
    "file c:\\Program Files\\Fenwold\\TobbinMP3\\Grouping\\System\\TheOrganizer.ini.  Without this "
    "file Tobbin will search for WinAmp again. . .   OR\n\n"
    "4. IF you don't have a copy of WinAmp then go to www.winamp.com and download and install one."
    "  Tobbin will search for it next time it opens.";

}  // namespace

PlayerPanel::PlayerPanel(Environment& environment, WinAMP_Control& control,
                         const PlayList& playList, SongPathOf songPathOf,
                         PlayerDiscovery& discovery, PlayerPanelView& view)
    : m_environment(environment),
      m_control(control),
      m_playList(playList),
      m_songPathOf(std::move(songPathOf)),
      m_discovery(discovery),
      m_view(view) {}

void PlayerPanel::Load() {
    m_view.SetButton(m_buttonCaption, m_buttonEnabled);
    for (const PlayerBar bar : {PlayerBar::Track, PlayerBar::Volume, PlayerBar::Balance})
        SetBar(bar, Bar(bar));
    ShowChoice();
    StartAndAwaitWindow(Stage::AwaitWindowToLoad);
}

void PlayerPanel::Playstuff() {
    // While the panel loads, its own Playstuff is still to come.
    const bool loading = m_stage == Stage::AwaitOldPlayersEnd ||
                         m_stage == Stage::AwaitWindowToLoad || m_stage == Stage::AskVersion ||
                         m_stage == Stage::SendVolume || m_stage == Stage::SendBalance;
    if (loading)
        return;
    // What plays already can be paused and followed, even if nothing comes of the new songs.
    if (m_stage == Stage::AskLength || m_stage == Stage::AddSongs)
        FinishPlaystuff();
    StartAndAwaitWindow(Stage::AwaitWindowToPlay);
}

void PlayerPanel::StartAndAwaitWindow(Stage stage) {
    OfferNoStop();
    m_stage = Stage::Idle;
    if (!MayRunPlayer())
        return;
    if (!m_control.StartPlayer()) {
        m_environment.dialogs.Tell(kNoStart);
        return;
    }
    m_deadline = m_environment.clock.Milliseconds() + kWindowPatience;
    m_stage = stage;
    Work();
}

// No to a player that was found means ours.
bool PlayerPanel::MayRunPlayer() {
    const std::string path = m_control.PlayerProgramPath();
    if (path.empty() || m_discovery.MayRun(path))
        return true;
    if (!m_discovery.HasOwnPlayer()) {
        m_environment.statusLine.Say(
            "The player \"" + path +
            "\" was not run, as you wished.  A button in the player panel chooses another one.");
        return false;
    }
    m_discovery.UseOwnPlayer();
    m_control.PlayerProgramPath(m_discovery.PlayerPath());
    ShowChoice();
    return true;
}

void PlayerPanel::Work() {
    if (m_working || m_stage == Stage::Idle)
        return;
    int wait = kAtOnce;
    {
        const RaisedFlag working(m_working);
        const std::int64_t end = m_environment.clock.Milliseconds() + kSlice;
        do
            wait = Advance();
        while (m_stage != Stage::Idle && wait == kAtOnce &&
               m_environment.clock.Milliseconds() < end);
    }
    if (m_stage == Stage::AddSongs && m_control.IsAnswering()) {
        const StepsDone steps = {
            static_cast<std::size_t>(std::min(m_place, m_playList.UpperBound())),
            static_cast<std::size_t>(m_playList.UpperBound())};
        const std::string number =
            " " + GroupedNumber(steps.done) + " of " + GroupedNumber(steps.all);
        m_view.OfferStop(true);
        ShowStatus("Song" + number);
        m_environment.statusLine.ShowProgress(
            "Adding song" + number + " to the player's list.  Esc stops it.", steps);
    }
    if (m_stage != Stage::Idle)
        m_view.WorkIn(wait);
}

int PlayerPanel::Advance() {
    if (m_stage == Stage::AwaitWindowToLoad || m_stage == Stage::AwaitWindowToPlay)
        return AwaitWindow();
    if (m_stage == Stage::AwaitOldPlayersEnd)
        return AwaitOldPlayersEnd();
    if (m_control.AnswersAgain()) {
        if (m_control.MustAskWhoseItIs())
            m_control.AskWhoseItIs();
        else
            TalkToPlayer();
    }
    if (m_control.IsDenied()) {
        EndWith(kHasMoreRights);
        return kAtOnce;
    }
    if (m_control.IsGone() && m_stage > Stage::SendStop)
        FinishPlaystuff("The player ended before it had all songs: it had got " +
                        GroupedNumber(static_cast<std::size_t>(m_added)) + " of " +
                        Counted(static_cast<std::size_t>(m_playList.UpperBound()), "song") + ".");
    if (m_control.IsAnswering())
        return kAtOnce;
    ShowStatus(kNoAnswer);
    return kQuestionInterval;
}

int PlayerPanel::AwaitWindow() {
    if (m_control.FindPlayerWindow()) {
        if (!m_control.IsWindowKnown() && m_discovery.MayGetSongs(m_control.Stranger()))
            return kAtOnce;
        if (!m_control.IsWindowKnown()) {
            EndWith("");
            m_environment.statusLine.Say("Nothing was sent to the player \"" +
                                         m_control.Stranger() + "\", as you wished.  Close it.");
            return kAtOnce;
        }
        m_stage = m_stage == Stage::AwaitWindowToLoad ? Stage::AskVersion : Stage::CheckFirstSong;
        return kAtOnce;
    }
    if (m_environment.clock.Milliseconds() < m_deadline)
        return kWindowInterval;
    EndWith("");
    m_environment.dialogs.Tell(kAdvice);
    return kAtOnce;
}

// The player that was used before is told to close; its window must not be taken for the new one's.
int PlayerPanel::AwaitOldPlayersEnd() {
    if (!m_control.FindPlayerWindow()) {
        StartAndAwaitWindow(Stage::AwaitWindowToLoad);
        return m_stage == Stage::Idle ? kAtOnce : kWindowInterval;
    }
    if (m_environment.clock.Milliseconds() < m_deadline)
        return kWindowInterval;
    EndWith("");
    m_environment.statusLine.Say(
        "A player is still open. Close it, then play the songs with the other one.");
    return kAtOnce;
}

// There is nobody left to be asked.
void PlayerPanel::EndWith(const char* status) {
    m_stage = Stage::Idle;
    OfferNoStop();
    m_view.SetTimer(false);
    ShowStatus(status);
}

// Does what the stage names and goes on to the next one if the player answered.
void PlayerPanel::TalkToPlayer() {
    const auto goOnTo = [this](Stage next) {
        if (m_control.IsAnswering())
            m_stage = next;
        return m_stage == next;
    };
    switch (m_stage) {
        case Stage::AskVersion: {
            const std::string version = m_control.GetPlayerVersion();
            if (goOnTo(Stage::SendVolume)) {
                m_view.SetCaption("WinAMP Version# " + version);
                m_view.SetOuterSize(kWidthTwips, kHeightTwips);
            }
            return;
        }
        case Stage::SendVolume:
            SetBar(PlayerBar::Volume, {0, 255, kFirstVolume});
            m_control.SetVolume(kFirstVolume);
            goOnTo(Stage::SendBalance);
            return;
        case Stage::SendBalance:
            SetBar(PlayerBar::Balance, {-127, 127, 0});
            m_control.SetBalance(0);
            if (goOnTo(Stage::Idle))
                StartAndAwaitWindow(Stage::AwaitWindowToPlay);
            return;
        case Stage::CheckFirstSong:
            CheckFirstSong();
            return;
        case Stage::SendStop:
            m_control.SendPlayerCommand(PlayerCommand::Stop);
            goOnTo(Stage::SendClear);
            return;
        case Stage::SendClear:
            m_control.ClearPlaylist();
            goOnTo(Stage::AddFirstSong);
            return;
        case Stage::AddFirstSong:
            m_control.AddFileToPlaylist(m_firstPath);
            m_added = m_control.IsAnswering() ? 1 : 0;
            m_stage = Stage::SendPlay;
            return;
        case Stage::SendPlay:
            m_control.SendPlayerCommand(PlayerCommand::Play);
            goOnTo(Stage::AskLength);
            return;
        case Stage::AskLength: {
            const std::int32_t length = m_control.GetTrackLength();
            if (goOnTo(Stage::AddSongs)) {
                SetBar(PlayerBar::Track, {0, static_cast<std::int16_t>(length), 0});
                m_place = 2;
            }
            return;
        }
        case Stage::AddSongs:
            AddSongs();
            return;
        default:
            return;
    }
}

void PlayerPanel::CheckFirstSong() {
    m_stage = Stage::Idle;
    m_leftOut = m_failures = 0;
    if (m_playList.UpperBound() < 1)
        return;
    m_firstPath = m_songPathOf(m_playList.Song(1));
    const std::string problem = ProblemOf(m_firstPath);
    if (problem.empty()) {
        m_stage = Stage::SendStop;
        return;
    }
    const std::string name = m_firstPath.empty() ? m_playList.FirstName() : m_firstPath;
    m_environment.statusLine.Say("Nothing played: \"" + name + "\", the first song, " + problem +
                                 ".");
}

void PlayerPanel::AddSongs() {
    if (m_place > m_playList.UpperBound()) {
        FinishPlaystuff();
        return;
    }
    const std::string path = m_songPathOf(m_playList.Song(m_place++));
    const std::string problem = ProblemOf(path);
    if (problem.empty()) {
        m_control.AddFileToPlaylist(path);
        m_added += m_control.IsAnswering() && !m_control.IsGone() ? 1 : 0;
    } else if (m_leftOut++ == 0) {
        m_whyLeftOut = (path.empty() ? "its file" : "\"" + path + "\"") + " " + problem;
    }
}

// `line` is what went wrong, if anything did.
void PlayerPanel::FinishPlaystuff(const std::string& line) {
    m_stage = Stage::Idle;
    OfferNoStop();
    m_buttonEnabled = true;
    SetButtonCaption(kPause);
    m_view.SetTimer(true);
    m_otherTrack = false;
    m_track = 0;
    m_tracks = m_added;
    ShowSong();
    if (!line.empty())
        m_environment.statusLine.Say(line);
    else if (m_leftOut > 0)
        m_environment.statusLine.Say(Counted(m_leftOut, "song") +
                                     (m_leftOut == 1 ? " skipped: " : " skipped. The first: ") +
                                     m_whyLeftOut + ".");
}

// Why the player can't be given a file, as the predicate of a sentence; empty when it can.
std::string PlayerPanel::ProblemOf(const std::string& path) {
    if (path.empty())
        return "is missing";
    const std::size_t failures = m_failures;
    if (!m_control.FileExists(path, m_failures))
        return m_failures == failures ? "is missing" : "can't be looked at";
    return m_control.MaybePathForPlayer(path) ? "" : "has a name that the player can't be told";
}

void PlayerPanel::Close() {
    const bool wasAwaiting =
        m_stage == Stage::AwaitWindowToLoad || m_stage == Stage::AwaitWindowToPlay;
    m_stage = Stage::Idle;
    OfferNoStop();
    m_view.SetTimer(false);
    if (wasAwaiting && !m_control.IsWindowKnown())
        return;
    m_control.StopAndClose();
}

void PlayerPanel::OfferNoStop() {
    m_view.OfferStop(false);
    m_environment.statusLine.ShowProgress({}, {});
}

}  // namespace tobbin
