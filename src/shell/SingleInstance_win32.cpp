#include "shell/SingleInstance_win32.h"

#include <algorithm>

#include "platform/SystemText_win32.h"
#include "platform/Wide_win32.h"
#include "util/Text.h"

namespace tobbin {
namespace {

constexpr ULONG_PTR kFilesMessage = 0x546F6266;  // "Tobf"
// Milliseconds.
constexpr ULONGLONG kPatience = 30'000;
constexpr DWORD kTryPause = 20;
constexpr UINT kAnswerLimit = 1'000;
constexpr std::size_t kMostBytes = 1 << 20;

struct Search {
    const std::wstring& property;
    HWND found = nullptr;
};

BOOL CALLBACK LookAtWindow(HWND window, LPARAM parameter) {
    auto& search = *reinterpret_cast<Search*>(parameter);
    if (GetPropW(window, search.property.c_str()) == nullptr)
        return TRUE;
    search.found = window;
    return FALSE;
}

// The name under which programs of one folder know each other: a mutex and a window property, whose
// names may not hold a "\" (nor the property's more than 255 units).
std::wstring NameFor(const std::string& applicationFolder) {
    std::wstring folder = Wide(WindowsText().ToLower(applicationFolder));
    std::ranges::replace(folder, L'\\', L'/');
    if (folder.size() > 200)
        folder.erase(0, folder.size() - 200);
    return L"Tobbin:" + folder;
}

}  // namespace

SingleInstance::SingleInstance(const std::string& applicationFolder)
    : m_name(NameFor(applicationFolder)) {
    m_mutex = UniqueKernelObject(CreateMutexW(nullptr, FALSE, (L"Local\\" + m_name).c_str()));
    m_first = TakesPlace(0);
}

// The mutex is owned by the first program's thread, so that the system gives it to the next one in
// the moment in which that ends, however it does.
bool SingleInstance::TakesPlace(DWORD milliseconds) const {
    if (!m_mutex)
        return false;
    const DWORD result = WaitForSingleObject(m_mutex.Get(), milliseconds);
    return result == WAIT_OBJECT_0 || result == WAIT_ABANDONED;
}

void SingleInstance::MarkWindow(HWND window) const {
    SetPropW(window, m_name.c_str(), reinterpret_cast<HANDLE>(1));
}

HWND SingleInstance::MaybeFirstWindow() const {
    Search search{m_name};
    EnumWindows(&LookAtWindow, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

SingleInstance::Outcome SingleInstance::HandOver(const std::vector<std::string>& files) {
    std::string text;
    for (const std::string& file : files)
        text += file + "\n";
    COPYDATASTRUCT data = {};
    data.dwData = kFilesMessage;
    data.cbData = static_cast<DWORD>(text.size());
    data.lpData = text.data();
    const ULONGLONG end = GetTickCount64() + kPatience;
    while (GetTickCount64() < end) {
        if (TakesPlace(kTryPause)) {
            m_first = true;
            return Outcome::IsFirstNow;
        }
        const HWND window = MaybeFirstWindow();
        if (window == nullptr && !m_mutex)
            return Outcome::Unknown;
        if (window == nullptr)
            continue;
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        AllowSetForegroundWindow(process);
        DWORD_PTR answer = 0;
        if (SendMessageTimeoutW(window, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data),
                                SMTO_NORMAL, kAnswerLimit, &answer) != 0)
            return Outcome::HandedOver;
        if (GetLastError() == ERROR_ACCESS_DENIED)
            return Outcome::NoAccess;
        if (!m_mutex)
            Sleep(kTryPause);
    }
    return Outcome::NoAnswer;
}

std::optional<std::vector<std::string>> SingleInstance::MaybeFiles(const COPYDATASTRUCT& data) {
    if (data.dwData != kFilesMessage || data.cbData > kMostBytes)
        return std::nullopt;
    const std::string_view text(static_cast<const char*>(data.lpData),
                                data.lpData != nullptr ? data.cbData : 0);
    std::vector<std::string> files;
    for (const std::string_view line : SplitLines(text))
        files.emplace_back(line);
    return files;
}

}  // namespace tobbin
