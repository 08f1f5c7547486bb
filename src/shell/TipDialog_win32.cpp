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
    SetDlgItemTextW(Handle(), IDC_TIP_TEXT, Wide(text).c_str());
}

void TipDialog::TickTipsAtStartUp(bool ticked) {
    CheckDlgButton(Handle(), IDC_TIPS_AT_STARTUP, ticked ? BST_CHECKED : BST_UNCHECKED);
}

}  // namespace tobbin
