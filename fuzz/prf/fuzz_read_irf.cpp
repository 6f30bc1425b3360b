// The resolution-file reader on arbitrary bytes, in memory.
#include <cstdint>
#include <string>

#include "prf/read_irf.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    hxl::IRF_TYPE irf;
    bool ok = false;
    std::string message;
    hxl::Read_Irf_Text("fuzz", text, irf, ok, message);
    if (ok != message.empty()) __builtin_trap();  // a failure always has its text
    if (irf.geom < 0 || irf.geom > 6) __builtin_trap();
    return 0;
}
