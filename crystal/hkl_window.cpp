// The list of reflections for a plot window: the trial cell, the limits, the positions.
#include <algorithm>
#include <cmath>

#include "crystal/niggli_cell.h"
#include "crystal/reflections.h"

namespace hxl {

bool Hkl_Trial_Cell(const float cell[6], Cell_Record& record, std::string& message) {
    message.clear();
    for (int i = 0; i < 6; ++i)
        if (!std::isfinite(cell[i]) || (i < 3 && !(cell[i] > 0))) {
            message = "Wrong cell parameters";
            return false;
        }
    if (!Cell_Angles_Allowed(cell + 3)) {
        Clear_Crys_Error();
        message = "Wrong cell parameters";
        return false;
    }
    Cell_Record r;
    Fill_Cell_Record(cell, cell + 3, r);
    const double abc = static_cast<double>(cell[0]) * cell[1] * cell[2];
    if (ERR_Crys || !(r.volume > 1e-3 * abc) || !std::isfinite(r.volume)) {
        Clear_Crys_Error();
        message = "Wrong cell parameters";
        return false;
    }
    record = r;
    return true;
}

bool Hkl_Generate_Window(const Cell_Record& cell, const SPACE_GROUP_TYPE& sg, HKL_XSPACE space, float lambda,
                         float dtt1, float dtt2, float xmin, float xmax, const float* px, const float* py, int n,
                         std::vector<HKL_GEN_TYPE>& list, std::string& message) {
    float smin = 0, smax = 0;
    if (!Hkl_S_Limits(space, xmin, xmax, lambda, dtt1, dtt2, smin, smax, message)) return false;
    std::vector<HKL_GEN_TYPE> out;
    // just below the lower limit, so that a reflection on the window's edge is kept
    if (!Hkl_Generate(cell, sg, smin * 0.999f, smax, out, message)) return false;
    std::size_t kept = 0;
    for (HKL_GEN_TYPE& r : out) {
        if (!Hkl_Position(space, r.s, lambda, dtt1, dtt2, r.pos)) continue;
        r.y = 0;
        if (n > 0) {
            const float* up = std::lower_bound(px, px + n, r.pos);
            std::ptrdiff_t i = up - px;
            if (i == n || (i > 0 && r.pos - px[i - 1] <= *up - r.pos)) --i;
            r.y = py[i];
        }
        out[kept++] = r;
    }
    out.resize(kept);
    // TOF and d run opposite to s: the list keeps the order of rising position
    if (space == HKL_XSPACE::D || space == HKL_XSPACE::TOF) std::reverse(out.begin(), out.end());
    list.swap(out);
    return true;
}

}  // namespace hxl
