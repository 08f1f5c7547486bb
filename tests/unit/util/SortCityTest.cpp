#include "util/SortCity.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <random>

#include "fakes/FakeEnvironment.h"
#include "util/Convert.h"
#include "util/Errors.h"
#include "util/StringTable.h"
#include "util/Utf.h"

namespace tobbin {
namespace {

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
    const char* const texts[] = {"abc",
                                 "ABC",
                                 "Zebra",
                                 "",
                                 "ab",
                                 "abcdefghi",
                                 "abcdefghI\xC3\x89",
                                 "abcdefghi\xC3\xA9",
                                 "\xEF\xBD\x81",
                                 "\xF0\x9F\x8E\xB5",
                                 "abcdefgh\xF0\x9F\x8E\xB5"};
    const char* const numbers[] = {"1",   "2",  "10",          "9",          " 9 ", "2.5",
                                   "3.5", "-4", "-2147483648", "2147483647", "1e2"};
    const char* const bad[] = {"", "x", "2147483648"};
    std::mt19937 chance(20);
    const auto upTo = [&](int limit) {
        return std::uniform_int_distribution<int>(0, limit)(chance);
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
                plain.At(column, row) = hasBadKeys && upTo(9) == 0 ? bad[upTo(2)]
                                        : routine >= 2             ? numbers[upTo(distinct)]
                                                                   : texts[upTo(distinct)];
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

}  // namespace
}  // namespace tobbin
