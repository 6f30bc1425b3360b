// The XY reader on arbitrary bytes, as an XY file and as a distance file.
#include "fuzz/patterns_readers/reader_fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::string header;
    zd_fuzz::Run_Reader(data, size, [&](hxl::Text_Unit& u, hxl::DIFFRACTION_PATTERN_TYPE& p) {
        hxl::Read_Pattern_XYSigma(u, p, false, &header);
    });
    return zd_fuzz::Run_Reader(data, size, [](hxl::Text_Unit& u, hxl::DIFFRACTION_PATTERN_TYPE& p) {
        hxl::Read_Pattern_XYSigma(u, p, true, nullptr);
    });
}
