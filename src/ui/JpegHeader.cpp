#include "ui/JpegHeader.h"

#include <cstdint>

namespace tobbin {
namespace {

// Larger than what any camera takes in one picture.
constexpr std::int64_t kMostPixels = 150'000'000;
// A decoder needs a bit at least for each block of 8 x 8 pixels.
constexpr std::int64_t kMostPixelsPerByte = 512;

constexpr char kDamaged[] = "the file is damaged";

std::size_t Number(std::string_view bytes, std::size_t at, std::size_t count, bool littleEndian) {
    std::size_t value = 0;
    for (std::size_t i = 0; i < count; ++i)
        value =
            value << 8 | static_cast<unsigned char>(bytes[at + (littleEndian ? count - 1 - i : i)]);
    return value;
}

// The orientation in the first directory of a TIFF block; 1 when it can't be found.
int OrientationIn(std::string_view tiff) {
    if (tiff.size() < 8)
        return 1;
    const bool little = tiff.starts_with("II");
    const std::size_t directory = Number(tiff, 4, 4, little);
    if (directory > tiff.size() - 2)
        return 1;
    const std::size_t entries = Number(tiff, directory, 2, little);
    for (std::size_t i = 0; i < entries; ++i) {
        const std::size_t entry = directory + 2 + i * 12;
        if (entry + 12 > tiff.size())
            return 1;
        if (Number(tiff, entry, 2, little) != 0x0112)
            continue;
        const std::size_t value = Number(tiff, entry + 8, 2, little);
        return value >= 1 && value <= 8 ? static_cast<int>(value) : 1;
    }
    return 1;
}

bool IsStartOfFrame(int marker) {
    return marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
}

bool StandsAlone(int marker) {
    return marker == 0x01 || (marker >= 0xD0 && marker <= 0xD8);
}

void TakeSize(std::string_view segment, std::size_t fileSize, JpegHeader& header) {
    if (segment.size() < 6) {
        header.problem = kDamaged;
        return;
    }
    header.size = {static_cast<int>(Number(segment, 3, 2, false)),
                   static_cast<int>(Number(segment, 1, 2, false))};
    const std::int64_t pixels = static_cast<std::int64_t>(header.size.width) *
                                static_cast<std::int64_t>(header.size.height);
    if (pixels > kMostPixels)
        header.problem = "it is too large (" + std::to_string(header.size.width) + " x " +
                         std::to_string(header.size.height) + " pixels)";
    else if (pixels == 0 || pixels / kMostPixelsPerByte > static_cast<std::int64_t>(fileSize))
        header.problem = kDamaged;
}

}  // namespace

JpegHeader ReadJpegHeader(std::string_view bytes) {
    JpegHeader header;
    if (bytes.empty()) {
        header.problem = "the file is empty";
        return header;
    }
    if (!bytes.starts_with("\xFF\xD8\xFF")) {
        header.problem = "it is not a JPEG picture";
        return header;
    }
    header.problem = kDamaged;
    for (std::size_t at = 2; at + 4 <= bytes.size();) {
        const int marker = static_cast<unsigned char>(bytes[at + 1]);
        if (static_cast<unsigned char>(bytes[at]) != 0xFF || marker == 0xD9 || marker == 0xDA)
            return header;
        if (marker == 0xFF || StandsAlone(marker)) {  // 0xFF is a filler
            at += marker == 0xFF ? 1 : 2;
            continue;
        }
        const std::size_t length = Number(bytes, at + 2, 2, false);
        if (length < 2 || at + 2 + length > bytes.size())
            return header;
        const std::string_view segment = bytes.substr(at + 4, length - 2);
        constexpr std::string_view kExif("Exif\0\0", 6);
        if (marker == 0xE1 && segment.starts_with(kExif))
            header.orientation = OrientationIn(segment.substr(kExif.size()));
        if (IsStartOfFrame(marker)) {
            header.problem.clear();
            TakeSize(segment, bytes.size(), header);
            return header;
        }
        at += 2 + length;
    }
    return header;
}

}  // namespace tobbin
