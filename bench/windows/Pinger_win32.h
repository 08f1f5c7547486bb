#pragma once

#include <windows.h>

#include <atomic>
#include <mutex>
#include <string>
#include <thread>

namespace tobbin::bench {

// Milliseconds of a fine clock.
double Now();

// The window of a process that a person would look at: the frame, or while there is none the
// splash window; null without either.
HWND MaybeMainWindow(DWORD process);

// Asks the main window of a process every few milliseconds, from a thread of its own, whether it
// answers.
class Pinger {
 public:
    explicit Pinger(DWORD process);
    ~Pinger();
    Pinger(const Pinger&) = delete;
    Pinger& operator=(const Pinger&) = delete;

    // The window that answered last; null without one.
    HWND Window() const { return m_window; }

    void Restart();

    // The longest time between two answers, or from the last one to now, since Restart or else
    // since the first answer. In milliseconds.
    double LongestGap();

    // Every gap of over 150 ms: when it began, counted as above, and how long it was: "1200+250".
    std::string LongGaps();

 private:
    void Run();
    void Count(double now);

    DWORD m_process;
    std::mutex m_lock;  // for all that follows
    double m_begin = 0;
    double m_last = 0;
    double m_longest = 0;
    std::string m_longGaps;
    std::atomic<HWND> m_window{nullptr};
    std::atomic<bool> m_end{false};
    std::thread m_thread;
};

}  // namespace tobbin::bench
