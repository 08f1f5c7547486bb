#include "platform/UserSettings_win32.h"

#include <windows.h>

#include "platform/Wide_win32.h"

namespace tobbin {

std::optional<std::string> RegistrySettings::MaybeRead(const std::string& key) {
    const std::wstring name = Wide(key);
    std::wstring value(64, L'\0');
    for (;;) {
        auto bytes = static_cast<DWORD>(value.size() * sizeof(wchar_t));
        const LSTATUS status = RegGetValueW(HKEY_CURRENT_USER, m_key.c_str(), name.c_str(),
                                            RRF_RT_REG_SZ, nullptr, value.data(), &bytes);
        if (status == ERROR_SUCCESS)  // The number of bytes counts the terminator.
            return Utf8(std::wstring_view(value).substr(0, bytes / sizeof(wchar_t) - 1));
        if (status != ERROR_MORE_DATA)
            return std::nullopt;
        value.resize(bytes / sizeof(wchar_t) + 1);
    }
}

bool RegistrySettings::Write(const std::string& key, const std::string& value) {
    const std::wstring wide = Wide(value);
    const auto bytes = static_cast<DWORD>((wide.size() + 1) * sizeof(wchar_t));
    return RegSetKeyValueW(HKEY_CURRENT_USER, m_key.c_str(), Wide(key).c_str(), REG_SZ,
                           wide.c_str(), bytes) == ERROR_SUCCESS;
}

}  // namespace tobbin
