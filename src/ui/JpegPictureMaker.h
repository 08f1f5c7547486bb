#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "platform/Disk.h"
#include "ui/PictureMaker.h"

namespace tobbin {

// Decodes one JPEG picture at a time.
class JpegDecoder {
 public:
    virtual ~JpegDecoder() = default;

    // Begins with a file's bytes, which stay valid until Close. Where it saves work the decoder
    // makes the picture smaller by `reduceBy` (1, 2, 4 or 8) in both directions. Returns whether
    // it can decode the picture.
    virtual bool Open(std::string_view bytes, int reduceBy) = 0;
    virtual PictureSize Size() const = 0;

    // The pixels of a part, as in PicturePixels. Parts are asked for from the top. False when the
    // file can't be decoded any further.
    virtual bool Read(const PicturePart& part, std::span<std::uint32_t> pixels) = 0;
    virtual void Close() = 0;
};

// Makes pictures of JPEG files. Decodes no more than is shown and needs, beside the file, the
// memory of a pane and of a few rows.
class JpegPictureMaker : public PictureMaker {
 public:
    JpegPictureMaker(std::unique_ptr<Disk> disk, std::unique_ptr<JpegDecoder> decoder)
        : m_disk(std::move(disk)), m_decoder(std::move(decoder)) {}

    std::string Stamp(const std::string& path) override;
    Picture Make(const PictureRequest& request) override;

 private:
    std::string ReadFile(const std::string& path, std::string& bytes);
    bool ReadScaled(const PicturePart& part, PictureSize to, PicturePixels& result);

    std::unique_ptr<Disk> m_disk;
    std::unique_ptr<JpegDecoder> m_decoder;
};

}  // namespace tobbin
