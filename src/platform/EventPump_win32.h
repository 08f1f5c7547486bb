#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>

#include "platform/Environment.h"

namespace tobbin {

// The thread's message queue.
class SystemEventPump : public EventPump {
 public:
    // Sees each message before it is dispatched and returns whether it dealt with it: accelerators,
    // the MDI system keys, the keys of modeless dialogs.
    using Filter = std::function<bool(MSG&)>;
    void SetFilter(Filter filter) { m_filter = std::move(filter); }

    // Called in the main loop after each message, when no handler of a message is at work: the
    // moment to release windows that were closed.
    void SetBetweenMessages(std::function<void()> call) { m_betweenMessages = std::move(call); }

    // Looks at the queue no more often than every few milliseconds. Once the program is asked to
    // quit it stops there; the request stays in the queue for the main loop.
    void LetEventsThrough() override;
    void PumpWithoutInput() override;
    void RunWithoutInput(const std::function<void()>& work) override;
    bool RunAside(const std::function<void()>& work, const std::function<bool()>& keepOn) override;

    // The main loop: handles messages until the program is asked to quit and returns the exit code.
    int RunUntilQuit();

    bool QuitRequested() const { return m_quitRequested; }

 private:
    void Handle(MSG& message);

    Filter m_filter;
    std::function<void()> m_betweenMessages = [] {};
    std::uint64_t m_lastLook = 0;  // GetTickCount64
    bool m_quitRequested = false;
};

}  // namespace tobbin
