#include "ui/WindowState_win32.h"

#include "platform/Dpi_win32.h"

namespace tobbin {
namespace {

BOOL CALLBACK AddScreen(HMONITOR monitor, HDC, RECT*, LPARAM parameter) {
    auto& areas = *reinterpret_cast<std::vector<Area>*>(parameter);
    MONITORINFO info = {};
    info.cbSize = sizeof(info);
    if (!GetMonitorInfoW(monitor, &info))
        return TRUE;
    const RECT& work = info.rcWork;
    const Area area{work.left, work.top, work.right - work.left, work.bottom - work.top};
    areas.insert((info.dwFlags & MONITORINFOF_PRIMARY) != 0 ? areas.begin() : areas.end(), area);
    return TRUE;
}

}  // namespace

WindowState StateOf(HWND window) {
    WINDOWPLACEMENT placement = {};
    placement.length = sizeof(placement);
    GetWindowPlacement(window, &placement);
    const RECT& place = placement.rcNormalPosition;
    WindowState state;
    state.place = {place.left, place.top, place.right - place.left, place.bottom - place.top};
    state.maximized =
        placement.showCmd == SW_SHOWMAXIMIZED ||
        (placement.showCmd == SW_SHOWMINIMIZED && (placement.flags & WPF_RESTORETOMAXIMIZED) != 0);
    state.dpi = static_cast<int>(GetDpiForWindow(window));
    return state;
}

void ShowSmallestSize(HWND window, MINMAXINFO& sizes) {
    sizes.ptMinTrackSize = {ScalePixels(kSmallestWidth, window),
                            ScalePixels(kSmallestHeight, window)};
}

std::vector<Area> ScreenAreas() {
    std::vector<Area> areas;
    EnumDisplayMonitors(nullptr, nullptr, &AddScreen, reinterpret_cast<LPARAM>(&areas));
    return areas;
}

}  // namespace tobbin
