#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace tobbin::player {

enum class Status { Stopped, Playing, Paused };

// What a person gets to see of the player at one moment.
struct Display {
    Status status = Status::Stopped;
    std::optional<std::size_t> track;  // index from 0; nothing where the list is empty
    std::size_t tracks = 0;
    std::string name;            // artist and title, or the file's name; of `track`
    std::int64_t position = -1;  // milliseconds; -1 when stopped
    std::int64_t length = -1;    // milliseconds; -1 while it isn't known
    std::string notice;          // what went wrong last; empty when nothing did
    int volume = 255;            // 0 to 255
    int balance = 0;             // -127 (left) to 127
    bool stopsAfterTrack = false;
    std::uint64_t listVersion = 0;  // another one after each change of the list or of its names
};

// The list of songs, which of them plays, and what is to be done: what a person or another program
// asks of the player and what the thread that feeds the sound device (SongFeeder) does about it.
// Each function may be called on any thread; none waits for a disk or for the device.
class Player {
 public:
    static constexpr std::size_t kMostTracks = 1'000'000;

    // Calls `wake` after whatever the feeder has to see to, with nothing locked.
    explicit Player(std::function<void()> wake) : m_wake(std::move(wake)) {}

    // Adds a song by its full path, at the end. Returns whether there was room.
    bool Add(std::string path);
    void Clear();                    // stops, too
    void Remove(std::size_t track);  // the next one plays on in its place
    void Play();                     // on from a pause; nothing while a song plays
    void PlayTrack(std::size_t track);
    void Pause();  // and on again
    void Stop();
    void Step(int tracks);  // ahead or back; nothing beyond the ends of the list
    void StopAfterTrack();
    void Seek(std::int64_t milliseconds);  // nothing beyond the song's ends, or when stopped
    void SetVolume(int volume);
    void SetBalance(int balance);

    // With `forLength` it waits a moment for a song that is just being opened.
    Display Now(bool forLength = false);
    std::string NameOf(std::size_t track);  // empty for one that is not there

    // For the feeder. An order counts up whenever the sound has to begin anew: what the feeder
    // reports about an older one is passed over.
    struct Entry {
        std::uint64_t id = 0;  // 0 stands for none
        std::string path;
    };
    struct Task {
        std::uint64_t order = 0;
        Status status = Status::Stopped;
        Entry entry;
        std::int64_t start = 0;  // milliseconds
        int volume = 255;
        int balance = 0;
    };
    Task CurrentTask();
    // The song to be decoded after that one; nothing for now when it is the last.
    std::optional<Entry> MaybeAfter(std::uint64_t order, std::uint64_t id);
    void OnOpened(std::uint64_t order, std::uint64_t id, std::string name, std::int64_t length);
    void OnLength(std::uint64_t order, std::uint64_t id, std::int64_t length);
    void OnHeard(std::uint64_t order, std::uint64_t id, std::int64_t position);
    // A song that can't be played, in whole or on; the one after it is next. `isHeard`: what could
    // be decoded of it is still to be heard.
    void OnFailed(std::uint64_t order, std::uint64_t id, std::string notice, bool isHeard);
    // All that was decoded has been heard, and the song with this id was the last. Returns false
    // when another one has come since.
    bool OnAllHeard(std::uint64_t order, std::uint64_t id);
    void OnNoDevice(std::uint64_t order, std::string notice);

 private:
    struct Track {
        std::uint64_t id = 0;
        std::string path;
        std::string name;  // empty until the song has been opened
        std::int64_t length = -1;
    };
    using Lock = std::unique_lock<std::mutex>;

    std::optional<std::size_t> MaybeIndex(std::uint64_t id) const;
    void Begin(Lock& lock, std::int64_t start = 0);  // a new order; unlocks and wakes
    void Rejoin(Lock& lock) { Begin(lock, m_position < 0 ? 0 : m_position); }
    void PlayCurrent(Lock& lock);
    void StopAt(std::size_t track);
    bool IsAhead() const;  // whether the feeder is past the song that is heard

    std::function<void()> m_wake;
    std::mutex m_mutex;
    std::condition_variable m_opened;

    std::vector<Track> m_tracks;  // ids rise
    std::uint64_t m_lastId = 0;
    std::uint64_t m_version = 0;
    std::size_t m_current = 0;
    Status m_status = Status::Stopped;
    bool m_stopsAfterTrack = false;
    std::int64_t m_position = -1;
    int m_volume = 255;
    int m_balance = 0;
    std::string m_notice;

    std::uint64_t m_order = 0;
    std::int64_t m_start = 0;
    std::uint64_t m_fetching = 0;  // the last song that the feeder has begun
    bool m_opening = false;
    std::chrono::steady_clock::time_point m_openingSince;
};

}  // namespace tobbin::player
