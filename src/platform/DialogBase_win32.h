#pragma once

#include <windows.h>

namespace tobbin {

// A dialog of the program's own, made from a resource or from a template in memory. The same
// promises about ownership and exceptions as WindowBase.
class DialogBase {
 public:
    DialogBase() = default;
    DialogBase(const DialogBase&) = delete;
    DialogBase& operator=(const DialogBase&) = delete;
    virtual ~DialogBase();

    HWND Handle() const { return m_handle; }

    // Shows the dialog and waits for its end. Returns what ended it: the command's number, or the
    // value given to End; -1 when it could not be shown.
    INT_PTR ShowModal(HWND owner, int resource);
    INT_PTR ShowModal(HWND owner, const DLGTEMPLATE& dialogTemplate);

    // Makes a dialog that does not wait. The message loop must offer it its keys
    // (IsDialogMessageW). Returns whether it is there.
    bool CreateModeless(HWND owner, int resource);
    bool CreateModeless(HWND owner, const DLGTEMPLATE& dialogTemplate);

    // Ends a modal dialog with a result, destroys a modeless one.
    void End(INT_PTR result);

 protected:
    // A message of the dialog, from WM_INITDIALOG on. Returns whether it was handled; a message
    // with an answer of its own gives it by Answer. The base class ends the dialog on OK and
    // Cancel and leaves everything else to the system.
    virtual INT_PTR HandleMessage(UINT message, WPARAM wParam, LPARAM lParam);

    // Sets a handled message's answer: `return Answer(result)`.
    INT_PTR Answer(LRESULT result);

    HWND Item(int id) const { return GetDlgItem(m_handle, id); }

 private:
    static INT_PTR CALLBACK Thunk(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND m_handle = nullptr;
    bool m_modal = false;
};

// Makes a window class by whose name a dialog's template can ask for a dialog of that name. Again
// is harmless.
void RegisterDialogClass(const wchar_t* name);

}  // namespace tobbin
