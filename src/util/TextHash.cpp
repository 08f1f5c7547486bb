#include "util/TextHash.h"

#include <array>
#include <bit>
#include <cstring>
#include <random>

namespace tobbin {
namespace {

struct State {
    std::uint64_t a, b, c, d;

    void Round() {
        a += b;
        b = std::rotl(b, 13) ^ a;
        a = std::rotl(a, 32);
        c += d;
        d = std::rotl(d, 16) ^ c;
        a += d;
        d = std::rotl(d, 21) ^ a;
        c += b;
        b = std::rotl(b, 17) ^ c;
        c = std::rotl(c, 32);
    }
    void Take(std::uint64_t word) {
        d ^= word;
        Round();
        a ^= word;
    }
};

// The number that up to eight bytes stand for, the lowest first.
std::uint64_t WordOf(const char* bytes, std::size_t count) {
    static_assert(std::endian::native == std::endian::little);
    std::uint64_t word = 0;
    if (count > 0)  // an empty text may have no address
        std::memcpy(&word, bytes, count);
    return word;
}

std::array<std::uint64_t, 2> DrawKey() {
    std::random_device device;
    std::array<std::uint64_t, 2> key{};
    for (std::uint64_t& half : key)
        half = std::uint64_t{device()} << 32 | device();
    return key;
}

}  // namespace

std::uint64_t SipHash(std::uint64_t key0, std::uint64_t key1, std::string_view bytes) {
    constexpr std::size_t kWord = sizeof(std::uint64_t);
    State state{key0 ^ 0x736F6D6570736575U, key1 ^ 0x646F72616E646F6DU, key0 ^ 0x6C7967656E657261U,
                key1 ^ 0x7465646279746573U};
    std::string_view rest = bytes;
    for (; rest.size() >= kWord; rest.remove_prefix(kWord))
        state.Take(WordOf(rest.data(), kWord));
    state.Take(std::uint64_t{bytes.size()} << 56 | WordOf(rest.data(), rest.size()));
    state.c ^= 0xFF;
    for (int i = 0; i < 3; ++i)
        state.Round();
    return state.a ^ state.b ^ state.c ^ state.d;
}

std::size_t TextHash::operator()(std::string_view text) const {
    static const std::array<std::uint64_t, 2> key = DrawKey();
    return SipHash(key[0], key[1], text);
}

}  // namespace tobbin
