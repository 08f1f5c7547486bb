// How long SortCity takes beside the standard sort of the same table with its keys made ready: the
// aim is at most twice that.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "util/Convert.h"
#include "util/SortCity.h"
#include "util/StringTable.h"

namespace tobbin {
namespace {

// ASCII only: what the system takes for its letters is not the sort's doing.
class PlainText : public SystemText {
 public:
    std::string FromAnsi(std::string_view bytes) const override { return std::string(bytes); }
    std::optional<std::string> MaybeToAnsi(std::string_view text) const override {
        return std::string(text);
    }
    std::string ToLower(std::string_view text) const override {
        std::string lower(text);
        for (char& c : lower)
            c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
        return lower;
    }
    std::string ToUpper(std::string_view text) const override { return std::string(text); }
};

// Column 1: a folder, of which eight songs each are alike; 2: a song's name; 3: a number.
const StringTable& Unsorted(std::int64_t rows) {
    static StringTable table(1, 3, 1, 0);
    if (table.UpperRow() != rows) {
        std::mt19937 chance(1);
        table = StringTable(1, 3, 1, static_cast<std::int32_t>(rows));
        for (std::int32_t row = 1; row <= table.UpperRow(); ++row) {
            const auto folder = chance() % static_cast<std::uint32_t>(rows / 8 + 1);
            table.At(1, row) = "C:\\Music\\Artist " + std::to_string(folder / 3) + "\\Album " +
                               std::to_string(folder) + "\\";
            table.At(2, row) = "Song " + std::to_string(chance()) + ".mp3";
            table.At(3, row) = std::to_string(chance() % 1'000'000'000);
        }
    }
    return table;
}

// The table that one run sorts, copied while the clock stands.
template <typename Work>
void Measure(benchmark::State& state, Work work) {
    for (auto _ : state) {
        state.PauseTiming();
        StringTable table = Unsorted(state.range(0));
        state.ResumeTiming();
        work(table);
        state.PauseTiming();
        table = StringTable(1, 3, 1, 0);
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void SortTexts(benchmark::State& state, std::int16_t column) {
    const PlainText text;
    Measure(state, [&](StringTable& table) {
        SortCity(text).QuickSortStringsAscending(table, 1, table.UpperRow(), column, 3);
    });
}

void SortNumbers(benchmark::State& state) {
    const PlainText text;
    Measure(state, [&](StringTable& table) {
        SortCity(text).QuickSortNumericAscending(table, 1, table.UpperRow(), 3, 3);
    });
}

template <typename MakeKey>
void SortByStandard(benchmark::State& state, MakeKey makeKey) {
    Measure(state, [&](StringTable& table) {
        using Key = decltype(makeKey(table, 1));
        std::vector<std::pair<Key, std::int32_t>> keys;
        keys.reserve(static_cast<std::size_t>(table.UpperRow()));
        for (std::int32_t row = 1; row <= table.UpperRow(); ++row)
            keys.emplace_back(makeKey(table, row), row);
        std::sort(keys.begin(), keys.end());
        std::vector<std::int32_t> order;
        order.reserve(keys.size());
        for (const auto& [key, row] : keys)
            order.push_back(row);
        table.MoveRows(1, order, 3);
    });
}

void StandardTexts(benchmark::State& state, std::int32_t column) {
    const PlainText text;
    SortByStandard(state, [&](const StringTable& table, std::int32_t row) {
        return text.ToLower(table.At(column, row));
    });
}

void StandardNumbers(benchmark::State& state) {
    SortByStandard(
        state, [](const StringTable& table, std::int32_t row) { return ToLong(table.At(3, row)); });
}

BENCHMARK_CAPTURE(SortTexts, Folders, 1)->Arg(100'000)->Arg(1'000'000);
BENCHMARK_CAPTURE(StandardTexts, Folders, 1)->Arg(100'000)->Arg(1'000'000);
BENCHMARK_CAPTURE(SortTexts, Names, 2)->Arg(100'000)->Arg(1'000'000);
BENCHMARK_CAPTURE(StandardTexts, Names, 2)->Arg(100'000)->Arg(1'000'000);
BENCHMARK(SortNumbers)->Arg(100'000)->Arg(1'000'000);
BENCHMARK(StandardNumbers)->Arg(100'000)->Arg(1'000'000);

}  // namespace
}  // namespace tobbin

BENCHMARK_MAIN();
