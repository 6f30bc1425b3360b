// Any bytes as a detector image: the EDF reader in memory, then the same
// bytes as a file through the TIFF, CBF and HDF5 glue, the numor frames and a
// geometry file, and an integration of whatever was read.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>

#include "instrument/azimuthal.h"
#include "instrument/frame_image.h"
#include "instrument/frame_readers.h"
#include "instrument/nrf_frames.h"
#include "instrument/tube_pattern.h"

using namespace hxl;

namespace {
void use(const FRAME_SET_TYPE& f) {
    if (f.n_frames < 1) return;
    FRAME_VIEW_TYPE v;
    float lo, hi;
    Frame_RGB(f, f.n_frames, v, lo, hi);
    DIFFRACTION_PATTERN_TYPE p;
    std::string m;
    Tube_Bank_Pattern(f, TUBE_BANK_TYPE{}, p, m);
    if (static_cast<long long>(f.nx) * f.ny > 65536) return;
    DETECTOR_GEOMETRY_TYPE g;
    g.distance = 100;
    g.beam_x = static_cast<float>(f.nx) / 2;
    g.beam_y = static_cast<float>(f.ny) / 2;
    g.pixel_x = g.pixel_y = 0.2f;
    g.wavelength = 1;
    INTEGRATION_TABLE_TYPE t;
    if (Build_Integration_Table(g, f.nx, f.ny, t, m)) Integrate_Image(t, Frame_Data(f, 1), nullptr, g, p, m);
}
}  // namespace

// The CBF library's parser keeps a few bytes of a token it fails on; its own
// leak, not one of the glue, which frees every handle.
extern "C" const char* __lsan_default_suppressions() { return "leak:libcbf.so\n"; }

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string bytes(reinterpret_cast<const char*>(data), size);
    FRAME_SET_TYPE f;
    std::string message;
    if (Read_EDF_Bytes(bytes, "fuzz.edf", f, message)) use(f);

    static const std::string base = "/tmp/fuzz_frames_" + std::to_string(::getpid());
    for (const char* ext : {".tif", ".cbf", ".h5", ".json", ""}) {
        std::string path = base + ext;
        {
            std::ofstream out(path, std::ios::binary | std::ios::trunc);
            out << bytes;
        }
        if (std::string(ext) == ".json") {
            DETECTOR_GEOMETRY_TYPE g;
            std::string mask;
            Read_Geometry_File(path, g, mask, message);
        } else if (std::string(ext).empty()) {
            if (Read_Nrf_Frames(path, f, message)) use(f);
        } else if (Read_Frames(path, f, message, "/entry/data")) {
            use(f);
        }
    }
    return 0;
}
