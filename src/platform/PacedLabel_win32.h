#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

namespace tobbin {

// A label whose text changes more often than a screen could show: a text appears at once, or as
// soon as the one before has been seen for a moment. The last one always appears.
class PacedLabel {
 public:
    // `timer` is the number of a timer of the label's parent, which hands WM_TIMER on to OnTimer.
    PacedLabel(int control, UINT_PTR timer) : m_control(control), m_timer(timer) {}

    void Show(HWND parent, const std::string& text);
    void OnTimer(HWND parent);

 private:
    void Paint(HWND parent);

    int m_control;
    UINT_PTR m_timer;
    std::string m_text;
    bool m_waits = false;
    std::uint64_t m_lastShown = 0;  // GetTickCount64
};

}  // namespace tobbin
