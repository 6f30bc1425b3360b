// Random short patterns through the search driver in its three modes and
// through the zone detector: a text or a result, never a crash or a hang;
// a result lies inside the window and rises.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>

#include "peaks/search_points.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 6 || size > 4096) return 0;
    hxl::SEARCH_CONDITIONS_TYPE c;
    c.iterations = data[0] % 6;
    c.peak_type = data[1] % 6;
    c.peak_threshold = static_cast<float>(data[2]) / 256.0f;
    c.shoulder_threshold = static_cast<float>(data[3]) / 32.0f;
    c.bkg_threshold = static_cast<float>(data[4]) / 512.0f;
    const bool odd_steps = data[5] & 1;
    data += 6;
    size -= 6;
    const int n = static_cast<int>(size / 2);
    if (n < 1) return 0;
    hxl::DIFFRACTION_PATTERN_TYPE p;
    hxl::Allocate_Pattern(p, n);
    float x = 5.0f;
    for (int i = 1; i <= n; ++i) {
        const std::uint8_t a = data[2 * (i - 1)], b = data[2 * (i - 1) + 1];
        x += odd_steps ? static_cast<float>(a % 17) * 0.01f : 0.02f;  // repeated abscissae possible
        p.x(i) = x;
        p.y(i) = a == 255 && b == 255 ? std::numeric_limits<float>::quiet_NaN()
                                      : static_cast<float>((a << 8) | b) - 1000.0f;
        p.ycalc(i) = static_cast<float>(b);
    }
    p.step = 0.02f;
    const float xmin = p.x(1) + static_cast<float>(data[0] % 4) * 0.02f, xmax = p.x(n);
    const hxl::SEARCH_FILE_TYPE none{"", "", "", false};
    const char* modes[] = {" ", "background", "satellites"};
    for (const char* mode : modes) {
        hxl::PKB_TYPE r;
        const int np = hxl::Search_Points(p, xmin, xmax, mode, c, none, r);
        if (hxl::ERR_Search && (np != 0 || hxl::ERR_Search_Mess.empty())) std::abort();
        if (np != r.np && np != 0) std::abort();
        for (int i = 1; i <= np; ++i) {
            if (!std::isfinite(r.x(i))) std::abort();
            if (i > 1 && r.x(i) < r.x(i - 1)) std::abort();
        }
    }
    hxl::PKB_TYPE z;
    std::string message;
    hxl::Search_Peaks_In_Zone(p, xmin, xmax, 400, z, message);
    if (z.np > 400) std::abort();
    return 0;
}
