#include "platform/Wide_win32.h"

#include <windows.h>

#include <vector>

#include "util/Utf.h"

namespace tobbin {
namespace {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

bool IsSeparator(wchar_t c) {
    return c == L'\\' || c == L'/';
}

bool IsDriveLetter(wchar_t c) {
    return (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z');
}

std::wstring FullPath(const std::wstring& path) {
    std::wstring full(path.size() + 64, L'\0');
    for (;;) {
        const DWORD length =
            GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
        if (length == 0)
            return path;
        const bool fits = length < full.size();
        full.resize(length);
        if (fits)
            return full;
    }
}

// The parts of a path with "." and ".." worked out; the first `fixed` parts are the root's.
std::vector<std::wstring_view> Parts(std::wstring_view path, std::size_t fixed) {
    std::vector<std::wstring_view> parts;
    for (std::size_t begin = 0; begin < path.size();) {
        std::size_t end = begin;
        while (end < path.size() && !IsSeparator(path[end]))
            ++end;
        const std::wstring_view part = path.substr(begin, end - begin);
        if (part == L"..") {
            if (parts.size() > fixed)
                parts.pop_back();
        } else if (!part.empty() && part != L".") {
            parts.push_back(part);
        }
        begin = end + 1;
    }
    return parts;
}

}  // namespace

std::wstring Wide(std::string_view text) {
    const std::u16string units = Utf8ToUtf16(text);
    return {units.begin(), units.end()};
}

std::string Utf8(std::wstring_view text) {
    return Utf16ToUtf8(std::u16string(text.begin(), text.end()));
}

std::wstring LongPath(std::string_view path) {
    std::wstring wide = Wide(path);
    if (wide.starts_with(L"\\\\?\\") || wide.starts_with(L"\\\\.\\"))
        return wide;
    const auto isNetwork = [&] {
        return wide.size() > 2 && IsSeparator(wide[0]) && IsSeparator(wide[1]);
    };
    const auto isOnDrive = [&] {
        return wide.size() >= 2 && IsDriveLetter(wide[0]) && wide[1] == L':' &&
               (wide.size() == 2 || IsSeparator(wide[2]));
    };
    if (!isNetwork() && !isOnDrive())
        wide = FullPath(wide);
    if (!isNetwork() && !isOnDrive())
        return wide;  // nothing that could be made absolute: the system will refuse it

    const bool network = isNetwork();
    const std::size_t rootParts = network ? 2 : 1;
    const std::vector<std::wstring_view> parts = Parts(wide, rootParts);
    std::wstring longPath = network ? L"\\\\?\\UNC" : L"\\\\?";
    for (const std::wstring_view part : parts)
        longPath.append(L"\\").append(part);
    if (parts.size() <= rootParts)
        longPath += L'\\';
    return longPath;
}

std::string WindowText(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return Utf8(text);
}

}  // namespace tobbin
