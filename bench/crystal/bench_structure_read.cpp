// Reading large CIF files: 10^5 and 10^6 atoms in P 1 and in F m -3 m (where each
// atom's orbit has up to 192 images), and the powder pattern of a large cell.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

#include "crystal/powder_calc.h"
#include "crystal/structure.h"

namespace {

std::string big_cif(const char* group, int atoms) {
    std::string t = "data_big\n_cell_length_a 40\n_cell_length_b 40\n_cell_length_c 40\n"
                    "_symmetry_space_group_name_H-M '" + std::string(group) + "'\nloop_\n_atom_site_label\n"
                    "_atom_site_type_symbol\n_atom_site_fract_x\n_atom_site_fract_y\n_atom_site_fract_z\n"
                    "_atom_site_U_iso_or_equiv\n";
    char buf[128];
    for (int i = 0; i < atoms; ++i) {
        // Positions spread over the cell, none on a special position.
        std::snprintf(buf, sizeof buf, "C%d C %.5f(3) %.5f(3) %.5f(3) 0.0100(2)\n", i, 0.01 + 0.97 * ((i * 37) % 1000) / 1000.0,
                      0.02 + 0.96 * ((i * 91) % 997) / 997.0, 0.03 + 0.95 * ((i * 53) % 991) / 991.0);
        t += buf;
    }
    return t;
}

void BM_ReadCifAtoms(benchmark::State& state, const char* group) {
    const std::string text = big_cif(group, static_cast<int>(state.range(0)));
    for (auto _ : state) {
        std::vector<hxl::STRUCTURE_TYPE> out;
        std::string msg;
        if (!hxl::Read_Cif_Structures_Text(text, "big", out, msg)) state.SkipWithError(msg.c_str());
        benchmark::DoNotOptimize(out);
    }
    state.counters["MB"] = static_cast<double>(text.size()) / 1e6;
}
// 10^6 atoms make a CIF of about 50 MB.
BENCHMARK_CAPTURE(BM_ReadCifAtoms, P1, "P 1")->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_ReadCifAtoms, Fm3m, "F m -3 m")->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_PowderPattern(benchmark::State& state) {
    std::vector<hxl::STRUCTURE_TYPE> out;
    std::string msg;
    hxl::Read_Cif_Structures_Text(big_cif("P 1", static_cast<int>(state.range(0))), "big", out, msg);
    hxl::POWDER_CALC_SETTINGS set;
    set.tth_min = 5;
    set.tth_max = 30;
    for (auto _ : state) {
        std::vector<hxl::CALC_REFLECTION_TYPE> refl;
        std::vector<std::string> notes;
        hxl::Calc_Powder_Reflections(out[0], set, refl, notes, msg);
        benchmark::DoNotOptimize(refl);
    }
}
BENCHMARK(BM_PowderPattern)->Arg(100)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
