// The XRDML reader on arbitrary bytes, scan by scan.
#include "fuzz/patterns_readers/reader_fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    return zd_fuzz::Run_Block_Reader(data, size, [](hxl::Text_Unit& u, hxl::DIFFRACTION_PATTERN_TYPE& p, int b, int& n) {
        hxl::Read_Pattern_Xrdml(u, p, b, n);
    });
}
