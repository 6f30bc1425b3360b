// Random text as a free-format peak file: a list or a message, never a crash;
// a refused text leaves the list alone, a read one holds finite positions.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "peaks/peak_file_read.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 65536) return 0;
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::vector<hxl::PEAK_POINT_TYPE> list(1);
    list[0].x = 42.0f;
    std::string message;
    if (!hxl::Parse_Free_Peaks(text, "fuzz.aps", list, message)) {
        if (message.empty() || list.size() != 1 || list[0].x != 42.0f) std::abort();
        return 0;
    }
    if (list.empty()) std::abort();
    for (const auto& p : list)
        if (!std::isfinite(p.x)) std::abort();
    return 0;
}
