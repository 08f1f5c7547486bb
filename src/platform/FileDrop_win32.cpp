#include "platform/FileDrop_win32.h"

#include <shlobj.h>

#include <cstring>

#include "platform/Wide_win32.h"

namespace tobbin {

std::vector<std::string> FilesOf(HDROP drop) {
    std::vector<std::string> paths;
    const UINT count = DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
    paths.reserve(count);
    for (UINT i = 0; i < count; ++i) {
        std::wstring path(DragQueryFileW(drop, i, nullptr, 0) + 1, L'\0');
        path.resize(DragQueryFileW(drop, i, path.data(), static_cast<UINT>(path.size())));
        paths.push_back(Utf8(path));
    }
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
