#include "Pinger_win32.h"

#include <algorithm>
#include <cwchar>
#include <string>

namespace tobbin::bench {
namespace {

constexpr DWORD kBetweenPings = 5;  // milliseconds

struct Wanted {
    DWORD process = 0;
    HWND found = nullptr;
};

BOOL CALLBACK Look(HWND window, LPARAM parameter) {
    auto& wanted = *reinterpret_cast<Wanted*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    wchar_t name[32] = L"";
    if (process == wanted.process && IsWindowVisible(window))
        GetClassNameW(window, name, 32);
    const bool isFrame = std::wcscmp(name, L"frmMDIForm1") == 0;
    if (isFrame || std::wcscmp(name, L"frmSplash") == 0)
        wanted.found = window;
    return !isFrame;
}

}  // namespace

double Now() {
    LARGE_INTEGER ticks = {}, inASecond = {};
    QueryPerformanceCounter(&ticks);
    QueryPerformanceFrequency(&inASecond);
    return static_cast<double>(ticks.QuadPart) * 1000 / static_cast<double>(inASecond.QuadPart);
}

HWND MaybeMainWindow(DWORD process) {
    Wanted wanted{process};
    EnumWindows(&Look, reinterpret_cast<LPARAM>(&wanted));
    return wanted.found;
}

Pinger::Pinger(DWORD process) : m_process(process), m_thread([this] { Run(); }) {}

Pinger::~Pinger() {
    m_end = true;
    m_thread.join();
}

void Pinger::Restart() {
    const std::lock_guard guard(m_lock);
    m_begin = m_last = Now();
    m_longest = 0;
    m_longGaps.clear();
}

void Pinger::Count(double now) {
    constexpr double kLong = 150;
    if (m_last == 0)
        m_begin = m_last = now;
    const double gap = now - m_last;
    m_longest = std::max(m_longest, gap);
    if (gap > kLong)
        m_longGaps += std::to_string(static_cast<int>(m_last - m_begin)) + "+" +
                      std::to_string(static_cast<int>(gap)) + " ";
    m_last = now;
}

double Pinger::LongestGap() {
    const std::lock_guard guard(m_lock);
    if (m_last != 0)
        Count(Now());
    return m_longest;
}

std::string Pinger::LongGaps() {
    const std::lock_guard guard(m_lock);
    return m_longGaps;
}

void Pinger::Run() {
    for (HWND window = nullptr; !m_end; Sleep(kBetweenPings)) {
        if (!IsWindowVisible(window))
            window = MaybeMainWindow(m_process);
        DWORD_PTR reply = 0;
        if (window == nullptr ||
            SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, 60'000, &reply) == 0) {
            window = nullptr;
            continue;
        }
        const std::lock_guard guard(m_lock);
        Count(Now());
        m_window = window;
    }
}

}  // namespace tobbin::bench
