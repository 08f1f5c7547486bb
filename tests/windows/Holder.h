#pragma once

#include <windows.h>

#include <string>
#include <utility>

#include "platform/UniqueHandle_win32.h"
#include "platform/Wide_win32.h"

namespace tobbin {

// What a test starts as "another program": opens the file for itself alone for 60 of every 80
// milliseconds, until it is ended. Calls `started` when it holds it for the first time.
template <typename Started>
[[noreturn]] void HoldForEver(const std::string& path, Started started) {
    for (bool told = false;;) {
        UniqueFile held(
            CreateFileW(Wide(path).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
        if (!held)
            continue;
        if (!std::exchange(told, true))
            started();
        Sleep(60);
        held.Reset();
        Sleep(20);
    }
}

}  // namespace tobbin
