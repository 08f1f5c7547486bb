#pragma once

#include <windows.h>

#include "platform/DialogBase_win32.h"
#include "platform/WindowIcons_win32.h"
#include "platform/WindowSubclass_win32.h"
#include "ui/frmFind.h"

namespace tobbin {

// The dialog of `frmFind`: the text box `Text1` and the buttons `Command1`, which finds, and
// `Command3`, which closes. Enter finds wherever the focus is.
class FindDialog : public DialogBase {
 public:
    static constexpr wchar_t kClassName[] = L"frmFind";

    explicit FindDialog(frmFind& find) : m_find(find) {}

    // Shows the dialog and waits for its end.
    void Show(HWND owner);

 protected:
    HWND OnLoad() override;
    bool OnCommand(int control, int notification) override;

 private:
    void Find();
    LRESULT OnCancelMessage(UINT message, WPARAM wParam, LPARAM lParam);

    frmFind& m_find;
    WindowIcons m_icons;
    WindowSubclass m_cancel{[this](UINT message, WPARAM wParam, LPARAM lParam) {
        return OnCancelMessage(message, wParam, lParam);
    }};
};

}  // namespace tobbin
