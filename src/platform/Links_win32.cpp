#include "platform/Links_win32.h"

#include <windows.h>

#include <winioctl.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/UniqueHandle_win32.h"
#include "platform/Wide_win32.h"

namespace tobbin {
namespace {

constexpr int kMostLinks = 32;  // on the way to one path

// The part of a reparse point that the system's headers for drivers declare.
struct LinkHead {
    std::uint32_t tag;
    std::uint16_t bytes, reserved;
    std::uint16_t targetOffset, targetBytes, shownOffset, shownBytes;
};

// Where a link leads, as the file system has it written down; nothing when it can't be read, empty
// when it is no link but, say, a file of a cloud store.
std::optional<std::wstring> MaybeTarget(const std::wstring& link) {
    alignas(8) std::byte bytes[MAXIMUM_REPARSE_DATA_BUFFER_SIZE];
    const UniqueFile handle(CreateFileW(
        link.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
        OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    DWORD got = 0;
    LinkHead head = {};
    if (!handle ||
        !DeviceIoControl(handle.Get(), FSCTL_GET_REPARSE_POINT, nullptr, 0, bytes, sizeof(bytes),
                         &got, nullptr) ||
        got < sizeof(head))
        return std::nullopt;
    std::memcpy(&head, bytes, sizeof(head));
    if (head.tag != IO_REPARSE_TAG_SYMLINK && head.tag != IO_REPARSE_TAG_MOUNT_POINT)
        return std::wstring();
    const std::size_t flags = head.tag == IO_REPARSE_TAG_SYMLINK ? sizeof(std::uint32_t) : 0;
    const std::size_t begin = sizeof(head) + flags + head.targetOffset;
    if (begin + head.targetBytes > got)
        return std::nullopt;
    std::wstring target(head.targetBytes / sizeof(wchar_t), L'\0');
    std::memcpy(target.data(), bytes + begin, target.size() * sizeof(wchar_t));
    return target.empty() ? std::nullopt : std::optional(target);
}

bool IsOnDrive(std::wstring_view path) {
    return path.size() >= 2 && path[1] == L':' && (path.size() == 2 || path[2] == L'\\');
}

// The target as a path on a drive; empty when it lies elsewhere. `folder` holds the link.
std::wstring OnDrive(const std::wstring& target, const std::wstring& folder) {
    constexpr std::wstring_view kObject = L"\\??\\";
    if (target.starts_with(kObject)) {
        std::wstring path = target.substr(kObject.size());
        return IsOnDrive(path) ? path : std::wstring();
    }
    if (target.starts_with(L"\\\\") || target.starts_with(L"\\Device\\"))
        return {};
    if (target.starts_with(L'\\'))
        return folder.substr(0, 2) + target;
    return IsOnDrive(target) ? target : folder + L"\\" + target;
}

// A volume that is mounted in a folder has no letter, but is one of this computer's.
bool IsVolume(const std::wstring& target) {
    return target.starts_with(L"\\??\\Volume{");
}

}  // namespace

bool LeadsOffThisComputer(const std::string& path) {
    constexpr std::wstring_view kLong = L"\\\\?\\";
    std::wstring way = LongPath(path);
    for (int links = 0; links <= kMostLinks;) {
        way.erase(0, way.starts_with(kLong) ? kLong.size() : 0);
        if (!IsOnDrive(way) || GetDriveTypeW((way.substr(0, 2) + L"\\").c_str()) == DRIVE_REMOTE)
            return true;
        bool followed = false;
        for (std::size_t end = 2; !followed && end < way.size();) {
            const std::size_t begin = end;
            end = std::min(way.find(L'\\', begin + 1), way.size());
            const std::wstring part = std::wstring(kLong) + way.substr(0, end);
            const DWORD attributes = GetFileAttributesW(part.c_str());
            if (attributes == INVALID_FILE_ATTRIBUTES ||
                (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
                continue;
            const auto target = MaybeTarget(part);
            if (!target)
                return true;
            if (target->empty() || IsVolume(*target))
                continue;
            const std::wstring next = OnDrive(*target, way.substr(0, begin));
            if (next.empty())
                return true;
            way = LongPath(Utf8(next + way.substr(end)));
            followed = true;
            ++links;
        }
        if (!followed)
            return false;
    }
    return true;
}

}  // namespace tobbin
