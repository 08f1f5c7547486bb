#pragma once

#include <windows.h>

#include <functional>
#include <utility>

namespace tobbin {

// Sees the messages of a control before the control does, until this object or the control goes.
class WindowSubclass {
 public:
    // Answers a message, or hands it on with Default.
    using Handler = std::function<LRESULT(UINT message, WPARAM wParam, LPARAM lParam)>;

    explicit WindowSubclass(Handler handler) : m_handler(std::move(handler)) {}
    WindowSubclass(const WindowSubclass&) = delete;
    WindowSubclass& operator=(const WindowSubclass&) = delete;
    ~WindowSubclass() { Detach(); }

    // The control's GWLP_USERDATA is ours meanwhile.
    void Attach(HWND window);
    void Detach();
    HWND Handle() const { return m_window; }  // null when there is none

    // What the control does with a message.
    LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam);

 private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    Handler m_handler;
    HWND m_window = nullptr;
    WNDPROC m_original = nullptr;
};

}  // namespace tobbin
