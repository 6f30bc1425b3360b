// Automatic peak search over a pattern of 10^6 points with 300 peaks, the
// file peak.aps included. Goal: under 200 ms.
#include <benchmark/benchmark.h>

#include <cmath>
#include <filesystem>

#include "peaks/search_points.h"

namespace {

hxl::DIFFRACTION_PATTERN_TYPE Pattern(int n, int peaks) {
    hxl::DIFFRACTION_PATTERN_TYPE p;
    hxl::Allocate_Pattern(p, n);
    const double x0 = 5.0, x1 = 125.0, step = (x1 - x0) / (n - 1), width = 4 * step;  // about ten points a peak width
    unsigned seed = 1u;
    for (int i = 1; i <= n; ++i) {
        const double x = x0 + (i - 1) * step;
        const double k = (x - x0) / (x1 - x0) * peaks - 0.5;  // peak k sits at the middle of its slot
        const double centre = x0 + (std::round(k) + 0.5) * (x1 - x0) / peaks;
        seed = seed * 1103515245u + 12345u;
        p.x(i) = static_cast<float>(x);
        p.y(i) = static_cast<float>(200.0 - 0.5 * x + 3000.0 * std::exp(-0.5 * std::pow((x - centre) / width, 2)) +
                                    ((seed >> 8) % 100) * 0.05);
    }
    p.step = static_cast<float>(step);
    p.npts = n;
    return p;
}

void BM_Auto_Peaks(benchmark::State& state) {
    const auto p = Pattern(static_cast<int>(state.range(0)), 300);
    const auto dir = std::filesystem::temp_directory_path();
    const hxl::SEARCH_FILE_TYPE file{dir.string(), "bench.xy", "XYDATA", true};
    hxl::PKB_TYPE r;
    for (auto _ : state) {
        benchmark::DoNotOptimize(hxl::Search_Points(p, p.x(1), p.x(p.npts), " ", {}, file, r));
    }
    state.counters["peaks"] = r.np;
    std::filesystem::remove(dir / "peak.aps");
}
BENCHMARK(BM_Auto_Peaks)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
