#include "util/Text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>
#include <random>

#include "fakes/FakeEnvironment.h"
#include "util/Convert.h"
#include "util/Crc32c.h"
#include "util/DataText.h"
#include "util/Errors.h"
#include "util/ShownText.h"
#include "util/SortCity.h"
#include "util/StringTable.h"
#include "util/TextHash.h"
#include "util/Utf.h"

namespace tobbin {
namespace {

TEST(Text, PatternsKnowStarAndQuestionMarkOnly) {
    for (const auto& [text, pattern, matches] : {std::tuple("hard drive; can not", "*hard*", true),
                                                 {"[a]#1", "[a]#1", true},
                                                 {"abcabd", "*ab?", true},
                                                 {"\xC3\xA9", "?", true},
                                                 {"", "*", true},
                                                 {"Song.mp3", "song.mp3", false},
                                                 {"a", "[a]", false},
                                                 {"", "?", false}})
        EXPECT_EQ(MatchesPattern(text, pattern), matches) << text;
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

TEST(Text, IsShownWithoutWhatHidesOrTurnsIt) {
    EXPECT_EQ(ShownText("a\x01\t\nb\x7F\u202Egpj.exe\u2066\u200F\xC2\x85 c\u00E9\xED\xA0\x80"),
              "abgpj.exe c\u00E9\xED\xA0\x80");
    EXPECT_EQ(ShownText("1\r\n2\x1B", ShownIn::Box), "1\r\n2");
}

TEST(Convert, RoundsHalfToEvenAndRaisesWhatItMust) {
    for (const auto& [text, number] : {std::pair(" 1520 ", 1520),
                                       {"+7", 7},
                                       {"2.5", 2},
                                       {"3.5", 4},
                                       {"-2.5", -2},
                                       {".6", 1},
                                       {"1e3", 1000},
                                       {"2147483647", 2147483647}})
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
    EXPECT_EQ(Crc32c("123456789"), 0xE3069283U);
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

constexpr decltype(&SortCity::QuickSortStringsAscending) kRoutines[] = {
    &SortCity::QuickSortStringsAscending, &SortCity::QuickSortStringsDescending,
    &SortCity::QuickSortNumericAscending, &SortCity::QuickSortNumericDecending};

const FakeText kText;

// Numbers as numbers, texts as lower-cased UTF-16. Nothing is kept.
bool Before(std::string a, std::string b, int routine) {
    if (routine % 2 == 1)
        std::swap(a, b);
    if (routine >= 2)
        return ToLong(a) < ToLong(b);
    return Utf8ToUtf16(kText.ToLower(a)) < Utf8ToUtf16(kText.ToLower(b));
}

// The sort in plain steps. Returns how deep it went.
int PlainSort(StringTable& table, int first, int last, int keyColumn, int columns, int routine) {
    const std::string pivot =
        table.At(keyColumn, static_cast<int>(std::nearbyint((first + last) / 2.0)));
    int i = first;
    int j = last;
    while (i <= j) {
        while (Before(table.At(keyColumn, i), pivot, routine) && i < last)
            ++i;
        while (Before(pivot, table.At(keyColumn, j), routine) && j > first)
            --j;
        if (i <= j) {
            for (int column = 1; column <= columns; ++column)
                std::swap(table.At(column, i), table.At(column, j));
            ++i;
            --j;
        }
    }
    int depth = 0;
    if (first < j)
        depth = 1 + PlainSort(table, first, j, keyColumn, columns, routine);
    if (i < last)
        depth = std::max(depth, 1 + PlainSort(table, i, last, keyColumn, columns, routine));
    return depth;
}

void Sort(StringTable& table, int first, int last, int keyColumn, int columns, int routine) {
    SortCity sorter(kText);
    (sorter.*kRoutines[routine])(table, first, last, static_cast<std::int16_t>(keyColumn),
                                 static_cast<std::int16_t>(columns));
}

std::string ErrorOf(const std::function<void()>& work) {
    try {
        work();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "";
}

// One column of keys, the second of the rows' old numbers.
StringTable TableOf(const std::vector<std::string>& keys) {
    StringTable table(1, 2, 1, static_cast<int>(keys.size()));
    for (int row = 1; row <= table.UpperRow(); ++row) {
        table.At(1, row) = keys[static_cast<std::size_t>(row - 1)];
        table.At(2, row) = std::to_string(row);
    }
    return table;
}

// Where the plain steps need more than the bound of their depth, only the keys' order is promised.
TEST(SortCity, MovesRowsAsThePlainStepsDo) {
    // A pair of surrogates stands before U+FF41, though its UTF-8 begins with the higher byte.
    const auto texts = SplitLines(
        "abc\nABC\nZebra\n\nab\nabcdefghi\nabcdefghI\u00C9\nabcdefghi\u00E9\n\uFF41\n\U0001F3B5\n"
        "abcdefgh\U0001F3B5");
    const auto numbers = SplitLines("1\n2\n10\n9\n 9 \n2.5\n3.5\n-4\n-2147483648\n2147483647\n1e2");
    const auto bad = SplitLines("\nx\n2147483648");
    std::mt19937 chance(20);
    const auto upTo = [&](int limit) {
        return std::uniform_int_distribution<int>(0, limit)(chance);
    };
    const auto oneOf = [&](const auto& list, int limit) {
        return std::string(list[static_cast<std::size_t>(upTo(limit))]);
    };
    for (int round = 0; round < 3000; ++round) {
        SCOPED_TRACE(round);
        const int routine = upTo(3);
        const int lowerRow = upTo(6) - 3;
        const int lowerColumn = upTo(1);
        StringTable plain(lowerColumn, 1 + upTo(3), lowerRow, lowerRow + upTo(60));
        const bool hasBadKeys = upTo(4) == 0;
        const int distinct = upTo(10);
        for (int row = lowerRow; row <= plain.UpperRow(); ++row)
            for (int column = lowerColumn; column <= plain.UpperColumn(); ++column)
                plain.At(column, row) = hasBadKeys && upTo(9) == 0 ? oneOf(bad, 2)
                                        : routine >= 2             ? oneOf(numbers, distinct)
                                                                   : oneOf(texts, distinct);
        const int first = lowerRow + upTo(plain.UpperRow() - lowerRow);
        const int last = first + upTo(plain.UpperRow() - first);
        const int keyColumn = lowerColumn + upTo(plain.UpperColumn() - lowerColumn);
        const int columns = 1 + upTo(plain.UpperColumn() - 1);
        StringTable sorted = plain;
        int depth = 0;
        const std::string error =
            ErrorOf([&] { depth = PlainSort(plain, first, last, keyColumn, columns, routine); });
        EXPECT_EQ(ErrorOf([&] { Sort(sorted, first, last, keyColumn, columns, routine); }), error);
        const bool exact = depth <= 4 * std::log2(last - first + 1);
        for (int row = lowerRow; row <= plain.UpperRow(); ++row)
            for (int column = lowerColumn; column <= plain.UpperColumn(); ++column)
                if (exact || column == keyColumn) {
                    ASSERT_EQ(sorted.At(column, row), plain.At(column, row));
                }
    }
}

// The plain steps would never end with keys like an organ's pipes, or all equal.
TEST(SortCity, SortsAdverseTables) {
    constexpr int kRows = 200'000;
    for (const bool pipes : {true, false}) {
        std::vector<std::string> keys;
        for (int k = 0; k < kRows; ++k)
            keys.push_back(std::to_string(pipes ? 1'000'000 + std::min(k, kRows - 1 - k) : 7));
        StringTable table = TableOf(keys);
        Sort(table, 1, kRows, 1, 2, 2);
        for (int row = 1; row <= kRows; ++row) {
            ASSERT_LE(table.At(1, std::max(row - 1, 1)), table.At(1, row));
            ASSERT_EQ(table.At(1, row),
                      keys[static_cast<std::size_t>(ToLong(table.At(2, row)) - 1)]);
        }
    }
}

TEST(SortCity, RaisesWhatABadRequestDeserves) {
    constexpr int kMost = 2147483647;
    const std::string subscript = "Subscript out of range";
    const struct {
        int first, last, keyColumn, columns;
        std::string error;
    } requests[] = {{100, 50, 9, 9, ""},          {1, 1, 1, 2, ""},
                    {0, 3, 1, 2, subscript},      {1, 4, 1, 2, subscript},
                    {1, 3, 0, 2, subscript},      {1, 3, 3, 2, subscript},
                    {1, 3, 1, 3, subscript},      {1, 3, 1, 0, subscript},
                    {1, kMost, 1, 2, "Overflow"}, {kMost, kMost, 1, 2, "Overflow"}};
    for (const auto& [first, last, keyColumn, columns, error] : requests)
        for (const int routine : {0, 1, 2, 3}) {
            StringTable table = TableOf({"1", "1", "1"});
            EXPECT_EQ(ErrorOf([&, f = first, l = last, k = keyColumn, c = columns] {
                          Sort(table, f, l, k, c, routine);
                      }),
                      error)
                << first << ' ' << last;
        }
    constexpr int kFirst = (1 << 30) - 5;
    StringTable table(1, 1, kFirst, kFirst + 8);  // 2 * kFirst + 8 still is 32 bits
    EXPECT_THROW(Sort(table, kFirst, kFirst + 8, 1, 1, 0), OverflowError);
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
