#include "Searching_win32.h"

#include <windows.h>

#include <winternl.h>

#include <cstddef>
#include <memory>
#include <string_view>

#include "catalogue/FoundSongs.h"
#include "Pinger_win32.h"
#include "platform/UniqueHandle_win32.h"
#include "platform/WindowsEnvironment_win32.h"
#include "search/SongSearch.h"
#include "shell/Application.h"
#include "shell/Splash_win32.h"

namespace tobbin::bench {
namespace {

constexpr std::size_t kBufferBytes = 64 * 1024;

void ListTree(const std::wstring& folder, std::byte* buffer, int& songs) {
    const UniqueFile handle(CreateFileW(
        folder.c_str(), FILE_LIST_DIRECTORY, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
        nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    FILE_BASIC_INFO info = {};
    GetFileInformationByHandleEx(handle.Get(), FileBasicInfo, &info, sizeof(info));
    FILE_INTERNAL_INFORMATION index = {};
    IO_STATUS_BLOCK block = {};
    NtQueryInformationFile(handle.Get(), &block, &index, sizeof(index), FileInternalInformation);
    std::vector<std::wstring> folders;
    while (
        GetFileInformationByHandleEx(handle.Get(), FileFullDirectoryInfo, buffer, kBufferBytes)) {
        for (const std::byte* at = buffer;;) {
            const auto& entry = *reinterpret_cast<const FILE_FULL_DIR_INFO*>(at);
            const std::wstring_view name(entry.FileName, entry.FileNameLength / sizeof(wchar_t));
            if ((entry.FileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
                songs += name.ends_with(L".mp3");
            else if (name != L"." && name != L"..")
                folders.push_back(folder + std::wstring(name) + L"\\");
            if (entry.NextEntryOffset == 0)
                break;
            at += entry.NextEntryOffset;
        }
    }
    for (const std::wstring& inner : folders)
        ListTree(inner, buffer, songs);
}

}  // namespace

double ListBare(const std::vector<std::wstring>& roots, int& songs) {
    const double begin = Now();
    const auto buffer = std::make_unique<std::byte[]>(kBufferBytes);
    for (const std::wstring& root : roots)
        ListTree(L"\\\\?\\" + root, buffer.get(), songs);
    return Now() - begin;
}

double SearchAsTheProgram(int& songs) {
    WindowsEnvironment environment;
    Application application(environment.Interfaces(), {"C:\\nowhere\\", "C:\\nowhere\\", ""});
    Splash splash;
    splash.Open();
    splash.ShowProgressArea(true);
    const double begin = Now();
    FoundSongs found(environment.Interfaces(), application.Catalogue());
    SongSearch(environment.Interfaces(), splash, found).SearchHardDrives();
    songs = found.Settle().added;
    return Now() - begin;
}

}  // namespace tobbin::bench
