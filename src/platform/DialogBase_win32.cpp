#include "platform/DialogBase_win32.h"

#include "platform/WindowBase_win32.h"
#include "util/Check.h"

namespace tobbin {

DialogBase::~DialogBase() {
    if (m_handle != nullptr)
        DestroyWindow(m_handle);
}

INT_PTR DialogBase::ShowModal(HWND owner, int resource) {
    CHECK(m_handle == nullptr);
    m_modal = true;
    return DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(resource), owner, &Thunk,
                           reinterpret_cast<LPARAM>(this));
}

INT_PTR DialogBase::ShowModal(HWND owner, const DLGTEMPLATE& dialogTemplate) {
    CHECK(m_handle == nullptr);
    m_modal = true;
    return DialogBoxIndirectParamW(GetModuleHandleW(nullptr), &dialogTemplate, owner, &Thunk,
                                   reinterpret_cast<LPARAM>(this));
}

bool DialogBase::CreateModeless(HWND owner, int resource) {
    CHECK(m_handle == nullptr);
    m_modal = false;
    return CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(resource), owner, &Thunk,
                              reinterpret_cast<LPARAM>(this)) != nullptr;
}

bool DialogBase::CreateModeless(HWND owner, const DLGTEMPLATE& dialogTemplate) {
    CHECK(m_handle == nullptr);
    m_modal = false;
    return CreateDialogIndirectParamW(GetModuleHandleW(nullptr), &dialogTemplate, owner, &Thunk,
                                      reinterpret_cast<LPARAM>(this)) != nullptr;
}

void DialogBase::End(INT_PTR result) {
    if (m_modal)
        EndDialog(m_handle, result);
    else
        DestroyWindow(m_handle);
}

INT_PTR DialogBase::HandleMessage(UINT message, WPARAM wParam, LPARAM /*lParam*/) {
    switch (message) {
        case WM_INITDIALOG:
            return TRUE;
        case WM_COMMAND:
            if (LOWORD(wParam) != IDOK && LOWORD(wParam) != IDCANCEL)
                return FALSE;
            End(LOWORD(wParam));
            return TRUE;
        default:
            return FALSE;
    }
}

INT_PTR DialogBase::Answer(LRESULT result) {
    SetWindowLongPtrW(m_handle, DWLP_MSGRESULT, result);
    return TRUE;
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

INT_PTR CALLBACK DialogBase::Thunk(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_INITDIALOG) {
        reinterpret_cast<DialogBase*>(lParam)->m_handle = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, lParam);
    }
    auto* const self = reinterpret_cast<DialogBase*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self == nullptr)  // before WM_INITDIALOG
        return FALSE;
    const INT_PTR result =
        GuardedHandler([&] { return self->HandleMessage(message, wParam, lParam); });
    if (message == WM_NCDESTROY) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        self->m_handle = nullptr;
    }
    return result;
}

}  // namespace tobbin
