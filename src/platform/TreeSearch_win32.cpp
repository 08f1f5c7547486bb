#include "platform/TreeSearch_win32.h"

#include <windows.h>

#include <memory>
#include <mutex>
#include <vector>

#include "platform/Wide_win32.h"
#include "platform/WindowAnswers_win32.h"

namespace tobbin {
namespace {

using SearchTreeForFileFunction = BOOL(WINAPI*)(PCWSTR root, PCWSTR fileName, PWSTR result);

// The longest path there is; some systems write the path they are at into the result as they go.
constexpr std::size_t kResultUnits = 0x10000;

SearchTreeForFileFunction MaybeLoadSearch() {
    HMODULE library = LoadLibraryExW(L"dbghelp.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (library == nullptr)
        return nullptr;
    return reinterpret_cast<SearchTreeForFileFunction>(
        reinterpret_cast<void*>(GetProcAddress(library, "SearchTreeForFileW")));
}

// Shared with the thread, so that either may end first.
struct Task {
    std::wstring root, fileName, found = {};
};

void Run(const Task& task, std::wstring& found) {
    // The library may be used by one thread at a time.
    static std::mutex oneAtATime;
    const std::lock_guard<std::mutex> lock(oneAtATime);
    const SearchTreeForFileFunction search = MaybeLoadSearch();
    std::vector<wchar_t> result(kResultUnits);
    if (search != nullptr && search(task.root.c_str(), task.fileName.c_str(), result.data()))
        found = result.data();
}

}  // namespace

std::optional<std::string> FindBelowWithSystemSearch(const std::string& root,
                                                     const std::string& fileName,
                                                     const std::function<bool()>& keepOn) {
    const auto task = std::make_shared<Task>(Wide(root), Wide(fileName));
    if (!RunAside([task] { Run(*task, task->found); }, keepOn))
        return std::nullopt;
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
