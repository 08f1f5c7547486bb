#include "shell/TipDialog_win32.h"

#include "platform/Wide_win32.h"
#include "resource.h"

namespace tobbin {

void TipDialog::Show(HWND owner) {
    if (!m_tips.MayOpen())
        return;
    RegisterDialogClass(L"frmTip");
    ShowModal(owner, IDD_TIP);
}

INT_PTR TipDialog::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            m_tips.Load(*this);
            SetFocus(Item(IDOK));
            return FALSE;  // the focus is set
        case WM_COMMAND:
            if (LOWORD(wParam) == IDC_NEXT_TIP)
                m_tips.OnNextTip(*this);
            else if (LOWORD(wParam) == IDC_TIPS_AT_STARTUP)
                m_tips.OnTipsAtStartUpClicked(IsDlgButtonChecked(Handle(), IDC_TIPS_AT_STARTUP) ==
                                              BST_CHECKED);
            else
                break;
            return TRUE;
        default:
            break;
    }
    return DialogBase::HandleMessage(message, wParam, lParam);
}

void TipDialog::ShowTip(const std::string& text) {
    SetDlgItemTextW(Handle(), IDC_TIP_TEXT, Wide(text).c_str());
}

void TipDialog::TickTipsAtStartUp(bool ticked) {
    CheckDlgButton(Handle(), IDC_TIPS_AT_STARTUP, ticked ? BST_CHECKED : BST_UNCHECKED);
}

}  // namespace tobbin
