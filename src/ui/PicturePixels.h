#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tobbin {

struct PictureSize {
    int width = 0;
    int height = 0;
    bool operator==(const PictureSize&) const = default;
};

// A part of a picture, in its pixels, from its upper left corner.
struct PicturePart {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool operator==(const PicturePart&) const = default;
};

// Pixels as 0x00RRGGBB, row by row from the top.
struct PicturePixels {
    PictureSize size;
    std::vector<std::uint32_t> pixels;

    PicturePixels() = default;
    explicit PicturePixels(PictureSize of)
        : size(of),
          pixels(static_cast<std::size_t>(of.width) * static_cast<std::size_t>(of.height)) {}
    std::uint32_t* Row(int y) {
        return pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(size.width);
    }
    const std::uint32_t* Row(int y) const {
        return pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(size.width);
    }
};

// The part of a picture that is seen when it covers a pane, keeping its proportions: all of its
// width or all of its height, and the middle of the other.
PicturePart CoveringPart(PictureSize picture, PictureSize pane);

// Fills a pane with copies of a picture, from its upper left corner on.
PicturePixels Tiled(const PicturePixels& tile, PictureSize pane);

// Lays a color over the picture, so that a text which can be read on the color can be read on the
// picture: the more of it, the more of the picture is far from the color. On white, black texts
// keep a contrast of 7 to 1 but for one pixel in a hundred. Returns the share in percent.
int Veil(PicturePixels& picture, std::uint32_t color);

}  // namespace tobbin
