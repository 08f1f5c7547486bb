#include "platform/FileDrop_win32.h"

#include <shlobj.h>

#include <algorithm>
#include <climits>
#include <cstring>

#include "platform/Wide_win32.h"

namespace tobbin {
namespace {

std::wstring FromSystemPage(std::string_view bytes) {
    const auto count = static_cast<int>(std::min<std::size_t>(bytes.size(), INT_MAX));
    std::wstring text(
        static_cast<std::size_t>(MultiByteToWideChar(CP_ACP, 0, bytes.data(), count, nullptr, 0)),
        L'\0');
    MultiByteToWideChar(CP_ACP, 0, bytes.data(), count, text.data(), static_cast<int>(text.size()));
    return text;
}

}  // namespace

// The data comes from any program, so that nothing in it is taken at its word: the system's own
// function would read on where the last name has no end.
std::vector<std::string> FilesOf(HDROP drop) {
    std::vector<std::string> paths;
    DROPFILES head = {};
    const std::size_t size = GlobalSize(drop);
    const auto* const data = static_cast<const char*>(GlobalLock(drop));
    if (data != nullptr && size >= sizeof(head)) {
        std::memcpy(&head, data, sizeof(head));
        const std::size_t begin = std::min<std::size_t>(head.pFiles, size);
        std::wstring names((size - begin) / sizeof(wchar_t), L'\0');
        std::memcpy(names.data(), data + begin, names.size() * sizeof(wchar_t));
        if (!head.fWide)
            names = FromSystemPage({data + begin, size - begin});
        for (std::wstring_view rest = names; !rest.empty() && rest.front() != L'\0';) {
            const std::size_t end = std::min(rest.find(L'\0'), rest.size());
            paths.push_back(Utf8(rest.substr(0, end)));
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
    }
    if (data != nullptr)
        GlobalUnlock(drop);
    return paths;
}

HGLOBAL MakeMemory(const void* data, std::size_t size) {
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, size);
    if (memory == nullptr)
        return nullptr;
    std::memcpy(GlobalLock(memory), data, size);
    GlobalUnlock(memory);
    return memory;
}

HGLOBAL MakeFileDrop(const std::vector<std::string>& paths) {
    DROPFILES head = {};
    head.pFiles = sizeof(head);
    head.fWide = TRUE;
    std::wstring names;
    for (const std::string& path : paths)
        names += Wide(path) + L'\0';
    names += L'\0';
    std::string bytes(reinterpret_cast<const char*>(&head), sizeof(head));
    bytes.append(reinterpret_cast<const char*>(names.data()), names.size() * sizeof(wchar_t));
    return MakeMemory(bytes.data(), bytes.size());
}

HGLOBAL MakeUnicodeText(std::string_view text) {
    const std::wstring wide = Wide(text);
    return MakeMemory(wide.c_str(), (wide.size() + 1) * sizeof(wchar_t));
}

std::vector<std::string> TakeDroppedFiles(HDROP drop) {
    std::vector<std::string> paths = FilesOf(drop);
    DragFinish(drop);
    return paths;
}

}  // namespace tobbin
