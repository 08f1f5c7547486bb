#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace tobbin {

// SipHash-1-3 (Aumasson and Bernstein, "SipHash: a fast short-input PRF") of bytes under a key.
std::uint64_t SipHash(std::uint64_t key0, std::uint64_t key1, std::string_view bytes);

// For hash tables whose keys are texts: a text is looked up without a copy of it. The key is drawn
// anew in each run of the program, so that nobody can make a file of names that all meet in one
// slot.
struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const;
};

template <typename Value>
using TextMap = std::unordered_map<std::string, Value, TextHash, std::equal_to<>>;

}  // namespace tobbin
