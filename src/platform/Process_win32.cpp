#include "platform/Process_win32.h"

#include <windows.h>

#include <dbghelp.h>
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

std::string ProgramPath() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        CHECK(length != 0);
        if (length < path.size()) {
            path.resize(length);
            return Utf8(path);
        }
        path.resize(path.size() * 2);
    }
}

constexpr DWORD kDumpPatience = 20'000;  // milliseconds

// What the thread that writes a minidump is told of the crash.
struct Crash {
    DWORD thread = GetCurrentThreadId();
    EXCEPTION_POINTERS* maybeException = nullptr;
};

// The names are found beforehand: a crashed program is asked for as little as can be.
struct DumpPlace {
    std::wstring path = Wide(CrashDumpPath());
    std::wstring folder = Wide(FolderOfPath(CrashDumpPath()));
    decltype(&MiniDumpWriteDump) write = nullptr;

    DumpPlace() {
        const HMODULE library =
            LoadLibraryExW(L"dbghelp.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
        if (library != nullptr)
            write = reinterpret_cast<decltype(write)>(
                reinterpret_cast<void*>(GetProcAddress(library, "MiniDumpWriteDump")));
    }
};
const DumpPlace& PlaceOfDump() {
    static const DumpPlace place;
    return place;
}

DWORD WINAPI WriteDump(void* data) {
    const Crash& crash = *static_cast<Crash*>(data);
    const DumpPlace& place = PlaceOfDump();
    CreateDirectoryW(place.folder.c_str(), nullptr);
    const UniqueFile file(CreateFileW(place.path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr));
    MINIDUMP_EXCEPTION_INFORMATION information = {crash.thread, crash.maybeException, FALSE};
    if (file && place.write != nullptr)
        place.write(GetCurrentProcess(), GetCurrentProcessId(), file.Get(), MiniDumpNormal,
                    crash.maybeException != nullptr ? &information : nullptr, nullptr, nullptr);
    return 0;
}

// On a thread of its own: the crashed one may have no stack left.
void LeaveDump(Crash crash) {
    const UniqueKernelObject writer(CreateThread(nullptr, 0, &WriteDump, &crash, 0, nullptr));
    if (writer)
        WaitForSingleObject(writer.Get(), kDumpPatience);
}

// Ends the program without a box, which might hang in what is broken. The next start tells.
LONG WINAPI OnUnhandledException(EXCEPTION_POINTERS* exception) {
    Crash crash;
    crash.maybeException = exception;
    LeaveDump(crash);
    TerminateProcess(GetCurrentProcess(), exception->ExceptionRecord->ExceptionCode);
    return EXCEPTION_CONTINUE_SEARCH;
}

DWORD WINAPI ShowEndMessage(void* message) {
    MessageBoxW(nullptr, Wide(static_cast<const char*>(message)).c_str(), L"Tobbin",
                MB_ICONSTOP | MB_TASKMODAL | MB_SETFOREGROUND | MB_TOPMOST);
    return 0;
}

// The box runs on a thread of its own while this one waits, so that no window of the program gets a
// message any more: what it would meet is broken.
void TellAndEnd(const char* message) {
    LeaveDump({});
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
    PlaceOfDump();
    SetUnhandledExceptionFilter(&OnUnhandledException);
    SetCheckHandler(&TellAndEnd);
    std::set_terminate(&EndOnTerminate);
}

std::string ProgramFolder() {
    return FolderOfPath(ProgramPath());
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

std::string CrashDumpPath() {
    const std::string folder = PersonalDataFolder(), name = FileNameOfPath(ProgramPath());
    return folder.empty() ? folder : folder + name.substr(0, name.rfind('.')) + ".dmp";
}

std::string SystemFolderOf32Bit() {
    std::wstring path(GetSystemWow64DirectoryW(nullptr, 0), L'\0');
    path.resize(GetSystemWow64DirectoryW(path.data(), static_cast<UINT>(path.size())));
    return path.empty() ? std::string() : FolderWithSeparator(Utf8(path));
}

std::string SystemFolder() {
    std::wstring path(GetSystemDirectoryW(nullptr, 0), L'\0');
    path.resize(GetSystemDirectoryW(path.data(), static_cast<UINT>(path.size())));
    return FolderWithSeparator(Utf8(path));
}

}  // namespace tobbin
