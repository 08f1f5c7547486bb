#include "shell/LoadedWindows.h"

#include <algorithm>
#include <utility>

namespace tobbin {

int LoadedWindows::Add(std::string name, std::function<void()> unload) {
    m_windows.push_back({++m_lastNumber, std::move(name), std::move(unload)});
    return m_lastNumber;
}

void LoadedWindows::Remove(int number) {
    std::erase_if(m_windows, [&](const Window& window) { return window.number == number; });
}

bool LoadedWindows::IsLoaded(std::string_view name) const {
    const std::string wanted = m_text.ToLower(name);
    return std::ranges::any_of(
        m_windows, [&](const Window& window) { return m_text.ToLower(window.name) == wanted; });
}

void LoadedWindows::UnloadAll() {
    const std::vector<Window> windows = m_windows;
    for (auto window = windows.rbegin(); window != windows.rend(); ++window) {
        const bool stillLoaded = std::ranges::any_of(
            m_windows, [&](const Window& loaded) { return loaded.number == window->number; });
        if (stillLoaded)
            window->unload();
    }
}

}  // namespace tobbin
