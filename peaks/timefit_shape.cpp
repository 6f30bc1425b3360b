#include "peaks/timefit_shape.h"

#include <algorithm>
#include <cmath>

#include "support/numerics.h"

namespace hxl {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kTwoOverSqrtPi = 1.1283791670955126;
constexpr double kSigmaSquared = 0.18033688011112042;  // (1 / (2 sqrt(2 ln 2)))^2
constexpr double kEuler = 0.57721566490153286;

// exp(u) erfc(y), with its exponent merged into the scaled erfc so that no
// factor overflows: exp(u - y^2) is the Gaussian gs, whatever u and y are.
double Exp_Erfc(double u, double y, double gs, double (*erfcx)(double)) {
    if (y >= 0) return gs * erfcx(y);
    return 2 * std::exp(u) - gs * erfcx(-y);  // u < 0 here
}

}  // namespace

std::complex<double> Exp_E1(std::complex<double> z) {
    using C = std::complex<double>;
    // Products and reciprocals by hand: the library's complex arithmetic,
    // careful of infinities, costs several times more in these loops.
    const auto mul = [](C a, C b) {
        return C(a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real());
    };
    const auto inv = [](C v) {
        const double n = std::norm(v);
        return n < 1e-300 ? C(1e300, 0.0) : C(v.real() / n, -v.imag() / n);
    };
    const double r = std::abs(z);
    // Near the negative real axis the continued fraction is slow, while the
    // series loses only a factor exp(|z| + Re z) to cancellation there (e^10
    // of 1e-16 at most): take the series.
    if (r <= 4.0 || (r <= 60.0 && r + z.real() <= 10.0)) {
        C sum = 0, term = 1;
        for (int k = 1; k <= 400; ++k) {
            term = mul(term, -z) / static_cast<double>(k);
            const C add = term / static_cast<double>(k);
            sum += add;
            if (std::norm(add) <= 1e-34 * std::norm(sum)) break;
        }
        return std::exp(z) * (-kEuler - std::log(z) - sum);
    }
    // Far out the asymptotic series: its 16th term is below 2e-13 of the
    // first from |z| = 40 on, and most points of a peak's tails lie there.
    if (r >= 40.0) {
        const C iz = inv(z);
        C term = iz, sum = iz;
        for (int k = 1; k <= 15; ++k) {
            term = mul(term, iz) * -static_cast<double>(k);
            sum += term;
        }
        return sum;
    }
    // exp(z) E1(z) = 1/(z+1- 1/(z+3- 4/(z+5- ...))), by the modified Lentz method.
    C b = z + 1.0, c = 1e300, d = inv(b), h = d;
    for (int i = 1; i <= 5000; ++i) {
        const double an = -static_cast<double>(i) * i;
        b += 2.0;
        d = inv(an * d + b);
        c = b + an * inv(c);
        const C del = mul(c, d);
        h = mul(h, del);
        if (std::norm(del - 1.0) < 1e-28) break;
    }
    return h;
}

TOF_SHAPE_TYPE Tof_Omega(double dt, double alpha, double beta, double h, double eta, bool lorentz) {
    return Tof_Omega_With(dt, alpha, beta, h, eta, lorentz, Erfc_Scaled);
}

TOF_SHAPE_TYPE Tof_Omega_With(double dt, double alpha, double beta, double h, double eta, bool lorentz,
                              double (*erfcx)(double)) {
    const double a = std::max(alpha, kTofMinRate), b = std::max(beta, kTofMinRate);
    h = std::max(std::fabs(h), kTofMinWidth);
    if (!std::isfinite(a) || !std::isfinite(b) || !std::isfinite(h)) return {NAN, NAN, NAN, NAN, NAN, NAN};
    const double s2 = kSigmaSquared * h * h, sq = std::sqrt(2 * s2), rs = 1 / sq;
    const double n = 0.5 * a * b / (a + b);
    const double dn_da = 0.5 * b * b / ((a + b) * (a + b)), dn_db = 0.5 * a * a / ((a + b) * (a + b));
    const double ds2_dh = 2 * kSigmaSquared * h;

    // Gaussian part.
    const double u = 0.5 * a * (a * s2 + 2 * dt), w = 0.5 * b * (b * s2 - 2 * dt);
    const double y = (a * s2 + dt) * rs, z = (b * s2 - dt) * rs;
    const double gs = std::exp(-dt * dt / (2 * s2));
    const double ea = Exp_Erfc(u, y, gs, erfcx), eb = Exp_Erfc(w, z, gs, erfcx);
    const double cg = kTwoOverSqrtPi * gs;
    const double dA_ddt = ea * a - cg * rs, dB_ddt = -eb * b + cg * rs;
    const double dA_da = ea * (a * s2 + dt) - cg * s2 * rs;
    const double dB_db = eb * (b * s2 - dt) - cg * s2 * rs;
    // y / (2 s2) is large only where gs has died away.
    const double dA_ds2 = ea * 0.5 * a * a - (gs == 0 ? 0.0 : cg * (a * rs - y / (2 * s2)));
    const double dB_ds2 = eb * 0.5 * b * b - (gs == 0 ? 0.0 : cg * (b * rs - z / (2 * s2)));
    const double og = n * (ea + eb);
    TOF_SHAPE_TYPE g;
    g.v = og;
    g.ddt = n * (dA_ddt + dB_ddt);
    g.da = dn_da * (ea + eb) + n * dA_da;
    g.db = dn_db * (ea + eb) + n * dB_db;
    g.dh = n * (dA_ds2 + dB_ds2) * ds2_dh;

    TOF_SHAPE_TYPE l;
    if (lorentz) {
        using C = std::complex<double>;
        const C p(a * dt, 0.5 * a * h), q(-b * dt, 0.5 * b * h);
        const C fp = Exp_E1(p), fq = Exp_E1(q);
        const C gp = fp - 1.0 / p, gq = fq - 1.0 / q;  // (exp E1)' = exp E1 - 1/z
        const double k = -2 / kPi, s = (fp + fq).imag();
        l.v = k * n * s;
        l.ddt = k * n * (gp * a - gq * b).imag();
        l.da = k * (dn_da * s + n * (gp * C(dt, 0.5 * h)).imag());
        l.db = k * (dn_db * s + n * (gq * C(-dt, 0.5 * h)).imag());
        l.dh = k * n * (gp * C(0, 0.5 * a) + gq * C(0, 0.5 * b)).imag();
    }
    TOF_SHAPE_TYPE r;
    r.v = (1 - eta) * g.v + eta * l.v;
    r.ddt = (1 - eta) * g.ddt + eta * l.ddt;
    r.da = (1 - eta) * g.da + eta * l.da;
    r.db = (1 - eta) * g.db + eta * l.db;
    r.dh = (1 - eta) * g.dh + eta * l.dh;
    r.de = l.v - g.v;
    return r;
}

}  // namespace hxl
