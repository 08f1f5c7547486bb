#include "ui/JpegHeader.h"

#include <gtest/gtest.h>

namespace tobbin {
namespace {

using std::string_literals::operator""s;

constexpr char kDamaged[] = "the file is damaged";

std::string Word(int value) {
    return {static_cast<char>(value >> 8), static_cast<char>(value & 0xFF)};
}
std::string Segment(int marker, const std::string& data) {
    return Word(0xFF00 | marker) + Word(static_cast<int>(data.size()) + 2) + data;
}
std::string Frame(int width, int height) {
    return Segment(0xC2, "\x08"s + Word(height) + Word(width) + "\x01\x01\x11\0"s);
}
// Followed by as many bytes as even a picture of one color needs.
std::string File(const std::string& segments, std::size_t rest = 400'000) {
    return "\xFF\xD8"s + segments + std::string(rest, 'x');
}
std::string Problem(const std::string& bytes) {
    return ReadJpegHeader(bytes).problem;
}

TEST(JpegHeader, TellsTheSizeBehindAllElse) {
    const std::string file = File(Segment(0xE0, "JFIF\0...."s) + "\xFF"s + Segment(0xC4, "table") +
                                  Segment(0xDB, "\xFF\xC0\x00") + Frame(640, 480) + Frame(1, 1));
    const JpegHeader header = ReadJpegHeader(file);
    EXPECT_EQ(header.problem, "");
    EXPECT_EQ(header.size, (PictureSize{640, 480}));
    EXPECT_EQ(header.orientation, 1);
}

TEST(JpegHeader, RefusesWhatIsNoPictureAndWhatOnlyClaimsItsSize) {
    EXPECT_EQ(Problem(""), "the file is empty");
    EXPECT_EQ(Problem("\x89PNG\r\n\x1A\n"), "it is not a JPEG picture");
    EXPECT_EQ(Problem(File(Frame(65535, 65535))), "it is too large (65535 x 65535 pixels)");
    EXPECT_EQ(Problem(File(Frame(15000, 10001))), "it is too large (15000 x 10001 pixels)");
    EXPECT_EQ(Problem(File(Frame(15000, 10000))), "");
    EXPECT_EQ(Problem(File(Frame(15000, 10000), 100'000)), kDamaged);
    for (const std::string& segments :
         {Frame(0, 480), Frame(640, 0), Segment(0xDA, "scan"), Segment(0xC0, "\x08"),
          "\xFF\xE0\0\0"s, "\xFF\xD9"s, Segment(0xE0, "a") + "no marker"})
        EXPECT_EQ(Problem(File(segments)), kDamaged) << segments.size();
}

TEST(JpegHeader, OfACutFileIsDamaged) {
    const std::string whole =
        "\xFF\xD8"s + Segment(0xE1, "Exif\0\0MM\0*\0\0\0\x08\0\1"s) + Frame(8, 8);
    EXPECT_EQ(Problem(whole), "");
    for (std::size_t length = 3; length < whole.size(); ++length)
        EXPECT_EQ(Problem(whole.substr(0, length)), kDamaged) << length;
}

TEST(JpegHeader, FindsTheOrientationInBothByteOrders) {
    const std::string big =
        "MM\0*\0\0\0\x08\0\2\1\0\0\3\0\0\0\1\0\7\0\0\1\x12\0\3\0\0\0\1\0\6\0\0"s;
    const std::string little = "II*\0\x08\0\0\0\1\0\x12\1\3\0\1\0\0\0\x08\0\0\0"s;
    const auto orientation = [](const std::string& tiff) {
        return ReadJpegHeader(File(Segment(0xE1, "Exif\0\0"s + tiff) + Frame(8, 8))).orientation;
    };
    EXPECT_EQ(orientation(big), 6);
    EXPECT_EQ(orientation(little), 8);
    EXPECT_EQ(orientation(big.substr(0, 30)), 1);
    EXPECT_EQ(orientation("II*\0\xFF\xFF\xFF\xFF\1\0\x12\1\3\0\1\0\0\0\x08\0\0\0"s), 1);
    EXPECT_EQ(orientation("II*\0\x08\0\0\0\1\0\x12\1\3\0\1\0\0\0\x09\0\0\0"s), 1);
}

}  // namespace
}  // namespace tobbin
