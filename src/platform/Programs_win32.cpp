#include "platform/Programs_win32.h"

#include <windows.h>

#include <shellapi.h>

#include "platform/RegisteredPrograms_win32.h"
#include "platform/UniqueHandle_win32.h"
#include "platform/Wide_win32.h"
#include "util/Text.h"

namespace tobbin {
namespace {

constexpr DWORD kElevationRequired = 740;  // The compiler's headers lack it.

bool IsFullPath(const std::string& path) {
    const bool onDrive = path.size() > 3 && path[1] == ':' && path[2] == '\\';
    return (onDrive || path.starts_with("\\\\")) && path.find('"') == std::string::npos;
}

// `verb` null is what a double click does.
bool ShellStart(const wchar_t* verb, const std::wstring& file, const std::wstring& arguments,
                const std::wstring& folder, int show) {
    SHELLEXECUTEINFOW start = {};
    start.cbSize = sizeof(start);
    start.fMask = SEE_MASK_NOASYNC | SEE_MASK_FLAG_NO_UI;
    start.lpVerb = verb;
    start.lpFile = file.c_str();
    start.lpParameters = arguments.c_str();
    start.lpDirectory = folder.c_str();
    start.nShow = show;
    return ShellExecuteExW(&start) != FALSE;
}

}  // namespace

bool SystemPrograms::Start(const std::string& programPath, const std::string& arguments,
                           ShowProgram show) {
    if (!IsFullPath(programPath))
        return false;
    const std::wstring program = Wide(programPath);
    const std::wstring wideArguments = Wide(arguments);
    const std::wstring folder = Wide(FolderOfPath(programPath));
    std::wstring commandLine = L"\"" + program + L"\"";
    if (!arguments.empty())
        commandLine += L" " + wideArguments;

    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = show == ShowProgram::Normal ? SW_SHOWNORMAL : SW_SHOWMINNOACTIVE;
    PROCESS_INFORMATION process = {};
    // The default error mode: the program must not inherit that ours shows no error boxes.
    if (!CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE,
                        CREATE_DEFAULT_ERROR_MODE, nullptr, folder.c_str(), &startup, &process))
        return GetLastError() == kElevationRequired && show == ShowProgram::Normal &&
               ShellStart(L"runas", program, wideArguments, folder, startup.wShowWindow);
    UniqueKernelObject(process.hThread).Reset();
    UniqueKernelObject(process.hProcess).Reset();
    return true;
}

std::optional<std::string> SystemPrograms::MaybeRegistered(const std::string& fileName) {
    return MaybeRegisteredProgram(fileName);
}

bool SystemPrograms::Open(const std::string& documentPath) {
    return IsFullPath(documentPath) && ShellStart(nullptr, Wide(documentPath), {},
                                                  Wide(FolderOfPath(documentPath)), SW_SHOWNORMAL);
}

}  // namespace tobbin
