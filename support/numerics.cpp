#include "support/numerics.h"

#include <cmath>

namespace hxl {

double Erfc(double x) {
    const double z = std::fabs(x);
    const double t = 1.0 / (1.0 + 0.5 * z);
    const double poly =
        -1.2655122 +
        t * (1.00002368 +
             t * (0.37409196 +
                  t * (0.09678418 +
                       t * (-0.18628806 +
                            t * (0.27886807 + t * (-1.13520398 + t * (1.48851587 + t * (-0.82215223 + t * 0.17087276))))))));
    const double r = t * std::exp(-z * z + poly);
    return x >= 0.0 ? r : 2.0 - r;
}

double Erfc_Scaled(double x) {
    if (x < 25.0) return std::exp(x * x) * std::erfc(x);
    // the asymptotic series: at x >= 25 eight terms are exact to the last bit
    const double r = 1.0 / (2.0 * x * x);
    double sum = 1.0, term = 1.0;
    for (int k = 1; k <= 8; ++k) {
        term *= -(2.0 * k - 1.0) * r;
        sum += term;
    }
    return sum / (x * 1.7724538509055160);
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
