#include "ui/PaneLayout.h"

#include <gtest/gtest.h>

namespace tobbin {
namespace {

TEST(ResizeControl, FollowsTheWindowOnlyAbove600Twips) {
    const ControlSize old{5000, 4000};
    EXPECT_EQ(ResizeControl(old, 9000, 6000), (ControlSize{9039, 5622}));
    EXPECT_EQ(ResizeControl(old, 601, 601), (ControlSize{640, 223}));
    EXPECT_EQ(ResizeControl(old, 600, 6000), (ControlSize{5000, 5622}));
    EXPECT_EQ(ResizeControl(old, 9000, 600), (ControlSize{9039, 4000}));
}

TEST(SharePanes, KeepsBothPanesOfAUsableWidth) {
    EXPECT_EQ(SharePanes(805, 200, 5, 60), (PaneWidths{200, 5, 600}));
    EXPECT_EQ(SharePanes(805, -40, 5, 60), (PaneWidths{60, 5, 740}));
    EXPECT_EQ(SharePanes(805, 5000, 5, 60), (PaneWidths{740, 5, 60}));
    EXPECT_EQ(SharePanes(85, 70, 5, 60), (PaneWidths{40, 5, 40}));
    EXPECT_EQ(SharePanes(3, 70, 5, 60), (PaneWidths{0, 3, 0}));
}

}  // namespace
}  // namespace tobbin
