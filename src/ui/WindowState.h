#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Environment.h"

namespace tobbin {

// A rectangle in pixels.
struct Area {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    bool operator==(const Area&) const = default;
};

// No window can be made smaller, in pixels at 96 to the inch.
inline constexpr int kSmallestWidth = 320;
inline constexpr int kSmallestHeight = 200;

// What is remembered of a window from one run of the program to the next.
struct WindowState {
    Area place;  // as a plain window, neither minimized nor maximized
    bool maximized = false;
    int dpi = 96;              // of the screen that the place was measured on
    int splitter = 0;          // in pixels at 96 to the inch; 0 when the window has none
    std::vector<int> columns;  // widths, the same
    bool operator==(const WindowState&) const = default;
};

// Whether a jukebox window opens maximized: the first one fills the frame unless it was left
// otherwise; one that opens over a maximized window does as well.
bool OpensMaximized(bool isFirst, bool activeIsMaximized,
                    const std::optional<WindowState>& remembered);

// The state as the text of a per-user setting, and back; nothing for a text that is none.
std::string StateText(const WindowState& state);
std::optional<WindowState> MaybeState(std::string_view text);

// The place for a window on the screens there are, at their pixels to the inch: one of which too
// little could be seen to take hold of it is moved onto the first screen, none is larger than its
// screen, and one that changes its size is on it as a whole.
Area UsablePlace(const WindowState& state, const std::vector<Area>& screens, int dpi);

// Keeps the states in the per-user settings under the windows' names.
class WindowStates {
 public:
    explicit WindowStates(UserSettings& settings) : m_settings(settings) {}
    std::optional<WindowState> MaybeOf(const std::string& window) const;
    void Keep(const std::string& window, const WindowState& state);

 private:
    UserSettings& m_settings;
};

}  // namespace tobbin
