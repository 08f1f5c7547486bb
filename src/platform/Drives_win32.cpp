#include "platform/Drives_win32.h"

#include <windows.h>

#include <algorithm>

#include "platform/Process_win32.h"
#include "platform/TreeSearch_win32.h"
#include "platform/Wide_win32.h"
#include "util/Text.h"

namespace tobbin {

std::vector<std::string> SystemDrives::Roots() {
    std::wstring list(GetLogicalDriveStringsW(0, nullptr), L'\0');
    const DWORD length = GetLogicalDriveStringsW(static_cast<DWORD>(list.size()), list.data());
    list.resize(length < list.size() ? length : 0);  // Longer: a drive came in between.
    std::vector<std::string> roots;
    for (std::size_t begin = 0; begin < list.size();) {
        const std::size_t end = list.find(L'\0', begin);
        roots.push_back(Utf8(std::wstring_view(list).substr(begin, end - begin)));
        begin = end == std::wstring::npos ? list.size() : end + 1;
    }
    return roots;
}

unsigned SystemDrives::Type(const std::string& root) {
    return GetDriveTypeW(Wide(root).c_str());
}

bool SystemDrives::IsReachable(const std::string& root) {
    // The root itself is asked. The volume's name would prove nothing: Wine 8 remembers that
    // of a drive that is away, and some network drives tell none.
    return GetFileAttributesW(Wide(root).c_str()) != INVALID_FILE_ATTRIBUTES ||
           GetLastError() == ERROR_ACCESS_DENIED;
}

// A letter that is connected is a name for "\\Device\\...\\;Z:0000000000012345\\host\\share"; one
// that is to be connected again stands in the registry with its "\\\\host\\share".
std::vector<std::string> SystemDrives::MappedHosts() {
    std::vector<std::string> hosts;
    const auto takeUpToSeparator = [&hosts](std::wstring_view text) {
        hosts.push_back(Utf8(text.substr(0, text.find(L'\\'))));
    };
    for (wchar_t letter = L'A'; letter <= L'Z'; ++letter) {
        wchar_t text[1024];
        DWORD bytes = sizeof(text);
        if (QueryDosDeviceW(std::wstring{letter, L':'}.c_str(), text, 1024) != 0) {
            const std::wstring_view device = text;
            const std::size_t mark = device.find(std::wstring{L';', letter, L':'});
            const std::size_t host = device.find(L'\\', std::min(mark, device.size()));
            if (host != std::wstring_view::npos)
                takeUpToSeparator(device.substr(host + 1));
        }
        if (RegGetValueW(HKEY_CURRENT_USER, (std::wstring(L"Network\\") + letter).c_str(),
                         L"RemotePath", RRF_RT_REG_SZ, nullptr, text, &bytes) == ERROR_SUCCESS &&
            std::wstring_view(text).starts_with(L"\\\\"))
            takeUpToSeparator(text + 2);
    }
    return hosts;
}

std::string SystemDrives::SystemRoot() {
    return RootOfPath(SystemFolder());
}

std::optional<std::uint64_t> SystemDrives::MaybeVolume(const std::string& root) {
    DWORD serial = 0;
    if (!GetVolumeInformationW(Wide(root).c_str(), nullptr, 0, &serial, nullptr, nullptr, nullptr,
                               0) ||
        serial == 0)
        return std::nullopt;
    return serial;
}

std::optional<std::string> SystemDrives::MaybeFindBelow(
    const std::string& root, const std::string& fileName,
    const std::function<bool(const std::string&)>& takes, const std::function<bool()>& keepOn) {
    return FindBelowWithSystemSearch(root, fileName, takes, keepOn);
}

}  // namespace tobbin
