#include "ui/JpegPictureMaker.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace tobbin {
namespace {

constexpr std::uint64_t kLargestFile = Megabytes(128);
// Larger than what any camera takes in one picture.
constexpr std::int64_t kMostPixels = 150'000'000;

constexpr char kDamaged[] = "the file is damaged, or no JPEG picture that this system can decode";

PictureTurn TurnOf(int orientation) {
    constexpr std::array<PictureTurn, 8> kTurns = {{{false, false, 0},
                                                    {true, false, 0},
                                                    {false, false, 2},
                                                    {false, true, 0},
                                                    {false, true, 1},
                                                    {false, false, 1},
                                                    {true, false, 1},
                                                    {false, false, 3}}};
    return orientation >= 1 && orientation <= 8 ? kTurns[static_cast<std::size_t>(orientation) - 1]
                                                : PictureTurn{};
}

// The part of a stored picture, of a given size, that is seen in the upper left corner.
PicturePart Corner(PictureSize stored, PictureSize size, const PictureTurn& turn) {
    const bool right = (turn.quarters >= 2) != turn.mirrorX;
    const bool bottom = (turn.quarters == 1 || turn.quarters == 2) != turn.mirrorY;
    return {right ? stored.width - size.width : 0, bottom ? stored.height - size.height : 0,
            size.width, size.height};
}

}  // namespace

std::string JpegPictureMaker::Stamp(const std::string& path) {
    PathInfo info;
    if (!m_disk->Stat(path, info).Ok())
        return {};
    return std::to_string(info.size) + " " + std::to_string(info.modifiedTime);
}

Picture JpegPictureMaker::Make(const PictureRequest& request) {
    Picture picture;
    std::string bytes;
    PicturePixels pixels;
    picture.problem = ReadFile(request.path, bytes);
    if (picture.problem.empty()) {
        picture.problem = Decode(bytes, request, pixels);
        m_decoder->Close();
    }
    if (!picture.problem.empty())
        return picture;
    if (pixels.size != request.pane)
        pixels = Tiled(pixels, request.pane);
    if (request.veil)
        Veil(pixels, *request.veil);
    picture.pixels = std::move(pixels);
    return picture;
}

// Returns the problem, if there is one.
std::string JpegPictureMaker::ReadFile(const std::string& path, std::string& bytes) {
    PathInfo info;
    DiskStatus status = m_disk->Stat(path, info);
    if (status.Ok() && info.kind != PathKind::File)
        return "it is not there any more";
    if (status.Ok())
        status = ReadWholeFile(*m_disk, path, kLargestFile, bytes);
    if (status.Ok() && bytes.empty())
        return "the file is empty";
    return status.Ok() ? std::string() : status.Reason();
}

// Likewise.
std::string JpegPictureMaker::Decode(const std::string& bytes, const PictureRequest& request,
                                     PicturePixels& pixels) {
    if (!m_decoder->Open(bytes))
        return kDamaged;
    const PictureSize stored = m_decoder->Size();
    if (stored.width <= 0 || stored.height <= 0)
        return kDamaged;
    if (static_cast<std::int64_t>(stored.width) * stored.height > kMostPixels)
        return "it is too large (" + std::to_string(stored.width) + " x " +
               std::to_string(stored.height) + " pixels)";
    const PictureTurn turn = TurnOf(m_decoder->Orientation());
    const PictureSize pane = turn.quarters % 2 == 0
                                 ? request.pane
                                 : PictureSize{request.pane.height, request.pane.width};
    PicturePart part = CoveringPart(stored, pane);
    PictureSize size = pane;
    if (request.tiled) {
        size = {std::min(stored.width, pane.width), std::min(stored.height, pane.height)};
        part = Corner(stored, size, turn);
    }
    return m_decoder->Read(part, size, turn, pixels) ? std::string() : kDamaged;
}

}  // namespace tobbin
