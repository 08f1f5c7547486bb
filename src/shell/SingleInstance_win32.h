#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "platform/UniqueHandle_win32.h"

namespace tobbin {

// A second start of the program of the same folder finds the first one, hands it its files and
// ends. It sees only what runs in the same session with the same rights; that one program at a time
// writes the data folder is what the file held in it is for (see StartUp).
class SingleInstance {
 public:
    // `applicationFolder` ends in "\".
    explicit SingleInstance(const std::string& applicationFolder);

    // Whether this program is the first one; not where that can't be found out. It is until it
    // ends; it then leaves its place to one that is waiting in HandOver, killed or not.
    bool IsFirst() const { return m_first; }

    // Marks the window that takes what a second start hands over.
    void MarkWindow(HWND window) const;

    enum class Outcome {
        HandedOver,
        IsFirstNow,  // the other one has ended, and this program stands in its place
        NoAnswer,    // the other one is there, but doesn't answer
        NoAccess,    // the other one is there, but runs with more rights
        Unknown,     // nobody can tell whether there is another one
    };
    // Hands the files' full paths to the first program, which comes forward. Waits for its window
    // to appear and to answer, half a minute at most.
    Outcome HandOver(const std::vector<std::string>& files);

    // The files in a WM_COPYDATA message that HandOver sent; nothing in any other.
    static std::optional<std::vector<std::string>> MaybeFiles(const COPYDATASTRUCT& data);

 private:
    HWND MaybeFirstWindow() const;
    bool TakesPlace(DWORD milliseconds) const;

    std::wstring m_name;
    UniqueKernelObject m_mutex;
    bool m_first = false;
};

}  // namespace tobbin
