#include "shell/TipDialog_win32.h"

#include <algorithm>

#include "platform/ShownText_win32.h"
#include "platform/Wide_win32.h"
#include "resource.h"

namespace tobbin {

void TipDialog::Show(HWND owner) {
    if (!m_tips.MayOpen())
        return;
    RegisterDialogClass(L"frmTip");
    ShowModal(owner, IDD_TIP);
}

HWND TipDialog::OnLoad() {
    m_tips.Load(*this);
    return Item(IDOK);
}

bool TipDialog::OnCommand(int control, int notification) {
    if (control == IDC_NEXT_TIP)
        m_tips.OnNextTip(*this);
    else if (control == IDC_TIPS_AT_STARTUP)
        m_tips.OnTipsAtStartUpClicked(IsDlgButtonChecked(Handle(), IDC_TIPS_AT_STARTUP) ==
                                      BST_CHECKED);
    else
        return DialogBase::OnCommand(control, notification);
    return true;
}

void TipDialog::ShowTip(const std::string& text) {
    const std::wstring wide = WideShown(text, ShownIn::Box);
    MakeRoomFor(wide);
    SetDlgItemTextW(Handle(), IDC_TIP_TEXT, wide.c_str());
}

// Grows for a text that the window has no room for, as far as the screen lets it; never shrinks, so
// that the button for the next tip mostly stays where it is.
void TipDialog::MakeRoomFor(const std::wstring& text) {
    const HWND label = Item(IDC_TIP_TEXT);
    RECT place = {};
    RECT window = {};
    GetClientRect(label, &place);
    GetWindowRect(Handle(), &window);
    MONITORINFO screen = {};
    screen.cbSize = sizeof(screen);
    GetMonitorInfoW(MonitorFromWindow(Handle(), MONITOR_DEFAULTTONEAREST), &screen);
    RECT wanted = place;
    const HDC dc = GetDC(label);
    const HGDIOBJ old =
        SelectObject(dc, reinterpret_cast<HFONT>(SendMessageW(label, WM_GETFONT, 0, 0)));
    DrawTextW(dc, text.c_str(), -1, &wanted, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX);
    SelectObject(dc, old);
    ReleaseDC(label, dc);
    const int room = (screen.rcWork.bottom - screen.rcWork.top) - (window.bottom - window.top);
    const int more = std::min<int>(wanted.bottom - place.bottom, room);
    if (more <= 0)
        return;
    const UINT keep = SWP_NOZORDER | SWP_NOACTIVATE;
    SetWindowPos(label, nullptr, 0, 0, place.right, place.bottom + more, keep | SWP_NOMOVE);
    for (const int control : {IDC_TIPS_AT_STARTUP, IDC_NEXT_TIP, static_cast<int>(IDOK)}) {
        RECT at = {};
        GetWindowRect(Item(control), &at);
        MapWindowPoints(nullptr, Handle(), reinterpret_cast<POINT*>(&at), 2);
        SetWindowPos(Item(control), nullptr, at.left, at.top + more, 0, 0, keep | SWP_NOSIZE);
    }
    SetWindowPos(Handle(), nullptr, window.left,
                 std::max<int>(window.top - more / 2, screen.rcWork.top),
                 window.right - window.left, window.bottom - window.top + more, keep);
}

void TipDialog::TickTipsAtStartUp(bool ticked) {
    CheckDlgButton(Handle(), IDC_TIPS_AT_STARTUP, ticked ? BST_CHECKED : BST_UNCHECKED);
}

}  // namespace tobbin
