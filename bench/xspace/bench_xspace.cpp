// Converting a full store, 2000 profiles of 5000 points in 2theta, to d-space and back.
#include <benchmark/benchmark.h>

#include "app/store/x_space.h"
#include "app/store/zendrite_param_global.h"

namespace {

void fill_store() {
    using namespace zendrite;
    ZENDRITE_STORE& g = zendrite_param_global();
    Reset_Store();
    Enter_None_Mode();
    for (int s = 1; s <= kMaxProfiles; ++s) {
        auto& p = g.pattern[static_cast<std::size_t>(s)];
        hxl::Allocate_Pattern(p, 5000);
        for (int i = 1; i <= 5000; ++i) p.x(i) = 5.0f + 0.03f * static_cast<float>(i), p.y(i) = 100.0f;
        p.xmin = p.x(1), p.xmax = p.x(5000);
        p.scat_var = "2theta";
        p.lambda1 = 1.494f;
        g.info[static_cast<std::size_t>(s)].prf_type = "DATA";
    }
    g.nperfiles = kMaxProfiles;
    Set_X_Space("2theta");
}

void BM_ToDAndBack(benchmark::State& state) {
    fill_store();
    bool error = false;
    std::string message;
    for (auto _ : state) {
        zendrite::Convert_X_Space("d-space", error, message);
        zendrite::Convert_X_Space("2theta", error, message);
        if (error) state.SkipWithError(message.c_str());
    }
    state.SetItemsProcessed(state.iterations() * 2LL * zendrite::kMaxProfiles * 5000);
}
BENCHMARK(BM_ToDAndBack)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
