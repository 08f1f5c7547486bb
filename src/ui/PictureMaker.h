#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "ui/PicturePixels.h"

namespace tobbin {

// A picture as a pane wants it: of just the pane's size in pixels.
struct PictureRequest {
    std::string path;
    PictureSize pane;
    bool tiled = false;  // in its own size, side by side; or else covering the pane
    std::optional<std::uint32_t> veil = {};  // the color laid over it, 0x00RRGGBB
    bool operator==(const PictureRequest&) const = default;
};

struct Picture {
    PicturePixels pixels;
    std::string problem;  // why there is none, as the end of a sentence; empty when there is one
};

// Makes pictures. Used by one thread.
class PictureMaker {
 public:
    virtual ~PictureMaker() = default;

    // A text that changes when the file does.
    virtual std::string Stamp(const std::string& path) = 0;
    virtual Picture Make(const PictureRequest& request) = 0;
};

}  // namespace tobbin
