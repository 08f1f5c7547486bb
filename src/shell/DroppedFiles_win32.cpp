#include "shell/DroppedFiles_win32.h"

#include "platform/Wide_win32.h"

namespace tobbin {

std::vector<std::string> TakeDroppedFiles(HDROP drop) {
    std::vector<std::string> paths;
    const UINT count = DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0);
    for (UINT i = 0; i < count; ++i) {
        std::wstring path(DragQueryFileW(drop, i, nullptr, 0) + 1, L'\0');
        path.resize(DragQueryFileW(drop, i, path.data(), static_cast<UINT>(path.size())));
        paths.push_back(Utf8(path));
    }
    DragFinish(drop);
    return paths;
}

}  // namespace tobbin
