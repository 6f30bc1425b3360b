// Azimuthal integration of a 2048 x 2048 image: the pixel-to-bin table is
// built once for the geometry; each image then costs one pass over it.
// Goal: an image integrated in under 200 ms.
#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

#include "instrument/azimuthal.h"

namespace {

hxl::DETECTOR_GEOMETRY_TYPE geometry() {
    hxl::DETECTOR_GEOMETRY_TYPE g;
    g.distance = 200;
    g.beam_x = 1010.3f;
    g.beam_y = 1040.7f;
    g.pixel_x = g.pixel_y = 0.1f;
    g.tilt = 2;
    g.tilt_plane = 40;
    g.wavelength = 0.5f;
    g.bin = 0.01f;
    g.correct_polarisation = true;
    g.polarisation = 0.95f;
    return g;
}

std::vector<float> rings(int n) {
    std::vector<float> img(static_cast<std::size_t>(n) * static_cast<std::size_t>(n));
    for (int j = 0; j < n; ++j)
        for (int i = 0; i < n; ++i) {
            double r = std::hypot(i - 1010.0, j - 1040.0);
            img[static_cast<std::size_t>(j) * static_cast<std::size_t>(n) + static_cast<std::size_t>(i)] =
                static_cast<float>(100 + 1000 * std::exp(-0.5 * std::pow(std::fmod(r, 150.0) - 75, 2) / 4));
        }
    return img;
}

void BM_Integrate_2048(benchmark::State& state) {
    const int n = 2048;
    hxl::DETECTOR_GEOMETRY_TYPE g = geometry();
    hxl::INTEGRATION_TABLE_TYPE t;
    std::string msg;
    if (!hxl::Build_Integration_Table(g, n, n, t, msg)) {
        state.SkipWithError(msg.c_str());
        return;
    }
    std::vector<float> img = rings(n);
    for (auto _ : state) {
        hxl::DIFFRACTION_PATTERN_TYPE p;
        hxl::Integrate_Image(t, img.data(), nullptr, g, p, msg);
        benchmark::DoNotOptimize(p.y.data());
    }
    state.counters["entries"] = static_cast<double>(t.bin_of.size());
}
BENCHMARK(BM_Integrate_2048)->Unit(benchmark::kMillisecond);

void BM_Table_2048(benchmark::State& state) {
    hxl::DETECTOR_GEOMETRY_TYPE g = geometry();
    for (auto _ : state) {
        hxl::INTEGRATION_TABLE_TYPE t;
        std::string msg;
        hxl::Build_Integration_Table(g, 2048, 2048, t, msg);
        benchmark::DoNotOptimize(t.weight.data());
    }
}
BENCHMARK(BM_Table_2048)->Unit(benchmark::kMillisecond)->Iterations(2);

}  // namespace

BENCHMARK_MAIN();
