#pragma once
// The time-of-flight peak shape: two back-to-back exponentials (rise rate
// alpha, decay rate beta) convolved with a pseudo-Voigt of FWHM H and
// mixing eta, area one, with its analytic derivatives.
#include <complex>

namespace hxl {

struct TOF_SHAPE_TYPE {
    double v = 0;                              // Omega
    double ddt = 0, da = 0, db = 0, dh = 0, de = 0;  // its derivatives
};

// Omega at dt = x - T. `lorentz` false leaves the Lorentzian part out (it is
// then taken as 0, and so is its share of the eta derivative). Every finite
// input gives finite values: alpha, beta and H below their floors are
// raised to them (the derivatives are those at the floor, so that a fit can
// climb back).
TOF_SHAPE_TYPE Tof_Omega(double dt, double alpha, double beta, double h, double eta, bool lorentz);

// The same with another exp(x^2) erfc(x) for x >= 0 in place of the rational
// Chebyshev fit (1.2e-7 relative) that the fit uses: with an exact one the
// derivatives can be checked apart from the fit's own error.
TOF_SHAPE_TYPE Tof_Omega_With(double dt, double alpha, double beta, double h, double eta, bool lorentz,
                              double (*erfcx)(double));

// exp(z) E1(z) for Im z >= 0 and z not 0: the exponential integral of
// complex argument in the form that neither overflows nor underflows.
std::complex<double> Exp_E1(std::complex<double> z);

// The smallest rates and width the shape takes.
inline constexpr double kTofMinRate = 1e-6;
inline constexpr double kTofMinWidth = 1e-4;

}  // namespace hxl
