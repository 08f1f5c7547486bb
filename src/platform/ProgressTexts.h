#pragma once

#include "platform/Outside.h"

namespace tobbin {

// Passes the texts on, but not the wish to stop: for work that must come to its end.
class UnstoppableProgress : public Progress {
 public:
    explicit UnstoppableProgress(Progress& progress) : m_progress(progress) {}
    void Show(const std::string& text) override { m_progress.Show(text); }

 private:
    Progress& m_progress;
};

// Shows the texts in the status line, which is empty again when this ends.
class StatusLineProgress : public Progress {
 public:
    explicit StatusLineProgress(StatusLine& line) : m_line(line) {}
    ~StatusLineProgress() override { m_line.ShowProgress({}); }
    StatusLineProgress(const StatusLineProgress&) = delete;
    StatusLineProgress& operator=(const StatusLineProgress&) = delete;
    void Show(const std::string& text) override { m_line.ShowProgress(text); }

 private:
    StatusLine& m_line;
};

}  // namespace tobbin
