// One slider move of the HKL generator: an orthorhombic cell's list of about 2000 reflections in
// the window regenerated, the figure of merit against 40 peaks worked out, and the frame drawn
// again with its ticks, off-screen.
// Goal: under 16 ms, so that the ticks follow the hand.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdlib>

#include "app/present.h"
#include "bench/bench_window.h"
#include "app/store/zendrite_param_global.h"
#include "crystal/figures_of_merit.h"
#include "crystal/reflections.h"
#include "crystal/space_group.h"
#include "graphics/hkl_ticks.h"
#include "graphics/plot.h"

namespace {
using namespace zendrite;

void fill_store(int points) {
    ZENDRITE_STORE& g = zendrite_param_global();
    Reset_Store();
    DIFFRACTION_PATTERN_TYPE& p = g.pattern[1];
    p.npts = points;
    p.x.resize(points);
    p.y.resize(points);
    for (int i = 1; i <= points; ++i) {
        const float x = 5.0f + 115.0f * static_cast<float>(i - 1) / static_cast<float>(points - 1);
        p.x(i) = x;
        p.y(i) = 100.0f + 900.0f * std::exp(-std::pow(std::fmod(x, 3.0f) - 1.5f, 2.0f) * 20.0f);
    }
    p.xmin = p.x(1);
    p.xmax = p.x(points);
    p.ymin = 100.0f;
    p.ymax = 1000.0f;
    p.scat_var = "2theta";
    p.lambda1 = 1.540597f;
    g.info[1].prf_name = "bench.dat";
    g.info[1].prf_type = "DATA";
    g.nperfiles = 1;
    Enter_Single_Mode(0);
    Plot_ReMake();
}

void BM_Slider_Move_Orthorhombic(benchmark::State& state) {
    Start_Bench_Window("bench_hklgen");
    fill_store(12000);
    const ZENDRITE_STORE& g = zendrite_param_global();
    hxl::SPACE_GROUP_TYPE sg;
    hxl::Set_SpaceGroup("P b m n", sg);
    std::vector<hxl::HKL_GEN_TYPE> list;
    std::string msg;
    const DIFFRACTION_PATTERN_TYPE& p = g.pattern[1];
    // peaks over the whole window, as an auto detection of a rich pattern gives
    std::vector<double> peaks;
    for (int i = 0; i < 40; ++i) peaks.push_back(6.0 + 2.8 * i + 0.01 * (i % 7));
    hxl::FOM_SETTINGS_TYPE fom;
    fom.x.lambda = 1.540597;
    hxl::FOM_RESULT_TYPE merit;
    float a = 11.6f;
    for (auto _ : state) {
        a = a > 12.0f ? 11.6f : a + 0.001f;  // a new cell at every move, as a slider gives
        const float cell[6] = {a, 12.6f, 16.9f, 90, 90, 90};
        hxl::Cell_Record rec;
        hxl::Hkl_Trial_Cell(cell, rec, msg);
        hxl::Hkl_Generate_Window(rec, sg, hxl::HKL_XSPACE::TWOTHETA, 1.540597f, 0, 0, g.win_xmin, g.win_xmax,
                                 p.x.data(), p.y.data(), p.npts, list, msg);
        hxl::Figures_Of_Merit(peaks, rec, sg, fom, merit);
        Plot_Again();
        Draw_Hkl_Ticks(list);
    }
    std::size_t inside = 0;
    for (const auto& r : list) inside += r.pos >= g.win_xmin && r.pos <= g.win_xmax;
    state.counters["reflections_in_window"] = static_cast<double>(inside);
    state.counters["list"] = static_cast<double>(list.size());
    state.counters["merit_reflections"] = static_cast<double>(merit.reflections.size());
}

}  // namespace

BENCHMARK(BM_Slider_Move_Orthorhombic)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
