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

enum class Routine { StringsAscending, StringsDescending, NumericAscending, NumericDecending };
constexpr Routine kRoutines[] = {Routine::StringsAscending, Routine::StringsDescending,
                                 Routine::NumericAscending, Routine::NumericDecending};

const FakeText kText;

bool IsNumeric(Routine routine) {
    return routine == Routine::NumericAscending || routine == Routine::NumericDecending;
}

// What is to be compared: numbers as numbers, texts as lower-cased UTF-16. Nothing is kept.
struct Key {
    Key(const std::string& cell, Routine routine) {
        if (IsNumeric(routine))
            number = ToLong(cell);
        else
            text = Utf8ToUtf16(kText.ToLower(cell));
    }
    bool operator<(const Key& b) const { return number < b.number || text < b.text; }
    std::int32_t number = 0;
    std::u16string text;
};

bool Before(const Key& a, const Key& b, Routine routine) {
    const bool ascending =
        routine == Routine::StringsAscending || routine == Routine::NumericAscending;
    return ascending ? a < b : b < a;
}

// The sort in plain steps, each key made anew for each comparison. Returns how deep it went.
int PlainSort(StringTable& table, int first, int last, int keyColumn, int columns,
              Routine routine) {
    const auto key = [&](int row) { return Key(table.At(keyColumn, row), routine); };
    const int middle = static_cast<int>(std::nearbyint((first + last) / 2.0));
    const Key pivot = key(middle);
    int i = first;
    int j = last;
    while (i <= j) {
        while (Before(key(i), pivot, routine) && i < last)
            ++i;
        while (Before(pivot, key(j), routine) && j > first)
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

void Sort(StringTable& table, int first, int last, int keyColumn, int columns, Routine routine) {
    constexpr decltype(&SortCity::QuickSortStringsAscending) kMethods[] = {
        &SortCity::QuickSortStringsAscending, &SortCity::QuickSortStringsDescending,
        &SortCity::QuickSortNumericAscending, &SortCity::QuickSortNumericDecending};
    SortCity sorter(kText);
    (sorter.*kMethods[static_cast<int>(routine)])(table, first, last,
                                                  static_cast<std::int16_t>(keyColumn),
                                                  static_cast<std::int16_t>(columns));
}

std::vector<std::string> Cells(const StringTable& table) {
    std::vector<std::string> cells;
    for (int row = table.LowerRow(); row <= table.UpperRow(); ++row)
        for (int column = table.LowerColumn(); column <= table.UpperColumn(); ++column)
            cells.push_back(table.At(column, row));
    return cells;
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

// Sorts a table both ways. The plain steps may need more than the bound of their depth; then only
// the order of the keys, and that each row stayed whole, is promised.
void ExpectSortedAsByPlainSteps(const StringTable& table, int first, int last, int keyColumn,
                                int columns, Routine routine) {
    StringTable plain = table;
    StringTable sorted = table;
    int depth = 0;
    const std::string error =
        ErrorOf([&] { depth = PlainSort(plain, first, last, keyColumn, columns, routine); });
    EXPECT_EQ(ErrorOf([&] { Sort(sorted, first, last, keyColumn, columns, routine); }), error);
    if (depth <= 4 * std::log2(last - first + 1)) {
        ASSERT_EQ(Cells(sorted), Cells(plain));
        return;
    }
    for (int row = first; row <= last; ++row) {
        ASSERT_EQ(sorted.At(keyColumn, row), plain.At(keyColumn, row));
        ASSERT_EQ(sorted.At(1, row), table.At(1, ToLong(sorted.At(2, row))));
    }
}

TEST(SortCity, MovesRowsAsThePlainStepsDo) {
    // A pair of surrogates stands before U+FF41, though its UTF-8 begins with the higher byte.
    const char* const texts[] = {"abc",
                                 "ABC",
                                 "aBc",
                                 "Zebra",
                                 "apple",
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
        const Routine routine = kRoutines[upTo(3)];
        const int lowerRow = upTo(6) - 3;
        const int lowerColumn = upTo(1);
        StringTable table(lowerColumn, 1 + upTo(3), lowerRow, lowerRow + upTo(60));
        const bool hasBadKeys = upTo(4) == 0;
        const int distinct = upTo(10);
        for (int row = lowerRow; row <= table.UpperRow(); ++row)
            for (int column = lowerColumn; column <= table.UpperColumn(); ++column) {
                table.At(column, row) =
                    IsNumeric(routine) ? numbers[upTo(distinct)] : texts[upTo(distinct + 2)];
                if (hasBadKeys && upTo(9) == 0)
                    table.At(column, row) = bad[upTo(2)];
            }
        const int first = lowerRow + upTo(table.UpperRow() - lowerRow);
        const int last = first + upTo(table.UpperRow() - first);
        const int keyColumn = lowerColumn + upTo(table.UpperColumn() - lowerColumn);
        const int columns = 1 + upTo(table.UpperColumn() - 1);
        SCOPED_TRACE(round);
        ASSERT_NO_FATAL_FAILURE(
            ExpectSortedAsByPlainSteps(table, first, last, keyColumn, columns, routine));
    }
}

// Keys in arrangements that quick-sorts find hard: the key of row k of n, both from 0.
using Arrangement = int (*)(int k, int n);
constexpr Arrangement kOrganPipe = [](int k, int n) { return std::min(k, n - 1 - k); };
constexpr Arrangement kValley = [](int k, int n) { return std::max(k, n - 1 - k); };
constexpr Arrangement kEqual = [](int, int) { return 7; };

std::vector<std::string> Arranged(Arrangement arrangement, int rows) {
    std::vector<std::string> keys;
    for (int k = 0; k < rows; ++k)
        keys.push_back(std::to_string(1'000'000 + arrangement(k, rows)));
    return keys;
}

TEST(SortCity, SortsAdverseTables) {
    for (const Arrangement arrangement : {kOrganPipe, kValley, kEqual})
        for (const int rows : {2, 3, 17, 500})
            for (const Routine routine : kRoutines) {
                SCOPED_TRACE(rows);
                ASSERT_NO_FATAL_FAILURE(ExpectSortedAsByPlainSteps(
                    TableOf(Arranged(arrangement, rows)), 1, rows, 1, 2, routine));
            }
    // The plain steps would never end here.
    for (const Arrangement arrangement : {kOrganPipe, kEqual}) {
        StringTable table = TableOf(Arranged(arrangement, 200'000));
        Sort(table, 1, 200'000, 1, 2, Routine::NumericAscending);
        for (int row = 2; row <= 200'000; ++row)
            ASSERT_LE(table.At(1, row - 1), table.At(1, row));
    }
}

TEST(SortCity, RaisesWhatABadRequestDeserves) {
    struct Request {
        int first, last, keyColumn, columns;
        const char* error;
    };
    constexpr int kMost = 2147483647;
    const Request requests[] = {{3, 1, 1, 2, ""},
                                {100, 50, 9, 9, ""},
                                {1, 1, 1, 2, ""},
                                {1, 3, 2, 1, ""},
                                {0, 3, 1, 2, "Subscript out of range"},
                                {1, 4, 1, 2, "Subscript out of range"},
                                {1, 3, 0, 2, "Subscript out of range"},
                                {1, 3, 3, 2, "Subscript out of range"},
                                {1, 3, 1, 3, "Subscript out of range"},
                                {1, 3, 1, 0, "Subscript out of range"},
                                {1, kMost, 1, 2, "Overflow"},
                                {kMost, kMost, 1, 2, "Overflow"},
                                {kMost, 1, 1, 2, "Overflow"}};
    for (const Request& request : requests)
        for (const Routine routine : kRoutines) {
            StringTable table = TableOf({"1", "1", "1"});
            EXPECT_EQ(ErrorOf([&] {
                          Sort(table, request.first, request.last, request.keyColumn,
                               request.columns, routine);
                      }),
                      request.error)
                << request.first << ' ' << request.last;
        }
    StringTable zeroBased(2, 3, 1, 2);
    EXPECT_THROW(Sort(zeroBased, 1, 2, 2, 3, Routine::StringsAscending), SubscriptOutOfRangeError);
    constexpr int kFirst = (1 << 30) - 5;
    StringTable table(1, 1, kFirst, kFirst + 8);  // 2 * kFirst + 8 still is 32 bits
    EXPECT_THROW(Sort(table, kFirst, kFirst + 8, 1, 1, Routine::StringsAscending), OverflowError);
}

}  // namespace
}  // namespace tobbin
