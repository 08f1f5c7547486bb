#include "platform/TreeSearch_win32.h"

#include <windows.h>

#include <dbghelp.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <type_traits>
#include <vector>

#include "platform/Wide_win32.h"
#include "platform/WindowAnswers_win32.h"
#include "util/Text.h"

namespace tobbin {
namespace {

// The longest path there is; Wine 8 writes the path that it is at into the result as it goes.
constexpr std::size_t kResultUnits = 0x10000;

// The compiler's headers lack it.
using FileCallback = BOOL(CALLBACK*)(PCWSTR path, PVOID data);
using EnumDirTreeFunction = BOOL(WINAPI*)(HANDLE process, PCWSTR root, PCWSTR fileName, PWSTR found,
                                          FileCallback callback, PVOID data);

// What is used of the system's library for the files of programs.
struct Library {
    decltype(&SymInitializeW) initialize = nullptr;
    decltype(&SymRegisterCallback64) registerCallback = nullptr;
    EnumDirTreeFunction enumerate = nullptr;
    decltype(&SymCleanup) cleanUp = nullptr;

    bool Load() {
        const HMODULE file = LoadLibraryExW(L"dbghelp.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
        const auto get = [file](const char* name, auto& function) {
            function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(
                reinterpret_cast<void*>(GetProcAddress(file, name)));
            return function != nullptr;
        };
        return file != nullptr && get("SymInitializeW", initialize) &&
               get("SymRegisterCallback64", registerCallback) && get("EnumDirTreeW", enumerate) &&
               get("SymCleanup", cleanUp);
    }
};

// Shared with the thread, so that either may end first.
struct Task {
    std::wstring root, fileName;
    std::function<bool(const std::string&)> takes;
    std::wstring found;
    std::atomic<bool> isCalledOff = false;
};

// The system asks whether it shall stop.
BOOL CALLBACK OnQuestion(HANDLE /*process*/, ULONG action, ULONG64 /*data*/, ULONG64 task) {
    return action == CBA_DEFERRED_SYMBOL_LOAD_CANCEL &&
           reinterpret_cast<const Task*>(task)->isCalledOff;
}

// A file whose path ends in the name. Returns whether the search is over.
BOOL CALLBACK OnFile(PCWSTR path, PVOID data) {
    Task& task = *static_cast<Task*>(data);
    if (task.isCalledOff)
        return TRUE;
    const std::string found = Utf8(path);
    if (lstrcmpiW(Wide(FileNameOfPath(found)).c_str(), task.fileName.c_str()) != 0 ||
        !task.takes(found))
        return FALSE;
    task.found = path;
    return TRUE;
}

void Run(Task& task) {
    // The library may be used by one thread at a time.
    static std::mutex oneAtATime;
    const std::lock_guard<std::mutex> lock(oneAtATime);
    Library library;
    const HANDLE process = GetCurrentProcess();
    if (task.isCalledOff || !library.Load())
        return;
    const bool mayAsk = library.initialize(process, L"", FALSE) != FALSE;
    if (mayAsk)
        library.registerCallback(process, &OnQuestion, reinterpret_cast<ULONG64>(&task));
    std::vector<wchar_t> result(kResultUnits);
    library.enumerate(process, task.root.c_str(), task.fileName.c_str(), result.data(), &OnFile,
                      &task);
    if (mayAsk)
        library.cleanUp(process);
}

}  // namespace

std::optional<std::string> FindBelowWithSystemSearch(
    const std::string& root, const std::string& fileName,
    const std::function<bool(const std::string&)>& takes, const std::function<bool()>& keepOn) {
    const auto task = std::make_shared<Task>();
    task->root = Wide(root);
    task->fileName = Wide(fileName);
    task->takes = takes;
    if (!RunAside([task] { Run(*task); }, keepOn)) {
        task->isCalledOff = true;
        return std::nullopt;
    }
    if (task->found.empty())
        return std::nullopt;
    return Utf8(task->found);
}

std::optional<std::string> MaybeSystemShortPath(const std::string& path) {
    const std::wstring longPath = LongPath(path);
    std::wstring result(GetShortPathNameW(longPath.c_str(), nullptr, 0), L'\0');
    const DWORD length =
        GetShortPathNameW(longPath.c_str(), result.data(), static_cast<DWORD>(result.size()));
    if (length == 0 || length >= result.size())
        return std::nullopt;
    result.resize(length);
    constexpr std::wstring_view kNetwork = LR"(\\?\UNC\)", kLong = LR"(\\?\)";
    if (result.starts_with(kNetwork))
        result.replace(0, kNetwork.size(), LR"(\\)");
    else if (result.starts_with(kLong))
        result.erase(0, kLong.size());
    return Utf8(result);
}

}  // namespace tobbin
