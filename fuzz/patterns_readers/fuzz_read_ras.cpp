// The Rigaku RAS reader on arbitrary bytes.
#include <vector>

#include "fuzz/patterns_readers/reader_fuzz.h"
#include "patterns/read_pattern_library.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    hxl::Text_Unit unit;
    if (!zd_fuzz::Load_Unit(data, size, unit)) return 0;
    std::vector<hxl::DIFFRACTION_PATTERN_TYPE> set;
    int left_out = 0;
    hxl::Clear_Pattern_Error();
    hxl::Read_Pattern_Ras(unit, set, 4, left_out);
    for (const auto& p : set) {
        if (p.npts < 2 || p.xmin > p.xmax) __builtin_trap();
        zd_fuzz::Check_Pattern(p);
    }
    return 0;
}
