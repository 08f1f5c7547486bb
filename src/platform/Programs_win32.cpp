#include "platform/Programs_win32.h"

#include <windows.h>

#include <shellapi.h>
#include <shlobj.h>

#include <cstddef>
#include <vector>

#include "platform/ComPtr_win32.h"
#include "platform/RegisteredPrograms_win32.h"
#include "platform/UniqueHandle_win32.h"
#include "platform/Wide_win32.h"
#include "util/Text.h"

namespace tobbin {
namespace {

constexpr DWORD kElevationRequired = 740;  // The compiler's headers lack it.

using UniqueAttributes =
    UniqueHandle<NullHandleTraits<LPPROC_THREAD_ATTRIBUTE_LIST, &::DeleteProcThreadAttributeList>>;

bool IsElevated() {
    HANDLE handle = nullptr;
    OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &handle);
    const UniqueKernelObject token(handle);
    TOKEN_ELEVATION_TYPE type = TokenElevationTypeDefault;
    DWORD bytes = 0;
    return GetTokenInformation(token.Get(), TokenElevationType, &type, sizeof(type), &bytes) &&
           type == TokenElevationTypeFull;
}

// Makes the desktop the parent of a program that is to be started, so that it gets the desktop's
// rights, not those of an administrator that this program may have.
class DesktopAsParent {
 public:
    // False when the system refuses. Without a desktop there are no other rights to be had.
    bool AddTo(STARTUPINFOEXW& startup, DWORD& flags) {
        const HWND shell = GetShellWindow();
        if (shell == nullptr || !IsElevated())
            return true;
        DWORD process = 0;
        GetWindowThreadProcessId(shell, &process);
        m_parent = UniqueKernelObject(OpenProcess(PROCESS_CREATE_PROCESS, FALSE, process));
        m_handle = m_parent.Get();
        SIZE_T bytes = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &bytes);
        m_room.resize(bytes);
        const auto list = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(m_room.data());
        if (!m_parent || !InitializeProcThreadAttributeList(list, 1, 0, &bytes))
            return false;
        m_attributes.Reset(list);
        startup.lpAttributeList = list;
        startup.StartupInfo.cb = sizeof(startup);
        flags |= EXTENDED_STARTUPINFO_PRESENT;
        return UpdateProcThreadAttribute(list, 0, PROC_THREAD_ATTRIBUTE_PARENT_PROCESS, &m_handle,
                                         sizeof(m_handle), nullptr, nullptr) != FALSE;
    }

 private:
    UniqueKernelObject m_parent;
    HANDLE m_handle = nullptr;  // has to outlive the list
    std::vector<std::byte> m_room;
    UniqueAttributes m_attributes;
};

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

    STARTUPINFOEXW startup = {};
    startup.StartupInfo.cb = sizeof(startup.StartupInfo);
    startup.StartupInfo.dwFlags = STARTF_USESHOWWINDOW;
    startup.StartupInfo.wShowWindow =
        show == ShowProgram::Normal ? SW_SHOWNORMAL : SW_SHOWMINNOACTIVE;
    // The default error mode: the program must not inherit that ours shows no error boxes.
    DWORD flags = CREATE_DEFAULT_ERROR_MODE;
    DesktopAsParent parent;
    if (show != ShowProgram::Normal && !parent.AddTo(startup, flags))
        return false;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, flags,
                        nullptr, folder.c_str(), &startup.StartupInfo, &process))
        return GetLastError() == kElevationRequired && show == ShowProgram::Normal &&
               ShellStart(L"runas", program, wideArguments, folder,
                          startup.StartupInfo.wShowWindow);
    UniqueKernelObject(process.hThread).Reset();
    UniqueKernelObject(process.hProcess).Reset();
    return true;
}

std::optional<std::string> SystemPrograms::MaybeRegistered(const std::string& fileName) {
    return MaybeRegisteredProgram(fileName);
}

std::vector<std::string> SystemPrograms::InstallFolders() {
    std::vector<std::string> folders;
    for (const KNOWNFOLDERID& id :
         {FOLDERID_ProgramFiles, FOLDERID_ProgramFilesX64, FOLDERID_ProgramFilesX86}) {
        wchar_t* path = nullptr;
        const HRESULT result = SHGetKnownFolderPath(id, 0, nullptr, &path);
        const ComText owned(path);
        if (SUCCEEDED(result))
            folders.push_back(FolderWithSeparator(Utf8(path)));
    }
    return folders;
}

bool SystemPrograms::Open(const std::string& documentPath) {
    return IsFullPath(documentPath) && ShellStart(nullptr, Wide(documentPath), {},
                                                  Wide(FolderOfPath(documentPath)), SW_SHOWNORMAL);
}

}  // namespace tobbin
