#include "patterns/pattern_spline.h"

#include <algorithm>

namespace hxl {

std::vector<double> Spline_Second_Derivatives(const float* x, const float* y, int n) {
    std::vector<double> d2(static_cast<std::size_t>(std::max(n, 0)), 0.0);
    if (n < 3) return d2;
    std::vector<double> u(static_cast<std::size_t>(n), 0.0);
    for (int i = 1; i < n - 1; ++i) {
        const double h0 = double(x[i]) - x[i - 1], h1 = double(x[i + 1]) - x[i], h2 = double(x[i + 1]) - x[i - 1];
        const double sig = h0 / h2;
        const double p = sig * d2[i - 1] + 2.0;
        d2[i] = (sig - 1.0) / p;
        const double slope = (double(y[i + 1]) - y[i]) / h1 - (double(y[i]) - y[i - 1]) / h0;
        u[i] = (6.0 * slope / h2 - sig * u[i - 1]) / p;
    }
    d2[n - 1] = 0.0;
    for (int k = n - 2; k >= 0; --k) d2[k] = d2[k] * d2[k + 1] + u[k];
    return d2;
}

double Spline_Value(const float* x, const float* y, const std::vector<double>& d2, int n, double t) {
    if (n == 1) return y[0];
    // Bisection for the interval holding t.
    int lo = 0, hi = n - 1;
    while (hi - lo > 1) {
        const int k = (hi + lo) / 2;
        if (x[k] > t) hi = k;
        else lo = k;
    }
    const double h = double(x[hi]) - x[lo];
    const double a = (x[hi] - t) / h, b = (t - x[lo]) / h;
    return a * y[lo] + b * y[hi] + ((a * a * a - a) * d2[lo] + (b * b * b - b) * d2[hi]) * (h * h) / 6.0;
}

bool Strictly_Ascending(const float* x, int n) {
    for (int i = 1; i < n; ++i)
        if (!(x[i] > x[i - 1])) return false;
    return true;
}

}  // namespace hxl
