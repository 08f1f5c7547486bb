// What the person does in the panel, and what it shows of the player.
#include <algorithm>

#include "player/PlayerPanel.h"
#include "player/RaisedFlag.h"
#include "util/Text.h"

namespace tobbin {
namespace {

constexpr int kTicksForSong = 10;  // after so many our own player's song and list are asked for
constexpr std::int64_t kEndPatience = 5'000;  // milliseconds for the end of the player before

}  // namespace

void PlayerPanel::OnPlayPauseClick() {
    const bool play = m_buttonCaption == kPlay;
    m_control.SendPlayerCommand(play ? PlayerCommand::Play : PlayerCommand::Pause);
    SetButtonCaption(play ? kPause : kPlay);
}

void PlayerPanel::OnTrackScroll(std::int32_t seconds) {
    m_draggingTrack = true;
    Bar(PlayerBar::Track).value = seconds;
    ShowValue(PlayerBar::Track);
}

void PlayerPanel::OnTrackChange(std::int32_t seconds) {
    Bar(PlayerBar::Track).value = seconds;
    ShowValue(PlayerBar::Track);
    if (!m_draggingTrack)
        return;
    m_control.SetTrackPosition(seconds);
    m_draggingTrack = false;
}

void PlayerPanel::OnVolume(std::int32_t level) {
    Bar(PlayerBar::Volume).value = level;
    ShowValue(PlayerBar::Volume);
    m_control.SetVolume(level);
}

void PlayerPanel::OnBalance(std::int32_t balance) {
    Bar(PlayerBar::Balance).value = balance;
    m_control.SetBalance(balance);
}

void PlayerPanel::OnStopAdding() {
    if (m_stage == Stage::AddSongs)
        FinishPlaystuff("Stopped after " + GroupedNumber(static_cast<std::size_t>(m_place - 1)) +
                        " of " +
                        Counted(static_cast<std::size_t>(m_playList.UpperBound()), "song") +
                        "; those that the player has go on playing.");
}

void PlayerPanel::OnChoosePlayer() {
    if (m_working)
        return;
    if (m_discovery.OffersOwnPlayer()) {
        m_discovery.UseOwnPlayer();
    } else {
        const RaisedFlag working(m_working);
        const auto chosen = m_environment.dialogs.MaybeFileToOpen(
            "Programs (*.exe)|*.exe", FolderOfPath(m_control.PlayerProgramPath()));
        if (!chosen)
            return;
        m_environment.hosts.Trust(*chosen);
        m_discovery.UsePlayer(*chosen);
    }
    ShowChoice();
    m_control.PlayerProgramPath(m_discovery.PlayerPath());
    EndWith("");
    if (m_control.FindPlayerWindow() && m_control.IsWindowKnown())
        m_control.StopAndClose();
    m_deadline = m_environment.clock.Milliseconds() + kEndPatience;
    m_stage = Stage::AwaitOldPlayersEnd;
    Work();
}

void PlayerPanel::OnTimer() {
    if (m_working || IsBusy())
        return;
    const RaisedFlag working(m_working);
    if (m_control.AnswersAgain())
        FollowPlayer();
    const std::string status = m_control.IsAnswering() ? m_control.GetPlayerStatus() : "";
    if (m_control.IsDenied()) {
        EndWith(kHasMoreRights);
        return;
    }
    const bool answers = m_control.IsAnswering();
    ShowStatus(answers ? status : kNoAnswer);
    const BarState& bar = Bar(PlayerBar::Track);
    if (answers && m_control.IsOurs())
        SetButtonCaption(status == "PLAYING" && bar.value != bar.maximum ? kPause : kPlay);
}

// Asks the player two questions at most; only our own tells of other songs than the first.
void PlayerPanel::FollowPlayer() {
    BarState bar = Bar(PlayerBar::Track);
    if (m_control.IsOurs()) {
        if (m_otherTrack || ++m_ticks % kTicksForSong == 0) {
            FollowSong();
            return;
        }
        const std::int32_t track = m_control.GetTrackNumber();
        m_otherTrack = track >= 0 && track != m_track;
        m_track = std::max(track, 0);
        ShowSong();
    } else if (bar.maximum <= 0) {
        bar.maximum = static_cast<std::int16_t>(m_control.GetTrackLength());
        SetBar(PlayerBar::Track, bar);
    }
    if (m_draggingTrack || !m_control.IsAnswering())
        return;
    const std::int32_t position = m_control.GetTrackPosition();
    if (position >= bar.minimum && position <= bar.maximum) {
        bar.value = position;
        SetBar(PlayerBar::Track, bar);
    }
    if (bar.value == bar.maximum)
        SetButtonCaption(kPlay);
}

void PlayerPanel::FollowSong() {
    const std::int32_t length = m_control.GetTrackLength();
    const std::int32_t tracks = m_control.GetTrackCount();
    m_otherTrack = length < 0;  // not known yet
    m_tracks = std::max(tracks, 0);
    ShowSong();
    if (length >= 0 && !m_draggingTrack)
        SetBar(PlayerBar::Track, {0, length, std::min(Bar(PlayerBar::Track).value, length)});
}

void PlayerPanel::ShowSong() {
    const auto number = [](std::int32_t n) { return GroupedNumber(static_cast<std::size_t>(n)); };
    std::string text;
    if (!m_control.IsOurs()) {
        text = Counted(static_cast<std::size_t>(m_added), "song") + " in the player's list";
    } else if (m_track > 0) {
        const std::string name = m_control.GetSongName();
        text = number(m_track) + " of " + number(m_tracks) + (name.empty() ? "" : ":  ") + name;
    }
    if (text == m_song)
        return;
    m_song = text;
    m_view.SetSong(text);
}

void PlayerPanel::ShowChoice() {
    m_view.SetChoice(m_discovery.OffersOwnPlayer() ? "O&wn Player" : "Ot&her Player...");
}

void PlayerPanel::SetButtonCaption(const char* caption) {
    m_buttonCaption = caption;
    m_view.SetButton(m_buttonCaption, m_buttonEnabled);
}

void PlayerPanel::SetBar(PlayerBar bar, const BarState& state) {
    Bar(bar) = state;
    m_view.SetBar(bar, state);
    ShowValue(bar);
}

void PlayerPanel::ShowValue(PlayerBar bar) {
    const BarState& state = Bar(bar);
    const auto time = [](std::int32_t seconds) { return TimeText(std::int64_t{seconds} * 1000); };
    if (bar == PlayerBar::Track)
        m_view.SetBarText(bar, time(state.value) + " / " +
                                   (state.maximum > 0 ? time(state.maximum) : TimeText(-1)));
    else if (bar == PlayerBar::Volume)
        m_view.SetBarText(bar, std::to_string((state.value * 100 + 127) / 255) + " %");
}

void PlayerPanel::ShowStatus(const std::string& text) {
    if (text == m_status)
        return;
    m_status = text;
    m_view.SetStatus(text);
}

}  // namespace tobbin
