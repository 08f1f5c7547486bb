#include "tags/Id3v2Bytes.h"

#include <algorithm>

namespace tobbin {
namespace {

// The first piece mostly holds all texts: the one page of the file that is read.
constexpr std::size_t kFirstPiece = 4 * 1024;
constexpr std::size_t kPiece = 8 * 1024;
static_assert(kFirstPiece + (Id3v2Bytes::kMostReads - 1) * kPiece <= Id3v2Bytes::kMostBytes);

constexpr std::size_t kUnsynchronizedPiece = 64 * 1024;
constexpr std::uint64_t kMostUnsynchronized = 16 * 1024 * 1024;

}  // namespace

void Id3v2Unsynchronization::TakeBack(std::string_view written, std::string& bytes) {
    for (const char c : written) {
        const auto byte = static_cast<unsigned char>(c);
        if (m_behindFF && byte >= 0xE0)
            m_wasFalse = true;
        if (!m_behindFF || byte != 0)
            bytes.push_back(c);
        m_behindFF = byte == 0xFF;
    }
}

void Id3v2Bytes::TakeBackUnsynchronization(std::size_t header) {
    m_isUnsynchronized = true;
    const std::string written = m_window.substr(std::min(header, m_window.size()));
    m_window.clear();
    m_begin = header;
    m_next = header + written.size();
    m_end = std::min(m_end, kMostUnsynchronized);
    m_unsynchronization.TakeBack(written, m_window);
}

bool Id3v2Bytes::Holds(std::uint64_t at, std::size_t count) const {
    return at >= m_begin && at + count <= m_begin + m_window.size();
}

void Id3v2Bytes::ReadFrom(std::uint64_t at) {
    m_window.clear();
    m_begin = at;
    if (m_reads == kMostReads)
        return;
    const std::size_t piece = m_reads++ == 0 ? kFirstPiece : kPiece;
    m_status = m_file.Read(at, std::min<std::uint64_t>(piece, m_end - at), m_window);
}

// Reads the next piece of an unsynchronized tag, and lets go of what is in front of `at`.
bool Id3v2Bytes::ReadOn(std::uint64_t at) {
    const std::size_t passed = std::min<std::uint64_t>(at - m_begin, m_window.size());
    m_window.erase(0, passed);
    m_begin += passed;
    if (m_next >= m_end)
        return false;
    std::string written;
    m_status =
        m_file.Read(m_next, std::min<std::uint64_t>(kUnsynchronizedPiece, m_end - m_next), written);
    m_next += written.size();
    m_unsynchronization.TakeBack(written, m_window);
    return !written.empty();
}

std::string_view Id3v2Bytes::At(std::uint64_t at, std::size_t count) {
    if (m_isUnsynchronized) {
        while (!Holds(at, count) && ReadOn(at)) {
        }
    } else {
        count = std::min<std::uint64_t>(count, m_end - std::min(m_end, at));
        if (count > 0 && !Holds(at, count) && m_status.Ok())
            ReadFrom(at);
    }
    if (!m_status.Ok() || at < m_begin || at - m_begin > m_window.size())
        return {};
    return std::string_view(m_window).substr(at - m_begin, count);
}

}  // namespace tobbin
