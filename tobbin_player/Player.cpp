#include "tobbin_player/Player.h"

#include <algorithm>
#include <utility>

#include "tobbin_player/Texts.h"

namespace tobbin::player {
namespace {

constexpr auto kPatience = std::chrono::milliseconds(150);

}  // namespace

std::optional<std::size_t> Player::MaybeIndex(std::uint64_t id) const {
    const auto found = std::ranges::lower_bound(m_tracks, id, {}, &Track::id);
    if (found == m_tracks.end() || found->id != id)
        return std::nullopt;
    return static_cast<std::size_t>(found - m_tracks.begin());
}

void Player::Begin(Lock& lock, std::int64_t start) {
    ++m_order;
    m_start = start;
    m_position = m_status == Status::Stopped ? -1 : start;
    m_fetching = m_current < m_tracks.size() ? m_tracks[m_current].id : 0;
    m_opening = m_status != Status::Stopped && m_tracks[m_current].length < 0;
    m_openingSince = std::chrono::steady_clock::now();
    lock.unlock();
    m_opened.notify_all();
    m_wake();
}

void Player::PlayCurrent(Lock& lock) {
    m_status = Status::Playing;
    m_stopsAfterTrack = false;
    m_notice.clear();
    Begin(lock);
}

bool Player::IsAhead() const {
    return m_status != Status::Stopped && m_fetching != m_tracks[m_current].id;
}

bool Player::Add(std::string path) {
    Lock lock(m_mutex);
    if (m_tracks.size() >= kMostTracks)
        return false;
    m_tracks.push_back({++m_lastId, std::move(path), {}, -1});
    ++m_version;
    lock.unlock();
    m_wake();
    return true;
}

void Player::Clear() {
    Lock lock(m_mutex);
    m_tracks.clear();
    m_notice.clear();
    ++m_version;
    StopAt(0);
    Begin(lock);
}

void Player::Remove(std::size_t track) {
    Lock lock(m_mutex);
    if (track >= m_tracks.size())
        return;
    const bool isCurrent = track == m_current;
    const bool isFetched =
        m_status != Status::Stopped && track > m_current && m_tracks[track].id <= m_fetching;
    m_tracks.erase(m_tracks.begin() + static_cast<std::ptrdiff_t>(track));
    ++m_version;
    if (track < m_current)
        --m_current;
    if (isCurrent && m_current >= m_tracks.size())
        StopAt(m_tracks.empty() ? 0 : m_tracks.size() - 1);
    if (isCurrent)
        Begin(lock);
    else if (isFetched)
        Rejoin(lock);
}

void Player::Play() {
    Lock lock(m_mutex);
    if (m_tracks.empty() || m_status == Status::Playing)
        return;
    if (m_status == Status::Stopped) {
        PlayCurrent(lock);
        return;
    }
    m_status = Status::Playing;
    lock.unlock();
    m_wake();
}

void Player::PlayTrack(std::size_t track) {
    Lock lock(m_mutex);
    if (track >= m_tracks.size())
        return;
    m_current = track;
    PlayCurrent(lock);
}

void Player::Pause() {
    Lock lock(m_mutex);
    if (m_status == Status::Stopped)
        return;
    m_status = m_status == Status::Playing ? Status::Paused : Status::Playing;
    lock.unlock();
    m_wake();
}

void Player::StopAt(std::size_t track) {
    m_current = track;
    m_status = Status::Stopped;
    m_stopsAfterTrack = false;
    m_position = -1;
    m_opening = false;
}

void Player::Stop() {
    Lock lock(m_mutex);
    if (m_status == Status::Stopped)
        return;
    StopAt(m_current);
    Begin(lock);
}

void Player::Step(int tracks) {
    Lock lock(m_mutex);
    const auto to = static_cast<std::int64_t>(m_current) + tracks;
    if (to < 0 || to >= static_cast<std::int64_t>(m_tracks.size()))
        return;
    m_current = static_cast<std::size_t>(to);
    if (m_status != Status::Stopped)
        PlayCurrent(lock);
}

void Player::StopAfterTrack() {
    Lock lock(m_mutex);
    if (m_status == Status::Stopped)
        return;
    m_stopsAfterTrack = true;
    if (IsAhead())
        Rejoin(lock);
}

void Player::Seek(std::int64_t milliseconds) {
    Lock lock(m_mutex);
    if (m_status == Status::Stopped || milliseconds < 0 ||
        milliseconds > m_tracks[m_current].length)
        return;
    Begin(lock, milliseconds);
}

void Player::SetVolume(int volume) {
    Lock lock(m_mutex);
    if (volume < 0 || volume > 255)
        return;
    m_volume = volume;
    lock.unlock();
    m_wake();
}

void Player::SetBalance(int balance) {
    Lock lock(m_mutex);
    if (balance < -127 || balance > 127)
        return;
    m_balance = balance;
    lock.unlock();
    m_wake();
}

Display Player::Now(bool forLength) {
    Lock lock(m_mutex);
    if (forLength)
        m_opened.wait_until(lock, m_openingSince + kPatience, [this] { return !m_opening; });
    Display display;
    display.status = m_status;
    display.tracks = m_tracks.size();
    if (m_current < m_tracks.size()) {
        const Track& track = m_tracks[m_current];
        display.track = m_current;
        display.name = track.name.empty() ? NameOfFile(track.path) : track.name;
        display.length = track.length;
    }
    display.position = m_position;
    display.notice = m_notice;
    display.volume = m_volume;
    display.balance = m_balance;
    display.stopsAfterTrack = m_stopsAfterTrack;
    display.listVersion = m_version;
    return display;
}

std::string Player::NameOf(std::size_t track) {
    const Lock lock(m_mutex);
    if (track >= m_tracks.size())
        return {};
    return m_tracks[track].name.empty() ? NameOfFile(m_tracks[track].path) : m_tracks[track].name;
}

Player::Task Player::CurrentTask() {
    const Lock lock(m_mutex);
    Task task{m_order, m_status, {}, m_start, m_volume, m_balance};
    if (m_current < m_tracks.size())
        task.entry = {m_tracks[m_current].id, m_tracks[m_current].path};
    return task;
}

std::optional<Player::Entry> Player::MaybeAfter(std::uint64_t order, std::uint64_t id) {
    const Lock lock(m_mutex);
    if (order != m_order || m_stopsAfterTrack)
        return std::nullopt;
    const auto next = std::ranges::upper_bound(m_tracks, id, {}, &Track::id);
    if (next == m_tracks.end())
        return std::nullopt;
    m_fetching = next->id;
    return Entry{next->id, next->path};
}

void Player::OnOpened(std::uint64_t order, std::uint64_t id, std::string name,
                      std::int64_t length) {
    Lock lock(m_mutex);
    const auto index = MaybeIndex(id);
    if (order != m_order || !index)
        return;
    m_tracks[*index].name = std::move(name);
    m_tracks[*index].length = length;
    ++m_version;
    m_opening = false;
    lock.unlock();
    m_opened.notify_all();
}

void Player::OnLength(std::uint64_t order, std::uint64_t id, std::int64_t length) {
    const Lock lock(m_mutex);
    if (const auto index = MaybeIndex(id); order == m_order && index)
        m_tracks[*index].length = length;
}

void Player::OnHeard(std::uint64_t order, std::uint64_t id, std::int64_t position) {
    const Lock lock(m_mutex);
    const auto index = MaybeIndex(id);
    if (order != m_order || !index)
        return;
    m_current = *index;
    m_position = position;
}

void Player::OnFailed(std::uint64_t order, std::uint64_t id, std::string notice, bool isHeard) {
    const Lock lock(m_mutex);
    const auto index = MaybeIndex(id);
    if (order != m_order || !index)
        return;
    m_notice = std::move(notice);
    if (*index == m_current && !isHeard && !m_stopsAfterTrack && *index + 1 < m_tracks.size())
        ++m_current;
}

bool Player::OnAllHeard(std::uint64_t order, std::uint64_t id) {
    Lock lock(m_mutex);
    if (order != m_order)
        return false;
    const auto next = std::ranges::upper_bound(m_tracks, id, {}, &Track::id);
    const bool wasLast = next == m_tracks.end();
    if (!wasLast && !m_stopsAfterTrack)
        return false;
    StopAt(wasLast ? 0 : static_cast<std::size_t>(next - m_tracks.begin()));
    Begin(lock);
    return true;
}

void Player::OnNoDevice(std::uint64_t order, std::string notice) {
    Lock lock(m_mutex);
    if (order != m_order)
        return;
    StopAt(m_current);
    m_notice = std::move(notice);
    Begin(lock);
}

}  // namespace tobbin::player
