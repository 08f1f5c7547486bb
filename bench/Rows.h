#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <functional>
#include <string>

namespace tobbin {

// How long some work takes, in seconds.
template <typename Work>
double SecondsOf(Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// A row of the table: our own work beside its floor, a few lines of plain code that do what can't
// be avoided. Each call makes ready what it needs, and returns the seconds of the work alone.
// `limit` is what our time may be at most, as a multiple of the floor's.
using Timed = std::function<double()>;
inline void AddRow(const std::string& what, int size, double limit, const Timed& ours,
                   const Timed& floor) {
    const auto add = [&](const char* side, const Timed& timed) {
        benchmark::RegisterBenchmark((what + "|" + std::to_string(size) + "|" + side).c_str(),
                                     [timed, limit](benchmark::State& state) {
                                         for ([[maybe_unused]] auto unused : state)
                                             state.SetIterationTime(timed());
                                         state.counters["limit"] = limit;
                                     })
            ->UseManualTime()
            ->Iterations(1)
            ->Unit(benchmark::kMillisecond);
    };
    add("ours", ours);
    add("floor", floor);
}

// Rows of other units: `value` is measured once, in the unit that `what` names. A limit of 0 is
// none.
inline void AddFigure(const std::string& what, int size, double limit,
                      const std::function<double()>& value) {
    benchmark::RegisterBenchmark((what + "|" + std::to_string(size) + "|figure").c_str(),
                                 [value, limit](benchmark::State& state) {
                                     for ([[maybe_unused]] auto unused : state)
                                         state.counters["value"] = value();
                                     state.counters["limit"] = limit;
                                 })
        ->Iterations(1);
}

// The rows of each subject.
void AddSortRows();
void AddCatalogueRows();
void AddJukeboxRows();
void AddEditingRows();
// `library` is a folder made by make_library, of that many songs.
void AddLibraryRows(const std::string& library, int songs);

}  // namespace tobbin
