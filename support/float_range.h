#pragma once
// The smallest and largest of n floats, four at a time: a NaN is passed over,
// and the result is the one the plain loop `if (v < lo) lo = v` (and `>` for
// hi) gives from lo and hi as they come in, the sign of a zero included.
// True when some value is NaN.
namespace hxl {

bool Float_Range(const float* v, int n, float& lo, float& hi);

}  // namespace hxl
