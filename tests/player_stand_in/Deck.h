#pragma once

#include <string>
#include <vector>

// What the stand-in plays: a play list and the place in it, which runs on in real time. Paths are
// the bytes that came in.
class Deck {
 public:
    // Each track plays long enough to be seen playing on a busy machine.
    static constexpr int kTrackLength = 600'000;  // milliseconds

    enum Status { kStopped = 0, kPlaying = 1, kPaused = 3 };

    void Clear();
    void Add(std::string path) { m_paths.push_back(std::move(path)); }

    void Play();  // from the start of the track, or on from where it was paused
    void Pause();
    void Stop();
    void Step(int tracks);  // to a track before or behind, if there is one
    void StopAfterTrack() { m_stopAfterTrack = true; }
    void Seek(int milliseconds);

    Status Now();
    int Position();  // milliseconds; -1 when stopped
    int Length();    // milliseconds; -1 when there is no track

 private:
    void Load(std::size_t track);
    void CatchUp();

    std::vector<std::string> m_paths;
    std::size_t m_track = 0;
    Status m_status = kStopped;
    unsigned long long m_startedAt = 0;  // tick count at which the track was at 0
    int m_pausedAt = 0;
    bool m_stopAfterTrack = false;
};
