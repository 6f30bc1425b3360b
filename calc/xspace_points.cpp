// The conversion of whole arrays of points between X spaces: one tight loop per
// step, and a check of the domain that looks at the range of the points only.
#include <algorithm>
#include <cmath>
#include <limits>

#include "calc/xspace.h"
#include "calc/xspace_step.h"
#include "support/float_range.h"

#if defined(__x86_64__) && defined(__GLIBC__) && defined(ZD_HAVE_MVEC)
#include <immintrin.h>
// glibc's vector asin (libmvec, x86-64 vector function ABI: two doubles with SSE, four
// with AVX2). Their results rounded to float are those of the scalar asin.
extern "C" __m128d _ZGVbN2v_asin(__m128d);
extern "C" __attribute__((target("avx2"))) __m256d _ZGVdN4v_asin(__m256d);
#define ZD_VECTOR_ASIN 1
#endif

namespace hxl {

namespace {

constexpr float kFloatMax = std::numeric_limits<float>::max();

#ifdef ZD_VECTOR_ASIN
// The first n - n % 4 points of theta_from_d, four at a time.
__attribute__((target("avx2"))) void theta_from_d_avx2(float* x, int n, double lambda) {
    const __m256d c = _mm256_set1_pd(lambda), two = _mm256_set1_pd(2.0), one = _mm256_set1_pd(1.0),
                  deg = _mm256_set1_pd(kDegree), nan = _mm256_set1_pd(std::numeric_limits<double>::quiet_NaN());
    for (int i = 0; i + 4 <= n; i += 4) {
        const __m256d d = _mm256_cvtps_pd(_mm_loadu_ps(x + i));
        const __m256d a = _mm256_div_pd(c, _mm256_mul_pd(two, d));
        const __m256d over = _mm256_cmp_pd(a, one, _CMP_GT_OQ);
        const __m256d t = _mm256_div_pd(_mm256_mul_pd(two, _ZGVdN4v_asin(a)), deg);
        _mm_storeu_ps(x + i, _mm256_cvtpd_ps(_mm256_blendv_pd(t, nan, over)));
    }
}
#endif

// 2theta from d in double: near 180 degrees asin magnifies the rounding of its argument.
void theta_from_d(float* x, int n, double lambda) {
    int i = 0;
#ifdef ZD_VECTOR_ASIN
    static const bool avx2 = __builtin_cpu_supports("avx2");
    if (avx2) {
        theta_from_d_avx2(x, n, lambda);
        i = n - n % 4;
    }
    const __m128d c = _mm_set1_pd(lambda), two = _mm_set1_pd(2.0), one = _mm_set1_pd(1.0),
                  deg = _mm_set1_pd(kDegree), nan = _mm_set1_pd(std::numeric_limits<double>::quiet_NaN());
    for (; i + 2 <= n; i += 2) {
        const __m128d d = _mm_cvtps_pd(_mm_castpd_ps(_mm_load_sd(reinterpret_cast<const double*>(x + i))));
        const __m128d a = _mm_div_pd(c, _mm_mul_pd(two, d));
        const __m128d over = _mm_cmpgt_pd(a, one);
        __m128d t = _mm_div_pd(_mm_mul_pd(two, _ZGVbN2v_asin(a)), deg);
        t = _mm_or_pd(_mm_andnot_pd(over, t), _mm_and_pd(over, nan));
        _mm_store_sd(reinterpret_cast<double*>(x + i), _mm_castps_pd(_mm_cvtpd_ps(t)));
    }
#endif
    for (; i < n; ++i) x[i] = static_cast<float>(Theta_From_D(x[i], lambda));
}

// The range [lo, hi] that every value lies in after a step, widened far beyond the
// rounding of the step in float; false when the step may leave a value without one.
struct X_RANGE {
    double lo, hi;
};

bool well_inside(const X_RANGE& r) { return r.lo >= 1e-30 && r.hi <= 1e30; }  // false for NaN too

bool step_range(X_STEP s, X_RANGE& r, double c1, double c2) {
    if (!well_inside(r)) return false;
    switch (s) {
    case X_STEP::Theta_To_D: {
        if (!(c1 >= 1e-6 && c1 <= 1e6) || r.hi > 350.0) return false;
        // sin is concave on [0, pi]: its least value over the range is at an end.
        const double least = std::min(std::sin(0.5 * r.lo * kDegree), std::sin(0.5 * r.hi * kDegree));
        r = {c1 / 2.0, c1 / (2.0 * least)};
        break;
    }
    case X_STEP::D_To_Theta:
        if (!(c1 >= 1e-6 && c1 <= 1e6) || r.lo < 0.5 * c1 * (1.0 + 1e-6)) return false;
        r = {2.0 * std::asin(c1 / (2.0 * r.hi)) / kDegree, 2.0 * std::asin(c1 / (2.0 * r.lo)) / kDegree};
        break;
    case X_STEP::D_To_Q:
    case X_STEP::Q_To_D: r = {kTwoPi / r.hi, kTwoPi / r.lo}; break;
    case X_STEP::D_To_S:
    case X_STEP::S_To_D: r = {1.0 / r.hi, 1.0 / r.lo}; break;
    case X_STEP::S_To_Q: r = {kTwoPi * r.lo, kTwoPi * r.hi}; break;
    case X_STEP::Q_To_S: r = {r.lo / kTwoPi, r.hi / kTwoPi}; break;
    case X_STEP::D_To_Time:
    case X_STEP::Time_To_D:
        // Both rise with x when dtt2 >= 0; a falling parabola is left to the points.
        if (!(c1 >= 1e-6 && c1 <= 1e12 && c2 >= 0.0 && c2 <= 1e12)) return false;
        if (s == X_STEP::D_To_Time) r = {r.lo * (c1 + c2 * r.lo), r.hi * (c1 + c2 * r.hi)};
        else r = {D_From_Time(r.lo, c1, c2), D_From_Time(r.hi, c1, c2)};
        break;
    }
    r = {r.lo * (1.0 - 1e-3), r.hi * (1.0 + 1e-3)};
    return well_inside(r);
}

}  // namespace

void Map_X_Points(float* x, int n, const std::vector<X_STEP>& steps, double c1, double c2) {
    const float deg = static_cast<float>(kDegree), l = static_cast<float>(c1), pi2 = static_cast<float>(kTwoPi);
    for (X_STEP s : steps) {
        switch (s) {
        case X_STEP::Theta_To_D:
            for (int i = 0; i < n; ++i) x[i] = l / (2.0f * std::sin(0.5f * deg * x[i]));
            break;
        case X_STEP::D_To_Theta: theta_from_d(x, n, c1); break;
        case X_STEP::D_To_Q:
        case X_STEP::Q_To_D:
            for (int i = 0; i < n; ++i) x[i] = pi2 / x[i];
            break;
        case X_STEP::D_To_S:
        case X_STEP::S_To_D:
            for (int i = 0; i < n; ++i) x[i] = 1.0f / x[i];
            break;
        case X_STEP::S_To_Q:
            for (int i = 0; i < n; ++i) x[i] = pi2 * x[i];
            break;
        case X_STEP::Q_To_S:
            for (int i = 0; i < n; ++i) x[i] = x[i] / pi2;
            break;
        case X_STEP::D_To_Time:
            for (int i = 0; i < n; ++i) x[i] = static_cast<float>(x[i] * (c1 + c2 * x[i]));
            break;
        case X_STEP::Time_To_D:
            for (int i = 0; i < n; ++i) x[i] = static_cast<float>(D_From_Time(x[i], c1, c2));
            break;
        }
    }
}

int Convert_X_Points(const float* in, float* out, int n, const std::vector<X_STEP>& steps, double c1, double c2) {
    std::copy(in, in + std::max(n, 0), out);
    Map_X_Points(out, n, steps, c1, c2);
    // The input and every result must be finite and positive; a step of a bad value stays bad.
    for (int i = 0; i < n; ++i)
        if (!(in[i] > 0.0f && out[i] > 0.0f && out[i] <= kFloatMax)) return i + 1;
    return 0;
}

int Unconvertible_X_Point(const float* x, int n, const std::vector<X_STEP>& steps, double c1, double c2) {
    if (n <= 0) return 0;
    float lo = kFloatMax, hi = -kFloatMax;
    bool sure = !Float_Range(x, n, lo, hi);
    X_RANGE r{lo, hi};
    for (X_STEP s : steps) sure = sure && step_range(s, r, c1, c2);
    if (sure) return 0;
    // Near an edge of the domain: the points themselves decide, a block at a time.
    constexpr int kBlock = 512;
    float buf[kBlock];
    for (int at = 0; at < n; at += kBlock) {
        const int bad = Convert_X_Points(x + at, buf, std::min(kBlock, n - at), steps, c1, c2);
        if (bad != 0) return at + bad;
    }
    return 0;
}

void Convert_Points_In_Place(DIFFRACTION_PATTERN_TYPE& p, const std::vector<X_STEP>& steps) {
    const int n = std::min(p.npts, p.x.size());
    Map_X_Points(p.x.data(), n, steps, p.lambda1, p.lambda2);
    p.xmin = kFloatMax;
    p.xmax = -kFloatMax;
    Float_Range(p.x.data(), n, p.xmin, p.xmax);
    Pattern_Y_Limits(p);
}

}  // namespace hxl
