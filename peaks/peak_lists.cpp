#include "peaks/peak_lists.h"

#include <algorithm>
#include <cmath>

namespace hxl {

float Profile_Step(const DIFFRACTION_PATTERN_TYPE& p) {
    if (p.step > 0.0f) return p.step;
    const int n = std::min({p.npts, p.x.size()});
    return n > 1 ? (p.x(n) - p.x(1)) / static_cast<float>(n - 1) : 0.0f;
}

bool Peaks_For_List(const PKB_TYPE& r, float step, bool spaced, std::vector<PEAK_POINT_TYPE>& out,
                    std::string& message) {
    out.clear();
    message.clear();
    if (r.np > kListLimit) {
        message = kMsgMaxPeaks;
        return false;
    }
    float last = 0.0f;
    for (int i = 1; i <= r.np; ++i) {
        if (spaced && !(std::fabs(r.x(i) - last) > 3.0f * step)) continue;
        out.push_back({r.x(i), r.y(i), r.bgr(i)});
        last = r.x(i);
    }
    return true;
}

bool Background_For_List(const PKB_TYPE& r, std::vector<PEAK_POINT_TYPE>& out, std::string& message) {
    out.clear();
    message.clear();
    if (r.np > kListLimit) {
        message = kMsgMaxBgrAuto;
        return false;
    }
    for (int i = 1; i <= r.np; ++i) out.push_back({r.x(i), r.y(i), 0.0f});
    return true;
}

}  // namespace hxl
