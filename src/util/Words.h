#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace tobbin {

// Looking at eight bytes of a text at a time. The first byte is the lowest of the word.
static_assert(std::endian::native == std::endian::little);

inline std::uint64_t WordAt(const char* bytes) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof(word));
    return word;
}

constexpr std::uint64_t InEachByte(unsigned char byte) {
    return 0x0101010101010101U * byte;
}

// Marks of bytes: the top bit of each that is below `limit` (at most 0x80) or equal to `byte`. The
// first mark is right; behind it there may be wrong ones, so marks are good for FirstMarked only.
constexpr std::uint64_t MarkBelow(std::uint64_t word, unsigned char limit) {
    return (word - InEachByte(limit)) & ~word & InEachByte(0x80);
}
constexpr std::uint64_t MarkEqual(std::uint64_t word, unsigned char byte) {
    return MarkBelow(word ^ InEachByte(byte), 1);
}

// The index of the first marked byte, from 0; 8 without a mark.
constexpr std::size_t FirstMarked(std::uint64_t marks) {
    return static_cast<std::size_t>(std::countr_zero(marks)) / 8;
}

}  // namespace tobbin
