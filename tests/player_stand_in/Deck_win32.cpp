#include <windows.h>

#include "Deck.h"

void Deck::Clear() {
    Stop();
    m_paths.clear();
    m_track = 0;
}

void Deck::Load(std::size_t track) {
    m_track = track;
    m_startedAt = GetTickCount64();
}

void Deck::CatchUp() {
    while (m_status == kPlaying &&
           GetTickCount64() - m_startedAt > static_cast<unsigned long long>(kTrackLength)) {
        if (m_stopAfterTrack || m_track + 1 >= m_paths.size())
            Stop();
        else
            Load(m_track + 1);
    }
}

void Deck::Play() {
    if (m_status == kPaused)
        m_startedAt = GetTickCount64() - static_cast<unsigned long long>(m_pausedAt);
    else if (m_track < m_paths.size())
        Load(m_track);
    else
        return;
    m_status = kPlaying;
}

void Deck::Pause() {
    if (Now() == kPlaying) {
        m_pausedAt = Position();
        m_status = kPaused;
    } else if (m_status == kPaused) {
        Play();
    }
}

void Deck::Stop() {
    m_status = kStopped;
    m_stopAfterTrack = false;
}

void Deck::Step(int tracks) {
    CatchUp();
    const long long to = static_cast<long long>(m_track) + tracks;
    if (to >= 0 && to < static_cast<long long>(m_paths.size()))
        Load(static_cast<std::size_t>(to));
}

void Deck::Seek(int milliseconds) {
    if (m_status == kPaused)
        m_pausedAt = milliseconds;
    m_startedAt = GetTickCount64() - static_cast<unsigned long long>(milliseconds);
}

Deck::Status Deck::Now() {
    CatchUp();
    return m_status;
}

int Deck::Position() {
    switch (Now()) {
        case kPlaying:
            return static_cast<int>(GetTickCount64() - m_startedAt);
        case kPaused:
            return m_pausedAt;
        default:
            return -1;
    }
}

int Deck::Length() {
    CatchUp();
    return m_paths.empty() ? -1 : kTrackLength;
}
