#include "shell/AboutDialog_win32.h"

#include <commctrl.h>

#include "platform/Wide_win32.h"
#include "resource.h"

namespace tobbin {

void AboutDialog::Show(HWND owner) {
    ShowModal(owner, IDD_ABOUT);
}

HWND AboutDialog::OnLoad() {
    SetDlgItemTextW(Handle(), IDC_ABOUT_FOLDER, Wide(m_dataFolder).c_str());
    return Item(IDOK);
}

LRESULT AboutDialog::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NOTIFY) {
        const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
        if (header.idFrom == IDC_ABOUT_OPEN &&
            (header.code == NM_CLICK || header.code == NM_RETURN))
            m_programs.Open(m_dataFolder);
    }
    return DialogBase::HandleMessage(message, wParam, lParam);
}

}  // namespace tobbin
