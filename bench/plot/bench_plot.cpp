// Plot_Again of many profiles and of one long profile into the off-screen picture.
// Goals: 2000 profiles of 5000 points under 50 ms, one profile of 10^6 points under 10 ms.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdlib>

#include "app/present.h"
#include "bench/bench_window.h"
#include "app/store/zendrite_param_global.h"
#include "graphics/plot.h"

namespace {
using namespace zendrite;

void fill_store(int profiles, int points) {
    Fill_Bench_Store(profiles, points, 2200.0f, [](int k, int i, float x) {
        return 100.0f + 10.0f * static_cast<float>(k % 50) + 900.0f * std::exp(-std::pow(std::fmod(x, 10.0f) - 5.0f, 2.0f) * 8.0f) +
               static_cast<float>((static_cast<long long>(i) * 7919) % 97);
    });
    Enter_Multi_Mode(false);
    Plot_ReMake();
}

void run(benchmark::State& state, int profiles, int points) {
    Start_Bench_Window("bench_plot");
    fill_store(profiles, points);
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
