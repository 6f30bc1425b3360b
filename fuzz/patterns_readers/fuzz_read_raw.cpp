// The raw detector file reader on arbitrary bytes, and each detector it finds as a pattern.
#include <string>

#include "fuzz/patterns_readers/reader_fuzz.h"
#include "patterns/read_pattern_raw.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size > zd_fuzz::kMaxInput) return 0;
    hxl::RAW_DATA_TYPE raw;
    std::string message;
    if (!hxl::Read_Raw_Text(std::string(reinterpret_cast<const char*>(data), size), raw, message)) return 0;
    for (int d = 1; d <= static_cast<int>(raw.detectors.size()); ++d) {
        hxl::DIFFRACTION_PATTERN_TYPE p;
        if (hxl::Raw_Detector_Pattern(raw, d, p, message)) zd_fuzz::Check_Pattern(p);
    }
    return 0;
}
