#include "support/fft.h"

#include <cmath>
#include <complex>
#include <utility>
#include <vector>

namespace hxl {
namespace {

// The points are transformed as they lie: n floats are n/2 complex numbers, which
// std::complex guarantees to be laid out as pairs of floats. Float data halve the
// memory walked, which bounds the large transforms; the angles come from double.
using cf = std::complex<float>;

const double kPi = 3.14159265358979323846;

// Advances exp(i a k) to exp(i a (k+1)) by the recurrence in double precision, set
// exactly every 256 steps so that rounding does not build up.
struct ROTOR {
    double ang;
    std::complex<double> w{1.0, 0.0}, step;
    std::size_t k = 0;
    explicit ROTOR(double a) : ang(a), step(std::polar(1.0, a)) {}
    void Next() {
        ++k;
        w = (k % 256 == 0) ? std::polar(1.0, ang * static_cast<double>(k)) : w * step;
    }
};

// Stage of length len has its twiddles exp(sign 2 pi i k / len), k < len/2, at
// w[len/2 + k]: all stages together fill m entries.
std::vector<cf> stage_twiddles(std::size_t m, int sign) {
    std::vector<cf> w(std::max<std::size_t>(m, 2));
    for (std::size_t half = 1; half < m; half <<= 1) {
        ROTOR r(sign * kPi / static_cast<double>(half));
        for (std::size_t k = 0; k < half; ++k, r.Next())
            w[half + k] = cf(static_cast<float>(r.w.real()), static_cast<float>(r.w.imag()));
    }
    return w;
}

void bit_reverse(cf* z, std::size_t m) {
    for (std::size_t i = 1, j = 0; i < m; ++i) {
        std::size_t bit = m >> 1;
        for (; j & bit; bit >>= 1) j ^= bit;
        j ^= bit;
        if (i < j) std::swap(z[i], z[j]);
    }
}

// One radix-2 stage over points [from, to) of blocks of len.
inline void stage(cf* z, std::size_t from, std::size_t to, std::size_t len, const cf* w) {
    const std::size_t half = len / 2;
    for (std::size_t i = from; i < to; i += len) {
        float* a = reinterpret_cast<float*>(z + i);
        float* b = reinterpret_cast<float*>(z + i + half);
        const float* t = reinterpret_cast<const float*>(w);
        for (std::size_t k = 0; k < 2 * half; k += 2) {
            const float vr = b[k] * t[k] - b[k + 1] * t[k + 1];
            const float vi = b[k] * t[k + 1] + b[k + 1] * t[k];
            const float ur = a[k], ui = a[k + 1];
            a[k] = ur + vr, a[k + 1] = ui + vi;
            b[k] = ur - vr, b[k + 1] = ui - vi;
        }
    }
}

// Radix-2 transform with exp(sign 2 pi i j k / m), unscaled, of points already in
// bit-reversed order. The short stages run a block at a time, so that a block stays
// in the cache through all of them; only the long ones walk the whole array.
void complex_fft(cf* z, std::size_t m, int sign) {
    if (m < 2) return;
    const std::vector<cf> w = stage_twiddles(m, sign);
    constexpr std::size_t kBlock = std::size_t{1} << 14;  // 128 KiB of points
    const std::size_t block = std::min(m, kBlock);
    for (std::size_t b0 = 0; b0 < m; b0 += block)
        for (std::size_t len = 2; len <= block; len <<= 1) stage(z, b0, b0 + block, len, w.data() + len / 2);
    for (std::size_t len = block * 2; len <= m; len <<= 1) stage(z, 0, m, len, w.data() + len / 2);
}
}  // namespace

bool Real_FFT(float* data, int n, bool inverse) {
    if (n < 2 || (n & (n - 1)) != 0) return false;
    const std::size_t m = static_cast<std::size_t>(n / 2);
    // even points as real parts, odd as imaginary: one complex transform of n/2
    cf* z = reinterpret_cast<cf*>(data);
    using cd = std::complex<double>;
    auto load = [z](std::size_t j) { return cd(z[j].real(), z[j].imag()); };
    auto put = [z](std::size_t j, cd v) { z[j] = cf(static_cast<float>(v.real()), static_cast<float>(v.imag())); };
    if (!inverse) {
        bit_reverse(z, m);
        complex_fft(z, m, +1);
        // F(j) = E + W^j O and F(m-j) = conj(E - W^j O), W = exp(2 pi i / n): each pair
        // of points gives its pair of coefficients in place.
        const cd z0 = load(0);
        put(0, cd(z0.real() + z0.imag(), z0.real() - z0.imag()));
        ROTOR r(2.0 * kPi / static_cast<double>(n));
        r.Next();
        for (std::size_t j = 1; j <= m / 2; ++j, r.Next()) {
            const cd a = load(j), b = load(m - j);
            const cd even = 0.5 * (a + std::conj(b));
            const cd odd = cd(0.0, -0.5) * (a - std::conj(b));
            const cd wo = r.w * odd;
            put(j, even + wo);
            if (j != m - j) put(m - j, std::conj(even - wo));
        }
        return true;
    }
    // The pairs back to the transform of the complex points, then that transform inverted.
    {
        const double f0 = z[0].real(), fm = z[0].imag();
        put(0, cd(0.5 * (f0 + fm), 0.5 * (f0 - fm)));
        ROTOR r(-2.0 * kPi / static_cast<double>(n));
        r.Next();
        for (std::size_t j = 1; j <= m / 2; ++j, r.Next()) {
            const cd a = load(j), b = load(m - j);
            // point j from F(j) and F(m-j); point m-j from the same two, its twiddle -conj(W^j)
            const cd odd_j = 0.5 * (a - std::conj(b)) * r.w;
            const cd zj = 0.5 * (a + std::conj(b)) + cd(0.0, 1.0) * odd_j;
            const cd odd_c = 0.5 * (b - std::conj(a)) * (-std::conj(r.w));
            const cd zc = 0.5 * (b + std::conj(a)) + cd(0.0, 1.0) * odd_c;
            put(j, zj);
            if (j != m - j) put(m - j, zc);
        }
    }
    bit_reverse(z, m);
    complex_fft(z, m, -1);
    return true;
}

bool Real_FFT(Array1<float>& data, bool inverse) { return Real_FFT(data.data(), data.size(), inverse); }

}  // namespace hxl
