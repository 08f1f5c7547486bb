#include "ui/PaneLayout.h"

#include <algorithm>

namespace tobbin {
namespace {

// Below this size a window is as good as closed.
constexpr int kSmallestWindow = 600;

// The control reaches over the window's right edge and ends above its lower one.
constexpr int kWiderThanWindow = 39;
constexpr int kLowerThanWindow = 378;

}  // namespace

ControlSize ResizeControl(ControlSize control, int windowWidth, int windowHeight) {
    if (windowWidth > kSmallestWindow)
        control.width = windowWidth + kWiderThanWindow;
    if (windowHeight > kSmallestWindow)
        control.height = windowHeight - kLowerThanWindow;
    return control;
}

PaneWidths SharePanes(int totalWidth, int wantedTree, int splitter, int smallestPane) {
    const int room = std::max(0, totalWidth - splitter);
    const int smallest = std::min(smallestPane, room / 2);
    PaneWidths widths;
    widths.tree = std::clamp(wantedTree, smallest, room - smallest);
    widths.splitter = std::min(splitter, totalWidth);
    widths.list = room - widths.tree;
    return widths;
}

}  // namespace tobbin
