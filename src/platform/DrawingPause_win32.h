#pragma once

#include <windows.h>

namespace tobbin {

// While it lives a control draws nothing; then it draws all of itself.
class DrawingPause {
 public:
    explicit DrawingPause(HWND control) : m_control(control) {
        SendMessageW(m_control, WM_SETREDRAW, FALSE, 0);
    }
    ~DrawingPause() {
        SendMessageW(m_control, WM_SETREDRAW, TRUE, 0);
        InvalidateRect(m_control, nullptr, TRUE);
    }
    DrawingPause(const DrawingPause&) = delete;
    DrawingPause& operator=(const DrawingPause&) = delete;

 private:
    HWND m_control;
};

}  // namespace tobbin
