// Pictures before they are decoded: only what has a size and an orientation is handed on.
#include "ui/JpegHeader.h"

#include "Fuzzing.h"

namespace tobbin {

void TakeInput(std::string_view bytes) {
    const JpegHeader header = ReadJpegHeader(bytes);
    CHECK(header.orientation >= 1 && header.orientation <= 8);
    if (header.problem.empty())
        CHECK(header.size.width > 0 && header.size.height > 0);
}

}  // namespace tobbin
