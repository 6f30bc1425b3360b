#include "calc/smoothing.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "support/fft.h"

namespace hxl {

void Smooth_5Point(float* y, int n) {
    if (n < 5) return;
    std::vector<float> c(y, y + n);
    // 0-based: c[i] is the point i+1
    for (int i = 2; i <= n - 3; ++i)
        c[static_cast<std::size_t>(i)] =
            ((y[i - 1] + y[i + 1]) * 12.0f + y[i - 2] * -3.0f + y[i] * 17.0f - y[i + 2] * 3.0f) / 35.0f;
    std::copy(c.begin(), c.end(), y);
}

bool Check_Polynomial_Order(int order, std::string& message) {
    if (order >= 1 && order <= 20) return true;
    message = "Incorrect value of parameter ";
    return false;
}

bool Check_Fourier_Window(float window, int npts, std::string& message) {
    // a pattern too short to smooth is left alone by the kernels; only a window below 1 is wrong for it
    const bool short_pattern = npts < 5;
    if (std::isfinite(window) && window >= 1.0f && (short_pattern || window <= static_cast<float>(npts / 2)))
        return true;
    message = "Incorrect value of Fourier Windows: FW > Npoints/2 ! Diminish the value of FW !";
    return false;
}

void Fourier_Filter(float* y, int n, float window) {
    if (n < 3) return;
    const long long need = 2LL * n + static_cast<long long>(2.0f * window);
    int m = 2;
    while (m < need) m *= 2;
    std::vector<float> t(static_cast<std::size_t>(m), 0.0f);
    std::copy(y, y + n, t.begin());
    float* T = t.data() - 1;  // T(1..m)
    const int mo2 = m / 2;
    const float c = (window / static_cast<float>(m)) * (window / static_cast<float>(m));
    Real_FFT(t.data(), m, false);
    T[1] /= static_cast<float>(mo2);
    float fac = 1.0f;
    for (int k = 1; k <= mo2 - 1; ++k) {
        if (std::abs(fac) <= 1.0e-8f) {
            T[2 * k + 1] = T[2 * k + 2] = 0.0f;
            continue;
        }
        fac = std::max(0.0f, (1.0f - static_cast<float>(k) * static_cast<float>(k) * c) / static_cast<float>(mo2));
        T[2 * k + 1] *= fac;
        T[2 * k + 2] *= fac;
    }
    T[2] *= std::max(0.0f, (1.0f - 0.25f * window * window) / static_cast<float>(mo2));
    // The inverse gives mo2 times the points and every coefficient was divided
    // by mo2 above, so the points come back at their own scale: a constant stays.
    Real_FFT(t.data(), m, true);
    for (int i = 2; i <= n - 1; ++i) y[i - 1] = T[i];
    y[0] = y[1];
    y[n - 1] = y[n - 2];
}

void Fourier_Smooth(float* y, int n, float window) {
    if (n < 5) return;
    const int q = n / 4;
    const int m = n + 2 * q;
    std::vector<float> w(static_cast<std::size_t>(m), 0.0f);
    float* W = w.data() - 1;  // W(1..m)
    const float* Y = y - 1;
    for (int i = 1; i <= n; ++i) W[q + i - 1] = Y[i];
    for (int k = 1; k <= q - 1; ++k) W[q - k] = Y[1 + k];
    for (int j = 1; j <= q + 1 && n - j >= 1; ++j) W[q + n - 1 + j] = Y[n - j];
    Fourier_Filter(w.data(), m, window);
    for (int i = 1; i <= n; ++i) y[i - 1] = W[q + i - 1];
}

}  // namespace hxl
