// The multi-bank reader on arbitrary bytes: every pattern it counts must be whole.
#include <vector>

#include "fuzz/patterns_readers/reader_fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    hxl::Text_Unit unit;
    if (!zd_fuzz::Load_Unit(data, size, unit)) return 0;
    std::vector<hxl::DIFFRACTION_PATTERN_TYPE> set(4);
    int count = 0;
    hxl::Read_Pattern_Isis(unit, set, count, "");
    if (count < 0 || count > static_cast<int>(set.size())) __builtin_trap();
    for (int k = 0; k < count; ++k) zd_fuzz::Check_Pattern(set[static_cast<std::size_t>(k)]);
    return 0;
}
