// Goal: recording a Fourier smoothing of all 2000 profiles of 5000 points in the history
// (before and after the filter) under 100 ms, and undoing it under 100 ms. The filter's own
// time is left out of the first figure. Also measured: a command that may change any array.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cmath>

#include "app/store/history.h"
#include "app/store/zendrite_param_global.h"
#include "calc/smoothing.h"

namespace {

using namespace zendrite;

void fill_store() {
    ZENDRITE_STORE& g = zendrite_param_global();
    Reset_Store();
    for (int s = 1; s <= 2000; ++s) {
        DIFFRACTION_PATTERN_TYPE& p = g.pattern[static_cast<std::size_t>(s)];
        hxl::Allocate_Pattern(p, 5000);
        for (int i = 1; i <= 5000; ++i) {
            p.x(i) = 5.0f + 0.02f * static_cast<float>(i);
            p.y(i) = 100.0f + 50.0f * std::sin(0.01f * static_cast<float>(i * (s % 7 + 1)));
            p.sigma(i) = p.y(i);
        }
        g.info[static_cast<std::size_t>(s)].prf_type = "DATA";
    }
    g.nperfiles = 2000;
    g.graph_mode = "multi";
}

void smooth_all() {
    ZENDRITE_STORE& g = zendrite_param_global();
    for (int s = 1; s <= g.nperfiles; ++s) hxl::Fourier_Smooth(g.pattern[static_cast<std::size_t>(s)].y, 5000, 40.0f);
}

// Begin and End around the filter, timed without the filter; the step is undone outside the timing.
void BM_Record_Fourier_2000x5000(benchmark::State& state) {
    fill_store();
    History_Clear();
    for (auto _ : state) {
        const auto t0 = std::chrono::steady_clock::now();
        History_Begin("Fourier filtering", kHistoryY);
        const auto t1 = std::chrono::steady_clock::now();
        smooth_all();
        const auto t2 = std::chrono::steady_clock::now();
        const bool kept = History_End();
        const auto t3 = std::chrono::steady_clock::now();
        benchmark::DoNotOptimize(kept);
        state.SetIterationTime(std::chrono::duration<double>((t1 - t0) + (t3 - t2)).count());
        History_Undo();
        History_Clear();
    }
}
BENCHMARK(BM_Record_Fourier_2000x5000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

// A command that may change any array (a copy, a conversion) with the same store: every array
// is copied before it and compared after; only a new slot is kept.
void BM_Record_AnyArray_2000x5000(benchmark::State& state) {
    fill_store();
    ZENDRITE_STORE& g = zendrite_param_global();
    g.nperfiles = 1999;
    History_Clear();
    for (auto _ : state) {
        History_Begin("Copy profile", kHistoryArrays);
        g.pattern[2000] = g.pattern[1];
        g.nperfiles = 2000;
        benchmark::DoNotOptimize(History_End());
        state.PauseTiming();
        History_Undo();
        History_Clear();
        g.nperfiles = 1999;
        state.ResumeTiming();
    }
}
BENCHMARK(BM_Record_AnyArray_2000x5000)->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_Undo_Fourier_2000x5000(benchmark::State& state) {
    fill_store();
    History_Clear();
    History_Begin("Fourier filtering", kHistoryY);
    smooth_all();
    History_End();
    state.counters["MB_held"] = static_cast<double>(History_Bytes()) / 1048576.0;
    for (auto _ : state) {
        const auto t0 = std::chrono::steady_clock::now();
        History_Undo();
        const auto t1 = std::chrono::steady_clock::now();
        History_Redo();
        state.SetIterationTime(std::chrono::duration<double>(t1 - t0).count());
    }
}
BENCHMARK(BM_Undo_Fourier_2000x5000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);

}  // namespace

BENCHMARK_MAIN();
