// GCC keeps a min/max reduction of floats scalar unless NaN and signed zeros
// may be ignored, so the comparisons are written with SSE here.
#include "support/float_range.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace hxl {

namespace {

bool plain(const float* v, int n, float& lo, float& hi) {
    bool nan = false;
    for (int i = 0; i < n; ++i) {
        nan = nan || v[i] != v[i];
        if (v[i] < lo) lo = v[i];
        if (v[i] > hi) hi = v[i];
    }
    return nan;
}

}  // namespace

bool Float_Range(const float* v, int n, float& lo, float& hi) {
#if defined(__SSE2__)
    if (n >= 8) {
        // minps(a, b) is "a < b ? a : b": a NaN in a leaves b, as the plain loop does.
        __m128 l = _mm_set1_ps(lo), h = _mm_set1_ps(hi), nan = _mm_setzero_ps();
        int i = 0;
        for (; i + 4 <= n; i += 4) {
            const __m128 x = _mm_loadu_ps(v + i);
            l = _mm_min_ps(x, l);
            h = _mm_max_ps(x, h);
            nan = _mm_or_ps(nan, _mm_cmpunord_ps(x, x));
        }
        float ls[4], hs[4];
        _mm_storeu_ps(ls, l);
        _mm_storeu_ps(hs, h);
        float rl = lo, rh = hi;
        for (int k = 0; k < 4; ++k) {
            if (ls[k] < rl) rl = ls[k];
            if (hs[k] > rh) rh = hs[k];
        }
        const bool nan_tail = plain(v + i, n - i, rl, rh);
        // Which zero wins depends on the order of the comparisons: the plain loop decides.
        if (rl != 0.0f && rh != 0.0f) {
            lo = rl;
            hi = rh;
            return nan_tail || _mm_movemask_ps(nan) != 0;
        }
    }
#endif
    return plain(v, n, lo, hi);
}

}  // namespace hxl
