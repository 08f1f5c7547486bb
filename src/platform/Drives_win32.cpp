#include "platform/Drives_win32.h"

#include <windows.h>

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
