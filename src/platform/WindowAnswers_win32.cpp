#include "platform/WindowAnswers_win32.h"

#include <windows.h>

#include <process.h>

#include <memory>
#include <optional>
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

unsigned __stdcall RunThread(void* work) noexcept {
    const std::unique_ptr<std::function<void()>> owned(static_cast<std::function<void()>*>(work));
    (*owned)();
    return 0;
}

// Starts a thread; its handle, which may be closed at any time, is signaled once the thread has
// ended. Null without room for another thread. This is no std::thread because threads end on their
// own here: when one ends just as it is detached, winpthreads frees its record twice, and later on
// joining another thread fails.
UniqueKernelObject MaybeStartThread(std::function<void()> work) {
    auto owned = std::make_unique<std::function<void()>>(std::move(work));
    UniqueKernelObject thread(
        reinterpret_cast<HANDLE>(_beginthreadex(nullptr, 0, &RunThread, owned.get(), 0, nullptr)));
    if (thread)
        (void)owned.release();  // the thread's
    return thread;
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
    const UniqueKernelObject thread = MaybeStartThread(work);
    if (!thread) {
        work();
        return;
    }
    const HANDLE handle = thread.Get();
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
}

bool RunAside(const std::function<void()>& work, const std::function<bool()>& keepOn) {
    const UniqueKernelObject thread = MaybeStartThread(work);
    if (!thread) {
        work();
        return true;
    }
    const HANDLE handle = thread.Get();
    while (MsgWaitForMultipleObjects(1, &handle, FALSE, 20, QS_ALLINPUT) != WAIT_OBJECT_0)
        if (!keepOn())
            return false;
    return true;
}

}  // namespace tobbin
