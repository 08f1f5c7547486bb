#include "util/Check.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace tobbin {
namespace {
CheckHandler g_handler = nullptr;  // Set once by main before anything can fail.
}

void SetCheckHandler(CheckHandler handler) {
    g_handler = handler;
}

void CheckFailed(const char* condition, const char* file, int line) {
    const std::string message = std::string("Tobbin has to stop: ") + condition + " does not hold (" +
                                file + ", line " + std::to_string(line) + ").";
    if (g_handler != nullptr)
        g_handler(message.c_str());
    else
        std::fprintf(stderr, "%s\n", message.c_str());
    std::abort();
}

}  // namespace tobbin
