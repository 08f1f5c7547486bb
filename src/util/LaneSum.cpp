#include "util/LaneSum.h"

#include <array>
#include <bit>
#include <cstddef>

#include "util/Words.h"

namespace tobbin {
namespace {

// Every step can be taken back, so that no two values of a word or of a lane become one.
constexpr std::uint64_t kFactor = 0x9E3779B97F4A7C15U;
constexpr int kTurn = 29;
constexpr std::size_t kWord = sizeof(std::uint64_t);

// The lanes do not wait for each other, so the processor works on all of them at a time.
using Lanes = std::array<std::uint64_t, 8>;
constexpr std::size_t kRound = kWord * Lanes{}.size();

void TakeRound(Lanes& lanes, const char* bytes) {
    for (std::size_t i = 0; i < lanes.size(); ++i)
        lanes[i] = std::rotl((lanes[i] ^ WordAt(bytes + i * kWord)) * kFactor, kTurn);
}

}  // namespace

std::uint64_t LaneSum(std::string_view bytes) {
    Lanes lanes{};
    for (std::size_t i = 0; i < lanes.size(); ++i)
        lanes[i] = (i + 1) * kFactor;
    const std::size_t whole = bytes.size() / kRound * kRound;
    for (std::size_t at = 0; at < whole; at += kRound)
        TakeRound(lanes, bytes.data() + at);
    std::array<char, kRound> rest{};
    bytes.substr(whole).copy(rest.data(), rest.size());
    TakeRound(lanes, rest.data());
    std::uint64_t sum = bytes.size();
    for (const std::uint64_t lane : lanes) {
        sum = (sum ^ lane) * kFactor;
        sum ^= sum >> 32;
    }
    return sum;
}

}  // namespace tobbin
