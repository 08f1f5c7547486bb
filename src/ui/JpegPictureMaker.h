#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/Disk.h"
#include "ui/PictureMaker.h"

namespace tobbin {

// How a stored picture is turned to be seen: mirrored first, then turned by quarters, clockwise.
struct PictureTurn {
    bool mirrorX = false;  // left and right
    bool mirrorY = false;  // top and bottom
    int quarters = 0;      // 0 to 3
    bool operator==(const PictureTurn&) const = default;
};

// Decodes one JPEG picture at a time.
class JpegDecoder {
 public:
    virtual ~JpegDecoder() = default;

    // Begins with a file's bytes, which stay valid until Close. False when they are no picture that
    // can be decoded.
    virtual bool Open(std::string_view bytes) = 0;
    virtual PictureSize Size() const = 0;  // as stored

    // How the camera was held: the EXIF number of the orientation, 1 to 8, of which 1 is upright.
    virtual int Orientation() const = 0;

    // The pixels of a part, as stored, scaled to a size and then turned. False when the file can't
    // be decoded any further.
    virtual bool Read(const PicturePart& part, PictureSize to, const PictureTurn& turn,
                      PicturePixels& pixels) = 0;
    virtual void Close() = 0;
};

// Makes pictures of JPEG files. What to decode is told by the header; no more is asked for than is
// shown.
class JpegPictureMaker : public PictureMaker {
 public:
    JpegPictureMaker(std::unique_ptr<Disk> disk, std::unique_ptr<JpegDecoder> decoder)
        : m_disk(std::move(disk)), m_decoder(std::move(decoder)) {}

    std::string Stamp(const std::string& path) override;
    Picture Make(const PictureRequest& request) override;

 private:
    std::string ReadFile(const std::string& path, std::string& bytes);
    std::string Decode(const std::string& bytes, const PictureRequest& request,
                       PicturePixels& pixels);

    std::unique_ptr<Disk> m_disk;
    std::unique_ptr<JpegDecoder> m_decoder;
};

}  // namespace tobbin
