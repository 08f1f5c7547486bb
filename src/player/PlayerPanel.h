#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/Environment.h"
#include "player/PlayerPanelView.h"
#include "player/PlayList.h"
#include "player/WinAMP_Control.h"
#include "search/PlayerDiscovery.h"

namespace tobbin {

// The player panel `frmMainWinamp`: starts the external player, sends it the play list, then shows
// and steers what it does.
//
// Starting and sending goes in small steps, so that the program's windows stay alive while the
// player's window is awaited, while thousands of songs are added and while the player hangs: Work
// does some and asks the view to call it again.
class PlayerPanel {
 public:
    // The full path of a catalogue record's song; empty when it has none.
    using SongPathOf = std::function<std::string(std::int32_t record)>;

    // The outer size that its window gets, in twips.
    static constexpr int kWidthTwips = 4740;
    static constexpr int kHeightTwips = 2100;

    PlayerPanel(Environment& environment, WinAMP_Control& control, const PlayList& playList,
                SongPathOf songPathOf, PlayerDiscovery& discovery, PlayerPanelView& view);

    // Starts the player, shows its version, sets volume and balance, then plays. Called once, when
    // the window is there.
    void Load();

    // Sends the play list as it is now and starts playing. If the first song's file is missing
    // nothing is played at all; further ones that are missing are left out. The status line tells
    // of both, and of a player that ends meanwhile.
    void Playstuff();

    // Stops and closes the player. Called once, before the window goes.
    void Close();

    void Work();

    // What the person does. A scroll is a drag of the thumb; a change is its end or any other move.
    void OnPlayPauseClick();
    void OnTrackScroll(std::int32_t seconds);
    void OnTrackChange(std::int32_t seconds);
    void OnVolume(std::int32_t level);  // scroll and change alike
    void OnBalance(std::int32_t balance);
    void OnStopAdding();  // keeps what was sent so far
    // Changes over to our own player, if another one is used; otherwise asks for another program.
    // What plays is played anew by the one that was chosen.
    void OnChoosePlayer();
    void OnTimer();

    bool IsBusy() const { return m_stage != Stage::Idle; }
    bool IsAddingSongs() const { return m_stage == Stage::AddSongs; }

 private:
    // What is to be done next. All from AskVersion on need the player's answers; each is done
    // again when the answer didn't come in time, but for a song, which might be added twice.
    enum class Stage {
        Idle,
        AwaitWindowToLoad,
        AwaitWindowToPlay,
        AwaitOldPlayersEnd,
        AskVersion,
        SendVolume,
        SendBalance,
        CheckFirstSong,
        SendStop,
        SendClear,
        AddFirstSong,
        SendPlay,
        AskLength,
        AddSongs,
    };

    void StartAndAwaitWindow(Stage stage);
    bool MayRunPlayer();
    int Advance();  // milliseconds to wait before the next step
    int AwaitWindow();
    int AwaitOldPlayersEnd();
    void EndWith(const char* status);
    void TalkToPlayer();
    void CheckFirstSong();
    void AddSongs();
    void FinishPlaystuff(const std::string& line = {});
    void OfferNoStop();
    std::string ProblemOf(const std::string& path);
    void FollowPlayer();
    void FollowSong();
    void ShowSong();
    void ShowValue(PlayerBar bar);
    void ShowChoice();
    void SetButtonCaption(const char* caption);
    void SetBar(PlayerBar bar, const BarState& state);
    void ShowStatus(const std::string& text);
    static constexpr char kNoAnswer[] = "The player doesn't answer";
    static constexpr char kHasMoreRights[] = "The player runs as administrator";
    static constexpr char kPlay[] = "&Play";
    static constexpr char kPause[] = "&Pause";

    BarState& Bar(PlayerBar bar) { return m_bars[static_cast<int>(bar)]; }

    Environment& m_environment;
    WinAMP_Control& m_control;
    const PlayList& m_playList;
    SongPathOf m_songPathOf;
    PlayerDiscovery& m_discovery;
    PlayerPanelView& m_view;

    Stage m_stage = Stage::Idle;
    bool m_working = false;       // inside Work or OnTimer, perhaps below a message box
    std::int64_t m_deadline = 0;  // for the player's window
    std::int32_t m_place = 0;     // of the next song to add, from 1
    std::string m_firstPath;
    std::int32_t m_added = 0;    // songs
    std::size_t m_leftOut = 0;   // songs
    std::string m_whyLeftOut;    // the first of them
    std::size_t m_failures = 0;  // to look at a file

    std::int32_t m_track = 0;   // of our own player's list, from 1
    std::int32_t m_tracks = 0;  // in it
    bool m_otherTrack = false;  // since its length was asked for
    int m_ticks = 0;
    std::string m_song;

    bool m_draggingTrack = false;
    std::string m_buttonCaption = "&Play";
    bool m_buttonEnabled = false;
    std::string m_status;
    BarState m_bars[3] = {{0, 0, 0}, {0, 255, 128}, {-127, 127, 0}};
};

}  // namespace tobbin
