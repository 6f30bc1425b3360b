// The profile-file reader on arbitrary bytes, in memory. The first byte picks
// the extension, so that the peak-fit layout is reached as well.
#include <cstdint>
#include <string>

#include "prf/read_prf.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size < 1) return 0;
    const std::string name = (data[0] & 1) ? "/nonexistent/fuzz.xrf" : "/nonexistent/fuzz.prf";
    const std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
    hxl::PRF_INFO_ADD_TYPE info;
    hxl::DIFFRACTION_PATTERN_TYPE p;
    bool error = true;
    std::string message;
    hxl::Read_Prf_Text(name, text, info, p, error, message);
    if (error) {
        if (message.empty() && text.find("# R ") == std::string::npos) __builtin_trap();  // only a pair file may refuse silently
        return 0;
    }
    // what a success hands to the store must hold together
    if (p.npts < 1 || p.x.size() != p.npts || p.y.size() != p.npts) __builtin_trap();
    if (info.refl_pos.size() != info.nrefl || info.refl_label.size() != info.nrefl ||
        info.refl_phase.size() != info.nrefl || info.refl_code.size() != info.nrefl)
        __builtin_trap();
    for (int j = 1; j <= info.nrefl; ++j)
        if (info.refl_phase(j) < 1 || info.refl_phase(j) > info.nphases) __builtin_trap();
    if (info.nexcl > info.excl_low.size() || info.nexcl > info.excl_high.size()) __builtin_trap();
    if (static_cast<int>(info.kvec.size()) != info.nphases && info.nphases > 0 && info.nrefl > 0) __builtin_trap();
    return 0;
}
