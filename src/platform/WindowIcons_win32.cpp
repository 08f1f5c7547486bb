#include "platform/WindowIcons_win32.h"

#include <utility>

namespace tobbin {

void WindowIcons::Show(HWND window, int resource) {
    const auto show = [&](WPARAM which, int measure, UniqueIcon& kept) {
        const int size = GetSystemMetricsForDpi(measure, GetDpiForWindow(window));
        UniqueIcon icon(static_cast<HICON>(LoadImageW(
            GetModuleHandleW(nullptr), MAKEINTRESOURCEW(resource), IMAGE_ICON, size, size, 0)));
        if (!icon)
            return;
        SendMessageW(window, WM_SETICON, which, reinterpret_cast<LPARAM>(icon.Get()));
        kept = std::move(icon);
    };
    show(ICON_BIG, SM_CXICON, m_large);
    show(ICON_SMALL, SM_CXSMICON, m_small);
}

}  // namespace tobbin
