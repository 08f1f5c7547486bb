#include "platform/WindowAnswers_win32.h"

#include <windows.h>

#include <memory>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/UniqueHandle_win32.h"

namespace tobbin {
namespace {

constexpr DWORD kPatience = 200;  // milliseconds before a wait shows in the mouse cursor

// Waits for the thread's paint requests and for messages that other threads have sent to it, or
// for the handles. Returns what the system returns.
DWORD WaitForQuestions(DWORD count, const HANDLE* handles, DWORD milliseconds) {
    return MsgWaitForMultipleObjectsEx(count, handles, milliseconds, QS_PAINT | QS_SENDMESSAGE,
                                       MWMO_INPUTAVAILABLE);
}

// Of the thread, as its messages are.
bool& OnlyAnswers() {
    thread_local bool onlyAnswers = false;
    return onlyAnswers;
}

}  // namespace

bool WindowsOnlyAnswer() {
    return OnlyAnswers();
}

void PumpWithoutInput() {
    const ScopeGuard putBack(
        [before = std::exchange(OnlyAnswers(), true)] { OnlyAnswers() = before; });
    MSG message = {};
    if (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | PM_QS_PAINT | PM_QS_SENDMESSAGE))
        DispatchMessageW(&message);
}

void PumpWithoutInputFor(unsigned milliseconds) {
    const ULONGLONG end = GetTickCount64() + milliseconds;
    for (ULONGLONG now = end - milliseconds; now < end; now = GetTickCount64()) {
        WaitForQuestions(0, nullptr, static_cast<DWORD>(end - now));
        PumpWithoutInput();
    }
}

void RunOnWorker(const std::function<void()>& work) {
    const UniqueKernelObject done(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    std::thread thread;
    try {
        if (done)
            thread = std::thread([&] {
                work();
                SetEvent(done.Get());
            });
    } catch (const std::system_error&) {  // no room for another thread
    }
    if (!thread.joinable()) {
        work();
        return;
    }
    const HANDLE handle = done.Get();
    std::optional<HCURSOR> maybeCursor;  // the one before that of a program that takes no input
    for (;;) {
        const DWORD woken = WaitForQuestions(1, &handle, maybeCursor ? INFINITE : kPatience);
        if (woken == WAIT_TIMEOUT)
            maybeCursor = SetCursor(LoadCursorW(nullptr, IDC_WAIT));
        else if (woken == WAIT_OBJECT_0 + 1)
            PumpWithoutInput();
        else
            break;
    }
    if (maybeCursor)
        SetCursor(*maybeCursor);
    thread.join();
}

bool RunAside(const std::function<void()>& work, const std::function<bool()>& keepOn) {
    const auto done =
        std::make_shared<UniqueKernelObject>(CreateEventW(nullptr, TRUE, FALSE, nullptr));
    bool started = false;
    try {
        if (*done) {
            std::thread([work, done] {
                work();
                SetEvent(done->Get());
            }).detach();
            started = true;
        }
    } catch (const std::system_error&) {  // no room for another thread
    }
    if (!started) {
        work();
        return true;
    }
    const HANDLE handle = done->Get();
    while (MsgWaitForMultipleObjects(1, &handle, FALSE, 20, QS_ALLINPUT) != WAIT_OBJECT_0)
        if (!keepOn())
            return false;
    return true;
}

}  // namespace tobbin
