#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "platform/UniqueHandle_win32.h"

namespace tobbin {

// One program at a time works on one data folder. A second start of the program of the same folder
// finds the first one, hands it its files and ends.
class SingleInstance {
 public:
    // `applicationFolder` ends in "\".
    explicit SingleInstance(const std::string& applicationFolder);

    // Whether this program is the first one.
    bool IsFirst() const { return m_first; }

    // Marks the window that takes what a second start hands over.
    void MarkWindow(HWND window) const;

    // Hands the files' full paths to the first program, which comes forward. Waits a moment for its
    // window to appear. Returns whether it took them.
    bool HandOver(const std::vector<std::string>& files) const;

    // The files in a WM_COPYDATA message that HandOver sent; nothing in any other.
    static std::optional<std::vector<std::string>> MaybeFiles(const COPYDATASTRUCT& data);

 private:
    HWND MaybeFirstWindow() const;

    std::wstring m_name;
    UniqueKernelObject m_mutex;
    bool m_first = false;
};

}  // namespace tobbin
