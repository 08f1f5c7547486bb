#include "ui/JpegPictureMaker.h"

#include <gtest/gtest.h>

#include "fakes/FakeDisk.h"
#include "ui/PictureScaler.h"

namespace tobbin {
namespace {

using Rows = std::vector<std::uint32_t>;

// A JPEG file of nothing but its header.
std::string FileOf(PictureSize size, int orientation) {
    std::string bytes = "\xFF\xD8\xFF\xE1";
    bytes +=
        std::string("\0\x22", 2) + std::string("Exif\0\0II*\0\x08\0\0\0\1\0\x12\1\3\0\1\0\0\0", 24);
    bytes += static_cast<char>(orientation);
    bytes += std::string(7, '\0') + "\xFF\xC0";
    bytes += std::string("\0\x0B\x08", 3);
    for (const int number : {size.height, size.width})
        bytes += {static_cast<char>(number >> 8), static_cast<char>(number & 0xFF)};
    return bytes + std::string(2000, '\0');
}

// Pixels that tell their place in the stored picture, as it was before the decoder made it smaller:
// the column's low byte in the red part, the row's in the green one.
class FakeDecoder : public JpegDecoder {
 public:
    PictureSize stored;
    int reducedBy = 0;
    int readable = 1'000'000;  // rows
    std::size_t mostPixels = 0;
    bool Open(std::string_view, int reduceBy) override {
        reducedBy = reduceBy;
        return stored.width > 0;
    }
    PictureSize Size() const override {
        return {stored.width / reducedBy, stored.height / reducedBy};
    }
    bool Read(const PicturePart& part, std::span<std::uint32_t> pixels) override {
        EXPECT_EQ(pixels.size(), static_cast<std::size_t>(part.width * part.height));
        EXPECT_GE(part.x, 0);
        EXPECT_LE(part.x + part.width, Size().width);
        EXPECT_LE(part.y + part.height, Size().height);
        mostPixels = std::max(mostPixels, pixels.size());
        for (std::size_t i = 0; i < pixels.size(); ++i) {
            const auto x = part.x + static_cast<int>(i) % part.width;
            const auto y = part.y + static_cast<int>(i) / part.width;
            pixels[i] = static_cast<std::uint32_t>((x * reducedBy & 0xFF) << 16 |
                                                   (y * reducedBy & 0xFF) << 8);
        }
        return part.y + part.height <= readable;
    }
    void Close() override {}
};

class JpegPictureMakerTest : public testing::Test {
 protected:
    FakeDisk* disk = new FakeDisk;
    FakeDecoder* decoder = new FakeDecoder;
    JpegPictureMaker maker{std::unique_ptr<Disk>(disk), std::unique_ptr<JpegDecoder>(decoder)};

