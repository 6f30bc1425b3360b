// Reading a synthetic free-format file of 10^6 counts through the reader frame.
// The rate is the size of the text parsed per second.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "patterns/read_pattern.h"

namespace {

std::string make_free_file(int n) {
    const auto path = std::filesystem::temp_directory_path() / ("zendrite-bench-free-" + std::to_string(n) + ".dat");
    if (!std::filesystem::exists(path)) {
        std::mt19937 rng(12345);
        std::uniform_int_distribution<int> counts(0, 250000);
        std::string text = "Synthetic pattern for the load benchmark\n   5.000   0.001 " +
                           std::to_string(5.0 + 0.001 * (n - 1)) + "\n";
        char buf[32];
        for (int i = 0; i < n; ++i) {
            std::snprintf(buf, sizeof buf, "%8d.%c", counts(rng), (i + 1) % 10 == 0 ? '\n' : ' ');
            text += buf;
        }
        std::ofstream(path) << text;
    }
    return path.string();
}

void BM_Read_Free_Format(benchmark::State& state) {
    const int n = static_cast<int>(state.range(0));
    const std::string file = make_free_file(n);
    const auto bytes = static_cast<int64_t>(std::filesystem::file_size(file));
    for (auto _ : state) {
        hxl::DIFFRACTION_PATTERN_TYPE p;
        hxl::Read_Pattern(file, p, std::string("FreeFormat"));
        if (hxl::ERR_Pattern || p.npts != n) state.SkipWithError(hxl::ERR_Pattern_Mess.c_str());
        benchmark::DoNotOptimize(p.y.data());
    }
    state.SetBytesProcessed(state.iterations() * bytes);
    state.counters["points"] = n;
}
BENCHMARK(BM_Read_Free_Format)->Arg(1000000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
