#include <algorithm>
#include <cfloat>
#include <cmath>

#include "patterns/pattern_checks.h"
#include "patterns/read_pattern_library.h"

namespace hxl {

bool Finite_Float(double value) { return std::isfinite(value) && std::fabs(value) <= double(FLT_MAX); }

void Finish_Library_Scan(DIFFRACTION_PATTERN_TYPE& p) {
    const int n = p.npts;
    if (n < 1) return;
    // A scan that ends below its start is turned round whole (a library block
    // has no other order to keep), so the limits always run low to high.
    if (n > 1 && p.x(n) < p.x(1)) Reverse_Points(p);
    p.xmin = p.x(1);
    p.xmax = p.x(n);
    p.step = n > 1 ? (p.xmax - p.xmin) / static_cast<float>(n - 1) : 0.0f;
    if (p.ct_step && n > 2) {
        // A constant step claimed by the file must hold for every point,
        // since the step routes rebuild X from xmin and step.
        const double tol = 1e-2 * std::fabs(double(p.step));
        for (int i = 2; i <= n && p.ct_step; ++i)
            if (std::fabs(double(p.x(i)) - p.x(i - 1) - p.step) > tol) p.ct_step = false;
    }
    Pattern_Y_Limits(p);
}

}  // namespace hxl
