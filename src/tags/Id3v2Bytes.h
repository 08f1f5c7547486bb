#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/Disk.h"

namespace tobbin {

// Takes unsynchronization back: a writer puts a 00 behind each FF, so that nothing in a tag looks
// like the beginning of sound. May be given the bytes in pieces.
class Id3v2Unsynchronization {
 public:
    // Appends to `bytes` what `written` stands for.
    void TakeBack(std::string_view written, std::string& bytes);

    // Whether something was met that a writer would have changed: the tag only claims to be
    // unsynchronized.
    bool WasFalse() const { return m_wasFalse; }

 private:
    bool m_behindFF = false;
    bool m_wasFalse = false;
};

// The bytes of the ID3v2 tag that a file begins with. Reads around what is skipped, such as
// pictures, and little of the rest: kMostReads times, kMostBytes altogether. A tag that is
// unsynchronized as a whole can't be skipped in; it is read up to its end, or 16 MB.
class Id3v2Bytes {
 public:
    static constexpr int kMostReads = 7;  // with that of the ID3v1 tag, eight for a song
    static constexpr std::size_t kMostBytes = 52 * 1024;

    explicit Id3v2Bytes(File& file) : m_file(file) {}

    // The offset in the file (from 0) where the tag ends.
    void EndAt(std::uint64_t end) { m_end = end; }

    // From now on offsets count the bytes as they were before the whole of the tag behind the first
    // `header` bytes was unsynchronized, and must not go back. Comes before anything behind the
    // header was looked at.
    void TakeBackUnsynchronization(std::size_t header);
    bool WasFalselyUnsynchronized() const { return m_unsynchronization.WasFalse(); }

    // `count` bytes (4 KB at most) from the offset `at` on; fewer where the tag or the file ends,
    // where the limits are reached, or where reading failed. Good until the next call.
    std::string_view At(std::uint64_t at, std::size_t count);

    // Whether every read succeeded.
    const DiskStatus& Status() const { return m_status; }

 private:
    bool Holds(std::uint64_t at, std::size_t count) const;
    void ReadFrom(std::uint64_t at);
    bool ReadOn(std::uint64_t at);

    File& m_file;
    std::uint64_t m_end = ~std::uint64_t{0};
    std::string m_window;       // what was read last
    std::uint64_t m_begin = 0;  // and where it begins
    int m_reads = 0;
    bool m_isUnsynchronized = false;
    Id3v2Unsynchronization m_unsynchronization;
    std::uint64_t m_next = 0;  // the first byte of the file not read yet, where unsynchronized
    DiskStatus m_status;
};

}  // namespace tobbin
