// The free-format reader (and its MDI variant) on arbitrary bytes, in memory
// for speed; every 64th input also goes through the reader frame from a file.
#include <cstdint>
#include <cstdio>
#include <string>
#include <unistd.h>

#include "patterns/pattern_readers.h"
#include "patterns/read_pattern.h"

namespace {
void check(const hxl::DIFFRACTION_PATTERN_TYPE& p) {
    if (!hxl::ERR_Pattern && (p.npts < 11 || p.x.size() != p.npts || p.y.size() != p.npts)) __builtin_trap();
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const bool mdi = size > 0 && (data[0] & 1);
    std::string text(reinterpret_cast<const char*>(data), size);
    hxl::Text_Unit unit;
    unit.Set_Text(text);
    hxl::DIFFRACTION_PATTERN_TYPE p;
    hxl::Read_Pattern_Free(unit, p, mdi ? ".MDI" : ".DAT");
    check(p);

    if (size > 1 && data[1] % 64 == 0) {
        static const std::string base = "/tmp/zendrite-fuzz-free-" + std::to_string(::getpid());
        const std::string file = base + (mdi ? ".mdi" : ".dat");
        if (std::FILE* f = std::fopen(file.c_str(), "wb")) {
            std::fwrite(data, 1, size, f);
            std::fclose(f);
        }
        hxl::DIFFRACTION_PATTERN_TYPE q;
        hxl::Read_Pattern(file, q, std::string("FreeFormat"), true);
        check(q);
    }
    return 0;
}
