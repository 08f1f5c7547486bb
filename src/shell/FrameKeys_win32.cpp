#include "shell/FrameKeys_win32.h"

#include <commctrl.h>

#include <algorithm>
#include <iterator>
#include <vector>

#include "ui/ExplorerControl_win32.h"

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

// The tree control of Wine 8 keeps Alt+F4 and Shift+F10 from the windows above it.
bool PassSystemKey(const MSG& message) {
    if (message.message != WM_SYSKEYDOWN || !IsOfClass(message.hwnd, WC_TREEVIEWW))
        return false;
    TranslateMessage(&message);
    DefWindowProcW(message.hwnd, message.message, message.wParam, message.lParam);
    return true;
}

// The panes to go through with F6: the two of the jukebox window that was active last and the
// player panel.
std::vector<HWND> PanesIn(HWND mdiClient, HWND maybePanel) {
    std::vector<HWND> panes;
    for (HWND child = GetWindow(mdiClient, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        if (!IsWindowVisible(child) || IsIconic(child))
            continue;
        if (const HWND explorer = FindWindowExW(child, nullptr, ExplorerControl::kName, nullptr);
            explorer != nullptr && panes.empty())
            panes = {GetDlgItem(explorer, ExplorerControl::kTree),
                     GetDlgItem(explorer, ExplorerControl::kList)};
    }
    if (maybePanel != nullptr && !IsIconic(maybePanel))
        panes.push_back(maybePanel);
    return panes;
}

bool SwitchPane(HWND mdiClient, HWND maybePanel, const MSG& message) {
    if (message.message != WM_KEYDOWN || message.wParam != VK_F6 || GetKeyState(VK_CONTROL) < 0)
        return false;
    const std::vector<HWND> panes = PanesIn(mdiClient, maybePanel);
    if (panes.empty())
        return false;
    const HWND focus = GetFocus();
    const auto found = std::ranges::find_if(
        panes, [&](HWND pane) { return pane == focus || IsChild(pane, focus); });
    const auto here = static_cast<std::size_t>(found - panes.begin());
    const std::size_t step = GetKeyState(VK_SHIFT) < 0 ? panes.size() - 1 : 1;
    const HWND next = panes[found == panes.end() ? 0 : (here + step) % panes.size()];
    if (next == maybePanel) {
        SetFocus(next);
        return true;
    }
    HWND child = next;
    while (GetParent(child) != mdiClient)
        child = GetParent(child);
    SendMessageW(mdiClient, WM_MDIACTIVATE, reinterpret_cast<WPARAM>(child), 0);
    SetFocus(next);
    return true;
}

}  // namespace

bool IsEscKey(const MSG& message) {
    return message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE && !IsEditing();
}

bool TranslateFrameKeys(HWND frame, HWND mdiClient, HWND maybePanel, HACCEL keys, MSG& message) {
    if (TranslateMDISysAccel(mdiClient, &message))
        return true;
    if (message.hwnd != frame && !IsChild(frame, message.hwnd))
        return false;
    if (IsEditing())
        return PassSystemKey(message);
    if (SwitchPane(mdiClient, maybePanel, message))
        return true;
    if (TranslateAcceleratorW(frame, keys, &message) == 0)
        return PassSystemKey(message);
    // Wine 8 opens the menu when Alt goes up and it has seen no other key.
    if (message.message == WM_SYSKEYDOWN)
        DefWindowProcW(frame, message.message, message.wParam, message.lParam);
    return true;
}

}  // namespace tobbin
