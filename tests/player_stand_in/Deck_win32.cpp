#include <windows.h>

#include <fstream>
#include <iterator>

#include "Deck.h"
#include "Mp3Length.h"

void Deck::Clear() {
    Stop();
    m_paths.clear();
    m_track = 0;
    m_length = -1;
}

void Deck::Load(std::size_t track) {
    m_track = track;
    m_length = m_lengthOfAll > 0 ? m_lengthOfAll : -1;
    if (m_lengthOfAll <= 0 && track < m_paths.size()) {
        std::ifstream file(m_paths[track].c_str(), std::ios::binary);
        m_length = Mp3LengthMilliseconds(
            {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()});
    }
    m_startedAt = GetTickCount64();
}

void Deck::CatchUp() {
    while (m_status == kPlaying && m_length >= 0 &&
           GetTickCount64() - m_startedAt > static_cast<unsigned long long>(m_length)) {
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
    return m_length;
}
