#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "util/SystemText.h"

namespace tobbin {

// The windows that are loaded, by the names of their forms ("frmMain", "frmSplash", ...), in the
// order of their loading. Several may have one name.
class LoadedWindows {
 public:
    explicit LoadedWindows(const SystemText& text) : m_text(text) {}

    // Returns the number by which the window is taken off again. `unload` closes the window, which
    // then takes itself off.
    int Add(std::string name, std::function<void()> unload);
    void Remove(int number);

    // Whether a loaded window has this name. The case of letters does not count.
    bool IsLoaded(std::string_view name) const;

    // Unloads every window that is still loaded, the last loaded one first.
    void UnloadAll();

 private:
    struct Window {
        int number = 0;
        std::string name;
        std::function<void()> unload;
    };
    const SystemText& m_text;
    std::vector<Window> m_windows;
    int m_lastNumber = 0;
};

}  // namespace tobbin
