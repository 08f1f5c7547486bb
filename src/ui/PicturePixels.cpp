#include "ui/PicturePixels.h"

#include <algorithm>
#include <array>
#include <cstdlib>

namespace tobbin {
namespace {

// How bright a pixel is, 0 to 255.
int Brightness(std::uint32_t pixel) {
    return static_cast<int>(
        ((pixel >> 16 & 0xFF) * 54 + (pixel >> 8 & 0xFF) * 183 + (pixel & 0xFF) * 19) / 256);
}

// Brings all pixels but one in a hundred within the distance from the color that texts allow.
int VeilShare(const PicturePixels& picture, std::uint32_t color) {
    constexpr int kLeast = 25;
    constexpr int kAllowed = 102;
    std::array<std::size_t, 256> counts = {};
    for (const std::uint32_t pixel : picture.pixels)
        ++counts[static_cast<std::size_t>(std::abs(Brightness(pixel) - Brightness(color)))];
    std::size_t farther = 0;
    int distance = 255;
    while (distance > 0 &&
           (farther += counts[static_cast<std::size_t>(distance)]) * 100 <= picture.pixels.size())
        --distance;
    return std::max(kLeast, 100 - kAllowed * 100 / std::max(distance, kAllowed));
}

int Scaled(int value, int times, int by) {
    return std::max(1, static_cast<int>(static_cast<std::int64_t>(value) * times / by));
}

}  // namespace

PicturePart CoveringPart(PictureSize picture, PictureSize pane) {
    PicturePart part{0, 0, picture.width, picture.height};
    if (static_cast<std::int64_t>(picture.width) * pane.height >
        static_cast<std::int64_t>(picture.height) * pane.width)
        part.width = Scaled(picture.height, pane.width, pane.height);
    else
        part.height = Scaled(picture.width, pane.height, pane.width);
    part.x = (picture.width - part.width) / 2;
    part.y = (picture.height - part.height) / 2;
    return part;
}

PicturePixels Tiled(const PicturePixels& tile, PictureSize pane) {
    PicturePixels all(pane);
    for (int y = 0; y < pane.height; ++y) {
        const std::uint32_t* const from = tile.Row(y % tile.size.height);
        for (int x = 0; x < pane.width; x += tile.size.width)
            std::copy_n(from, std::min(tile.size.width, pane.width - x), all.Row(y) + x);
    }
    return all;
}

int Veil(PicturePixels& picture, std::uint32_t color) {
    const int percent = VeilShare(picture, color);
    const auto mix = [&](std::uint32_t pixel, int shift) {
        const auto of = static_cast<std::uint32_t>(100 - percent);
        const auto veil = static_cast<std::uint32_t>(percent);
        return ((pixel >> shift & 0xFF) * of + (color >> shift & 0xFF) * veil + 50) / 100 << shift;
    };
    for (std::uint32_t& pixel : picture.pixels)
        pixel = mix(pixel, 16) | mix(pixel, 8) | mix(pixel, 0);
    return percent;
}

}  // namespace tobbin
