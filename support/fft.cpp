#include "support/fft.h"

#include <cmath>
#include <complex>
#include <vector>

namespace hxl {
namespace {

using cplx = std::complex<double>;

// exp(sign 2 pi i k / n) for k = 0 .. count-1, by the recurrence in double
// precision, set exactly every 256 steps so that rounding does not build up.
std::vector<cplx> twiddles(std::size_t count, std::size_t n, int sign) {
    const double pi = 3.14159265358979323846;
    const double ang = sign * 2.0 * pi / static_cast<double>(n);
    const cplx step = std::polar(1.0, ang);
    std::vector<cplx> w(count);
    for (std::size_t k = 0; k < count; ++k)
        w[k] = (k % 256 == 0) ? std::polar(1.0, ang * static_cast<double>(k)) : w[k - 1] * step;
    return w;
}

// In-place radix-2 transform with exp(sign 2 pi i j k / m), unscaled.
void complex_fft(std::vector<cplx>& z, int sign) {
    const std::size_t m = z.size();
    for (std::size_t i = 1, j = 0; i < m; ++i) {
        std::size_t bit = m >> 1;
        for (; j & bit; bit >>= 1) j ^= bit;
        j ^= bit;
        if (i < j) std::swap(z[i], z[j]);
    }
    // Each stage's twiddles are tabled once and the butterflies run block by
    // block, so memory is walked in order at every stage.
    for (std::size_t len = 2; len <= m; len <<= 1) {
        const std::size_t half = len / 2;
        const std::vector<cplx> w = twiddles(half, len, sign);
        for (std::size_t i = 0; i < m; i += len) {
            cplx* a = z.data() + i;
            cplx* b = a + half;
            for (std::size_t k = 0; k < half; ++k) {
                const cplx u = a[k];
                const cplx v(b[k].real() * w[k].real() - b[k].imag() * w[k].imag(),
                             b[k].real() * w[k].imag() + b[k].imag() * w[k].real());
                a[k] = u + v;
                b[k] = u - v;
            }
        }
    }
}
}  // namespace

bool Real_FFT(float* data, int n, bool inverse) {
    if (n < 2 || (n & (n - 1)) != 0) return false;
    const std::size_t m = static_cast<std::size_t>(n / 2);
    std::vector<cplx> z(m);
    if (!inverse) {
        // Even points as real parts, odd as imaginary: one complex transform of n/2.
        for (std::size_t k = 0; k < m; ++k) z[k] = cplx(data[2 * k], data[2 * k + 1]);
        complex_fft(z, +1);
        const std::vector<cplx> tw = twiddles(m, static_cast<std::size_t>(n), +1);
        data[0] = static_cast<float>(z[0].real() + z[0].imag());
        data[1] = static_cast<float>(z[0].real() - z[0].imag());
        for (std::size_t j = 1; j < m; ++j) {
            const cplx zc = std::conj(z[m - j]);
            const cplx even = 0.5 * (z[j] + zc);
            const cplx odd = cplx(0.0, -0.5) * (z[j] - zc);
            const cplx f = even + tw[j] * odd;
            data[2 * j] = static_cast<float>(f.real());
            data[2 * j + 1] = static_cast<float>(f.imag());
        }
        return true;
    }
    auto packed = [&](std::size_t j) {  // F(j) for j = 0 .. m
        if (j == 0) return cplx(data[0], 0.0);
        if (j == m) return cplx(data[1], 0.0);
        return cplx(data[2 * j], data[2 * j + 1]);
    };
    const std::vector<cplx> tw = twiddles(m, static_cast<std::size_t>(n), -1);
    for (std::size_t j = 0; j < m; ++j) {
        const cplx fj = packed(j), fc = std::conj(packed(m - j));
        const cplx even = 0.5 * (fj + fc);
        const cplx odd = 0.5 * (fj - fc) * tw[j];
        z[j] = even + cplx(0.0, 1.0) * odd;
    }
    complex_fft(z, -1);
    for (std::size_t k = 0; k < m; ++k) {
        data[2 * k] = static_cast<float>(z[k].real());
        data[2 * k + 1] = static_cast<float>(z[k].imag());
    }
    return true;
}

bool Real_FFT(Array1<float>& data, bool inverse) { return Real_FFT(data.data(), data.size(), inverse); }

}  // namespace hxl
