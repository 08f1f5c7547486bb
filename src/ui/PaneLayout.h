#pragma once

namespace tobbin {

// Where things stand in a jukebox window. Nothing here knows pixels from twips but ResizeControl.

// The size of the explorer control, in twips.
struct ControlSize {
    int width = 0;
    int height = 0;
    bool operator==(const ControlSize&) const = default;
};

// What a resize of the window makes of its control. All measures in twips; the window's are those
// of its outer frame. A window of 600 twips or less in a dimension leaves the control's size in
// that dimension alone.
ControlSize ResizeControl(ControlSize control, int windowWidth, int windowHeight);

// Two panes side by side with a splitter between them.
struct PaneWidths {
    int tree = 0;
    int splitter = 0;
    int list = 0;
    bool operator==(const PaneWidths&) const = default;
};

// Shares out a width. The tree pane gets what is wanted as far as each pane can keep its smallest
// width; where there is no room for two panes of that width they share what there is.
PaneWidths SharePanes(int totalWidth, int wantedTree, int splitter, int smallestPane);

}  // namespace tobbin
