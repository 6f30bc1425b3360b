// Loading a pattern of 10^6 points: the XY reader on an XYE file against the
// free-format reader on the same counts. Goal: the XY reader at least as fast
// per byte of text (an XYE row holds three numbers where the free format has
// one count, so per point it reads about 2.7 times the text); both rates shown.
// The files are written once to the temporary folder (ZD_BENCH_DIR overrides),
// so that an outside reader can be timed on the very same file.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "patterns/read_pattern.h"

namespace {

constexpr int kPoints = 1000000;

std::string bench_dir() {
    const char* d = std::getenv("ZD_BENCH_DIR");
    return d ? d : std::filesystem::temp_directory_path().string();
}

float count_at(int i) { return std::floor(1000.0f + 800.0f * std::sin(0.001f * static_cast<float>(i))); }

// x from 5 by 0.0001 degree; y a smooth curve of counts; sigma its square root.
const std::string& xye_file() {
    static const std::string path = [] {
        const std::string p = bench_dir() + "/zd_bench_1e6.xye";
        std::FILE* f = std::fopen(p.c_str(), "w");
        for (int i = 0; f && i < kPoints; ++i) {
            const float y = count_at(i);
            std::fprintf(f, "%.4f %.1f %.3f\n", 5.0 + 0.0001 * i, y, std::sqrt(y));
        }
        if (f) std::fclose(f);
        return p;
    }();
    return path;
}

const std::string& dat_file() {
    static const std::string path = [] {
        const std::string p = bench_dir() + "/zd_bench_1e6.dat";
        std::FILE* f = std::fopen(p.c_str(), "w");
        if (f) std::fprintf(f, "5.0 0.0001 %.4f benchmark\n", 5.0 + 0.0001 * (kPoints - 1));
        for (int i = 0; f && i < kPoints; ++i) std::fprintf(f, "%8.1f%s", count_at(i), (i % 10 == 9) ? "\n" : "");
        if (f) std::fclose(f);
        return p;
    }();
    return path;
}

void BM_Load_XYE_1e6(benchmark::State& state) {
    const std::string& path = xye_file();
    for (auto _ : state) {
        hxl::DIFFRACTION_PATTERN_TYPE p;
        hxl::Read_Pattern(path, p, "XYSIGMA");
        if (hxl::ERR_Pattern || p.npts != kPoints) state.SkipWithError("XYE read failed");
        benchmark::DoNotOptimize(p.y.data());
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(std::filesystem::file_size(path)));
}

void BM_Load_Free_1e6(benchmark::State& state) {
    const std::string& path = dat_file();
    for (auto _ : state) {
        hxl::DIFFRACTION_PATTERN_TYPE p;
        hxl::Read_Pattern(path, p);
        if (hxl::ERR_Pattern || p.npts != kPoints) state.SkipWithError("free-format read failed");
        benchmark::DoNotOptimize(p.y.data());
    }
    state.SetItemsProcessed(state.iterations() * kPoints);
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(std::filesystem::file_size(path)));
}

}  // namespace

BENCHMARK(BM_Load_XYE_1e6)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Load_Free_1e6)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
