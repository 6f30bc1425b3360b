#include <cmath>
#include <limits>

#include "support/numerics.h"

namespace hxl {

float Zero_Of(const std::function<float(float)>& f, float a0, float b0, float tol, bool* bracketed) {
    if (bracketed) *bracketed = true;
    double a = a0, b = b0;
    double fa = f(a0), fb = f(b0);
    if (fa == 0.0) return a0;
    if (fb == 0.0) return b0;
    if ((fa > 0.0) == (fb > 0.0) || std::isnan(fa) || std::isnan(fb)) {
        if (bracketed) *bracketed = false;
        return std::fabs(fa) < std::fabs(fb) ? a0 : b0;
    }
    const double eps = std::numeric_limits<float>::epsilon();
    double c = a, fc = fa, d = b - a, e = d;
    for (int iter = 0; iter < 200; ++iter) {
        if ((fb > 0.0 && fc > 0.0) || (fb < 0.0 && fc < 0.0)) {
            c = a;
            fc = fa;
            d = e = b - a;
        }
        if (std::fabs(fc) < std::fabs(fb)) {  // b is the best guess so far
            a = b;
            b = c;
            c = a;
            fa = fb;
            fb = fc;
            fc = fa;
        }
        const double tol1 = 2.0 * eps * std::fabs(b) + 0.5 * std::fabs(static_cast<double>(tol));
        const double xm = 0.5 * (c - b);
        if (std::fabs(xm) <= tol1 || fb == 0.0) break;
        if (std::fabs(e) >= tol1 && std::fabs(fa) > std::fabs(fb)) {
            double p, q;
            const double s = fb / fa;
            if (a == c) {  // secant
                p = 2.0 * xm * s;
                q = 1.0 - s;
            } else {  // inverse quadratic interpolation
                const double qq = fa / fc, r = fb / fc;
                p = s * (2.0 * xm * qq * (qq - r) - (b - a) * (r - 1.0));
                q = (qq - 1.0) * (r - 1.0) * (s - 1.0);
            }
            if (p > 0.0) q = -q;
            p = std::fabs(p);
            const double min1 = 3.0 * xm * q - std::fabs(tol1 * q);
            const double min2 = std::fabs(e * q);
            if (2.0 * p < (min1 < min2 ? min1 : min2)) {
                e = d;
                d = p / q;
            } else {  // interpolation would go astray: bisect
                d = xm;
                e = d;
            }
        } else {
            d = xm;
            e = d;
        }
        a = b;
        fa = fb;
        b += std::fabs(d) > tol1 ? d : std::copysign(tol1, xm);
        fb = f(static_cast<float>(b));
        if (std::isnan(fb)) break;
    }
    return static_cast<float>(b);
}

}  // namespace hxl
