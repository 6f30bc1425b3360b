// Goals: the sum of 2000 profiles of 5000 points under 30 ms; the Fourier filter
// of a 10^6-point pattern under 300 ms; the polynomial filter of 10^6 points under 5 ms.
#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

#include "calc/arithmetic.h"
#include "calc/smoothing.h"

namespace {

hxl::DIFFRACTION_PATTERN_TYPE synthetic(int n, int seed) {
    hxl::DIFFRACTION_PATTERN_TYPE p;
    hxl::Allocate_Pattern(p, n);
    for (int i = 1; i <= n; ++i) {
        p.x(i) = 5.0f + 0.02f * static_cast<float>(i);
        p.y(i) = 100.0f + 50.0f * std::sin(0.01f * static_cast<float>(i * (seed % 7 + 1)));
        p.sigma(i) = p.y(i);
    }
    return p;
}

void BM_Sum_2000x5000(benchmark::State& state) {
    std::vector<hxl::DIFFRACTION_PATTERN_TYPE> set;
    for (int k = 0; k < 2000; ++k) set.push_back(synthetic(5000, k));
    std::vector<const hxl::DIFFRACTION_PATTERN_TYPE*> ptr;
    for (const auto& p : set) ptr.push_back(&p);
    std::string message;
    for (auto _ : state) {
        hxl::DIFFRACTION_PATTERN_TYPE out;
        bool ok = hxl::Sum_Patterns(ptr, false, out, message);
        benchmark::DoNotOptimize(ok);
        benchmark::DoNotOptimize(out.y.data());
    }
}
BENCHMARK(BM_Sum_2000x5000)->Unit(benchmark::kMillisecond);

void BM_Fourier_1e6(benchmark::State& state) {
    const hxl::DIFFRACTION_PATTERN_TYPE p = synthetic(1000000, 3);
    for (auto _ : state) {
        state.PauseTiming();
        std::vector<float> y = p.y.vec();
        state.ResumeTiming();
        hxl::Fourier_Smooth(y.data(), static_cast<int>(y.size()), 5.0f);
        benchmark::DoNotOptimize(y.data());
    }
}
BENCHMARK(BM_Fourier_1e6)->Unit(benchmark::kMillisecond);

void BM_Polynomial_1e6(benchmark::State& state) {
    const hxl::DIFFRACTION_PATTERN_TYPE p = synthetic(1000000, 5);
    std::vector<float> y = p.y.vec();
    for (auto _ : state) {
        hxl::Smooth_5Point(y.data(), static_cast<int>(y.size()));
        benchmark::DoNotOptimize(y.data());
    }
}
BENCHMARK(BM_Polynomial_1e6)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
