// The GSAS reader on arbitrary bytes, for constant wavelength, the first
// time-of-flight bank and a numbered one.
#include "fuzz/patterns_readers/reader_fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    for (const char* bank : {"", "TOF ", "TOF2"})
        zd_fuzz::Run_Reader(data, size, [bank](hxl::Text_Unit& u, hxl::DIFFRACTION_PATTERN_TYPE& p) {
            hxl::Read_Pattern_GSAS(u, p, bank);
        });
    return 0;
}
