#include <algorithm>
#include <cstdint>
#include <random>
#include <utility>
#include <vector>

#include "fakes/FakeEnvironment.h"
#include "Rows.h"
#include "util/Convert.h"
#include "util/SortCity.h"
#include "util/StringTable.h"

namespace tobbin {
namespace {

enum Column : std::int16_t { kFolder = 1, kName, kNumber };  // eight songs each share a folder

StringTable Unsorted(int rows) {
    std::mt19937 chance(1);
    StringTable table(1, kNumber, 1, rows);
    for (std::int32_t row = 1; row <= rows; ++row) {
        const auto folder = chance() % static_cast<std::uint32_t>(rows / 8 + 1);
        table.At(kFolder, row) = "C:\\Music\\Artist " + std::to_string(folder / 3) + "\\Album " +
                                 std::to_string(folder) + "\\";
        table.At(kName, row) = "Song " + std::to_string(chance()) + ".mp3";
        table.At(kNumber, row) = std::to_string(chance() % 1'000'000'000);
    }
    return table;
}

Time SortByRoutine(int rows, Column column) {
    StringTable table = Unsorted(rows);
    const FakeText text;
    SortCity sorter(text);
    return TimeOf([&] {
        if (column == kNumber)
            sorter.QuickSortNumericAscending(table, 1, rows, column, kNumber);
        else
            sorter.QuickSortStringsAscending(table, 1, rows, column, kNumber);
    });
}

template <typename MakeKey>
Time SortByStandard(int rows, MakeKey makeKey) {
    StringTable table = Unsorted(rows);
    return TimeOf([&] {
        using Key = decltype(makeKey(table, 1));
        std::vector<std::pair<Key, std::int32_t>> keys;
        keys.reserve(static_cast<std::size_t>(rows));
        for (std::int32_t row = 1; row <= rows; ++row)
            keys.emplace_back(makeKey(table, row), row);
        std::sort(keys.begin(), keys.end());
        std::vector<std::int32_t> order;
        order.reserve(keys.size());
        for (const auto& [key, row] : keys)
            order.push_back(row);
        table.MoveRows(1, order, kNumber);
    });
}

Time SortTexts(int rows, Column column) {
    const FakeText text;
    return SortByStandard(rows, [&](const StringTable& table, std::int32_t row) {
        return text.ToLower(table.At(column, row));
    });
}

Time SortNumbers(int rows) {
    return SortByStandard(rows, [](const StringTable& table, std::int32_t row) {
        return ToLong(table.At(kNumber, row));
    });
}

}  // namespace

void AddSortRows() {
    constexpr int kRows = 1'000'000;
    AddRow(
        "sort by folder", kRows, 2, [] { return SortByRoutine(kRows, kFolder); },
        [] { return SortTexts(kRows, kFolder); });
    AddRow(
        "sort by name", kRows, 2, [] { return SortByRoutine(kRows, kName); },
        [] { return SortTexts(kRows, kName); });
    AddRow(
        "sort by number", kRows, 2, [] { return SortByRoutine(kRows, kNumber); },
        [] { return SortNumbers(kRows); });
}

}  // namespace tobbin
