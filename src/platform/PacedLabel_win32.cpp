#include "platform/PacedLabel_win32.h"

#include "platform/ProgressBar_win32.h"
#include "platform/ShownText_win32.h"
#include "platform/Wide_win32.h"

namespace tobbin {
namespace {

constexpr UINT kPeriod = 16;  // milliseconds: no more than one picture of the screen

}  // namespace

void PacedLabel::Show(HWND parent, const std::string& text, const StepsDone& steps) {
    m_text = text;
    m_steps = steps;
    if (GetTickCount64() - m_lastShown >= kPeriod) {
        Paint(parent);
    } else if (!m_waits) {
        m_waits = true;
        SetTimer(parent, m_timer, kPeriod, nullptr);
    }
}

void PacedLabel::OnTimer(HWND parent) {
    KillTimer(parent, m_timer);
    m_waits = false;
    Paint(parent);
}

void PacedLabel::Paint(HWND parent) {
    const HWND label = GetDlgItem(parent, m_label);
    SetWindowTextW(label, WideShown(m_text).c_str());
    UpdateWindow(label);
    ShowStepsIn(GetDlgItem(parent, m_bar), m_steps);
    m_lastShown = GetTickCount64();
}

}  // namespace tobbin
