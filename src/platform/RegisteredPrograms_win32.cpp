#include "platform/RegisteredPrograms_win32.h"

#include <windows.h>

#include "platform/Wide_win32.h"
#include "util/Text.h"

namespace tobbin {
namespace {

// Some installers write short names.
std::string InLongNames(const std::string& path) {
    wchar_t longPath[1024];
    const DWORD length = GetLongPathNameW(Wide(path).c_str(), longPath, 1024);
    return length == 0 || length >= 1024 ? path : Utf8({longPath, length});
}

// "C:\Player\player.exe" out of a text such as "\"C:\Player\player.exe\" \"%1\"" or
// "C:\Player\player.exe,0"; nothing when it is no full path of a program of that file name.
std::optional<std::string> MaybeProgramIn(const std::string& text, const std::string& fileName) {
    std::string path = text.substr(text.starts_with('"') ? 1 : 0);
    for (std::size_t at = 0; at + fileName.size() <= path.size(); ++at)
        if (EqualsIgnoringAsciiCase(path.substr(at, fileName.size()), fileName)) {
            path.resize(at + fileName.size());
            if (!RootOfPath(path).empty() &&
                EqualsIgnoringAsciiCase(FileNameOfPath(path), fileName))
                return InLongNames(path);
            break;
        }
    return std::nullopt;
}

// A text value, its environment variables replaced; empty without one.
std::string ValueOf(HKEY root, const std::wstring& key, const wchar_t* name) {
    wchar_t value[1024];
    DWORD bytes = sizeof(value);
    return RegGetValueW(root, key.c_str(), name, RRF_RT_REG_SZ, nullptr, value, &bytes) ==
                   ERROR_SUCCESS
               ? Utf8(value)
               : std::string();
}

std::optional<std::string> MaybeInstalled(HKEY root, const std::wstring& list,
                                          const std::string& fileName) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(root, list.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS)
        return std::nullopt;
    std::optional<std::string> found;
    wchar_t name[256];
    DWORD length = 256;
    for (DWORD i = 0; !found && RegEnumKeyExW(key, i, name, &length, nullptr, nullptr, nullptr,
                                              nullptr) == ERROR_SUCCESS;
         ++i, length = 256)
        found = MaybeProgramIn(ValueOf(key, name, L"DisplayIcon"), fileName);
    RegCloseKey(key);
    return found;
}

}  // namespace

std::optional<std::string> MaybeRegisteredProgram(const std::string& fileName) {
    const std::wstring name = Wide(fileName);
    std::optional<std::string> found;
    for (const HKEY root : {HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) {
        for (const std::wstring software : {L"Software\\", L"Software\\WOW6432Node\\"}) {
            const std::wstring windows = software + L"Microsoft\\Windows\\CurrentVersion\\";
            const std::wstring path = windows + L"App Paths\\" + name;
            const std::wstring opens =
                software + L"Classes\\Applications\\" + name + L"\\shell\\open\\command";
            if ((found = MaybeProgramIn(ValueOf(root, path, nullptr), fileName)) ||
                (found = MaybeProgramIn(ValueOf(root, opens, nullptr), fileName)) ||
                (found = MaybeInstalled(root, windows + L"Uninstall", fileName)))
                return found;
        }
    }
    return std::nullopt;
}

}  // namespace tobbin
