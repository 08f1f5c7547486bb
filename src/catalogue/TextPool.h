#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tobbin {

// Many texts, each distinct one stored once and known by a number, so that equal texts have equal
// numbers. The empty text is number 0. Texts stay until the pool is cleared.
class TextPool {
 public:
    TextPool();
    TextPool(const TextPool&) = delete;
    TextPool& operator=(const TextPool&) = delete;
    TextPool(TextPool&&) = default;
    TextPool& operator=(TextPool&&) = default;

    std::uint32_t Add(std::string_view text);
    // The number of a text that the pool has; nothing for any other.
    std::optional<std::uint32_t> MaybeFind(std::string_view text) const;

    // Makes room for that many more distinct texts at once.
    void Reserve(std::size_t count);

    // Valid until the pool is cleared.
    std::string_view Text(std::uint32_t id) const { return m_texts[id]; }
    std::size_t Size() const { return m_texts.size(); }

    void Clear();

 private:
    struct Slot {
        std::uint32_t hash = 0;
        std::uint32_t id = 0;  // 0 marks a free slot
    };
    static std::uint32_t Hash(std::string_view text);
    static bool IsFull(std::size_t texts, std::size_t slots) { return texts * 3 > slots * 2; }
    std::string_view Store(std::string_view text);
    void Rehash(std::size_t slotCount);

    std::vector<std::unique_ptr<char[]>> m_chunks;
    std::size_t m_chunkLeft = 0;
    char* m_chunkEnd = nullptr;  // the free part of the last chunk ends here
    std::vector<std::string_view> m_texts;
    std::vector<Slot> m_slots;  // a power of two of them, at most two thirds in use
};

}  // namespace tobbin
