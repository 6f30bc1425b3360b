// Loading a folder of an in-situ series: 2000 XYE files of 5000 points each,
// through the routine the window uses (two reading threads, the store filled in
// natural order), without the window. Goal: under 4 s on a two-core machine.
// The folder is written once into the temporary folder (ZD_BENCH_DIR overrides)
// and kept, so that later runs time the reading alone.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "app/store/add_profile.h"
#include "app/store/load_folder.h"
#include "app/store/zendrite_param_global.h"

namespace {

constexpr int kFiles = 2000, kPoints = 5000;

std::string bench_dir() {
    const char* d = std::getenv("ZD_BENCH_DIR");
    return d ? d : std::filesystem::temp_directory_path().string();
}

// run_1.xye ... run_2000.xye: a peak that moves along the series over a flat background.
const std::string& series_folder() {
    static const std::string dir = [] {
        const std::string d = bench_dir() + "/zd_bench_folder_2000x5000";
        const std::string last = d + "/run_" + std::to_string(kFiles) + ".xye";
        if (std::filesystem::exists(last)) return d;
        std::filesystem::create_directories(d);
        for (int f = 1; f <= kFiles; ++f) {
            const std::string name = d + "/run_" + std::to_string(f) + ".xye";
            std::FILE* out = std::fopen(name.c_str(), "w");
            if (!out) break;
            const double centre = 30.0 + 0.005 * f;
            for (int i = 0; i < kPoints; ++i) {
                const double x = 5.0 + 0.02 * i;
                const double y = std::floor(200.0 + 5000.0 * std::exp(-std::pow((x - centre) / 0.1, 2)));
                std::fprintf(out, "%.3f %.1f %.3f\n", x, y, std::sqrt(y));
            }
            std::fclose(out);
        }
        return d;
    }();
    return dir;
}

void BM_Load_Folder_2000x5000(benchmark::State& state) {
    const std::string& dir = series_folder();
    const int workers = static_cast<int>(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        zendrite::Reset_Store();
        state.ResumeTiming();
        const zendrite::FOLDER_LOAD_RESULT r = zendrite::Load_Folder(dir, {}, workers);
        if (static_cast<int>(r.slots.size()) != kFiles || !r.failures.empty())
            state.SkipWithError("the folder did not load whole");
    }
    state.SetItemsProcessed(state.iterations() * kFiles);
}

}  // namespace

// Two workers as the window runs it; one for comparison.
BENCHMARK(BM_Load_Folder_2000x5000)->Arg(2)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_MAIN();
