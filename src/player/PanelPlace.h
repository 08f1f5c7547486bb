#pragma once

#include <algorithm>

namespace tobbin {

// In pixels; right and bottom lie behind the last one.
struct PixelRect {
    int left = 0, top = 0, right = 0, bottom = 0;
    bool operator==(const PixelRect&) const = default;
};

// Where the player panel lies over the area of the jukebox windows: how far from the lower right
// corner, so that it follows that corner. It never lies outside.
class PanelPlace {
 public:
    explicit PanelPlace(int fromRight = 0, int fromBottom = 0)
        : m_fromRight(fromRight), m_fromBottom(fromBottom) {}

    // The place of a panel of this size in the area.
    static PixelRect Inside(const PixelRect& room, int left, int top, int width, int height) {
        left = std::max(std::min(left, room.right - width), room.left);
        top = std::max(std::min(top, room.bottom - height), room.top);
        return {left, top, left + width, top + height};
    }
    PixelRect In(const PixelRect& room, int width, int height) const {
        return Inside(room, room.right - m_fromRight - width, room.bottom - m_fromBottom - height,
                      width, height);
    }
    void Remember(const PixelRect& room, const PixelRect& panel) {
        m_fromRight = room.right - panel.right;
        m_fromBottom = room.bottom - panel.bottom;
    }

 private:
    int m_fromRight, m_fromBottom;
};

}  // namespace tobbin
