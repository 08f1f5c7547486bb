#include "ui/FindDialog_win32.h"

#include "platform/Wide_win32.h"
#include "resource.h"

namespace tobbin {
namespace {

// The middle of the screen that the owner is on.
void Center(HWND dialog, HWND owner) {
    MONITORINFO screen = {};
    screen.cbSize = sizeof(screen);
    GetMonitorInfoW(MonitorFromWindow(owner, MONITOR_DEFAULTTOPRIMARY), &screen);
    RECT own = {};
    GetWindowRect(dialog, &own);
    const RECT& all = screen.rcMonitor;
    SetWindowPos(dialog, nullptr, (all.left + all.right - (own.right - own.left)) / 2,
                 (all.top + all.bottom - (own.bottom - own.top)) / 2, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

void FindDialog::Show(HWND owner) {
    RegisterDialogClass(kClassName);
    m_find.Load();
    ShowModal(owner, IDD_FIND);
    m_find.Unload();
}

bool FindDialog::OnCommand(int control, int notification) {
    if (control == IDC_FIND_COMMAND1)
        Find();
    else if (control == IDC_FIND_TEXT1 && notification == EN_CHANGE)
        m_find.Text1_Change();
    else
        return DialogBase::OnCommand(control, notification);
    return true;
}

HWND FindDialog::OnLoad() {
    m_icons.Show(Handle(), IDI_TOBBIN);
    Center(Handle(), GetParent(Handle()));
    m_cancel.Attach(Item(IDCANCEL));
    SetDlgItemTextW(Handle(), IDC_FIND_TEXT1, Wide(m_find.LastText()).c_str());
    return Item(IDC_FIND_TEXT1);  // which selects the text
}

// With the focus it would take Enter for itself.
LRESULT FindDialog::OnCancelMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const auto* const key = reinterpret_cast<const MSG*>(lParam);
    if (message == WM_GETDLGCODE && key != nullptr && key->message == WM_KEYDOWN &&
        key->wParam == VK_RETURN)
        return DLGC_WANTMESSAGE;
    if (message == WM_KEYDOWN && wParam == VK_RETURN) {
        SendMessageW(Handle(), WM_COMMAND, MAKEWPARAM(IDC_FIND_COMMAND1, BN_CLICKED), 0);
        return 0;
    }
    return m_cancel.Default(message, wParam, lParam);
}

void FindDialog::Find() {
    const HWND box = Item(IDC_FIND_TEXT1);
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(box)) + 1, L'\0');
    text.resize(
        static_cast<std::size_t>(GetWindowTextW(box, text.data(), static_cast<int>(text.size()))));
    m_find.Command1_Click(Utf8(text));
    MakeWay();
}

// Off the song that was found: below it or, without room there, above it.
void FindDialog::MakeWay() {
    const RECT hit = m_placeOfHit();
    RECT own = {};
    RECT common = {};
    GetWindowRect(Handle(), &own);
    if (!IntersectRect(&common, &own, &hit))
        return;
    MONITORINFO screen = {};
    screen.cbSize = sizeof(screen);
    GetMonitorInfoW(MonitorFromRect(&hit, MONITOR_DEFAULTTONEAREST), &screen);
    const int height = own.bottom - own.top;
    const int gap = hit.bottom - hit.top;
    const int below = hit.bottom + gap;
    const int top = below + height <= screen.rcWork.bottom ? below : hit.top - gap - height;
    SetWindowPos(Handle(), nullptr, own.left, top, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace tobbin
