#include "catalogue/TextPool.h"

#include <cstring>
#include <utility>

#include "util/Check.h"
#include "util/TextHash.h"

namespace tobbin {
namespace {
constexpr std::size_t kChunkBytes = std::size_t{64} * 1024;
constexpr std::size_t kFirstSlots = 64;

}  // namespace

TextPool::TextPool() {
    Clear();
}

void TextPool::Clear() {
    m_chunks.clear();
    m_chunkLeft = 0;
    m_chunkEnd = nullptr;
    m_texts.assign(1, {});
    m_slots.assign(kFirstSlots, {});
}

std::uint32_t TextPool::Hash(std::string_view text) {
    return static_cast<std::uint32_t>(TextHash()(text));
}

std::uint32_t TextPool::Add(std::string_view text) {
    if (text.empty())
        return 0;
    if (IsFull(m_texts.size() + 1, m_slots.size()))
        Rehash(m_slots.size() * 2);
    const std::uint32_t hash = Hash(text);
    const std::size_t mask = m_slots.size() - 1;
    std::size_t at = hash & mask;
    for (; m_slots[at].id != 0; at = (at + 1) & mask) {
        if (m_slots[at].hash == hash && m_texts[m_slots[at].id] == text)
            return m_slots[at].id;
    }
    CHECK(m_texts.size() < 0x80000000U);
    m_texts.push_back(Store(text));
    m_slots[at] = {hash, static_cast<std::uint32_t>(m_texts.size() - 1)};
    return m_slots[at].id;
}

std::optional<std::uint32_t> TextPool::MaybeFind(std::string_view text) const {
    if (text.empty())
        return 0;
    const std::uint32_t hash = Hash(text);
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t at = hash & mask; m_slots[at].id != 0; at = (at + 1) & mask) {
        if (m_slots[at].hash == hash && m_texts[m_slots[at].id] == text)
            return m_slots[at].id;
    }
    return std::nullopt;
}

std::string_view TextPool::Store(std::string_view text) {
    if (text.size() > m_chunkLeft) {
        const std::size_t bytes = text.size() > kChunkBytes ? text.size() : kChunkBytes;
        m_chunks.push_back(std::make_unique_for_overwrite<char[]>(bytes));
        m_chunkLeft = bytes;
        m_chunkEnd = m_chunks.back().get() + bytes;
    }
    char* const place = m_chunkEnd - m_chunkLeft;
    std::memcpy(place, text.data(), text.size());
    m_chunkLeft -= text.size();
    return {place, text.size()};
}

void TextPool::Reserve(std::size_t count) {
    m_texts.reserve(m_texts.size() + count);
    std::size_t slots = m_slots.size();
    while (IsFull(m_texts.size() + count, slots))
        slots *= 2;
    if (slots > m_slots.size())
        Rehash(slots);
}

void TextPool::Rehash(std::size_t slotCount) {
    std::vector<Slot> slots(slotCount);
    const std::size_t mask = slots.size() - 1;
    for (const Slot& slot : m_slots) {
        if (slot.id == 0)
            continue;
        std::size_t at = slot.hash & mask;
        while (slots[at].id != 0)
            at = (at + 1) & mask;
        slots[at] = slot;
    }
    m_slots = std::move(slots);
}

}  // namespace tobbin
