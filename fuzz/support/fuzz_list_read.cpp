// The list-directed reader on arbitrary text: reads of each kind until the
// text runs out, then the same text as one internal read.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "support/list_read.h"

using namespace hxl;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const int n = 1 + data[0] % 16;
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    Text_Unit unit;
    unit.Set_Text(text);
    float f[16];
    double d[16];
    int k[16];
    for (int round = 0; round < 1000 && !unit.At_End(); ++round) {
        List_Result r;
        switch (round % 3) {
            case 0: r = List_Read(unit, f, n); break;
            case 1: r = List_Read(unit, d, n); break;
            default: r = List_Read(unit, k, n); break;
        }
        if (r == List_Result::End_Of_File && !unit.At_End()) std::abort();
    }
    List_Read(std::string_view(text), d, n);
    List_Read(std::string_view(text), k, n);
    double v;
    if (Parse_Real(text, v) && std::isfinite(v)) {
        float fv;
        if (!Parse_Real(text, fv)) std::abort();  // a double that reads must read as a float too
    }
    return 0;
}
