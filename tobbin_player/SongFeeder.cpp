#include "tobbin_player/SongFeeder.h"

#include <algorithm>
#include <utility>

#include "util/Text.h"

namespace tobbin::player {
namespace {

constexpr int kRetryPause = 300;      // milliseconds
constexpr int kLookAgain = 100;       // milliseconds; a device may forget to wake
constexpr int kQuickMeasure = 80;     // milliseconds
constexpr int kMeasureLimit = 1'000;  // milliseconds, less than what is decoded in advance

}  // namespace

int SongFeeder::Work() {
    const Player::Task task = m_player.CurrentTask();
    if (task.order != m_order)
        Begin(task);
    if (task.status == Status::Stopped)
        return kUntilWoken;
    if (m_next) {
        const Player::Entry entry = *m_next;
        m_next.reset();
        Open(entry, 0);
        return 0;
    }
    CountFinished();
    FollowTask(task);
    if (!m_paused && !m_queue.empty() && m_clock.Milliseconds() - m_lastProgress > kStandstill)
        return OnDeviceLost();
    if (m_song == nullptr && m_queued < kAhead) {
        GoOnAfterSong();
        if (m_next || m_queue.empty())
            return 0;
    }
    if (m_song == nullptr || m_queued >= kAhead) {
        if (std::exchange(m_starting, false))
            return 0;
        MeasureLater();
        return task.status == Status::Paused ? kUntilWoken : kLookAgain;
    }
    return Fill();
}

// A new order: what is on its way is thrown away.
void SongFeeder::Begin(const Player::Task& task) {
    m_order = task.order;
    m_queue.clear();
    m_queued = 0;
    m_hasTail = false;
    m_next.reset();
    m_paused = false;
    m_starting = true;
    if (task.status == Status::Stopped) {
        m_device.Close();
        m_rate = 0;
        m_song.reset();
        m_failures = 0;
        return;
    }
    if (m_rate != 0)
        m_device.Drop();
    m_lastProgress = m_clock.Milliseconds();
    if (m_song == nullptr || m_entry.id != task.entry.id ||
        !m_song->Seek(task.start * m_song->Rate() / 1000))
        Open(task.entry, task.start);
    m_begin = task.start;
    m_frames = 0;
}

void SongFeeder::Open(const Player::Entry& entry, std::int64_t start) {
    m_entry = entry;
    m_begin = start;
    m_frames = 0;
    std::string reason;
    m_song = m_songs.MaybeOpen(entry.path, reason);
    if (m_song == nullptr) {
        OnBroken(reason);
        return;
    }
    const auto measured = m_song->IsLengthExact() ? std::nullopt : MaybeMeasured(kQuickMeasure);
    m_measured = measured || m_song->IsLengthExact();
    const std::int64_t length = measured.value_or(m_song->Length());
    m_player.OnOpened(m_order, entry.id, m_song->Name(),
                      length < 0 ? -1 : length * 1000 / m_song->Rate());
    if (start > 0 && !m_song->Seek(start * m_song->Rate() / 1000))
        OnBroken(m_song->Reason());
}

bool SongFeeder::IsQueued(std::uint64_t id) const {
    return std::ranges::any_of(m_queue, [&](const Block& block) { return block.id == id; });
}

void SongFeeder::OnBroken(const std::string& reason) {
    m_song.reset();
    m_player.OnFailed(m_order, m_entry.id, FileNameOfPath(m_entry.path) + ": " + reason + ".",
                      IsQueued(m_entry.id));
}

void SongFeeder::GoOnAfterSong() {
    m_next = m_player.MaybeAfter(m_order, m_entry.id);
    if (!m_next && m_queue.empty())
        m_player.OnAllHeard(m_order, m_entry.id);
    else if (!m_next)
        AddTail();
}

// A system may give a block back while it still holds its sound, which would be lost when the
// device is closed: silence follows the last block.
void SongFeeder::AddTail() {
    if (m_queue.empty() || m_queued > kTail || std::exchange(m_hasTail, true))
        return;
    const Block last = m_queue.back();
    for (int added = 0; added < kTail; added += kBlock) {
        std::vector<std::int16_t> silence(2 * static_cast<std::size_t>(m_rate * kBlock / 1000));
        if (!m_device.Write(std::move(silence)))
            return;
        m_queue.push_back({last.id, last.end, last.end, kBlock});
        m_queued += kBlock;
    }
}

// Decodes a block and hands it over, or opens the device for it when the last sound of another rate
// has been heard.
int SongFeeder::Fill() {
    if (m_rate != m_song->Rate()) {
        if (!m_queue.empty()) {
            AddTail();
            return std::exchange(m_starting, false) ? 0 : kLookAgain;
        }
        return OpenDevice() ? 0 : OnDeviceLost();
    }
    std::vector<std::int16_t> samples;
    switch (m_song->Read(static_cast<std::size_t>(m_rate * kBlock / 1000), samples)) {
        case Song::Outcome::Samples:
            break;
        case Song::Outcome::NewRate:
            m_begin += m_frames * 1000 / m_rate;
            m_frames = 0;
            return 0;
        case Song::Outcome::End:
            m_song.reset();
            return 0;
        case Song::Outcome::Broken:
            OnBroken(m_song->Reason());
            return 0;
    }
    const std::int64_t begin = m_begin + m_frames * 1000 / m_rate;
    m_frames += static_cast<std::int64_t>(samples.size() / 2);
    const std::int64_t end = m_begin + m_frames * 1000 / m_rate;
    if (!m_device.Write(std::move(samples)))
        return OnDeviceLost();
    if (m_queue.empty())
        m_lastProgress = m_clock.Milliseconds();
    m_queue.push_back({m_entry.id, begin, end, static_cast<int>(end - begin)});
    m_queued += m_queue.back().milliseconds;
    m_hasTail = false;
    return 0;
}

bool SongFeeder::OpenDevice() {
    m_device.Close();
    m_rate = 0;
    m_paused = false;
    m_starting = true;
    m_left = m_right = -1;
    m_lastProgress = m_clock.Milliseconds();
    if (!m_device.Open(m_song->Rate()))
        return false;
    m_rate = m_song->Rate();
    return true;
}

// What was not heard yet is decoded once more, from the song and place that were heard last.
int SongFeeder::OnDeviceLost() {
    m_device.Close();
    m_rate = 0;
    if (++m_failures >= kTries) {
        m_player.OnNoDevice(m_order, "There is no sound device that can be used.");
        return 0;
    }
    Player::Task task = m_player.CurrentTask();
    const std::int64_t position = m_player.Now().position;
    if (task.order != m_order)
        return 0;
    task.start = std::max<std::int64_t>(position, 0);
    Begin(task);
    return kRetryPause;
}

void SongFeeder::FollowTask(const Player::Task& task) {
    if (m_rate == 0)
        return;
    const int level = task.volume * 257;
    const int left = level * std::min(127, 127 - task.balance) / 127;
    const int right = level * std::min(127, 127 + task.balance) / 127;
    if (left != m_left || right != m_right)
        m_device.SetLevels(left, right);
    m_left = left;
    m_right = right;
    m_starting = m_starting && m_queued < kHeadStart;
    const bool pause = task.status == Status::Paused || m_starting;
    if (pause == m_paused)
        return;
    m_paused = pause;
    m_lastProgress = m_clock.Milliseconds();
    if (pause)
        m_device.Pause();
    else
        m_device.GoOn();
}

void SongFeeder::CountFinished() {
    int finished = m_rate == 0 ? 0 : m_device.TakeFinishedBlocks();
    if (finished > 0) {
        m_lastProgress = m_clock.Milliseconds();
        m_failures = 0;
    }
    std::optional<Block> last;
    for (; finished > 0 && !m_queue.empty(); --finished) {
        last = m_queue.front();
        m_queued -= last->milliseconds;
        m_queue.pop_front();
    }
    if (!last)
        return;
    if (m_queue.empty()) {
        m_player.OnHeard(m_order, last->id, last->end);
        m_starting = true;
    } else {
        m_player.OnHeard(m_order, m_queue.front().id, m_queue.front().begin);
    }
}

// The length by going through the whole file: at once where that is quick, else once for each song
// while enough is decoded in advance. Nothing when it takes longer than so many milliseconds.
std::optional<std::int64_t> SongFeeder::MaybeMeasured(int limit) {
    const std::int64_t end = m_clock.Milliseconds() + limit;
    const std::int64_t frames = m_songs.Measure(m_entry.path, [&] {
        return m_clock.Milliseconds() < end && m_player.CurrentTask().order == m_order;
    });
    return frames < 0 ? std::nullopt : std::optional(frames);
}

void SongFeeder::MeasureLater() {
    if (m_song == nullptr || std::exchange(m_measured, true))
        return;
    if (const auto frames = MaybeMeasured(kMeasureLimit))
        m_player.OnLength(m_order, m_entry.id, *frames * 1000 / m_song->Rate());
}

}  // namespace tobbin::player
