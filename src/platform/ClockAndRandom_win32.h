#pragma once

#include <cstdint>
#include <random>

#include "platform/Environment.h"

namespace tobbin {

// The computer's clocks, and chance seeded from them. Chance decides what is shown or played, and
// never anything that has to be kept from guessing.
class SystemClockAndRandom : public ClockAndRandom {
 public:
    SystemClockAndRandom();
    std::int64_t Milliseconds() override;
    std::int64_t UnixTime() override;
    double Random() override;

 private:
    std::int64_t m_ticksPerSecond = 1;
    std::mt19937_64 m_engine;
};

}  // namespace tobbin
