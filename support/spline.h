#pragma once
// Cubic splines through points with rising x. Arrays hold x(1..n) at
// x[0..n-1]; work is done in double and stored in float.
#include "support/array1.h"

namespace hxl {

// Second derivatives y2 of the spline. The ends are this library's own:
// y2(1) = -0.5 with the first work value 0, and the last row qn = 0.5, un = 0.
void Spline_Second_Derivative(const float* x, const float* y, int n, float* y2);
void Spline_Second_Derivative(const Array1<float>& x, const Array1<float>& y, int n, Array1<float>& y2);

// The spline at t; outside the points the end interval is used.
void Spline_Value(const float* x, const float* y, const float* y2, int n, float t, float& value);
void Spline_Value(const Array1<float>& x, const Array1<float>& y, const Array1<float>& y2, int n, float t,
                  float& value);

// d(i) = (S(x(i) + h/2) - S(x(i) - h/2)) / h with h = x(i+1) - x(i), the
// last step kept for i = n.
void Spline_First_Derivative(const float* x, const float* y, int n, const float* y2, float* d);
void Spline_First_Derivative(const Array1<float>& x, const Array1<float>& y, int n, const Array1<float>& y2,
                             Array1<float>& d);

}  // namespace hxl
