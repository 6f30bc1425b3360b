#include "support/spline.h"

#include <vector>

namespace hxl {

void Spline_Second_Derivative(const float* xs, const float* ys, int n, float* y2s) {
    if (n <= 0) return;
    auto x = [xs](int i) { return static_cast<double>(xs[i - 1]); };
    auto y = [ys](int i) { return static_cast<double>(ys[i - 1]); };
    std::vector<double> y2(static_cast<std::size_t>(n) + 1), u(static_cast<std::size_t>(n) + 1);
    if (n == 1) {
        y2s[0] = 0.0f;
        return;
    }
    y2[1] = -0.5;
    u[1] = 0.0;
    for (int i = 2; i <= n - 1; ++i) {
        const double sig = (x(i) - x(i - 1)) / (x(i + 1) - x(i - 1));
        const double p = sig * y2[i - 1] + 2.0;
        y2[i] = (sig - 1.0) / p;
        u[i] = (6.0 * ((y(i + 1) - y(i)) / (x(i + 1) - x(i)) - (y(i) - y(i - 1)) / (x(i) - x(i - 1))) /
                    (x(i + 1) - x(i - 1)) -
                sig * u[i - 1]) /
               p;
    }
    const double qn = 0.5, un = 0.0;
    y2[n] = (un - qn * u[n - 1]) / (qn * y2[n - 1] + 1.0);
    for (int k = n - 1; k >= 1; --k) y2[k] = y2[k] * y2[k + 1] + u[k];
    for (int i = 1; i <= n; ++i) y2s[i - 1] = static_cast<float>(y2[i]);
}

void Spline_Value(const float* xs, const float* ys, const float* y2s, int n, float t, float& value) {
    if (n <= 0) {
        value = 0.0f;
        return;
    }
    if (n == 1) {
        value = ys[0];
        return;
    }
    auto x = [xs](int i) { return static_cast<double>(xs[i - 1]); };
    int klo = 1, khi = n;
    while (khi - klo > 1) {
        const int k = (khi + klo) / 2;
        if (x(k) > t) khi = k;
        else klo = k;
    }
    const double h = x(khi) - x(klo);
    if (h == 0.0) {  // repeated abscissa: no interval to interpolate in
        value = ys[klo - 1];
        return;
    }
    const double a = (x(khi) - t) / h;
    const double b = (t - x(klo)) / h;
    const double v = a * ys[klo - 1] + b * ys[khi - 1] +
                     ((a * a * a - a) * y2s[klo - 1] + (b * b * b - b) * y2s[khi - 1]) * (h * h) / 6.0;
    value = static_cast<float>(v);
}

void Spline_First_Derivative(const float* x, const float* y, int n, const float* y2, float* d) {
    if (n <= 0) return;
    if (n == 1) {
        d[0] = 0.0f;
        return;
    }
    double h = 0.0;
    for (int i = 1; i <= n; ++i) {
        if (i < n) h = static_cast<double>(x[i]) - x[i - 1];
        if (h == 0.0) {
            d[i - 1] = 0.0f;
            continue;
        }
        float s1 = 0.0f, s0 = 0.0f;
        Spline_Value(x, y, y2, n, static_cast<float>(x[i - 1] + h / 2.0), s1);
        Spline_Value(x, y, y2, n, static_cast<float>(x[i - 1] - h / 2.0), s0);
        d[i - 1] = static_cast<float>((static_cast<double>(s1) - s0) / h);
    }
}

void Spline_Second_Derivative(const Array1<float>& x, const Array1<float>& y, int n, Array1<float>& y2) {
    if (y2.size() < n) y2.resize(n);
    if (n > x.size() || n > y.size()) return;
    Spline_Second_Derivative(x.data(), y.data(), n, y2.data());
}

void Spline_Value(const Array1<float>& x, const Array1<float>& y, const Array1<float>& y2, int n, float t,
                  float& value) {
    if (n > x.size() || n > y.size() || n > y2.size()) {
        value = 0.0f;
        return;
    }
    Spline_Value(x.data(), y.data(), y2.data(), n, t, value);
}

void Spline_First_Derivative(const Array1<float>& x, const Array1<float>& y, int n, const Array1<float>& y2,
                             Array1<float>& d) {
    if (d.size() < n) d.resize(n);
    if (n > x.size() || n > y.size() || n > y2.size()) return;
    Spline_First_Derivative(x.data(), y.data(), n, y2.data(), d.data());
}

}  // namespace hxl
