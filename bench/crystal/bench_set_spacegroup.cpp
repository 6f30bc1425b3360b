// Goal: Set_SpaceGroup of F d -3 m, with its orbits of Wyckoff positions, in
// under 1 ms, since the HKL Gen panel sets the group again at every change.
#include <benchmark/benchmark.h>

#include "crystal/space_group.h"

namespace {

void Set_SpaceGroup_Fd3m(benchmark::State& state) {
    hxl::SPACE_GROUP_TYPE sg;
    for (auto _ : state) {
        hxl::Set_SpaceGroup("F d -3 m", sg);
        benchmark::DoNotOptimize(sg.wyckoff.size());
    }
    state.counters["positions"] = static_cast<double>(sg.wyckoff.size());
}
BENCHMARK(Set_SpaceGroup_Fd3m)->Unit(benchmark::kMicrosecond);

// The group with most special positions.
void Set_SpaceGroup_Pmmm(benchmark::State& state) {
    hxl::SPACE_GROUP_TYPE sg;
    for (auto _ : state) {
        hxl::Set_SpaceGroup("P m m m", sg);
        benchmark::DoNotOptimize(sg.wyckoff.size());
    }
    state.counters["positions"] = static_cast<double>(sg.wyckoff.size());
}
BENCHMARK(Set_SpaceGroup_Pmmm)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
