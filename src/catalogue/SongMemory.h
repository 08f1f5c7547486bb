#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "catalogue/LoadResult.h"
#include "catalogue/RecordTable.h"
#include "platform/Disk.h"
#include "util/Text.h"

namespace tobbin {

inline constexpr std::uint64_t kLargestSongMemory = Megabytes(256);

// What the catalogue file has no place for, so that a song can be known again: where each cleared
// record's song lay and what it was called, and how large the songs' files are. It is kept in the
// file SongMemory.txt (see docs/song-memory-file.md) and held by record: numbers count from 1.
class SongMemory {
 public:
    struct Cleared {
        std::int32_t record = 0;
        std::int32_t recordInFile = 0;  // in the catalogue file as it is on the disk
        std::uint64_t size = 0;         // bytes; 0 when not known
        std::string folder;             // ends in "\"
        std::string name;
        bool isBack = false;  // present again, and kept until the catalogue says so on the disk
    };
    // In the order of their clearing.
    const std::vector<Cleared>& ClearedSongs() const { return m_cleared; }
    const Cleared* MaybeCleared(std::int32_t record) const;

    void Clear(std::int32_t record, std::string_view folder, std::string_view name);
    void BringBack(std::int32_t record);
    std::uint64_t SizeOf(std::int32_t record) const;
    void TakeSize(std::int32_t record, std::uint64_t size);

    // Records have other numbers now: `moved` has the new one for each that changed. What is told
    // of a record whose number another one has taken without a new number of its own is forgotten.
    void Move(const std::unordered_map<std::int32_t, std::int32_t>& moved);

    // Reads the file's bytes for a catalogue that was just loaded. What is told of records that are
    // not cleared there is passed over. Sizes that are known and not in the file stay. Every line
    // that can be read is taken, also when the outcome is Damaged; the message begins with a small
    // letter and names the line.
    LoadResult Read(std::string_view bytes, const RecordTable& table);
    // The bytes of the file. The sizes of present songs are told only `withSizes`.
    std::string Write(const RecordTable& table, bool withSizes) const;

    // Whether the file needs to be written, and that it was; then that the catalogue was, too.
    bool IsDirty(bool withSizes) const { return m_dirty || (withSizes && m_sizesDirty); }
    void OnSaved();
    void OnCatalogueSaved(const RecordTable& table);
    void ForgetCleared();

 private:
    using Records = std::function<std::int32_t(std::int32_t)>;  // by number; 0 for none
    bool TakeLine(std::string_view line, bool numbersBefore, const Records& recordOf,
                  const RecordTable& table);
    void TakeCleared(Cleared song);
    void IndexCleared();

    std::vector<Cleared> m_cleared;
    std::unordered_map<std::int32_t, std::size_t> m_places;  // in m_cleared, by record
    std::vector<std::uint64_t> m_sizes;                      // by record
    std::uint32_t m_fingerprint = 0;  // of the catalogue file as it is on the disk
    bool m_dirty = false;
    bool m_sizesDirty = false;
};

// Whether the record's song was gone from its place when the program looked last.
bool IsCleared(const RecordTable& table, std::int32_t record);

}  // namespace tobbin
