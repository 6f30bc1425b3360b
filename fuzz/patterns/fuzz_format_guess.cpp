// The format guess on arbitrary bytes: it must name a row of the table (or
// none) with a reason, whatever the head holds, cut or whole.
#include <cstdint>
#include <string_view>

#include "patterns/format_guess.h"
#include "patterns/format_table.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view head(reinterpret_cast<const char*>(data), size);
    static constexpr std::string_view kNames[] = {"x.dat", "x.xrdml", "x.csv", "x.udf", "x.jdx", "x"};
    const std::string_view name = kNames[size % 6];
    for (bool complete : {true, false}) {
        const hxl::FORMAT_GUESS_TYPE g = hxl::Guess_Pattern_Format_Text(head, name, complete);
        if (g.row < 0 || g.row > hxl::kFormatRows || g.reason.empty()) __builtin_trap();
        if ((g.row == hxl::kRowLibrary) != !g.library.empty()) __builtin_trap();
    }
    return 0;
}
