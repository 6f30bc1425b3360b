#include "support/numerics.h"

#include <cmath>

namespace hxl {

namespace {
// The rational Chebyshev fit's exponent polynomial in t = 1/(1 + |x|/2).
double erfc_poly(double t) {
    return -1.2655122 +
           t * (1.00002368 +
                t * (0.37409196 +
                     t * (0.09678418 +
                          t * (-0.18628806 +
                               t * (0.27886807 + t * (-1.13520398 + t * (1.48851587 + t * (-0.82215223 + t * 0.17087276))))))));
}
}  // namespace

double Erfc(double x) {
    const double z = std::fabs(x);
    const double t = 1.0 / (1.0 + 0.5 * z);
    const double r = t * std::exp(-z * z + erfc_poly(t));
    return x >= 0.0 ? r : 2.0 - r;
}

double Erfc_Scaled(double x) {
    const double t = 1.0 / (1.0 + 0.5 * x);
    return t * std::exp(erfc_poly(t));
}

float Erfc(float x) { return static_cast<float>(Erfc(static_cast<double>(x))); }

double Sind(double x) { return std::sin(x * 0.017453292519943295); }
float Sind(float x) { return static_cast<float>(Sind(static_cast<double>(x))); }

int Locate(const float* x, int n, float t) {
    if (n <= 0 || std::isnan(t) || t < x[0]) return 0;
    if (t >= x[n - 1]) return n;
    int lo = 1, hi = n;  // x(lo) <= t < x(hi)
    while (hi - lo > 1) {
        const int mid = (lo + hi) / 2;
        if (x[mid - 1] <= t) lo = mid;
        else hi = mid;
    }
    return lo;
}

int Locate(const Array1<float>& x, int n, float t) {
    if (n > x.size()) n = x.size();
    return Locate(x.data(), n, t);
}

}  // namespace hxl
