#pragma once
// Small numerical helpers of the peak search and the fits.
#include <functional>

#include "support/array1.h"

namespace hxl {

// A root of f between a and b, where f(a) and f(b) have opposite signs, to
// within tol: bisection and inverse interpolation (Brent). When the signs
// agree the end with the smaller |f| comes back and `bracketed` is false.
float Zero_Of(const std::function<float(float)>& f, float a, float b, float tol, bool* bracketed = nullptr);

// The complementary error function by the rational Chebyshev approximation
// in t = 1/(1 + |x|/2), relative error below 1.2e-7; erfc(-x) = 2 - erfc(x).
float Erfc(float x);
double Erfc(double x);

// exp(x^2) erfc(x) for x >= 0 by the same fit, finite where erfc alone underflows.
double Erfc_Scaled(double x);

// Sine of an angle in degrees, worked in double precision.
float Sind(float x);
double Sind(double x);

// The index of the last of x(1..n) (rising) not above t; 0 when t lies
// before x(1) or is not a number. The array holds x(1) at x[0].
int Locate(const float* x, int n, float t);
int Locate(const Array1<float>& x, int n, float t);

}  // namespace hxl
