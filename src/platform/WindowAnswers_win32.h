#pragma once

#include <functional>

namespace tobbin {

// Lets the thread's windows be painted and answer other programs, but take no input: for work in
// the middle of which no command may run.
void PumpWithoutInput();

// Whether the thread is in there now. A window puts off what asks it for a command until the work
// is done, and does not let the session end.
bool WindowsOnlyAnswer();

// The same until some milliseconds have gone.
void PumpWithoutInputFor(unsigned milliseconds);

// Does a part of a thread's work that may take long and touches no window, such as waiting for a
// slow disk, on a thread of its own; the windows answer meanwhile.
void RunOnWorker(const std::function<void()>& work);

// Does work on a thread of its own that may end later than the caller, and so owns all it touches.
// Calls `keepOn` every few milliseconds and whenever a message waits, and returns false once that
// answers false. Without room for another thread the work is done here.
bool RunAside(const std::function<void()>& work, const std::function<bool()>& keepOn);

}  // namespace tobbin
