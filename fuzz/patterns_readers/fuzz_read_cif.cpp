// The powder CIF reader on arbitrary bytes, data block by data block.
#include "fuzz/patterns_readers/reader_fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    return zd_fuzz::Run_Block_Reader(data, size, [](hxl::Text_Unit& u, hxl::DIFFRACTION_PATTERN_TYPE& p, int b, int& n) {
        hxl::Read_Pattern_Cif(u, p, b, n);
    });
}
