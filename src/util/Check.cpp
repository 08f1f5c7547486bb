#include "util/Check.h"

#include <cstdio>
#include <cstdlib>

namespace tobbin {
namespace {
CheckHandler g_handler = nullptr;  // Set once by main before anything can fail.
}

void SetCheckHandler(CheckHandler handler) {
    g_handler = handler;
}

void EndProgram(const std::string& message) {
    if (g_handler != nullptr)
        g_handler(message.c_str());
    else
        std::fprintf(stderr, "%s\n", message.c_str());
    std::abort();
}

void CheckFailed(const char* condition, const char* file, int line) {
    EndProgram(std::string("Tobbin has to stop: ") + condition + " does not hold (" + file +
               ", line " + std::to_string(line) + ").");
}

}  // namespace tobbin
