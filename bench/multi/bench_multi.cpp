// The contour map, the stack and the surface of 2000 profiles of 5000 points redrawn into
// the 1200 by 800 picture. Goals: contour under 50 ms, stack under 100 ms, surface under 200 ms.
#include <benchmark/benchmark.h>

#include <cmath>
#include <string>

#include "app/present.h"
#include "app/store/zendrite_param_global.h"
#include "bench/bench_window.h"
#include "graphics/multi_views.h"

namespace {
using namespace zendrite;

// Peaks that drift and grow along the series, over a sloping background with noise.
void fill_store(int profiles, int points) {
    Fill_Bench_Store(profiles, points, 2600.0f, [](int k, int i, float x) {
        const float peak = std::fmod(x + 0.002f * static_cast<float>(k), 10.0f) - 5.0f;
        return 100.0f + 0.5f * x + (900.0f + 0.2f * static_cast<float>(k)) * std::exp(-peak * peak * 8.0f) +
               static_cast<float>((static_cast<long long>(i) * 7919 + k) % 97);
    });
}

void run(benchmark::State& state, MULTI_VIEW view) {
    Start_Bench_Window("bench_multi");
    static bool filled = false;
    if (!filled) fill_store(2000, 5000), filled = true;
    std::string message;
    if (!Enter_Multi_View(view, message)) {
        state.SkipWithError(message.c_str());
        return;
    }
    const std::string mode = zendrite_param_global().graph_mode;
    for (auto _ : state) Multi_View_Again(mode);
    state.counters["width"] = WInfoWindow(1);
    state.counters["height"] = WInfoWindow(2);
}

void BM_Contour_2000x5000(benchmark::State& s) { run(s, MULTI_VIEW::Contour); }
void BM_Contour_Log_2000x5000(benchmark::State& s) { run(s, MULTI_VIEW::Contour_Log); }
void BM_Stack_2000x5000(benchmark::State& s) { run(s, MULTI_VIEW::Stack); }
void BM_Surface_2000x5000(benchmark::State& s) { run(s, MULTI_VIEW::Surface); }

}  // namespace

BENCHMARK(BM_Contour_2000x5000)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(BM_Contour_Log_2000x5000)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(BM_Stack_2000x5000)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(BM_Surface_2000x5000)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK_MAIN();
