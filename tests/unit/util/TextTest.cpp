#include "util/Text.h"

#include <gtest/gtest.h>

#include <numeric>

#include "fakes/FakeEnvironment.h"
#include "util/Convert.h"
#include "util/Crc32c.h"
#include "util/DataText.h"
#include "util/Errors.h"
#include "util/TextHash.h"
#include "util/Utf.h"

namespace tobbin {
namespace {

TEST(Text, PatternsKnowStarAndQuestionMarkOnly) {
    for (const auto& [text, pattern] :
         {std::pair("hard drive; can not", "*hard*"), std::pair("[a]#1", "[a]#1"),
          std::pair("abcabd", "*ab?"), std::pair("\xC3\xA9", "?"), std::pair("", "*")})
        EXPECT_TRUE(MatchesPattern(text, pattern)) << text;
    for (const auto& [text, pattern] :
         {std::pair("Song.mp3", "song.mp3"), std::pair("a", "[a]"), std::pair("", "?")})
        EXPECT_FALSE(MatchesPattern(text, pattern)) << text;
}

TEST(Text, FoldersOfPathsAndLinesOfTexts) {
    EXPECT_EQ(FolderOfPath("  C:\\Music\\song.mp3 "), "C:\\Music\\");
    EXPECT_EQ(FolderOfPath("song.mp3"), "");
    EXPECT_EQ(FolderWithSeparator("C:") + FolderWithSeparator("C:\\"), "C:\\C:\\");
    const auto lines = SplitLines("a\r\n\r\nb\nc\rd");
    EXPECT_EQ(std::vector<std::string>(lines.begin(), lines.end()),
              (std::vector<std::string>{"a", "", "b", "c", "d"}));
    EXPECT_EQ(SplitLines("a\r\n").size(), 1U);
    EXPECT_TRUE(SplitLines("").empty());
}

TEST(Convert, RoundsHalfToEvenAndRaisesWhatItMust) {
    for (const auto& [text, number] :
         {std::pair(" 1520 ", 1520), std::pair("+7", 7), std::pair("2.5", 2), std::pair("3.5", 4),
          std::pair("-2.5", -2), std::pair(".6", 1), std::pair("1e3", 1000),
          std::pair("2147483647", 2147483647)})
        EXPECT_EQ(ToLong(text), number);
    for (const char* bad : {"", " ", "abc", "1x", "-", "+-1", "inf", "nan", ".", "-.", "1 2"})
        EXPECT_THROW(ToLong(bad), TypeMismatchError) << bad;
    for (const char* big : {"2147483648", "-2147483649", "1e40", "1e999"})
        EXPECT_THROW(ToLong(big), OverflowError) << big;
    EXPECT_EQ(ToInteger("True"), -1);
    EXPECT_EQ(ToInteger(" false "), 0);
    EXPECT_THROW(ToInteger("40000"), OverflowError);
}

TEST(Utf, KeepsLoneSurrogatesAndPairs) {
    const std::u16string name = {u'a', 0xD800, u'b', 0xD83C, 0xDFB5, 0xDC00};
    const std::string text = Utf16ToUtf8(name);
    EXPECT_EQ(text, "a\355\240\200b\xF0\x9F\x8E\xB5\xED\xB0\x80");
    EXPECT_EQ(Utf8ToUtf16(text), name);
    EXPECT_TRUE(IsGeneralisedUtf8(text));
    for (const char* bad : {"\xC0\x80", "\x80", "\xE2\x82", "\xF5\x80\x80\x80", "\xE0\x80\x80"})
        EXPECT_FALSE(IsGeneralisedUtf8(bad));
}

TEST(Crc32c, IsThePublishedOne) {
    EXPECT_EQ(Crc32c(""), 0U);
    EXPECT_EQ(Crc32c("123456789"), 0xE3069283U);
    EXPECT_EQ(Crc32c(std::string(32, '\0')), 0x8A9136AAU);
    EXPECT_EQ(Crc32c(std::string(32, '\xFF')), 0x62A8AB43U);
}

TEST(DataText, IsAnsiWherePossibleAndMarkedUtf8Elsewhere) {
    const FakeText system;
    EXPECT_EQ(EncodeDataText(system, "Caf\xC3\xA9 \xE2\x82\xAC"), "Caf\xE9 \x80");
    EXPECT_EQ(EncodeDataText(system, "\xCE\xA9.mp3"), "\xEF\xBB\xBF\xCE\xA9.mp3");
    // Its ANSI bytes would look like the mark.
    EXPECT_EQ(EncodeDataText(system, "\xC3\xAF\xC2\xBB\xC2\xBF"),
              "\xEF\xBB\xBF\xC3\xAF\xC2\xBB\xC2\xBF");
    // Behind the mark stands no UTF-8: all of it is ANSI.
    EXPECT_EQ(DecodeDataText(system, "\xEF\xBB\xBF\xE9"), "\xC3\xAF\xC2\xBB\xC2\xBF\xC3\xA9");
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all.push_back(static_cast<char>(byte));
    EXPECT_EQ(EncodeDataText(system, DecodeDataText(system, all)), all);
    for (const char* text : {"", "plain", "\xCE\xA9\xED\xA0\x80", "\xC3\xAF\xC2\xBB\xC2\xBF"})
        EXPECT_EQ(DecodeDataText(system, EncodeDataText(system, text)), text);
}

// The hashes of CPython 3.11 for bytes with PYTHONHASHSEED=0, whose key is 0.
TEST(TextHash, IsSipHash) {
    std::string bytes(63, ' ');
    std::iota(bytes.begin(), bytes.end(), '\0');
    EXPECT_EQ(SipHash(0, 0, "a"), 0x407448D2B89B1813U);
    EXPECT_EQ(SipHash(0, 0, "C:\\Music\\"), 0x4E152C4B95FD3E4AU);
    EXPECT_EQ(SipHash(0, 0, bytes.substr(0, 15)), 0xF30EB725BB91C9EAU);
    EXPECT_EQ(SipHash(0, 0, bytes), 0x385D3E39E5F37359U);
    EXPECT_NE(SipHash(0, 1, "a"), SipHash(0, 0, "a"));
}

}  // namespace
}  // namespace tobbin
