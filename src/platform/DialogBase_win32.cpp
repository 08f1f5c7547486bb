#include "platform/DialogBase_win32.h"

#include "platform/DialogFont_win32.h"
#include "util/Check.h"

namespace tobbin {

INT_PTR DialogBase::ShowModal(HWND owner, int resource) {
    CHECK(Handle() == nullptr);
    const std::vector<DWORD> look = TemplateWithMessageFont(resource);
    CHECK(!look.empty());
    return DialogBoxIndirectParamW(GetModuleHandleW(nullptr),
                                   reinterpret_cast<const DLGTEMPLATE*>(look.data()), owner, &Thunk,
                                   reinterpret_cast<LPARAM>(static_cast<WindowBase*>(this)));
}

LRESULT DialogBase::HandleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG: {
            const HWND focus = OnLoad();
            if (focus != nullptr)  // with a button, Enter becomes its key
                SendMessageW(Handle(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(focus), TRUE);
            return focus == nullptr;
        }
        case WM_COMMAND:
            return OnCommand(LOWORD(wParam), HIWORD(wParam));
        default:
            return WindowBase::HandleMessage(message, wParam, lParam);
    }
}

bool DialogBase::OnCommand(int control, int /*notification*/) {
    if (control != IDOK && control != IDCANCEL)
        return false;
    EndDialog(Handle(), control);
    return true;
}

INT_PTR CALLBACK DialogBase::Thunk(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const bool isNew = GetWindowLongPtrW(window, GWLP_USERDATA) == 0;
    if (message == WM_INITDIALOG && !isNew)
        return FALSE;  // another program's
    WindowBase* const creator =
        message == WM_INITDIALOG ? reinterpret_cast<WindowBase*>(lParam) : nullptr;
    auto* const self = static_cast<DialogBase*>(MaybeOwner(window, creator));
    return self != nullptr ? self->TakeMessage(message, wParam, lParam) : FALSE;
}

void RegisterDialogClass(const wchar_t* name) {
    WNDCLASSEXW dialog = {};
    dialog.cbSize = sizeof(dialog);
    GetClassInfoExW(nullptr, WC_DIALOG, &dialog);
    dialog.lpszClassName = name;
    dialog.hInstance = GetModuleHandleW(nullptr);
    dialog.style &= ~static_cast<UINT>(CS_GLOBALCLASS);
    RegisterClassExW(&dialog);
}

}  // namespace tobbin
