#include "patterns/diffraction_pattern.h"

#include <algorithm>
#include <limits>

#include "support/fixed_text.h"
#include "support/float_range.h"

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
    p.ymin = std::numeric_limits<float>::max();
    p.ymax = -std::numeric_limits<float>::max();
    Float_Range(p.y.data(), std::min(p.npts, p.y.size()), p.ymin, p.ymax);
}

}  // namespace hxl
