#include "platform/WindowSubclass_win32.h"

#include <utility>

#include "platform/WindowBase_win32.h"

namespace tobbin {

// Not by SetWindowSubclass, which looks up a window property for each message: the selection of a
// hundred thousand rows is as many messages.
void WindowSubclass::Attach(HWND window) {
    Detach();
    m_window = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    m_original = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure)));
}

void WindowSubclass::Detach() {
    if (const HWND window = std::exchange(m_window, nullptr); window != nullptr)
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(m_original));
}

LRESULT WindowSubclass::Default(UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND window = m_window;
    if (message == WM_NCDESTROY)
        Detach();
    return CallWindowProcW(m_original, window, message, wParam, lParam);
}

LRESULT CALLBACK WindowSubclass::Procedure(HWND window, UINT message, WPARAM wParam,
                                           LPARAM lParam) {
    return GuardedHandler([&] {
        auto& subclass =
            *reinterpret_cast<WindowSubclass*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        return subclass.m_handler(message, wParam, lParam);
    });
}

}  // namespace tobbin
