// The plot drawn again into PDF, SVG and EPS files of 160 x 107 mm at 300 dpi.
// Goals: one pattern of 10^6 points to PDF and to SVG under 1 s and under 1 MB;
// 2000 patterns of 5000 points to PDF under 3 s. The size of the file is the counter "bytes".
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "app/present.h"
#include "bench/bench_window.h"
#include "graphics/plot.h"

namespace {
using namespace zendrite;

void run(benchmark::State& state, int profiles, int points, const std::string& format) {
    Start_Bench_Window("bench_export");
    Fill_Plot_Bench_Store(profiles, points);
    PICTURE_OPTIONS o;  // 160 x 107 mm at 300 dpi
    const std::filesystem::path file =
        std::filesystem::temp_directory_path() / ("bench_export_" + std::to_string(profiles) + "." + format);
    std::string message;
    for (auto _ : state)
        if (!WPictureExport(file.string(), o, [] { Plot_Again(); }, message)) state.SkipWithError(message.c_str());
    std::error_code ec;
    state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(file, ec));
    state.counters["points"] = static_cast<double>(profiles) * points;
    // ZD_BENCH_KEEP names a folder where the files stay, to be looked at.
    if (const char* keep = std::getenv("ZD_BENCH_KEEP"))
        std::filesystem::copy_file(file, std::filesystem::path(keep) / file.filename(),
                                   std::filesystem::copy_options::overwrite_existing, ec);
    std::filesystem::remove(file, ec);
}

void BM_Export_1x1000000_PDF(benchmark::State& state) { run(state, 1, 1000000, "pdf"); }
void BM_Export_1x1000000_SVG(benchmark::State& state) { run(state, 1, 1000000, "svg"); }
void BM_Export_1x1000000_EPS(benchmark::State& state) { run(state, 1, 1000000, "eps"); }
void BM_Export_2000x5000_PDF(benchmark::State& state) { run(state, 2000, 5000, "pdf"); }

}  // namespace

BENCHMARK(BM_Export_1x1000000_PDF)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_Export_1x1000000_SVG)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_Export_1x1000000_EPS)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_Export_2000x5000_PDF)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK_MAIN();
