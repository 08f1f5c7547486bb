#include "platform/File_win32.h"

#include <algorithm>

#include "platform/DiskError_win32.h"
#include "platform/WindowAnswers_win32.h"

namespace tobbin {
namespace {

constexpr std::size_t kSmallBytes = 4096;
constexpr std::size_t kPieceBytes = 16 * 1024 * 1024;  // the most that one call is asked for

// Where in the file a read or write takes place; no file position is kept.
OVERLAPPED At(std::uint64_t offset) {
    OVERLAPPED place = {};
    place.Offset = static_cast<DWORD>(offset);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    return place;
}

DWORD Piece(std::size_t bytes) {
    return static_cast<DWORD>(std::min(bytes, kPieceBytes));
}

}  // namespace

DiskStatus SystemFile::Read(std::uint64_t offset, std::size_t count, std::string& bytes) {
    bytes.clear();
    if (count > kSmallBytes) {  // No room is made for more than there is.
        std::uint64_t size = 0;
        if (DiskStatus status = Size(size); !status.Ok())
            return status;
        count = std::min<std::uint64_t>(count, size - std::min(size, offset));
    }
    bytes.resize(count);
    std::size_t done = 0;
    while (done < bytes.size()) {
        OVERLAPPED place = At(offset + done);
        DWORD got = 0;
        if (!ReadFile(m_handle.Get(), bytes.data() + done, Piece(bytes.size() - done), &got,
                      &place)) {
            if (const DWORD error = GetLastError(); error != ERROR_HANDLE_EOF) {
                bytes.clear();
                return StatusOf(error);
            }
            got = 0;
        }
        if (got == 0)  // The file was cut meanwhile.
            break;
        done += got;
    }
    bytes.resize(done);
    return {};
}

DiskStatus SystemFile::Write(std::uint64_t offset, std::string_view bytes) {
    while (!bytes.empty()) {
        OVERLAPPED place = At(offset);
        DWORD written = 0;
        if (!WriteFile(m_handle.Get(), bytes.data(), Piece(bytes.size()), &written, &place))
            return LastStatus();
        if (written == 0)  // A write that takes nothing and names no reason has no room left.
            return StatusOf(ERROR_DISK_FULL);
        offset += written;
        bytes.remove_prefix(written);
    }
    return {};
}

DiskStatus SystemFile::Size(std::uint64_t& bytes) {
    LARGE_INTEGER size = {};
    if (!GetFileSizeEx(m_handle.Get(), &size))
        return LastStatus();
    bytes = static_cast<std::uint64_t>(size.QuadPart);
    return {};
}

DiskStatus SystemFile::Flush() {
    DiskStatus status;
    RunOnWorker([&] { status = FlushFileBuffers(m_handle.Get()) ? DiskStatus() : LastStatus(); });
    return status;
}

DiskStatus SystemFile::Close() {
    return CloseHandle(m_handle.Release()) ? DiskStatus() : LastStatus();
}

}  // namespace tobbin
