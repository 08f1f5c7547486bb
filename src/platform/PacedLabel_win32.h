#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

#include "platform/Environment.h"

namespace tobbin {

// A label whose text changes more often than a screen could show, and the progress bar beside it: a
// text appears at once, or as soon as the one before has been seen for a moment. The last one
// always appears. What is not to appear yet costs no question to the system about a window.
class PacedLabel {
 public:
    // `timer` is the number of a timer of the label's parent, which hands WM_TIMER on to OnTimer.
    PacedLabel(int label, int bar, UINT_PTR timer) : m_label(label), m_bar(bar), m_timer(timer) {}

    void Show(HWND parent, const std::string& text, const StepsDone& steps);
    void OnTimer(HWND parent);

 private:
    void Paint(HWND parent);

    int m_label;
    int m_bar;
    UINT_PTR m_timer;
    std::string m_text;
    StepsDone m_steps;
    bool m_waits = false;
    std::uint64_t m_lastShown = 0;  // GetTickCount64
};

}  // namespace tobbin
