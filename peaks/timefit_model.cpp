#include "peaks/timefit_model.h"

#include <algorithm>
#include <cmath>

#include "peaks/timefit_shape.h"

namespace hxl {
namespace {

constexpr double kFwhmOfSigma = 2.35482;
constexpr double kHalfRate = 1.3862944;  // ln 4: where an exponential side has fallen to a quarter
// The smallest sigma^2: the shape's smallest width.
constexpr double kMinVariance = (kTofMinWidth / kFwhmOfSigma) * (kTofMinWidth / kFwhmOfSigma);

}  // namespace

int Tof_Parameter_Count(int nb, int npk) { return kTofGlobals + nb + 6 * npk; }
int Tof_Peak_Base(int nb, int k) { return kTofGlobals + nb + 6 * (k - 1) + 1; }

Array1<std::string> Tof_Parameter_Names(int nb, int npk) {
    Array1<std::string> n(Tof_Parameter_Count(nb, npk));
    const char* globals[kTofGlobals] = {"Global-alpha", "Global-beta",  "Global-Sig-2",
                                        "Global-Sig-1", "Global-Sig-0", "Global-eta"};
    for (int i = 1; i <= kTofGlobals; ++i) n(i) = globals[i - 1];
    for (int i = 1; i <= nb; ++i) n(kTofGlobals + i) = "background_" + std::to_string(i);
    const char* each[6] = {"Bragg_Pos_", "Intensity_", "Shf_Sigma_", "Shf_Alpha_", "Shf_Beta_", "Shf_Eta_"};
    for (int k = 1; k <= npk; ++k)
        for (int q = 0; q < 6; ++q) n(Tof_Peak_Base(nb, k) + q) = each[q] + std::to_string(k);
    return n;
}

void Tof_Prepare(TOF_MODEL_TYPE& m, const Array1<float>& pv, const Array1<std::int16_t>& code) {
    const double alpha = pv(1), beta = pv(2), s2 = pv(3), s1 = pv(4), s0 = pv(5), eta = pv(6);
    const auto flagged = [&](int i) { return i <= code.size() && code(i) == 1; };
    m.lorentz_on = std::fabs(eta) > 1e-5 || flagged(6);
    m.peaks.clear();
    m.max_left = m.max_right = 0;
    for (int k = 1; k <= m.npk; ++k) {
        const int b = Tof_Peak_Base(m.nb, k);
        TOF_PEAK_TYPE p;
        p.k = k;
        p.t = pv(b);
        p.inten = pv(b + 1);
        p.d = p.t / m.dtt;
        const double d2 = p.d * p.d;
        const double sig2 = (s2 * d2 + s1) * d2 + s0 + pv(b + 2);
        const double v = std::max(std::fabs(sig2), kMinVariance);  // a negative sig2 is taken by its size
        p.h = kFwhmOfSigma * std::sqrt(v);
        p.dh_dv = (sig2 >= 0 ? 1.0 : -1.0) * kFwhmOfSigma / (2 * std::sqrt(v));
        p.dh_dt = p.dh_dv * (4 * s2 * d2 * p.d + 2 * s1 * p.d) / m.dtt;
        p.a = std::max(alpha + pv(b + 3), kTofMinRate);
        p.b = std::max(beta + pv(b + 4), kTofMinRate);
        p.e = eta + pv(b + 5);
        if (std::fabs(pv(b + 5)) > 1e-5 || flagged(b + 5)) m.lorentz_on = true;
        p.left = kHalfRate / p.a + 15 * p.h;
        p.right = kHalfRate / p.b + 15 * p.h;
        m.max_left = std::max(m.max_left, p.left);
        m.max_right = std::max(m.max_right, p.right);
        m.peaks.push_back(p);
    }
    std::stable_sort(m.peaks.begin(), m.peaks.end(), [](const TOF_PEAK_TYPE& a, const TOF_PEAK_TYPE& b) { return a.t < b.t; });
}

float Tof_Point(const TOF_MODEL_TYPE& m, const Array1<float>& pv, float x, std::vector<TOF_DERIV_TYPE>& deriv,
                float* peaks, std::vector<float>* single) {
    deriv.clear();
    double g[kTofGlobals + 1] = {};
    double sum = 0;
    const std::size_t first_deriv = kTofGlobals;
    deriv.resize(first_deriv);
    // Background: the first interval holding x; outside all, the first with the last end.
    int i1 = 0;
    double t = 0, bg = 0;
    if (m.nb == 1) {
        i1 = 1;
        bg = pv(kTofGlobals + 1);
    } else if (m.nb > 1) {
        i1 = 1;
        float far = m.xb(m.nb);
        for (int i = 1; i < m.nb; ++i)
            if (m.xb(i) <= x && x <= m.xb(i + 1)) {
                i1 = i;
                far = m.xb(i + 1);
                break;
            }
        const double den = far - m.xb(i1);
        t = den != 0 ? (x - m.xb(i1)) / den : 0.0;
        bg = pv(kTofGlobals + i1) + t * (pv(kTofGlobals + i1 + 1) - pv(kTofGlobals + i1));
    }
    if (i1 >= 1) {
        deriv.push_back({kTofGlobals + i1, static_cast<float>(m.nb == 1 ? 1.0 : 1 - t)});
        if (m.nb > 1) deriv.push_back({kTofGlobals + i1 + 1, static_cast<float>(t)});
    }
    // Peaks come in TOF order, so their parameters do too.
    const auto from = std::lower_bound(m.peaks.begin(), m.peaks.end(), x - m.max_right,
                                       [](const TOF_PEAK_TYPE& p, double v) { return p.t < v; });
    for (auto it = from; it != m.peaks.end() && it->t <= x + m.max_left; ++it) {
        const TOF_PEAK_TYPE& p = *it;
        const double dt = static_cast<double>(x) - p.t;
        if (dt <= 0 ? -dt > p.left : dt > p.right) continue;
        const TOF_SHAPE_TYPE s = Tof_Omega(dt, p.a, p.b, p.h, p.e, m.lorentz_on);
        const double in = p.inten, y = in * s.v;
        sum += y;
        if (single && p.k <= static_cast<int>(single->size())) (*single)[static_cast<std::size_t>(p.k - 1)] += static_cast<float>(y);
        const double ih = in * s.dh * p.dh_dv, d2 = p.d * p.d;
        g[1] += in * s.da;
        g[2] += in * s.db;
        g[3] += ih * d2 * d2;
        g[4] += ih * d2;
        g[5] += ih;
        g[6] += in * s.de;
        const int b = Tof_Peak_Base(m.nb, p.k);
        const double v[6] = {-in * s.ddt + in * s.dh * p.dh_dt, s.v, ih, in * s.da, in * s.db, in * s.de};
        for (int q = 0; q < 6; ++q) deriv.push_back({b + q, static_cast<float>(v[q])});
    }
    for (int i = 1; i <= kTofGlobals; ++i) deriv[static_cast<std::size_t>(i - 1)] = {i, static_cast<float>(g[i])};
    // Peaks of equal TOF in another order than their numbers: keep the promise of rising indices.
    if (!std::is_sorted(deriv.begin(), deriv.end(), [](const TOF_DERIV_TYPE& a, const TOF_DERIV_TYPE& b) { return a.index < b.index; }))
        std::sort(deriv.begin(), deriv.end(), [](const TOF_DERIV_TYPE& a, const TOF_DERIV_TYPE& b) { return a.index < b.index; });
    if (peaks) *peaks = static_cast<float>(sum);
    return static_cast<float>(bg + sum);
}

}  // namespace hxl
