#include <gtest/gtest.h>
#include <windows.h>

#include <shlwapi.h>
#include <wincodec.h>

#include <random>

#include "platform/ComPtr_win32.h"
#include "platform/Wide_win32.h"
#include "ui/WicDecoder_win32.h"
#include "windows/TemporaryFolder.h"

namespace tobbin {
namespace {

constexpr int kWidth = 320, kHeight = 200;
constexpr std::uint32_t kQuarters[4] = {0xC02020, 0x20C020, 0x2020C0, 0xC0C0C0};

// Writes a JPEG picture of four colored quarters with the system's own encoder.
void WritePicture(const std::string& path) {
    const auto factory = MaybeCreate<IWICImagingFactory>(CLSID_WICImagingFactory);
    IWICStream* stream = nullptr;
    IWICBitmapEncoder* encoder = nullptr;
    IWICBitmapFrameEncode* frame = nullptr;
    IPropertyBag2* options = nullptr;
    ASSERT_EQ(factory->CreateStream(&stream), S_OK);
    const ComPtr<IWICStream> ownedStream(stream);
    ASSERT_EQ(stream->InitializeFromFilename(Wide(path).c_str(), GENERIC_WRITE), S_OK);
    ASSERT_EQ(factory->CreateEncoder(GUID_ContainerFormatJpeg, nullptr, &encoder), S_OK);
    const ComPtr<IWICBitmapEncoder> ownedEncoder(encoder);
    ASSERT_EQ(encoder->Initialize(stream, WICBitmapEncoderNoCache), S_OK);
    ASSERT_EQ(encoder->CreateNewFrame(&frame, &options), S_OK);
    const ComPtr<IWICBitmapFrameEncode> ownedFrame(frame);
    const ComPtr<IPropertyBag2> ownedOptions(options);
    ASSERT_EQ(frame->Initialize(options), S_OK);
    ASSERT_EQ(frame->SetSize(kWidth, kHeight), S_OK);
    WICPixelFormatGUID format = GUID_WICPixelFormat24bppBGR;
    ASSERT_EQ(frame->SetPixelFormat(&format), S_OK);
    std::vector<BYTE> pixels;
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x)
            for (int shift = 0; shift <= 16; shift += 8)
                pixels.push_back(static_cast<BYTE>(
                    kQuarters[y / (kHeight / 2) * 2 + x / (kWidth / 2)] >> shift));
    ASSERT_EQ(
        frame->WritePixels(kHeight, kWidth * 3, static_cast<UINT>(pixels.size()), pixels.data()),
        S_OK);
    ASSERT_EQ(frame->Commit(), S_OK);
    ASSERT_EQ(encoder->Commit(), S_OK);
}

class PictureTest : public testing::Test {
 protected:
    ComApartment com;
    TemporaryFolder folder;
    std::string path = folder / "Bild \xCE\xA9.jpg";
    std::unique_ptr<PictureMaker> maker = MakeSystemPictureMaker();

    void SetUp() override { WritePicture(path); }
    static bool IsAbout(std::uint32_t pixel, std::uint32_t color) {
        for (int shift = 0; shift <= 16; shift += 8)
            if (std::abs(static_cast<int>(pixel >> shift & 0xFF) -
                         static_cast<int>(color >> shift & 0xFF)) > 12)
                return false;
        return true;
    }
    static void ExpectQuarters(const PicturePixels& pixels) {
        for (int i = 0; i < 4; ++i) {
            const std::uint32_t pixel = pixels.Row(pixels.size.height * (i / 2 * 2 + 1) /
                                                   4)[pixels.size.width * (i % 2 * 2 + 1) / 4];
            EXPECT_TRUE(IsAbout(pixel, kQuarters[i])) << std::hex << pixel;
        }
    }
};

TEST_F(PictureTest, IsDecodedInEverySize) {
    for (const PictureSize size : {PictureSize{kWidth, kHeight}, PictureSize{33, 21},
                                   PictureSize{100, 200}, PictureSize{700, 500}}) {
        const Picture picture = maker->Make({path, size});
        ASSERT_EQ(picture.problem, "");
        EXPECT_EQ(picture.pixels.size, size);
        ExpectQuarters(picture.pixels);
    }
    const Picture tiled = maker->Make({path, {kWidth * 2, kHeight}, true});
    EXPECT_TRUE(IsAbout(tiled.pixels.Row(10)[kWidth + 10], kQuarters[0]));
}

// Whatever is in the file, there is a picture of the size wanted or a problem.
TEST_F(PictureTest, OfADamagedFileEndsWithAProblemOrAPicture) {
    const std::string whole = Content(path);
    std::mt19937 random(7);
    const auto pick = [&](std::size_t below) { return random() % below; };
    for (int i = 0; i < 150; ++i) {
        std::string bytes = whole;
        for (std::size_t flips = pick(8); flips > 0; --flips)
            bytes[pick(bytes.size())] = static_cast<char>(random());
        if (i % 2 == 0)
            bytes.resize(pick(bytes.size()));
        WriteFileWith(path, bytes);
        const Picture picture = maker->Make({path, {40, 30}});
        EXPECT_EQ(picture.problem.empty(), picture.pixels.size == (PictureSize{40, 30}));
    }
    WriteFileWith(path, whole + "what comes behind the picture");
    ExpectQuarters(maker->Make({path, {40, 25}}).pixels);
    EXPECT_EQ(maker->Make({folder / "gone.jpg", {9, 9}}).problem, "it is not there any more");
}

}  // namespace
}  // namespace tobbin
