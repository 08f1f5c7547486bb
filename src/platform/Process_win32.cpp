#include "platform/Process_win32.h"

#include <windows.h>

#include <shellapi.h>
#include <shlobj.h>

#include <exception>

#include "platform/ComPtr_win32.h"
#include "platform/UniqueHandle_win32.h"
#include "platform/Wide_win32.h"
#include "platform/WindowBase_win32.h"
#include "util/Check.h"
#include "util/Text.h"

namespace tobbin {
namespace {

constexpr UINT kExitCode = 3;

DWORD WINAPI ShowEndMessage(void* message) {
    MessageBoxW(nullptr, Wide(static_cast<const char*>(message)).c_str(), L"Tobbin",
                MB_ICONSTOP | MB_TASKMODAL | MB_SETFOREGROUND);
    return 0;
}

// The box runs on a thread of its own while this one waits, so that no window of the program gets a
// message any more: what it would meet is broken.
void TellAndEnd(const char* message) {
    const UniqueKernelObject box(
        CreateThread(nullptr, 0, &ShowEndMessage, const_cast<char*>(message), 0, nullptr));
    if (box)
        WaitForSingleObject(box.Get(), INFINITE);
    TerminateProcess(GetCurrentProcess(), kExitCode);
}

void EndOnTerminate() {
    if (std::current_exception())
        StopOnException();
    EndProgram("Tobbin has to stop: an unknown error.");
}

}  // namespace

void PrepareProcess() {
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
    HeapSetInformation(nullptr, HeapEnableTerminationOnCorruption, nullptr, 0);
    SetCheckHandler(&TellAndEnd);
    std::set_terminate(&EndOnTerminate);
}

std::string ProgramFolder() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        CHECK(length != 0);
        if (length < path.size()) {
            path.resize(length);
            return FolderOfPath(Utf8(path));
        }
        path.resize(path.size() * 2);
    }
}

std::vector<std::string> FilesOnCommandLine() {
    std::vector<std::string> files;
    int count = 0;
    wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 1; arguments != nullptr && i < count; ++i) {
        std::wstring full(GetFullPathNameW(arguments[i], 0, nullptr, nullptr), L'\0');
        full.resize(
            GetFullPathNameW(arguments[i], static_cast<DWORD>(full.size()), full.data(), nullptr));
        if (!full.empty())
            files.push_back(Utf8(full));
    }
    LocalFree(arguments);
    return files;
}

std::string PersonalDataFolder() {
    wchar_t* path = nullptr;
    const HRESULT result = SHGetKnownFolderPath(FOLDERID_LocalAppData, 0, nullptr, &path);
    const ComText owned(path);
    return SUCCEEDED(result) ? FolderWithSeparator(Utf8(path)) + "Tobbin\\" : std::string();
}

std::string SystemFolder() {
    std::wstring path(GetSystemDirectoryW(nullptr, 0), L'\0');
    path.resize(GetSystemDirectoryW(path.data(), static_cast<UINT>(path.size())));
    return FolderWithSeparator(Utf8(path));
}

}  // namespace tobbin
