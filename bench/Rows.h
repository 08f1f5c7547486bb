#pragma once

#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <chrono>
#include <functional>
#include <string>

namespace tobbin {

// What some work took, in seconds: by the clock, and of the processor's time for the program's own
// instructions, without the system's.
struct Time {
    double byClock = 0;
    double own = 0;
};

template <typename Work>
Time TimeOf(Work work) {
    const auto own = [] {
        struct rusage usage {};
        getrusage(RUSAGE_SELF, &usage);
        return static_cast<double>(usage.ru_utime.tv_sec) +
               static_cast<double>(usage.ru_utime.tv_usec) / 1e6;
    };
    const double ownBefore = own();
    const auto start = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double> byClock = std::chrono::steady_clock::now() - start;
    return {byClock.count(), own() - ownBefore};
}

// A row of the table: our own work beside its floor, a few lines of plain code that do what can't
// be avoided. Each call makes ready what it needs, and returns the time of the work alone.
// `limit` is what our time may be at most, as a multiple of the floor's.
using Timed = std::function<Time()>;
inline void AddRow(const std::string& what, int size, double limit, const Timed& ours,
                   const Timed& floor) {
    const auto add = [&](const char* side, const Timed& timed) {
        benchmark::RegisterBenchmark((what + "|" + std::to_string(size) + "|" + side).c_str(),
                                     [timed, limit](benchmark::State& state) {
                                         for ([[maybe_unused]] auto unused : state) {
                                             const Time time = timed();
                                             state.SetIterationTime(time.byClock);
                                             state.counters["own"] = time.own * 1000;
                                         }
                                         state.counters["limit"] = limit;
                                     })
            ->UseManualTime()
            ->Iterations(1)
            ->Unit(benchmark::kMillisecond);
    };
    add("ours", ours);
    add("floor", floor);
}

// Rows without a floor: `value` is in the unit that `what` names. A limit of 0 is
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
// `library` is a folder made by make_library, of that many songs. With `cold` the rows measure with
// nothing of it in the system's caches.
void AddLibraryRows(const std::string& library, int songs, bool cold);

}  // namespace tobbin
