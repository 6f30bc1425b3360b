// The GSAS reader on arbitrary bytes, for constant wavelength and time of
// flight bank by bank, and a numbered bank.
#include "fuzz/patterns_readers/reader_fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    for (const char* bank : {"", "TOF "})
        zd_fuzz::Run_Block_Reader(data, size, [bank](hxl::Text_Unit& u, hxl::DIFFRACTION_PATTERN_TYPE& p, int b, int& n) {
            hxl::Read_Pattern_GSAS(u, p, bank, b, n);
        });
    return zd_fuzz::Run_Reader(data, size, [](hxl::Text_Unit& u, hxl::DIFFRACTION_PATTERN_TYPE& p) {
        hxl::Read_Pattern_GSAS(u, p, "TOF2");
    });
}
