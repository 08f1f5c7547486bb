#include "shell/FramePlace_win32.h"

#include <vector>

#include "ui/WindowState_win32.h"

namespace tobbin {
namespace {

constexpr char kFrame[] = "frmMDIForm1";
constexpr int kLargestPlace = 30000;  // beyond every screen

// The first size, in pixels at 96 to the inch.
constexpr int kFirstWidth = 1000;
constexpr int kFirstHeight = 700;

}  // namespace

bool PlaceFrame(HWND frame, UserSettings& settings) {
    WindowState state;
    state.place = {-kLargestPlace, 0, kFirstWidth, kFirstHeight};
    if (const auto remembered = WindowStates(settings).MaybeOf(kFrame))
        state = *remembered;
    const Area place = UsablePlace(state, ScreenAreas(), static_cast<int>(GetDpiForWindow(frame)));
    WINDOWPLACEMENT placement = {};  // counted as in StateOf, beside a bar at the screen's edge too
    placement.length = sizeof(placement);
    placement.showCmd = SW_HIDE;
    SetRect(&placement.rcNormalPosition, place.left, place.top, place.left + place.width,
            place.top + place.height);
    SetWindowPlacement(frame, &placement);
    return state.maximized;
}

void KeepFramePlace(HWND frame, UserSettings& settings) {
    WindowStates(settings).Keep(kFrame, StateOf(frame));
}

}  // namespace tobbin
