// The OpenGL model of 2000 profiles (a map of 2000 x 1200) turning in its window of 1000 x 750:
// each iteration draws one frame, 3 degrees on, and reads it back to be shown. Goal: at
// least 10 frames a second in Mesa's software renderer. Run under xvfb-run.
#include <benchmark/benchmark.h>

#include <cmath>
#include <string>

#include "app/main/menu_groups.h"
#include "app/present_gl.h"
#include "bench/bench_window.h"

namespace {
using namespace zendrite;

void BM_Turn_Model_2000x1200(benchmark::State& state) {
    Start_Bench_Window("bench_gl");
    Fill_Bench_Store(2000, 5000, 2600.0f, [](int k, int i, float x) {
        const float peak = std::fmod(x + 0.002f * static_cast<float>(k), 10.0f) - 5.0f;
        return 100.0f + 0.5f * x + (900.0f + 0.2f * static_cast<float>(k)) * std::exp(-peak * peak * 8.0f) +
               static_cast<float>((static_cast<long long>(i) * 7919 + k) % 97);
    });
    Plot_Gl_Model(40022);
    if (!GlModelIsOpen()) {
        state.SkipWithError("no OpenGL window (run under xvfb-run)");
        return;
    }
    std::string message;
    for (auto _ : state) GlModelCommand({"frames", "1"}, message);
    state.counters["fps"] = benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
    GlModelClose();
}

}  // namespace

BENCHMARK(BM_Turn_Model_2000x1200)->Unit(benchmark::kMillisecond)->Iterations(30)->UseRealTime();
BENCHMARK_MAIN();
