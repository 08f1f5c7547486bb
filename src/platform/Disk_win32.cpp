#include "platform/Disk_win32.h"

#include <winternl.h>

#include <cstddef>
#include <cstdio>
#include <functional>
#include <random>
#include <string_view>
#include <vector>

#include "platform/DiskError_win32.h"
#include "platform/File_win32.h"
#include "platform/FolderListing_win32.h"
#include "platform/Links_win32.h"
#include "platform/TreeSearch_win32.h"
#include "platform/UniqueHandle_win32.h"
#include "platform/Wide_win32.h"
#include "platform/WindowAnswers_win32.h"

namespace tobbin {
namespace {

// The compiler's headers lack these two.
constexpr DWORD kRecallOnOpen = 0x00040000;
constexpr DWORD kRecallOnDataAccess = 0x00400000;

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

std::int64_t UnixTime(const FILETIME& time) {
    constexpr std::int64_t kTicksPerSecond = 10'000'000;
    constexpr std::int64_t kSecondsFrom1601To1970 = 11'644'473'600;
    const auto ticks = static_cast<std::int64_t>(
        static_cast<std::uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime);
    return ticks / kTicksPerSecond - kSecondsFrom1601To1970;
}

template <typename Attributes>
PathInfo InfoOf(const Attributes& attributes) {
    PathInfo info;
    info.kind = (attributes.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? PathKind::Folder
                                                                              : PathKind::File;
    if (info.kind == PathKind::File)
        info.size =
            static_cast<std::uint64_t>(attributes.nFileSizeHigh) << 32 | attributes.nFileSizeLow;
    info.modifiedTime = UnixTime(attributes.ftLastWriteTime);
    return info;
}

// The number of an open folder on its volume, 0 when it can't be told. It comes from the call below
// the documented GetFileInformationByHandle, which never leaves out the slow question for the
// volume.
std::uint64_t IndexOf(HANDLE folder) {
    FILE_INTERNAL_INFORMATION info = {};
    IO_STATUS_BLOCK block = {};
    const NTSTATUS status =
        NtQueryInformationFile(folder, &block, &info, sizeof(info), FileInternalInformation);
    return NT_SUCCESS(status) ? static_cast<std::uint64_t>(info.IndexNumber.QuadPart) : 0;
}

// The volume of an open folder, by the name that the system gives to each: a cloned disk has the
// serial number of the other. Nothing where neither can be told.
std::optional<std::uint64_t> MaybeVolumeOf(HANDLE folder) {
    constexpr DWORD kHow = FILE_NAME_OPENED | VOLUME_NAME_GUID;
    std::wstring path(GetFinalPathNameByHandleW(folder, nullptr, 0, kHow), L'\0');
    const DWORD length =
        GetFinalPathNameByHandleW(folder, path.data(), static_cast<DWORD>(path.size()), kHow);
    if (const std::size_t end = path.find(L'}'); length > 0 && end != std::wstring::npos)
        return std::hash<std::wstring_view>()(std::wstring_view(path).substr(0, end));
    BY_HANDLE_FILE_INFORMATION info = {};
    if (!GetFileInformationByHandle(folder, &info))
        return std::nullopt;
    return info.dwVolumeSerialNumber;
}

// The identity of an open folder; nothing where the file system gives none.
std::optional<FolderId> MaybeId(HANDLE folder, std::optional<std::uint64_t> volume) {
    const std::uint64_t index = IndexOf(folder);
    if (index == 0 || index == ~std::uint64_t{0})
        return std::nullopt;
    if (!volume)
        volume = MaybeVolumeOf(folder);
    return volume ? std::optional(FolderId{*volume, index}) : std::nullopt;
}

// Whether a file's content would have to be fetched before it can be read. A question for its
// attributes alone would not tell of all of these, and asking its folder opens nothing.
bool IsPlaceholder(const std::wstring& path) {
    constexpr DWORD kFetched = kRecallOnOpen | kRecallOnDataAccess | FILE_ATTRIBUTE_OFFLINE;
    WIN32_FIND_DATAW found = {};
    const UniqueFind search(FindFirstFileW(path.c_str(), &found));
    return search && (found.dwFileAttributes & kFetched) != 0;
}

// Who may do what with a file, as the system writes it down; empty where it tells nothing.
std::vector<std::byte> AccessListOf(const std::wstring& path) {
    DWORD bytes = 0;
    GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &bytes);
    std::vector<std::byte> list(bytes);
    if (bytes == 0 ||
        !GetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, list.data(), bytes, &bytes))
        return {};
    return list;
}

// The system reports a target that another program holds as "access denied". One that can be opened
// for deletion is no longer held.
DiskStatus WhyNotReplaced(DWORD error, const std::wstring& target) {
    if (error == ERROR_ACCESS_DENIED) {
        const UniqueFile probe(CreateFileW(target.c_str(), DELETE, kShareAll, nullptr,
                                           OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
        if (probe || GetLastError() == ERROR_SHARING_VIOLATION)
            error = ERROR_SHARING_VIOLATION;
    }
    return StatusOf(error);
}

}  // namespace

DiskStatus SystemDisk::Stat(const std::string& path, PathInfo& info) {
    info = {};
    const std::wstring longPath = LongPath(path);
    WIN32_FILE_ATTRIBUTE_DATA attributes = {};
    if (GetFileAttributesExW(longPath.c_str(), GetFileExInfoStandard, &attributes)) {
        info = InfoOf(attributes);
        return {};
    }
    const DiskStatus status = LastStatus();
    if (status.Error() == DiskError::NotFound)
        return {};
    if (status.Error() == DiskError::SharingViolation) {
        // Its folder still knows a file that lets nobody near.
        WIN32_FIND_DATAW found = {};
        if (const UniqueFind search(FindFirstFileW(longPath.c_str(), &found)); search) {
            info = InfoOf(found);
            return {};
        }
    }
    return status;
}

DiskStatus SystemDisk::List(const std::string& folder, const ListOptions& wish,
                            FolderListing& listing) {
    listing = {};
    const std::wstring longFolder = LongPath(folder);
    const UniqueFile handle(CreateFileW(longFolder.c_str(), FILE_LIST_DIRECTORY, kShareAll, nullptr,
                                        OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    if (!handle) {
        const DiskStatus status = LastStatus();
        if (status.Error() == DiskError::Other)
            return ListBySearch(longFolder, listing.entries);
        return status;
    }
    FILE_BASIC_INFO info = {};
    if (GetFileInformationByHandleEx(handle.Get(), FileBasicInfo, &info, sizeof(info)) &&
        (info.FileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
        return StatusOf(ERROR_DIRECTORY);
    if (wish.id)
        listing.id = MaybeId(handle.Get(), wish.volume);
    bool supported = false;
    const DiskStatus status = ListByHandle(handle.Get(), listing.entries, supported);
    if (supported)
        return status;
    listing.entries.clear();
    return ListBySearch(longFolder, listing.entries);
}

DiskStatus SystemDisk::Open(const std::string& path, OpenMode mode, std::unique_ptr<File>& file) {
    const std::wstring longPath = LongPath(path);
    if (mode == OpenMode::ReadIfHere && IsPlaceholder(longPath))
        return DiskStatus(DiskError::NotHere);
    DWORD access = GENERIC_READ | GENERIC_WRITE, share = FILE_SHARE_READ, how = OPEN_EXISTING;
    DWORD flags = FILE_ATTRIBUTE_NORMAL;
    switch (mode) {
        case OpenMode::Read:
        case OpenMode::ReadIfHere:
            access = GENERIC_READ;
            share = kShareAll;
            break;
        case OpenMode::Update:
            break;
        case OpenMode::Hold:
            access |= DELETE;
            share = 0;
            how = OPEN_ALWAYS;
            // Never through a link that somebody has put there.
            flags =
                FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT;
            break;
    }
    UniqueFile handle(CreateFileW(longPath.c_str(), access, share, nullptr, how, flags, nullptr));
    if (!handle)
        return LastStatus();
    file = std::make_unique<SystemFile>(std::move(handle));
    return {};
}

DiskStatus SystemDisk::CreateNew(const std::string& path, const std::string& like,
                                 std::unique_ptr<File>& file) {
    // A read-only file is not replaced (see Replace), and some file systems keep that in its list.
    const std::wstring old = LongPath(like);
    if (const DWORD attributes = like.empty() ? 0 : GetFileAttributesW(old.c_str());
        attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0)
        return StatusOf(ERROR_ACCESS_DENIED);
    const std::vector<std::byte> access =
        like.empty() ? std::vector<std::byte>() : AccessListOf(old);
    SECURITY_ATTRIBUTES security = {};
    security.nLength = sizeof(security);
    security.lpSecurityDescriptor = const_cast<std::byte*>(access.data());
    UniqueFile handle(CreateFileW(LongPath(path).c_str(), GENERIC_READ | GENERIC_WRITE,
                                  FILE_SHARE_READ, access.empty() ? nullptr : &security, CREATE_NEW,
                                  FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
    if (!handle)
        return LastStatus();
    file = std::make_unique<SystemFile>(std::move(handle));
    return {};
}

std::string SystemDisk::NameNobodyKnows() {
    std::random_device device;  // the system's own source
    char digits[17];
    std::snprintf(digits, sizeof(digits), "%08x%08x", device(), device());
    return digits;
}

bool SystemDisk::LeadsAway(const std::string& link) {
    return LeadsOffThisComputer(link);
}

DiskStatus SystemDisk::CreateFolder(const std::string& folder) {
    return CreateDirectoryW(LongPath(folder).c_str(), nullptr) ? DiskStatus() : LastStatus();
}

DiskStatus SystemDisk::Remove(const std::string& path) {
    return DeleteFileW(LongPath(path).c_str()) ? DiskStatus() : LastStatus();
}

DiskStatus SystemDisk::Replace(const std::string& from, const std::string& to) {
    constexpr DWORD kKept =
        FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
    const std::wstring source = LongPath(from);
    const std::wstring target = LongPath(to);
    const DWORD old = GetFileAttributesW(target.c_str());
    const bool replaces = old != INVALID_FILE_ATTRIBUTES;
    // Not every file system protects a read-only file from being replaced.
    if (replaces && (old & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_DIRECTORY)) != 0)
        return StatusOf(ERROR_ACCESS_DENIED);
    DWORD error = ERROR_SUCCESS;
    RunOnWorker([&] {
        if (!MoveFileExW(source.c_str(), target.c_str(),
                         MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
            error = GetLastError();
    });
    if (error != ERROR_SUCCESS)
        return WhyNotReplaced(error, target);
    // Afterwards: a hidden file left over by a crash before it could not be written anew.
    if (replaces && (old & kKept) != 0)
        SetFileAttributesW(target.c_str(), (old & kKept) | FILE_ATTRIBUTE_ARCHIVE);
    return {};
}

// No input: a command in the middle of a save could change what is being saved.
void SystemDisk::PauseForOthers() {
    PumpWithoutInputFor(10);
}

std::optional<std::string> SystemDisk::MaybeShortPath(const std::string& path) {
    return MaybeSystemShortPath(path);
}

}  // namespace tobbin
