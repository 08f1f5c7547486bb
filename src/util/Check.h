#pragma once

#include <string>

namespace tobbin {

// Called with the reason why the program has to end, as text for the person. The program sets it at
// start to a function that shows a message box; without one the text goes to the standard error
// stream.
using CheckHandler = void (*)(const char* message);
void SetCheckHandler(CheckHandler handler);

// Tells the handler a message for the person and ends the program.
[[noreturn]] void EndProgram(const std::string& message);

// Tells the handler which promise was broken and ends the program.
[[noreturn]] void CheckFailed(const char* condition, const char* file, int line);

}  // namespace tobbin

// A promise that the program makes to itself. Never for bad data: that is a value.
#define CHECK(condition) \
    ((condition) ? static_cast<void>(0) : ::tobbin::CheckFailed(#condition, __FILE__, __LINE__))
