#pragma once
// Natural cubic spline through tabulated points, used where a pattern is
// resampled onto a constant step.
#include <vector>

namespace hxl {

// Second derivatives of the natural spline through (x, y); x strictly ascending,
// n >= 2. Sums run in double: the step sizes can be tiny against x.
std::vector<double> Spline_Second_Derivatives(const float* x, const float* y, int n);

// The spline value at t (clamped to the end intervals), with `d2` from above.
double Spline_Value(const float* x, const float* y, const std::vector<double>& d2, int n, double t);

// True when x(1..n) rises strictly, so that a spline can run through it.
bool Strictly_Ascending(const float* x, int n);

}  // namespace hxl
