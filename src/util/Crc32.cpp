#include "util/Crc32.h"

#include <array>

namespace tobbin {
namespace {

constexpr std::uint32_t kPolynomial = 0xEDB88320;  // bits from the lowest power up

// tables[k][b]: what a byte b does to the sum when k further bytes follow it.
using Tables = std::array<std::array<std::uint32_t, 256>, 4>;

constexpr Tables MakeTables() {
    Tables tables{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t sum = byte;
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum & 1) != 0 ? (sum >> 1) ^ kPolynomial : sum >> 1;
        tables[0][byte] = sum;
    }
    for (std::size_t k = 1; k < tables.size(); ++k)
        for (std::size_t byte = 0; byte < 256; ++byte)
            tables[k][byte] = (tables[k - 1][byte] >> 8) ^ tables[0][tables[k - 1][byte] & 0xFF];
    return tables;
}
constexpr Tables kTables = MakeTables();

}  // namespace

std::uint32_t Crc32(std::string_view bytes) {
    const auto byteAt = [&](std::size_t i) {
        return static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i]));
    };
    std::uint32_t sum = 0xFFFFFFFF;
    std::size_t i = 0;
    for (; i + 4 <= bytes.size(); i += 4) {
        sum ^= byteAt(i) | byteAt(i + 1) << 8 | byteAt(i + 2) << 16 | byteAt(i + 3) << 24;
        sum = kTables[3][sum & 0xFF] ^ kTables[2][sum >> 8 & 0xFF] ^ kTables[1][sum >> 16 & 0xFF] ^
              kTables[0][sum >> 24];
    }
    for (; i < bytes.size(); ++i)
        sum = (sum >> 8) ^ kTables[0][(sum ^ byteAt(i)) & 0xFF];
    return ~sum;
}

}  // namespace tobbin
