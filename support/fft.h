#pragma once
// The fast Fourier transform of n real points, n a power of two, in place.
// The forward transform F(j) = sum_k x(k) exp(+2 pi i j k / n) is packed as
// data(1) = Re F(0), data(2) = Re F(n/2), then Re F(j), Im F(j) for
// j = 1 .. n/2-1. The inverse takes that packing back to n/2 times the
// points, so inverse(forward(x)) = x * n/2.
#include "support/array1.h"

namespace hxl {

// False (and data untouched) when n is not a power of two of at least 2.
bool Real_FFT(float* data, int n, bool inverse);
bool Real_FFT(Array1<float>& data, bool inverse);

}  // namespace hxl
