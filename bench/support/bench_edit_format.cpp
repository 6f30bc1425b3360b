// Readers call the edit-descriptor reader over whole files: (10(i2,f8.0))
// over 10000 lines is the model case; the list reader reads the same counts.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "support/edit_format.h"
#include "support/list_read.h"

using namespace hxl;

namespace {

constexpr int kPairs = 100000;  // 10000 lines of ten pairs

EDIT_FORMAT_TYPE pair_format() {
    EDIT_FORMAT_TYPE f;
    std::string message;
    Parse_Edit_Format("(10(i2,f8.0))", f, message);
    return f;
}

std::string pair_text(const EDIT_FORMAT_TYPE& f) {
    std::string out;
    Edit_Writer w(f, out);
    for (int i = 0; i < kPairs; ++i) w.Int(1 + i % 9).Real(1000.0 + (i * 37) % 50000);
    w.End();
    return out;
}

void BM_Edit_Read_Pairs(benchmark::State& state) {
    const EDIT_FORMAT_TYPE f = pair_format();
    Text_Unit unit;
    unit.Set_Text(pair_text(f));
    std::vector<int> counts(kPairs);
    std::vector<float> y(kPairs);
    for (auto _ : state) {
        unit.Rewind();
        Edit_Reader r(f, unit);
        for (int i = 0; i < kPairs; ++i)
            if (!r.Int(counts[i]) || !r.Real(y[i])) state.SkipWithError("read failed");
        benchmark::DoNotOptimize(y.data());
    }
    state.SetItemsProcessed(state.iterations() * kPairs * 2);
}
BENCHMARK(BM_Edit_Read_Pairs)->Unit(benchmark::kMillisecond);

void BM_Edit_Write_Pairs(benchmark::State& state) {
    const EDIT_FORMAT_TYPE f = pair_format();
    std::string out;
    for (auto _ : state) {
        out.clear();
        Edit_Writer w(f, out);
        for (int i = 0; i < kPairs; ++i) w.Int(1 + i % 9).Real(1000.0 + (i * 37) % 50000);
        w.End();
        benchmark::DoNotOptimize(out.data());
    }
    state.SetItemsProcessed(state.iterations() * kPairs * 2);
}
BENCHMARK(BM_Edit_Write_Pairs)->Unit(benchmark::kMillisecond);

void BM_List_Read_Pairs(benchmark::State& state) {
    const EDIT_FORMAT_TYPE f = pair_format();
    Text_Unit unit;
    unit.Set_Text(pair_text(f));
    std::vector<float> v(2 * kPairs);
    for (auto _ : state) {
        unit.Rewind();
        if (List_Read(unit, v.data(), 2 * kPairs) != List_Result::Ok) state.SkipWithError("read failed");
        benchmark::DoNotOptimize(v.data());
    }
    state.SetItemsProcessed(state.iterations() * kPairs * 2);
}
BENCHMARK(BM_List_Read_Pairs)->Unit(benchmark::kMillisecond);

void BM_Parse_Format(benchmark::State& state) {
    EDIT_FORMAT_TYPE f;
    std::string message;
    for (auto _ : state) {
        Parse_Edit_Format("(f13.0,10x,f8.3,45x,4f9.3,2(i5,3(e12.4,1x)))", f, message);
        benchmark::DoNotOptimize(f.items.data());
    }
}
BENCHMARK(BM_Parse_Format);

}  // namespace

BENCHMARK_MAIN();
