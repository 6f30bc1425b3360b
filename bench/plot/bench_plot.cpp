// Plot_Again of many profiles and of one long profile into the off-screen picture.
// Goals: 2000 profiles of 5000 points under 50 ms, one profile of 10^6 points under 10 ms.
#include <benchmark/benchmark.h>

#include "app/present.h"
#include "bench/bench_window.h"
#include "app/store/zendrite_param_global.h"
#include "graphics/plot.h"

namespace {
using namespace zendrite;

void run(benchmark::State& state, int profiles, int points) {
    Start_Bench_Window("bench_plot");
    Fill_Plot_Bench_Store(profiles, points);
    for (auto _ : state) Plot_Again();
    state.counters["width"] = WInfoWindow(1);
    state.counters["height"] = WInfoWindow(2);
    state.counters["points"] = static_cast<double>(profiles) * points;
}

void BM_Plot_Again_2000x5000(benchmark::State& state) { run(state, 2000, 5000); }
void BM_Plot_Again_1x1000000(benchmark::State& state) { run(state, 1, 1000000); }

}  // namespace

BENCHMARK(BM_Plot_Again_2000x5000)->Unit(benchmark::kMillisecond)->Iterations(2);
BENCHMARK(BM_Plot_Again_1x1000000)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK_MAIN();
