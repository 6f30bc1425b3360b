#include "patterns/diffraction_pattern.h"

#include <algorithm>
#include <limits>

#include "support/fixed_text.h"

namespace hxl {

thread_local bool ERR_Pattern = false;
thread_local std::string ERR_Pattern_Mess;

void Set_Pattern_Error(const std::string& message) {
    ERR_Pattern = true;
    ERR_Pattern_Mess = Cut(message, 150);
}

void Clear_Pattern_Error() {
    ERR_Pattern = false;
    ERR_Pattern_Mess.clear();
}

void Allocate_Pattern(DIFFRACTION_PATTERN_TYPE& p, int n) {
    if (n >= 0) p.npts = n;
    if (p.npts < 1) {
        Set_Pattern_Error(" Attempt to allocate Diffraction_Pattern with 0-dimension ");
        return;
    }
    const int m = p.npts;
    p.y.resize(m, 0.0f);
    p.ycalc.resize(m, 0.0f);
    p.bgr.resize(m, 0.0f);
    p.x.resize(m, 0.0f);
    p.sigma.resize(m, 0.0f);
    p.istat.resize(m, 1);
    p.aux.resize(m, 0.0f);
    p.gy = p.gycalc = p.gbgr = p.gsigma = true;
    p.al_x = p.al_y = p.al_ycalc = p.al_bgr = p.al_sigma = p.al_istat = true;
}

void Pattern_Y_Limits(DIFFRACTION_PATTERN_TYPE& p) {
    float lo = std::numeric_limits<float>::max();
    float hi = -std::numeric_limits<float>::max();
    const float* y = p.y.data();
    const int n = std::min(p.npts, p.y.size());
    for (int i = 0; i < n; ++i) {
        if (y[i] < lo) lo = y[i];
        if (y[i] > hi) hi = y[i];
    }
    p.ymin = lo;
    p.ymax = hi;
}

}  // namespace hxl
