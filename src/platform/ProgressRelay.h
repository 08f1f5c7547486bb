#pragma once

#include <string>

#include "platform/Environment.h"

namespace tobbin {

// The progress window that happens to be loaded. Whoever does long work is given this one, and the
// texts go to the window of the moment, or nowhere.
class ProgressRelay : public Progress {
 public:
    // Null when the window is unloaded.
    void Window(Progress* window) { m_window = window; }

    void Show(const std::string& text) override {
        if (m_window != nullptr)
            m_window->Show(text);
    }
    void ShowSteps(const std::string& text, const StepsDone& steps) override {
        if (m_window != nullptr)
            m_window->ShowSteps(text, steps);
    }
    bool StopRequested() const override { return m_window != nullptr && m_window->StopRequested(); }

 private:
    Progress* m_window = nullptr;
};

}  // namespace tobbin
