// A .seq file of 10,000 refinement blocks (two phases, a dozen parameters each block) read,
// two columns made a chart, and the chart drawn into the 1200 x 800 picture. Goal: under 1 s.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

#include "bench/bench_window.h"
#include "graphics/chart_draw.h"
#include "graphics/chart_files.h"

namespace {
using namespace zendrite;

std::string sequence(int blocks) {
    std::string t;
    char buf[160];
    for (int k = 0; k < blocks; ++k) {
        const double temp = 10 + 0.05 * k;
        std::snprintf(buf, sizeof buf, "NEW_REFINEMENT run_%05d.dat\nTEMPERATURE %.2f\nNUMPAR 4 N_PATT 1 NPHASE 2 GLOBAL_CHI_2 %.3f\n",
                      k + 1, temp, 1.1 + 0.0001 * (k % 97));
        t += buf;
        std::snprintf(buf, sizeof buf, "Zero 0.0123 0.0004\nScale 0.00123 0.00001\nBkg1 102.5 1.2\nBkg2 -3.1 0.4\n");
        t += buf;
        std::snprintf(buf, sizeof buf, "PHASE 1 spinel 4\na %.6f 0.0002\nx_O 0.2612 0.0003\nBiso_O 0.45 0.02\nFraction %.3f 0.4\n",
                      8.339 + 0.00009 * temp, 80 - 0.003 * k);
        t += buf;
        std::snprintf(buf, sizeof buf, "PHASE 2 NiO 3\na %.6f 0.0001\nBiso_Ni 0.31 0.02\nFraction %.3f 0.4\n",
                      4.177 + 0.00005 * temp, 20 + 0.003 * k);
        t += buf;
    }
    return t;
}

void BM_Seq_10000_Read_And_Draw(benchmark::State& state) {
    Start_Bench_Window("bench_charts");
    const std::string text = sequence(10000);
    for (auto _ : state) {
        std::vector<hxl::SEQ_BLOCK_TYPE> blocks;
        std::string message;
        hxl::CHART_TYPE chart;
        if (!hxl::Read_Seq_Text(text, blocks, message) || !hxl::Seq_Chart(blocks, 0, {6, 10}, "bench", chart, message)) {
            state.SkipWithError(message.c_str());
            return;
        }
        WindowSelect(kRootWindow);
        IGrSelect(1, kRootWindow);
        Draw_Chart(chart);
        benchmark::DoNotOptimize(blocks.data());
    }
    state.counters["MB"] = static_cast<double>(text.size()) / 1e6;
}

}  // namespace

BENCHMARK(BM_Seq_10000_Read_And_Draw)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK_MAIN();
