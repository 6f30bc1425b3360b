#pragma once
// The two filters on y: the five-point polynomial filter and the Fourier
// low-pass filter with mirror padding. Both change y only.
#include <string>

#include "support/array1.h"

namespace hxl {

// y(i) := (-3 y(i-2) + 12 y(i-1) + 17 y(i) + 12 y(i+1) - 3 y(i+2)) / 35 for i
// from 3 to n-2 (quadratic least squares over five points); the two first and
// two last points stay. Fewer than five points: nothing changes.
void Smooth_5Point(float* y, int n);
inline void Smooth_5Point(Array1<float>& y, int n) { Smooth_5Point(y.data(), n); }

// The parameter of the polynomial filter, 1 to 20; it has no further effect.
bool Check_Polynomial_Order(int order, std::string& message);

// The Fourier window FW: 1 to npts/2 (integer division); a pattern of fewer than
// five points, which the filter leaves alone, takes any window from 1.
bool Check_Fourier_Window(float window, int npts, std::string& message);

// The kernel: y(1..n) low-pass filtered in place with the window
// max(0, 1 - k^2 (window/m)^2) on a zero-filled transform of m points, m the
// first power of two not below 2n + 2 window. The two end points repeat their
// neighbours. A constant comes back unchanged away from the ends.
void Fourier_Filter(float* y, int n, float window);

// The command's use of the kernel on a pattern of n points: n/4 points mirrored
// about each end, so that the ends of the pattern lie inside the filtered range.
// Beyond the mirrored quarters the kernel's zero fill begins; a window wider than
// about n/50 reaches it, and a constant then moves near the ends (2.4% at n/2).
// Patterns of fewer than five points are left as they are.
void Fourier_Smooth(float* y, int n, float window);
inline void Fourier_Smooth(Array1<float>& y, int n, float window) { Fourier_Smooth(y.data(), n, window); }

}  // namespace hxl
