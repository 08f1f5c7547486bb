#pragma once

#include <string>
#include <string_view>

#include "ui/PicturePixels.h"

namespace tobbin {

// What a JPEG file says of itself, read before anything is decoded, so that no decoder has to make
// room for a size that the file only claims.
struct JpegHeader {
    PictureSize size;
    int orientation = 1;  // as EXIF counts, 1 to 8

    // Why the bytes are no picture to be shown, as the end of a sentence; empty when they are one.
    std::string problem;
};

// Wants the whole file.
JpegHeader ReadJpegHeader(std::string_view bytes);

}  // namespace tobbin
