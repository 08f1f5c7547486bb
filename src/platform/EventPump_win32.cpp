#include "platform/EventPump_win32.h"

#include "platform/WindowAnswers_win32.h"

namespace tobbin {
namespace {

constexpr std::uint64_t kRestMilliseconds = 5;
// Messages that never end, such as a timer slower to handle than its period, don't keep the caller.
constexpr std::uint64_t kLimitMilliseconds = 100;

}  // namespace

void SystemEventPump::LetEventsThrough() {
    const std::uint64_t begin = GetTickCount64();
    if (m_quitRequested || begin - m_lastLook < kRestMilliseconds)
        return;
    MSG message = {};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            m_quitRequested = true;
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        Handle(message);
        // Handling may have come here again and found the request to quit.
        if (m_quitRequested || GetTickCount64() - begin >= kLimitMilliseconds)
            break;
    }
    m_lastLook = GetTickCount64();
}

void SystemEventPump::PumpWithoutInput() {
    if (GetTickCount64() - m_lastLook < kRestMilliseconds)
        return;
    tobbin::PumpWithoutInput();
    m_lastLook = GetTickCount64();
}

void SystemEventPump::RunWithoutInput(const std::function<void()>& work) {
    RunOnWorker(work);
}

bool SystemEventPump::RunAside(const std::function<void()>& work,
                               const std::function<bool()>& keepOn) {
    return tobbin::RunAside(work, [&] {
        LetEventsThrough();
        return !m_quitRequested && keepOn();
    });
}

int SystemEventPump::RunUntilQuit() {
    MSG message = {};
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        Handle(message);
        m_betweenMessages();
    }
    m_quitRequested = true;
    return static_cast<int>(message.wParam);
}

void SystemEventPump::Handle(MSG& message) {
    if (m_filter && m_filter(message))
        return;
    TranslateMessage(&message);
    DispatchMessageW(&message);
}

}  // namespace tobbin
