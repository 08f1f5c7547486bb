#pragma once

#include <array>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace tobbin {

// Does the same work for many items side by side, on threads of its own: a disk that is asked for
// one thing after the other mostly waits. The items come back in the order in which they were
// named. A thread that works on an item has it to itself.
template <typename Item>
class ReadAhead {
 public:
    // Names the next item, into one that may have been used before; false behind the last one.
    // Called on the caller's thread.
    using Next = std::function<bool(Item& item)>;
    using Work = std::function<void(Item& item)>;

    // `makeWork` is called once on each thread. With 0 threads all is done on the caller's.
    ReadAhead(unsigned threads, Next next, std::function<Work()> makeWork)
        : m_next(std::move(next)), m_makeWork(std::move(makeWork)) {
        try {
            while (m_threads.size() < threads)
                m_threads.emplace_back([this] { Run(); });
        } catch (const std::system_error&) {  // no room for another thread
        }
        if (m_threads.empty())
            m_work = m_makeWork();
    }
    // Waits for the items that are being worked on.
    ~ReadAhead() {
        Stop();
        for (std::thread& thread : m_threads)
            thread.join();
    }
    ReadAhead(const ReadAhead&) = delete;
    ReadAhead& operator=(const ReadAhead&) = delete;

    // Waits a hundredth of a second at most until the next item is done, and returns whether it is.
    // Must not be asked behind the last one.
    bool WaitForNext() {
        NameMore();
        if (m_threads.empty()) {
            m_work(At(m_begun++).item);
            return true;
        }
        std::unique_lock lock(m_mutex);
        return m_done.wait_for(lock, std::chrono::milliseconds(10),
                               [&] { return At(m_taken).isDone; });
    }

    // Exchanges the item that WaitForNext found done for one to be used again.
    void Take(Item& item) {
        const std::scoped_lock lock(m_mutex);
        std::swap(item, At(m_taken++).item);
    }

    // Begins with no further item.
    void Stop() {
        const std::scoped_lock lock(m_mutex);
        m_stop = true;
        m_namedMore.notify_all();
    }

 private:
    static constexpr std::size_t kAhead = 256;  // items that are named before they are taken
    struct Slot {
        Item item;
        bool isDone = false;
    };
    Slot& At(std::size_t number) { return m_slots[number % kAhead]; }

    void Run() {
        const Work work = m_makeWork();
        std::unique_lock lock(m_mutex);
        for (;;) {
            m_namedMore.wait(lock, [&] { return m_stop || m_begun < m_named; });
            if (m_stop)
                return;
            const std::size_t number = m_begun++;
            Slot& slot = At(number);
            lock.unlock();
            work(slot.item);
            lock.lock();
            slot.isDone = true;
            if (number == m_taken)
                m_done.notify_one();
        }
    }

    // Many at a time, so that the threads are woken once for all of them.
    void NameMore() {
        if (m_isLastNamed || m_named - m_taken > kAhead / 2)
            return;
        while (m_named - m_taken < kAhead) {
            Slot& slot = At(m_named);
            slot.isDone = false;
            if (!m_next(slot.item)) {
                m_isLastNamed = true;
                break;
            }
            const std::scoped_lock lock(m_mutex);
            ++m_named;
        }
        m_namedMore.notify_all();
    }

    Next m_next;
    std::function<Work()> m_makeWork;
    Work m_work;  // without threads
    bool m_isLastNamed = false;

    std::mutex m_mutex;  // for all that follows but the threads; an item that was begun and is not
                         // done belongs to the thread that works on it
    std::condition_variable m_namedMore, m_done;
    std::array<Slot, kAhead> m_slots;
    std::size_t m_named = 0, m_begun = 0, m_taken = 0;  // how many items
    bool m_stop = false;
    std::vector<std::thread> m_threads;
};

}  // namespace tobbin
