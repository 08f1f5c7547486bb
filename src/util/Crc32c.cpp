#include "util/Crc32c.h"

#include <array>

namespace tobbin {
namespace {

// What a byte does to the sum, with the bits reversed.
constexpr std::array<std::uint32_t, 256> MakeTable() {
    constexpr std::uint32_t kPolynomial = 0x82F63B78;
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t byte = 0; byte < table.size(); ++byte) {
        std::uint32_t sum = byte;
        for (int bit = 0; bit < 8; ++bit)
            sum = sum >> 1 ^ ((sum & 1) != 0 ? kPolynomial : 0);
        table[byte] = sum;
    }
    return table;
}

constexpr std::array<std::uint32_t, 256> kTable = MakeTable();

}  // namespace

std::uint32_t Crc32c(std::string_view bytes) {
    std::uint32_t sum = 0xFFFFFFFF;
    for (const char c : bytes)
        sum = sum >> 8 ^ kTable[(sum ^ static_cast<unsigned char>(c)) & 0xFF];
    return ~sum;
}

}  // namespace tobbin