    Picture Make(PictureSize stored, PictureSize pane, bool tiled, int orientation = 1) {
        decoder->stored = stored;
        disk->AddFile("C:\\a.jpg", FileOf(stored, orientation));
        return maker.Make({"C:\\a.jpg", pane, tiled});
    }
};

// A picture of three columns a b c and two rows, as each orientation shows it.
TEST_F(JpegPictureMakerTest, TurnsThePictureAsTheCameraWasHeld) {
    const std::uint32_t a1 = 0, b1 = 0x10000, c1 = 0x20000;
    const std::uint32_t a2 = 0x100, b2 = 0x10100, c2 = 0x20100;
    const Rows expected[] = {{a1, b1, c1, a2, b2, c2}, {c1, b1, a1, c2, b2, a2},
                             {c2, b2, a2, c1, b1, a1}, {a2, b2, c2, a1, b1, c1},
                             {a1, a2, b1, b2, c1, c2}, {a2, a1, b2, b1, c2, c1},
                             {c2, c1, b2, b1, a2, a1}, {c1, c2, b1, b2, a1, a2}};
    for (int orientation = 1; orientation <= 8; ++orientation) {
        SCOPED_TRACE(orientation);
        const PictureSize seen = orientation < 5 ? PictureSize{3, 2} : PictureSize{2, 3};
        for (const bool tiled : {false, true})
            EXPECT_EQ(Make({3, 2}, seen, tiled, orientation).pixels.pixels,
                      expected[orientation - 1]);
        // Only its first pixel fits.
        EXPECT_EQ(Make({3, 2}, {1, 1}, true, orientation).pixels.pixels[0],
                  expected[orientation - 1][0]);
    }
}

TEST_F(JpegPictureMakerTest, TilesInNaturalSizeFromTheCorner) {
    EXPECT_EQ(Make({2, 1}, {3, 2}, true).pixels.pixels, (Rows{0, 0x10000, 0, 0, 0x10000, 0}));
    EXPECT_EQ(Make({200, 100}, {2, 2}, true).pixels.pixels, (Rows{0, 0x10000, 0x100, 0x10100}));
    EXPECT_EQ(decoder->reducedBy, 1);
}

TEST_F(JpegPictureMakerTest, CoversThePaneWithTheMiddleAndKeepsTheProportions) {
    // 200 x 100 on 50 x 50: every second pixel of the columns 50 to 149, as the decoder gives them.
    const Picture wide = Make({200, 100}, {50, 50}, false);
    EXPECT_EQ(decoder->reducedBy, 2);
    EXPECT_EQ(wide.pixels.Row(0)[0], 50U << 16);
    EXPECT_EQ(wide.pixels.Row(49)[49], 148U << 16 | 98U << 8);
}

TEST_F(JpegPictureMakerTest, EnlargesSmoothly) {
    PicturePixels two({2, 1});
    two.pixels = {0x000080, 0x800000};
    EXPECT_EQ(Enlarged(two, {4, 1}).pixels, (Rows{0x000080, 0x200060, 0x600020, 0x800000}));
}

TEST_F(JpegPictureMakerTest, ShrinksToTheMeanOfTheArea) {
    EXPECT_EQ(Make({3, 3}, {2, 2}, false).pixels.pixels,
              (Rows{0x000000, 0x020000, 0x000200, 0x020200}));
}

TEST_F(JpegPictureMakerTest, NeedsFewRowsAtATimeWhateverTheShape) {
    for (const PictureSize size : {PictureSize{9000, 100}, PictureSize{20, 50000}}) {
        EXPECT_EQ(Make(size, {100, 100}, false).problem, "");
        EXPECT_LE(decoder->mostPixels, 64U * 200U);
    }
}

TEST_F(JpegPictureMakerTest, TellsWhyThereIsNoPicture) {
    EXPECT_EQ(maker.Make({"C:\\gone.jpg", {9, 9}}).problem, "it is not there any more");
    disk->AddFolder("C:\\folder.jpg");
    EXPECT_EQ(maker.Make({"C:\\folder.jpg", {9, 9}}).problem, "it is not there any more");
    EXPECT_EQ(Make({0, 9}, {9, 9}, false).problem, "the file is damaged");
    decoder->readable = 100;
    const Picture cut = Make({300, 300}, {90, 90}, false);
    EXPECT_EQ(cut.problem,
              "the file is damaged, or of a kind of JPEG that this system can't decode");
    EXPECT_TRUE(cut.pixels.pixels.empty());
    disk->Lock("C:\\a.jpg", DiskError::AccessDenied);
    EXPECT_EQ(maker.Make({"C:\\a.jpg", {9, 9}}).problem, "access is denied");
}

// Black text on white: every share of dark pixels above one in a hundred is lightened enough.
TEST(Veil, KeepsTextsReadableAndLeavesTheRestItsColors) {
    const auto share = [](std::uint32_t color, std::uint32_t veil, int every = 1) {
        PicturePixels picture({40, 25});
        for (std::size_t i = 0; i < picture.pixels.size(); ++i)
            picture.pixels[i] = i % static_cast<std::size_t>(every) == 0 ? color : veil;
        return Veil(picture, veil);
    };
    EXPECT_EQ(share(0x000000, 0xFFFFFF), 60);
    EXPECT_EQ(share(0x000000, 0xFFFFFF, 50), 60);
    EXPECT_EQ(share(0x000000, 0xFFFFFF, 200), 25);
    EXPECT_EQ(share(0xFFFFFF, 0x000000), 60);
    EXPECT_EQ(share(0xC0C0C0, 0xFFFFFF), 25);
    PicturePixels gray({1, 1});
    gray.pixels[0] = 0x808080;
    EXPECT_EQ(Veil(gray, 0xFFFFFF), 25);
    EXPECT_EQ(gray.pixels[0], 0xA0A0A0U);
}

}  // namespace
}  // namespace tobbin
