// The conversion of one value and of one pattern between X spaces.
#include <algorithm>
#include <cmath>
#include <limits>

#include "calc/excluded_regions.h"
#include "calc/xspace.h"
#include "support/fixed_text.h"

namespace hxl {

namespace {

constexpr double kDegree = kTwoPi / 360.0;

bool good(double v) { return std::isfinite(v) && v > 0.0; }

double step(X_STEP s, double x, double c1, double c2) {
    switch (s) {
    case X_STEP::Theta_To_D: return c1 / (2.0 * std::sin(0.5 * x * kDegree));
    case X_STEP::D_To_Theta: {
        const double a = c1 / (2.0 * x);
        return a > 1.0 ? std::numeric_limits<double>::quiet_NaN() : 2.0 * std::asin(a) / kDegree;
    }
    case X_STEP::D_To_Q:
    case X_STEP::Q_To_D: return kTwoPi / x;
    case X_STEP::D_To_S:
    case X_STEP::S_To_D: return 1.0 / x;
    case X_STEP::S_To_Q: return kTwoPi * x;
    case X_STEP::Q_To_S: return x / kTwoPi;
    case X_STEP::D_To_Time: return x * (c1 + c2 * x);
    case X_STEP::Time_To_D: return D_From_Time(x, c1, c2);
    }
    return std::numeric_limits<double>::quiet_NaN();
}

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
        v = step(s, v, c1, c2);
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

int Convert_X_Points(const float* in, float* out, int n, const std::vector<X_STEP>& steps, double c1, double c2) {
    const float deg = static_cast<float>(kDegree), l = static_cast<float>(c1), pi2 = static_cast<float>(kTwoPi);
    for (int i = 0; i < n; ++i) out[i] = in[i];
    for (X_STEP s : steps) {
        switch (s) {
        case X_STEP::Theta_To_D:
            for (int i = 0; i < n; ++i) out[i] = l / (2.0f * std::sin(0.5f * deg * out[i]));
            break;
        case X_STEP::D_To_Theta:  // in double: near 180 degrees asin magnifies the rounding of its argument
            for (int i = 0; i < n; ++i) out[i] = static_cast<float>(step(s, out[i], c1, c2));
            break;
        case X_STEP::D_To_Q:
        case X_STEP::Q_To_D:
            for (int i = 0; i < n; ++i) out[i] = pi2 / out[i];
            break;
        case X_STEP::D_To_S:
        case X_STEP::S_To_D:
            for (int i = 0; i < n; ++i) out[i] = 1.0f / out[i];
            break;
        case X_STEP::S_To_Q:
            for (int i = 0; i < n; ++i) out[i] = pi2 * out[i];
            break;
        case X_STEP::Q_To_S:
            for (int i = 0; i < n; ++i) out[i] = out[i] / pi2;
            break;
        default:  // the times, in double
            for (int i = 0; i < n; ++i) out[i] = static_cast<float>(step(s, out[i], c1, c2));
            break;
        }
    }
    // The input and every result must be finite and positive; a step of a bad value stays bad.
    for (int i = 0; i < n; ++i)
        if (!(in[i] > 0.0f && out[i] > 0.0f && out[i] <= std::numeric_limits<float>::max())) return i + 1;
    return 0;
}

void Finish_Pattern_X(DIFFRACTION_PATTERN_TYPE& p, PRF_INFO_ADD_TYPE& info, Array1<float>&& x,
                      const std::vector<X_STEP>& steps, std::vector<std::string>& messages) {
    const double c1 = p.lambda1, c2 = p.lambda2;
    p.x = std::move(x);
    const float huge = std::numeric_limits<float>::max();
    p.xmin = huge;
    p.xmax = -huge;
    for (int i = 1; i <= p.npts && i <= p.x.size(); ++i) {
        p.xmin = std::min(p.xmin, p.x(i));
        p.xmax = std::max(p.xmax, p.x(i));
    }
    Pattern_Y_Limits(p);
    if (Same(info.prf_type, "PRF"))
        for (int i = 1; i <= info.nrefl && i <= info.refl_pos.size(); ++i) {
            double v = info.refl_pos(i);
            if (Convert_X_Value(v, steps, c1, c2)) info.refl_pos(i) = static_cast<float>(v);
        }
    Convert_Excluded_Regions(info, steps, c1, c2, Trim(info.prf_name), messages);
}

void Convert_Pattern_X(DIFFRACTION_PATTERN_TYPE& p, PRF_INFO_ADD_TYPE& info, const std::vector<X_STEP>& steps,
                       std::vector<std::string>& messages) {
    Array1<float> x = p.x;
    const int n = std::min(p.npts, p.x.size());
    if (n > 0) Convert_X_Points(p.x.data(), x.data(), n, steps, p.lambda1, p.lambda2);
    // A point without a value keeps its old one (callers check with Unconvertible_Point first).
    for (int i = 1; i <= n; ++i)
        if (!(x(i) > 0.0f && x(i) <= std::numeric_limits<float>::max())) x(i) = p.x(i);
    Finish_Pattern_X(p, info, std::move(x), steps, messages);
}

}  // namespace hxl
