// The JCAMP-DX reader on arbitrary bytes.
#include "fuzz/patterns_readers/reader_fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    return zd_fuzz::Run_Reader(data, size, [](hxl::Text_Unit& u, hxl::DIFFRACTION_PATTERN_TYPE& p) { hxl::Read_Pattern_Jcamp(u, p); });
}
