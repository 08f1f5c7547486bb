#include "platform/FolderListing_win32.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>

#include "platform/DiskError_win32.h"
#include "platform/UniqueHandle_win32.h"
#include "platform/Wide_win32.h"

namespace tobbin {
namespace {

constexpr std::size_t kBufferBytes = 64 * 1024;

void Add(std::wstring_view name, DWORD attributes, std::uint64_t size,
         std::vector<FolderEntry>& entries) {
    if (name != L"." && name != L"..")
        entries.push_back({Utf8(name), (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0,
                           (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0, size});
}

// Adds the entries of a filled buffer: a chain of records, each with its distance to the next.
void AddAll(const std::byte* buffer, std::vector<FolderEntry>& entries) {
    for (std::size_t at = 0;;) {
        FILE_FULL_DIR_INFO record;
        std::memcpy(&record, buffer + at, offsetof(FILE_FULL_DIR_INFO, FileName));
        const auto* const name =
            reinterpret_cast<const wchar_t*>(buffer + at + offsetof(FILE_FULL_DIR_INFO, FileName));
        Add({name, record.FileNameLength / sizeof(wchar_t)}, record.FileAttributes,
            static_cast<std::uint64_t>(record.EndOfFile.QuadPart), entries);
        if (record.NextEntryOffset == 0)
            return;
        at += record.NextEntryOffset;
    }
}

// An empty root has not even "." in it, which some file systems report as "not found".
bool IsEndOfListing(DWORD systemCode) {
    return systemCode == ERROR_NO_MORE_FILES || systemCode == ERROR_FILE_NOT_FOUND;
}

}  // namespace

DiskStatus ListByHandle(HANDLE folder, std::vector<FolderEntry>& entries, bool& supported) {
    struct alignas(8) Buffer {
        std::byte bytes[kBufferBytes];
    };
    const auto buffer = std::make_unique<Buffer>();
    supported = true;
    for (FILE_INFO_BY_HANDLE_CLASS what = FileFullDirectoryRestartInfo;;
         what = FileFullDirectoryInfo) {
        if (!GetFileInformationByHandleEx(folder, what, buffer->bytes, kBufferBytes)) {
            const DWORD error = GetLastError();
            supported = error != ERROR_INVALID_PARAMETER && error != ERROR_INVALID_FUNCTION &&
                        error != ERROR_NOT_SUPPORTED && error != ERROR_CALL_NOT_IMPLEMENTED &&
                        error != ERROR_INVALID_LEVEL;
            return IsEndOfListing(error) ? DiskStatus() : StatusOf(error);
        }
        AddAll(buffer->bytes, entries);
    }
}

DiskStatus ListBySearch(const std::wstring& longFolder, std::vector<FolderEntry>& entries) {
    const std::wstring pattern = longFolder + (longFolder.ends_with(L'\\') ? L"*" : L"\\*");
    WIN32_FIND_DATAW found = {};
    const UniqueFind search(FindFirstFileExW(pattern.c_str(), FindExInfoBasic, &found,
                                             FindExSearchNameMatch, nullptr,
                                             FIND_FIRST_EX_LARGE_FETCH));
    BOOL more = search ? TRUE : FALSE;
    while (more) {
        Add(found.cFileName, found.dwFileAttributes,
            static_cast<std::uint64_t>(found.nFileSizeHigh) << 32U | found.nFileSizeLow, entries);
        more = FindNextFileW(search.Get(), &found);
    }
    const DWORD error = GetLastError();
    return IsEndOfListing(error) ? DiskStatus() : StatusOf(error);
}

}  // namespace tobbin
