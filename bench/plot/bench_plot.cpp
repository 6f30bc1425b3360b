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
    ZENDRITE_STORE& g = zendrite_param_global();
    Reset_Store();
    for (int k = 1; k <= profiles; ++k) {
        DIFFRACTION_PATTERN_TYPE& p = g.pattern[static_cast<std::size_t>(k)];
        p.npts = points;
        p.x.resize(points);
        p.y.resize(points);
        for (int i = 1; i <= points; ++i) {
            const float x = 5.0f + 150.0f * static_cast<float>(i - 1) / static_cast<float>(points - 1);
            p.x(i) = x;
            p.y(i) = 100.0f + 10.0f * static_cast<float>(k % 50) + 900.0f * std::exp(-std::pow(std::fmod(x, 10.0f) - 5.0f, 2.0f) * 8.0f) +
                     static_cast<float>((static_cast<long long>(i) * 7919) % 97);
        }
        p.xmin = p.x(1);  // the record's limits, as every reader sets them
        p.xmax = p.x(points);
        p.ymin = 100.0f;
        p.ymax = 2200.0f;
        p.scat_var = "2theta";
        g.info[static_cast<std::size_t>(k)].prf_name = "bench_" + std::to_string(k) + ".dat";
        g.info[static_cast<std::size_t>(k)].prf_type = "DATA";
    }
    g.nperfiles = profiles;
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
