#pragma once

#include <functional>
#include <string>
#include <utility>

#include "platform/Environment.h"

namespace tobbin {

// Keeps the last line said, also before there is a frame that could show it.
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
        Tell();
    }
    void ShowProgress(const std::string& text, const StepsDone& steps) override {
        m_progress = text;
        m_steps = steps;
        Tell();
    }

    // At the begin of a command.
    void Clear() {
        if (!m_line.empty())
            Say({});
    }

    const std::string& Line() const { return m_line; }

 private:
    void Tell() {
        if (m_listener)
            m_listener(m_line.empty() ? m_progress : m_line, m_steps);
    }

    std::string m_line;
    std::string m_progress;
    StepsDone m_steps;
    Listener m_listener;
};

}  // namespace tobbin
