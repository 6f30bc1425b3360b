// The time-of-flight peak shape against values worked with mpmath from the
// exact erfc and E1 (tests/data/peaks/tof_shape_mpmath.py), and its
// behaviour at the extremes of its inputs.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>
#include <vector>

#include "peaks/timefit_shape.h"
#include "support/numerics.h"

namespace hxl {
namespace {

struct REF_ROW {
    double dt, a, b, h, e, peak, v[6];
};

std::vector<REF_ROW> Reference() {
    std::ifstream f(std::string(ZD_TEST_DATA) + "/peaks/tof_shape_reference.txt");
    std::vector<REF_ROW> rows;
    std::string line;
    while (std::getline(f, line)) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream s(line);
        REF_ROW r{};
        s >> r.dt >> r.a >> r.b >> r.h >> r.e >> r.peak;
        for (double& x : r.v) s >> x;
        if (s) rows.push_back(r);
    }
    return rows;
}

double Get(const TOF_SHAPE_TYPE& s, int k) {
    const double v[6] = {s.v, s.ddt, s.da, s.db, s.dh, s.de};
    return v[k];
}

// exp(x^2) erfc(x) to double precision, x >= 0: the library's erfc, and its
// asymptotic series where exp(x^2) would overflow.
double Exact_Erfcx(double x) {
    if (x < 25) return std::exp(x * x) * std::erfc(x);
    double sum = 1, term = 1;
    for (int k = 1; k < 12; ++k) {
        term *= -(2 * k - 1) / (2 * x * x);
        sum += term;
    }
    return sum / (x * 1.7724538509055159);
}

struct TABLE_CHECK {
    int tested = 0, derivatives = 0, derivatives_fine = 0;
};

// Every row of the table against the shape computed with `erfcx`; a value (column 0)
// must agree within 1e-5 relative, a derivative within `derivative_tolerance`.
TABLE_CHECK Check_Table(double (*erfcx)(double), double derivative_tolerance) {
    const std::vector<REF_ROW> rows = Reference();
    EXPECT_EQ(rows.size(), 702u);  // 54 shapes, 13 points each out to both cut-off edges
    const char* names[6] = {"omega", "d/ddt", "d/dalpha", "d/dbeta", "d/dH", "d/deta"};
    TABLE_CHECK c;
    for (std::size_t s = 0; s + 13 <= rows.size(); s += 13) {
        // the scale of each column over the shape's points
        double scale[6] = {rows[s].peak, 0, 0, 0, 0, 0};
        for (std::size_t i = s; i < s + 13; ++i)
            for (int k = 1; k < 6; ++k) scale[k] = std::max(scale[k], std::fabs(rows[i].v[k]));
        for (std::size_t i = s; i < s + 13; ++i) {
            const REF_ROW& r = rows[i];
            const TOF_SHAPE_TYPE got = Tof_Omega_With(r.dt, r.a, r.b, r.h, r.e, true, erfcx);
            for (int k = 0; k < 6; ++k) {
                const double ref = r.v[k], err = std::fabs(Get(got, k) - ref);
                if (std::fabs(ref) > 1e-6 * scale[k]) {
                    EXPECT_LT(err / std::fabs(ref), k == 0 ? 1e-5 : derivative_tolerance)
                        << names[k] << " at dt " << r.dt << " a " << r.a << " b " << r.b << " H " << r.h << " eta " << r.e;
                    ++c.tested;
                    if (k > 0) ++c.derivatives, c.derivatives_fine += err / std::fabs(ref) < 1e-5;
                } else {
                    EXPECT_LT(err, 1e-11 * scale[k]) << names[k] << " at dt " << r.dt;
                }
            }
            // Without the Lorentzian part the Gaussian one stands alone.
            if (r.e == 0.0) {
                EXPECT_NEAR(Tof_Omega_With(r.dt, r.a, r.b, r.h, 0.0, false, erfcx).v, r.v[0], 1e-5 * r.peak);
            }
        }
    }
    return c;
}

TEST(TofShape, ValueAndDerivativesMatchTheHighPrecisionTable) {
    // With an exact erfc every value and every analytic derivative is within 1e-5.
    const TABLE_CHECK exact = Check_Table(Exact_Erfcx, 1e-5);
    EXPECT_GT(exact.tested, 3500);
    EXPECT_EQ(exact.derivatives_fine, exact.derivatives);
    // The fit's erfc is the rational Chebyshev fit (1.2e-7 relative): the value keeps that, but
    // a derivative that subtracts two near-equal terms magnifies it, so the few points of strong
    // cancellation get up to 2e-4 while nearly all stay within 1e-5.
    const TABLE_CHECK fit = Check_Table(Erfc_Scaled, 2e-4);
    EXPECT_EQ(fit.tested, exact.tested);
    EXPECT_GT(fit.derivatives_fine, 0.99 * fit.derivatives) << fit.derivatives_fine << " of " << fit.derivatives;
}

TEST(TofShape, FiniteInputsGiveFiniteValues) {
    const double dts[] = {0, 1e-30, -1e-30, 3.7, -3.7, 1e3, -1e3, 1e8, -1e8, 1e30, -1e30};
    const double rates[] = {-5, 0, 1e-30, 1e-3, 1, 1e6, 1e30};
    const double widths[] = {-3, 0, 1e-20, 1, 1e6};
    const double etas[] = {-1, 0, 0.5, 2};
    for (double dt : dts)
        for (double a : rates)
            for (double b : rates)
                for (double h : widths)
                    for (double e : etas) {
                        const TOF_SHAPE_TYPE s = Tof_Omega(dt, a, b, h, e, true);
                        for (int k = 0; k < 6; ++k)
                            ASSERT_TRUE(std::isfinite(Get(s, k)))
                                << k << " dt " << dt << " a " << a << " b " << b << " H " << h << " eta " << e;
                    }
    // A zero or negative rate is the smallest rate; a negative width its size.
    EXPECT_EQ(Tof_Omega(5, -2, 0.1, 4, 0.3, true).v, Tof_Omega(5, kTofMinRate, 0.1, 4, 0.3, true).v);
    EXPECT_EQ(Tof_Omega(5, 0.5, 0.1, -4, 0.3, true).v, Tof_Omega(5, 0.5, 0.1, 4, 0.3, true).v);
    // Not-a-number in comes out as not-a-number: the fit reports it.
    EXPECT_TRUE(std::isnan(Tof_Omega(1, NAN, 0.1, 4, 0, true).v));
}

TEST(TofShape, ExpE1AgreesWithItsSeriesAndAsymptoticForms) {
    // exp(z) E1(z) ~ 1/z (1 - 1/z + 2/z^2 - 6/z^3) for large |z|, in every direction of the upper half plane.
    for (double ang = 0; ang < 3.1; ang += 0.3) {
        const std::complex<double> z = std::polar(400.0, ang);
        const std::complex<double> asym = 1.0 / z * (1.0 - 1.0 / z + 2.0 / (z * z) - 6.0 / (z * z * z) + 24.0 / (z * z * z * z));
        EXPECT_LT(std::abs(Exp_E1(z) - asym) / std::abs(asym), 1e-9) << ang;
    }
    // E1(1) = 0.21938393439552027 (Abramowitz and Stegun 5.1).
    EXPECT_NEAR(Exp_E1({1.0, 0.0}).real(), 0.21938393439552027 * std::exp(1.0), 1e-14);
    // Just above the negative real axis: E1(-x + i0) = -Ei(x) - i pi, Ei(2) = 4.9542343560018901.
    const std::complex<double> v = Exp_E1({-2.0, 1e-12}) * std::exp(2.0);
    EXPECT_NEAR(v.real(), -4.9542343560018901, 1e-9);
    EXPECT_NEAR(v.imag(), -3.14159265358979, 1e-9);
}

}  // namespace
}  // namespace hxl
