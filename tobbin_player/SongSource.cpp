#include "tobbin_player/SongSource.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace tobbin::player {
namespace {

constexpr std::size_t kBufferSize = 64 * 1024;

}  // namespace

SongSource::SongSource(Disk& disk, const std::string& path, std::function<bool()> keepOn)
    : m_keepOn(std::move(keepOn)) {
    m_status = disk.Open(path, OpenMode::Read, m_file);
    if (m_status.Ok())
        m_status = m_file->Size(m_size);
}

std::ptrdiff_t SongSource::Read(void* to, std::size_t count) {
    if (m_at < m_bufferAt || m_at >= m_bufferAt + m_buffer.size()) {
        if (!m_status.Ok() || (m_keepOn && !m_keepOn()))
            return -1;
        m_buffer.clear();
        m_bufferAt = m_at;
        m_status = m_file->Read(m_at, kBufferSize, m_buffer);
        if (!m_status.Ok())
            return -1;
    }
    const std::size_t from = static_cast<std::size_t>(m_at - m_bufferAt);
    count = std::min(count, m_buffer.size() - from);
    std::memcpy(to, m_buffer.data() + from, count);
    m_at += count;
    return static_cast<std::ptrdiff_t>(count);
}

std::int64_t SongSource::Seek(std::int64_t offset, int whence) {
    const std::uint64_t base = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? m_at : m_size;
    const std::int64_t to = static_cast<std::int64_t>(base) + offset;
    if (to < 0)
        return -1;
    m_at = static_cast<std::uint64_t>(to);
    return to;
}

}  // namespace tobbin::player
