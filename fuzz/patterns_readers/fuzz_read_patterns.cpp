// Every pattern reader on arbitrary bytes: the first byte picks the reader,
// the rest is the file. A reader may refuse the file, never crash.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "patterns/pattern_readers.h"
#include "patterns/read_pattern_raw.h"
#include "support/text_unit.h"

using namespace hxl;

namespace {

void check(const DIFFRACTION_PATTERN_TYPE& p) {
    // What the frame's callers rely on after a successful read.
    if (ERR_Pattern || p.npts < 1) return;
    if (p.x.size() < p.npts || p.y.size() < p.npts || p.sigma.size() < p.npts) __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1 || size > 200000) return 0;
    const int which = data[0] % 20;
    Text_Unit unit;
    unit.Set_Text(std::string(reinterpret_cast<const char*>(data + 1), size - 1));
    DIFFRACTION_PATTERN_TYPE p;
    std::string header;
    switch (which) {
        case 0: Read_Pattern_XYSigma(unit, p, false, &header); break;
        case 1: Read_Pattern_XYSigma(unit, p, true, nullptr); break;
        case 2: Read_Pattern_Cif(unit, p); break;
        case 3: Read_Pattern_Csv(unit, p); break;
        case 4: Read_Pattern_Udf(unit, p); break;
        case 5: Read_Pattern_Jcamp(unit, p); break;
        case 6: Read_Pattern_Xrdml(unit, p); break;
        case 7: Read_Pattern_Socabim(unit, p); break;
        case 8: Read_Pattern_TimeVariable(unit, p); break;
        case 9: Read_Pattern_KV8(unit, p); break;
        case 10: Read_Pattern_KG1(unit, p); break;
        case 11: Read_Pattern_KV7(unit, p); break;
        case 12: Read_Pattern_KV7_Old(unit, p); break;
        case 13: Read_Pattern_DMC(unit, p); break;
        case 14: Read_Pattern_NLS(unit, p); break;
        case 15: Read_Pattern_GSAS(unit, p, ""); break;
        case 16: Read_Pattern_GSAS(unit, p, "TOF "); break;
        case 17: Read_Pattern_GSAS(unit, p, "TOF2"); break;
        case 18: {
            std::vector<DIFFRACTION_PATTERN_TYPE> set(4);
            int count = 0;
            Read_Pattern_Isis(unit, set, count, "");
            for (int k = 0; k < count; ++k) check(set[static_cast<std::size_t>(k)]);
            return 0;
        }
        case 19: {
            RAW_DATA_TYPE raw;
            std::string message;
            if (Read_Raw_Text(unit.Text(), raw, message))
                for (int d = 1; d <= static_cast<int>(raw.detectors.size()); ++d) {
                    DIFFRACTION_PATTERN_TYPE q;
                    Raw_Detector_Pattern(raw, d, q, message);
                }
            return 0;
        }
        default: break;
    }
    check(p);
    return 0;
}
