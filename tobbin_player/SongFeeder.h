#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Environment.h"
#include "tobbin_player/Player.h"
#include "tobbin_player/Songs.h"
#include "tobbin_player/SoundDevice.h"

namespace tobbin::player {

// Decodes what the player says and keeps the sound device supplied, on a thread of its own. Songs
// of one rate follow each other without a gap. A song that can't be read is passed over; a device
// that goes or stands still is opened again a few times before the player stops.
class SongFeeder {
 public:
    static constexpr int kAhead = 2'000;  // milliseconds that are decoded in advance
    static constexpr int kBlock = 50;     // milliseconds of a block, the unit of the position
    static constexpr int kHeadStart =
        300;                           // milliseconds that are decoded before the first is heard
    static constexpr int kTail = 200;  // milliseconds of silence before the device is closed
    static constexpr int kUntilWoken = -1;
    static constexpr int kStandstill = 4'000;  // milliseconds until a device counts as gone
    static constexpr int kTries = 3;           // to open the device in a row

    SongFeeder(Player& player, Songs& songs, SoundDevice& device, ClockAndRandom& clock)
        : m_player(player), m_songs(songs), m_device(device), m_clock(clock) {}

    // Does one step of the work. Returns for how many milliseconds there is nothing to do unless
    // the player or the device wakes it; 0 when there is more to do.
    int Work();

 private:
    struct Block {
        std::uint64_t id;
        std::int64_t begin, end;  // milliseconds in the song
        int milliseconds;
    };

    void Begin(const Player::Task& task);
    void Open(const Player::Entry& entry, std::int64_t start);
    void GoOnAfterSong();
    void AddTail();
    void OnBroken(const std::string& reason);
    int Fill();
    bool OpenDevice();
    int OnDeviceLost();
    void FollowTask(const Player::Task& task);
    void CountFinished();
    std::optional<std::int64_t> MaybeMeasured(int limit);
    void MeasureLater();
    bool IsQueued(std::uint64_t id) const;

    Player& m_player;
    Songs& m_songs;
    SoundDevice& m_device;
    ClockAndRandom& m_clock;

    std::uint64_t m_order = 0;
    Player::Entry m_entry;  // of m_song
    std::unique_ptr<Song> m_song;
    std::int64_t m_begin = 0;             // where reading began, in milliseconds ...
    std::int64_t m_frames = 0;            // ... and the frames read since
    bool m_measured = false;              // its length
    std::optional<Player::Entry> m_next;  // to be opened

    int m_rate = 0;  // of the open device; 0 while it is closed
    std::deque<Block> m_queue;
    int m_queued = 0;  // milliseconds
    bool m_paused = false;
    bool m_hasTail = false;
    bool m_starting = true;  // holds the device back until it has its head start
    int m_left = -1, m_right = -1;
    std::int64_t m_lastProgress = 0;  // when the device last finished something
    int m_failures = 0;
};

}  // namespace tobbin::player
