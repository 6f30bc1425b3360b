// The conversion of one value and of one pattern between X spaces.
#include <algorithm>
#include <cmath>
#include <limits>

#include "calc/excluded_regions.h"
#include "calc/xspace.h"
#include "calc/xspace_step.h"
#include "support/fixed_text.h"

namespace hxl {

namespace {

bool good(double v) { return std::isfinite(v) && v > 0.0; }

}  // namespace

double D_From_Time(double x, double dtt1, double dtt2) {
    if (std::fabs(dtt2) <= 1e-6) return x / dtt1;
    // With d = u/dtt1 the equation is a u^2 + u - x = 0, a = dtt2/dtt1^2. The root of larger
    // magnitude has no cancellation; the other comes from the product of the roots, -x/a.
    const double a = dtt2 / (dtt1 * dtt1);
    const double r = std::sqrt(1.0 + 4.0 * a * x);
    const double big = (-1.0 - r) / (2.0 * a);
    const double small = (-x / a) / big;
    // With dtt2 < 0 both roots may be positive: the small one continues the linear relation.
    const double u = small > 0.0 ? small : big;
    return u > 0.0 ? u / dtt1 : std::numeric_limits<double>::quiet_NaN();
}

bool Convert_X_Value(double& x, const std::vector<X_STEP>& steps, double c1, double c2) {
    double v = x;
    if (!good(v)) return false;
    for (X_STEP s : steps) {
        v = X_Step_Value(s, v, c1, c2);
        if (!good(v)) return false;
    }
    // What a float can't hold is no value either.
    if (!good(static_cast<double>(static_cast<float>(v)))) return false;
    x = v;
    return true;
}

std::string Unconvertible_Point(const DIFFRACTION_PATTERN_TYPE& p, const PRF_INFO_ADD_TYPE& info,
                                const std::vector<X_STEP>& steps) {
    const double c1 = p.lambda1, c2 = p.lambda2;
    for (int i = 1; i <= p.npts && i <= p.x.size(); ++i) {
        double v = p.x(i);
        if (!Convert_X_Value(v, steps, c1, c2))
            return "point " + std::to_string(i) + " (X = " + std::to_string(p.x(i)) + ")";
    }
    if (Same(info.prf_type, "PRF"))
        for (int i = 1; i <= info.nrefl && i <= info.refl_pos.size(); ++i) {
            double v = info.refl_pos(i);
            if (!Convert_X_Value(v, steps, c1, c2))
                return "reflection " + std::to_string(i) + " (X = " + std::to_string(info.refl_pos(i)) + ")";
        }
    return {};
}

void Convert_Reflections_And_Regions(const DIFFRACTION_PATTERN_TYPE& p, PRF_INFO_ADD_TYPE& info,
                                     const std::vector<X_STEP>& steps, std::vector<std::string>& messages) {
    const double c1 = p.lambda1, c2 = p.lambda2;
    if (Same(info.prf_type, "PRF"))
        for (int i = 1; i <= info.nrefl && i <= info.refl_pos.size(); ++i) {
            double v = info.refl_pos(i);
            if (Convert_X_Value(v, steps, c1, c2)) info.refl_pos(i) = static_cast<float>(v);
        }
    Convert_Excluded_Regions(info, steps, c1, c2, Trim(info.prf_name), messages);
}

void Convert_Pattern_X(DIFFRACTION_PATTERN_TYPE& p, PRF_INFO_ADD_TYPE& info, const std::vector<X_STEP>& steps,
                       std::vector<std::string>& messages) {
    const Array1<float> old = p.x;
    Convert_Points_In_Place(p, steps);
    // A point without a value keeps its old one (callers check with Unconvertible_Point first).
    bool kept = false;
    for (int i = 1; i <= std::min(p.npts, p.x.size()); ++i)
        if (!(p.x(i) > 0.0f && p.x(i) <= std::numeric_limits<float>::max())) p.x(i) = old(i), kept = true;
    if (kept) Convert_Points_In_Place(p, {});
    Convert_Reflections_And_Regions(p, info, steps, messages);
}

}  // namespace hxl
