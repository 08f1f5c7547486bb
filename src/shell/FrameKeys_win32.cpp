#include "shell/FrameKeys_win32.h"

#include <commctrl.h>

#include <iterator>

namespace tobbin {
namespace {

bool IsOfClass(HWND window, const wchar_t* name) {
    wchar_t own[32] = L"";
    GetClassNameW(window, own, static_cast<int>(std::size(own)));
    return lstrcmpiW(own, name) == 0;
}

// Where a text is being edited, the keys for it are the edit control's.
bool IsEditing() {
    return IsOfClass(GetFocus(), WC_EDITW);
}

// The tree control of some systems keeps Alt+F4 and Shift+F10 from the windows above it.
bool PassSystemKey(const MSG& message) {
    if (message.message != WM_SYSKEYDOWN || !IsOfClass(message.hwnd, WC_TREEVIEWW))
        return false;
    TranslateMessage(&message);
    DefWindowProcW(message.hwnd, message.message, message.wParam, message.lParam);
    return true;
}

}  // namespace

bool IsEscKey(const MSG& message) {
    return message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE && !IsEditing();
}

bool TranslateFrameKeys(HWND frame, HWND mdiClient, HACCEL keys, MSG& message) {
    if (TranslateMDISysAccel(mdiClient, &message))
        return true;
    if (message.hwnd != frame && !IsChild(frame, message.hwnd))
        return false;
    if (IsEditing() || TranslateAcceleratorW(frame, keys, &message) == 0)
        return PassSystemKey(message);
    // Some systems open the menu when Alt goes up and they have seen no other key.
    if (message.message == WM_SYSKEYDOWN)
        DefWindowProcW(frame, message.message, message.wParam, message.lParam);
    return true;
}

}  // namespace tobbin
