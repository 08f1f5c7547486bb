#pragma once

#include <windows.h>

#include "platform/WindowBase_win32.h"

namespace tobbin {

// A modal dialog of the program's own, made from a resource.
class DialogBase : public WindowBase {
 public:
    // Shows the dialog and waits for its end. Returns the number of the command that ended it; -1
    // when it could not be shown.
    INT_PTR ShowModal(HWND owner, int resource);

 protected:
    // A message of the dialog, from WM_INITDIALOG on. Returns whether it was handled.
    LRESULT HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT Default(UINT, WPARAM, LPARAM) final { return FALSE; }

    // Fills the dialog. Returns the control that gets the focus; null leaves that to the system.
    virtual HWND OnLoad() { return nullptr; }

    // A command, such as a click. Returns whether it was handled. The one here ends the dialog on
    // OK and Cancel.
    virtual bool OnCommand(int control, int notification);

 private:
    static INT_PTR CALLBACK Thunk(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
};

// Makes a window class by whose name a dialog's template can ask for a dialog of that name. Again
// is harmless.
void RegisterDialogClass(const wchar_t* name);

}  // namespace tobbin
