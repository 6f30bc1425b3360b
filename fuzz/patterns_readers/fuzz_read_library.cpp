// The xylib route on arbitrary bytes. The first byte picks the extension that
// chooses the format where the content does not; the rest is the file.
#include <vector>

#include "fuzz/patterns_readers/reader_fuzz.h"
#include "patterns/read_pattern_library.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const char* const kNames[] = {"f.raw", "f.rd", "f.sd", "f.cpi", "f.vms", "f.chi",
                                         "f.xdd", "f.dbw", "f.rit", "f.mca", "f.cnf", "f.dat"};
    if (size < 1 || size > zd_fuzz::kMaxInput) return 0;
    const std::string bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    std::vector<hxl::DIFFRACTION_PATTERN_TYPE> set;
    int left_out = 0;
    hxl::Read_Library_Bytes(bytes, kNames[data[0] % 12], set, 4, left_out);
    if (hxl::ERR_Pattern && !set.empty()) __builtin_trap();
    for (const auto& p : set) {
        if (p.npts < 2) __builtin_trap();
        zd_fuzz::Check_Pattern(p);
        if (p.xmin > p.xmax) __builtin_trap();
    }
    return 0;
}
