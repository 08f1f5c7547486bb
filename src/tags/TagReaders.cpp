#include "tags/TagReaders.h"

#include <chrono>
#include <system_error>
#include <utility>

#include "tags/SongTags.h"

namespace tobbin {

TagReaders::TagReaders(Disk& disk, const SystemText& text, TagFields wanted, unsigned threads,
                       NextPath next)
    : m_disk(disk), m_text(text), m_wanted(wanted), m_next(std::move(next)) {
    try {
        while (m_threads.size() < threads)
            m_threads.emplace_back([this] { Work(); });
    } catch (const std::system_error&) {  // no room for another thread
    }
}

TagReaders::~TagReaders() {
    Stop();
    for (std::thread& thread : m_threads)
        thread.join();
}

void TagReaders::Stop() {
    const std::scoped_lock lock(m_mutex);
    m_stop = true;
    m_songNamed.notify_all();
}

void TagReaders::Work() {
    SongTags tags(m_disk, m_text);
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_songNamed.wait(lock, [&] { return m_stop || m_begun < m_named; });
        if (m_stop)
            return;
        const std::size_t number = m_begun++;
        Song& song = At(number);
        lock.unlock();
        song.wasRead = tags.Load(song.path, m_wanted, song.texts);
        lock.lock();
        song.isDone = true;
        if (number == m_taken)
            m_songDone.notify_one();
    }
}

// Many at a time, so that the threads are woken once for all of them.
void TagReaders::NameMore() {
    if (m_isLastNamed || m_named - m_taken > kAhead / 2)
        return;
    while (m_named - m_taken < kAhead) {
        Song& song = At(m_named);
        song.isDone = false;
        if (!m_next(song.path)) {
            m_isLastNamed = true;
            break;
        }
        const std::scoped_lock lock(m_mutex);
        ++m_named;
    }
    m_songNamed.notify_all();
}

bool TagReaders::WaitForNext() {
    NameMore();
    if (m_threads.empty()) {
        Song& song = At(m_begun++);
        song.wasRead = SongTags(m_disk, m_text).Load(song.path, m_wanted, song.texts);
        return true;
    }
    std::unique_lock lock(m_mutex);
    return m_songDone.wait_for(lock, std::chrono::milliseconds(10),
                               [&] { return At(m_taken).isDone; });
}

bool TagReaders::Take(TagTexts& texts) {
    const std::scoped_lock lock(m_mutex);
    Song& song = At(m_taken++);
    std::swap(texts, song.texts);
    return song.wasRead;
}

}  // namespace tobbin
