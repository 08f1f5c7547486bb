#pragma once

#include <functional>
#include <string>
#include <utility>

#include "platform/Environment.h"

namespace tobbin {

// What the status bar's first part shows: the last line said, also before there is a frame that
// could show it, or else the long work that goes on, or else the details of what has the focus.
class StatusLineModel : public StatusLine {
 public:
    // The steps are those of the long work that goes on; all 0 without any.
    using Listener = std::function<void(const std::string& line, const StepsDone& steps)>;

    // Calls the listener with the line kept so far, and then with every change of it. The listener
    // must stay valid until it is replaced by an empty one.
    void SetListener(Listener listener) {
        m_listener = std::move(listener);
        Tell();
    }

    void Say(const std::string& line) override {
        m_line = line;
        m_isNew = true;
        Tell();
    }
    void ShowProgress(const std::string& text, const StepsDone& steps) override {
        m_progress = text;
        m_steps = steps;
        Tell();
    }

    // Other details take the place of a line that was there before the person's last key or click.
    void ShowDetails(const std::string& details) {
        if (details == m_details)
            return;
        m_details = details;
        if (!m_isNew)
            m_line.clear();
        Tell();
    }
    void OnInput() { m_isNew = false; }

    // At the begin of a command.
    void Clear() {
        if (!m_line.empty())
            Say({});
    }

    const std::string& Line() const { return m_line; }

 private:
    void Tell() {
        if (m_listener)
            m_listener(!m_line.empty()       ? m_line
                       : !m_progress.empty() ? m_progress
                                             : m_details,
                       m_steps);
    }

    std::string m_line;
    bool m_isNew = false;
    std::string m_progress;
    std::string m_details;
    StepsDone m_steps;
    Listener m_listener;
};

}  // namespace tobbin
