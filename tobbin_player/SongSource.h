#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/Disk.h"

namespace tobbin::player {

// A file as the decoder reads it: with a place in it, through a buffer.
class SongSource {
 public:
    // `keepOn` is asked before each access to the disk; the reading fails once it answers false.
    SongSource(Disk& disk, const std::string& path, std::function<bool()> keepOn = {});

    const DiskStatus& Status() const { return m_status; }

    // Like the system calls of these names: how many bytes were read, 0 at the end; the new place
    // in the file. Both -1 on an error.
    std::ptrdiff_t Read(void* to, std::size_t count);
    std::int64_t Seek(std::int64_t offset, int whence);

 private:
    std::unique_ptr<File> m_file;
    std::function<bool()> m_keepOn;
    DiskStatus m_status;
    std::uint64_t m_size = 0;
    std::uint64_t m_at = 0;
    std::string m_buffer;
    std::uint64_t m_bufferAt = 0;  // where in the file the buffer begins
};

}  // namespace tobbin::player
