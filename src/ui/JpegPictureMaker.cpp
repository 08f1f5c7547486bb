#include "ui/JpegPictureMaker.h"

#include <algorithm>
#include <utility>

#include "ui/JpegHeader.h"
#include "ui/PictureScaler.h"

namespace tobbin {
namespace {

constexpr std::uint64_t kLargestFile = Megabytes(128);
constexpr int kRowsAtOnce = 64;

// How far the decoder may reduce a part so that it still holds every pixel of what is shown.
int Reduction(const PicturePart& part, PictureSize to) {
    int by = 1;
    while (by < 8 && part.width / (by * 2) >= to.width && part.height / (by * 2) >= to.height)
        by *= 2;
    return by;
}

int Scaled(int value, int times, int by) {
    return static_cast<int>(static_cast<std::int64_t>(value) * times / by);
}

// The part of a picture of the size `to` that is the part of one of the size `from`.
PicturePart ScaledPart(const PicturePart& part, PictureSize from, PictureSize to) {
    PicturePart result{Scaled(part.x, to.width, from.width), Scaled(part.y, to.height, from.height),
                       std::max(1, Scaled(part.width, to.width, from.width)),
                       std::max(1, Scaled(part.height, to.height, from.height))};
    result.x = std::min(result.x, to.width - result.width);
    result.y = std::min(result.y, to.height - result.height);
    return result;
}

PictureSize Turn(PictureSize seen, int orientation) {
    return TurnedSize(seen, orientation);  // the way back is the same
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
    picture.problem = ReadFile(request.path, bytes);
    if (!picture.problem.empty())
        return picture;
    const JpegHeader header = ReadJpegHeader(bytes);
    picture.problem = header.problem;
    if (!picture.problem.empty())
        return picture;
    const PictureSize seen = TurnedSize(header.size, header.orientation);
    const PicturePart seenPart = request.tiled
                                     ? PicturePart{0, 0, std::min(seen.width, request.pane.width),
                                                   std::min(seen.height, request.pane.height)}
                                     : CoveringPart(seen, request.pane);
    const PictureSize seenTarget =
        request.tiled ? PictureSize{seenPart.width, seenPart.height} : request.pane;
    const PicturePart part = StoredPart(seenPart, header.size, header.orientation);
    const PictureSize target = Turn(seenTarget, header.orientation);
    PicturePixels pixels;
    const bool decoded =
        m_decoder->Open(bytes, Reduction(part, target)) && m_decoder->Size().width > 0 &&
        m_decoder->Size().height > 0 &&
        ReadScaled(ScaledPart(part, header.size, m_decoder->Size()), target, pixels);
    m_decoder->Close();
    if (!decoded) {
        picture.problem = "the file is damaged, or of a kind of JPEG that this system can't decode";
        return picture;
    }
    if (header.orientation != 1)
        pixels = Turned(pixels, header.orientation);
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
    return status.Ok() ? std::string() : status.Reason();
}

bool JpegPictureMaker::ReadScaled(const PicturePart& part, PictureSize to, PicturePixels& result) {
    const PictureSize size{part.width, part.height};
    if (to == size || to.width > size.width || to.height > size.height) {
        PicturePixels all(size);
        if (!m_decoder->Read(part, all.pixels))
            return false;
        result = to == size ? std::move(all) : Enlarged(all, to);
        return true;
    }
    PictureShrinker shrinker(size, to);
    PicturePixels rows({part.width, kRowsAtOnce});
    for (int y = 0; y < part.height; y += kRowsAtOnce) {
        const int count = std::min(kRowsAtOnce, part.height - y);
        const std::size_t pixels =
            static_cast<std::size_t>(part.width) * static_cast<std::size_t>(count);
        if (!m_decoder->Read({part.x, part.y + y, part.width, count},
                             std::span(rows.pixels).first(pixels)))
            return false;
        for (int i = 0; i < count; ++i)
            shrinker.AddRow({rows.Row(i), static_cast<std::size_t>(part.width)});
    }
    result = shrinker.Take();
    return true;
}

}  // namespace tobbin
