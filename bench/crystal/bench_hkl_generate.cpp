// Goal: every reflection of a cubic F cell of a = 20 A up to s = 1 in under 20 ms.
#include <benchmark/benchmark.h>

#include "crystal/crystal_metrics.h"
#include "crystal/reflections.h"
#include "crystal/space_group.h"

namespace {

void Hkl_Generate_Cubic_F(benchmark::State& state) {
    const float cell[3] = {20, 20, 20}, ang[3] = {90, 90, 90};
    hxl::Cell_Record rec;
    hxl::Fill_Cell_Record(cell, ang, rec);
    hxl::SPACE_GROUP_TYPE sg;
    hxl::Set_SpaceGroup("F m -3 m", sg);
    std::vector<hxl::HKL_GEN_TYPE> list;
    std::string msg;
    for (auto _ : state) {
        hxl::Hkl_Generate(rec, sg, 0.0f, 1.0f, list, msg);
        benchmark::DoNotOptimize(list.data());
    }
    long total = 0;
    for (const auto& r : list) total += r.mult;
    state.counters["unique"] = static_cast<double>(list.size());
    state.counters["with_equivalents"] = static_cast<double>(total);
}
BENCHMARK(Hkl_Generate_Cubic_F)->Unit(benchmark::kMillisecond);

// The same cell with a group of low symmetry: the region is the Friedel half.
void Hkl_Generate_Triclinic(benchmark::State& state) {
    const float cell[3] = {20, 20, 20}, ang[3] = {90, 90, 90};
    hxl::Cell_Record rec;
    hxl::Fill_Cell_Record(cell, ang, rec);
    hxl::SPACE_GROUP_TYPE sg;
    hxl::Set_SpaceGroup("P -1", sg);
    std::vector<hxl::HKL_GEN_TYPE> list;
    std::string msg;
    for (auto _ : state) {
        hxl::Hkl_Generate(rec, sg, 0.0f, 1.0f, list, msg);
        benchmark::DoNotOptimize(list.data());
    }
    state.counters["unique"] = static_cast<double>(list.size());
}
BENCHMARK(Hkl_Generate_Triclinic)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
