#pragma once

#include "platform/Environment.h"

namespace tobbin {

// Shows the texts and the steps in the status line, which is empty again when this ends.
class StatusLineProgress : public Progress {
 public:
    explicit StatusLineProgress(StatusLine& line) : m_line(line) {}
    ~StatusLineProgress() override { m_line.ShowProgress({}, {}); }
    StatusLineProgress(const StatusLineProgress&) = delete;
    StatusLineProgress& operator=(const StatusLineProgress&) = delete;
    void Show(const std::string& text) override { ShowSteps(text, {}); }
    void ShowSteps(const std::string& text, const StepsDone& steps) override {
        m_line.ShowProgress(text, steps);
    }

 private:
    StatusLine& m_line;
};

}  // namespace tobbin
