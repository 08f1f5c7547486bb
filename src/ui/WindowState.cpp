#include "ui/WindowState.h"

#include <algorithm>

#include "util/Convert.h"

namespace tobbin {
namespace {

constexpr std::size_t kFixedNumbers = 7;
constexpr std::size_t kMostNumbers = 32;

// So much of the upper edge must be on a screen, in pixels at 96 to the inch.
constexpr int kSeenWidth = 64;
constexpr int kSeenHeight = 24;

constexpr int kLargestMeasure = 32000;

int Overlap(int from, int length, int otherFrom, int otherLength) {
    return std::min(from + length, otherFrom + otherLength) - std::max(from, otherFrom);
}

bool CanBeTakenHoldOf(const Area& place, const Area& screen, int dpi) {
    return Overlap(place.left, place.width, screen.left, screen.width) >= kSeenWidth * dpi / 96 &&
           place.top >= screen.top &&
           place.top + kSeenHeight * dpi / 96 <= screen.top + screen.height;
}

}  // namespace

bool OpensMaximized(bool isFirst, bool activeIsMaximized,
                    const std::optional<WindowState>& remembered) {
    return isFirst ? !remembered || remembered->maximized : activeIsMaximized;
}

std::string StateText(const WindowState& state) {
    std::string text;
    for (const int number :
         {state.place.left, state.place.top, state.place.width, state.place.height,
          state.maximized ? 1 : 0, state.dpi, state.splitter})
        text += std::to_string(number) + " ";
    for (const int width : state.columns)
        text += std::to_string(width) + " ";
    text.pop_back();
    return text;
}

std::optional<WindowState> MaybeState(std::string_view text) {
    std::vector<int> numbers;
    while (!text.empty() && numbers.size() <= kMostNumbers) {
        const std::size_t end = std::min(text.find(' '), text.size());
        const std::optional<std::int32_t> number = MaybeToLong(text.substr(0, end));
        if (!number || *number < -kLargestMeasure || *number > kLargestMeasure)
            return std::nullopt;
        numbers.push_back(*number);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    if (numbers.size() < kFixedNumbers || numbers.size() > kMostNumbers || numbers[5] < 1)
        return std::nullopt;
    WindowState state;
    state.place = {numbers[0], numbers[1], numbers[2], numbers[3]};
    state.maximized = numbers[4] != 0;
    state.dpi = numbers[5];
    state.splitter = std::max(numbers[6], 0);
    for (std::size_t i = kFixedNumbers; i < numbers.size(); ++i)
        state.columns.push_back(std::max(numbers[i], 0));
    return state;
}

Area UsablePlace(const WindowState& state, const std::vector<Area>& screens, int dpi) {
    Area place = state.place;
    place.width = std::max(place.width * dpi / state.dpi, kSmallestWidth * dpi / 96);
    place.height = std::max(place.height * dpi / state.dpi, kSmallestHeight * dpi / 96);
    if (screens.empty())
        return place;
    const auto found = std::ranges::find_if(
        screens, [&](const Area& screen) { return CanBeTakenHoldOf(place, screen, dpi); });
    const Area& screen = found != screens.end() ? *found : screens.front();
    const bool otherSize =
        dpi != state.dpi || place.width > screen.width || place.height > screen.height;
    place.width = std::min(place.width, screen.width);
    place.height = std::min(place.height, screen.height);
    if (otherSize) {  // what was on the screen must not grow beyond its edge
        place.left = std::clamp(place.left, screen.left, screen.left + screen.width - place.width);
        place.top = std::clamp(place.top, screen.top, screen.top + screen.height - place.height);
    }
    if (found == screens.end()) {
        place.left = screen.left + (screen.width - place.width) / 2;
        place.top = screen.top + (screen.height - place.height) / 2;
    }
    return place;
}

std::optional<WindowState> WindowStates::MaybeOf(const std::string& window) const {
    const std::optional<std::string> text = m_settings.MaybeRead("Window " + window);
    return text ? MaybeState(*text) : std::nullopt;
}

void WindowStates::Keep(const std::string& window, const WindowState& state) {
    m_settings.Write("Window " + window, StateText(state));
}

}  // namespace tobbin
