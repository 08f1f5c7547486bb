#include "util/Crc32c.h"

#include <array>
#include <cstddef>

namespace tobbin {
namespace {

// Bytes that are taken at a time.
constexpr std::size_t kStep = 8;
using Tables = std::array<std::array<std::uint32_t, 256>, kStep>;

// What a byte does to the sum, with the bits reversed: in table k with k bytes behind it.
constexpr Tables MakeTables() {
    constexpr std::uint32_t kPolynomial = 0x82F63B78;
    Tables tables{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t sum = byte;
        for (int bit = 0; bit < 8; ++bit)
            sum = sum >> 1 ^ ((sum & 1) != 0 ? kPolynomial : 0);
        tables[0][byte] = sum;
    }
    for (std::size_t k = 1; k < kStep; ++k)
        for (std::uint32_t byte = 0; byte < 256; ++byte) {
            const std::uint32_t sum = tables[k - 1][byte];
            tables[k][byte] = sum >> 8 ^ tables[0][sum & 0xFF];
        }
    return tables;
}

constexpr Tables kTables = MakeTables();

}  // namespace

std::uint32_t Crc32c(std::string_view bytes) {
    std::uint32_t sum = 0xFFFFFFFF;
    for (; bytes.size() >= kStep; bytes.remove_prefix(kStep)) {
        std::uint32_t next = 0;
        for (std::size_t i = 0; i < kStep; ++i) {
            const std::uint32_t before = i < 4 ? sum >> 8 * i : 0;
            next ^= kTables[kStep - 1 - i][(before ^ static_cast<unsigned char>(bytes[i])) & 0xFF];
        }
        sum = next;
    }
    for (const char c : bytes)
        sum = sum >> 8 ^ kTables[0][(sum ^ static_cast<unsigned char>(c)) & 0xFF];
    return ~sum;
}

}  // namespace tobbin
