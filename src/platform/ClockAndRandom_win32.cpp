#include "platform/ClockAndRandom_win32.h"

#include <windows.h>

#include <chrono>

namespace tobbin {
namespace {

std::int64_t Ticks() {
    LARGE_INTEGER ticks = {};
    QueryPerformanceCounter(&ticks);
    return ticks.QuadPart;
}

}  // namespace

SystemClockAndRandom::SystemClockAndRandom() {
    LARGE_INTEGER frequency = {};
    QueryPerformanceFrequency(&frequency);
    m_ticksPerSecond = frequency.QuadPart;
    std::seed_seq seed{static_cast<std::uint64_t>(Ticks()), static_cast<std::uint64_t>(UnixTime()),
                       static_cast<std::uint64_t>(GetCurrentProcessId())};
    m_engine.seed(seed);
}

std::int64_t SystemClockAndRandom::Milliseconds() {
    const std::int64_t ticks = Ticks();
    return ticks / m_ticksPerSecond * 1000 + ticks % m_ticksPerSecond * 1000 / m_ticksPerSecond;
}

std::int64_t SystemClockAndRandom::UnixTime() {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::seconds>(now).count();
}

double SystemClockAndRandom::Random() {
    constexpr int kMantissaBits = 53;
    return static_cast<double>(m_engine() >> (64 - kMantissaBits)) /
           static_cast<double>(std::uint64_t{1} << kMantissaBits);
}

}  // namespace tobbin
