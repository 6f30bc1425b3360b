#include "peaks/arcfit_model.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace hxl {
namespace {

constexpr float kHalfDeg = 0.0087266462599716478f;  // d T / d(2T) in radians

struct WIDTH_TYPE {
    float h, dh_du, dh_dv, dh_dw, dh_dz, dh_dpos;
};

// Caglioti width at the position `pos` (degrees 2theta) with the line's shift.
WIDTH_TYPE Width_At(float pos, float u, float v, float w, float z, float shift) {
    const float t = pos * kHalfDeg, tn = std::tan(t), cs = std::cos(t);
    const float s = std::sqrt((u * tn + v) * tn + w);
    WIDTH_TYPE r{};
    r.h = s + z / cs + shift;
    const float sec2 = 1 / (cs * cs);
    if (s > 0.0001f) {
        r.dh_du = tn * tn / (2 * s);
        r.dh_dv = tn / (2 * s);
        r.dh_dw = 1 / (2 * s);
        r.dh_dpos = (2 * u * tn + v) * sec2 / (2 * s) * kHalfDeg;
    }
    r.dh_dz = z > 1e-6f ? 1 / cs : 0.0f;  // a Z of zero stays out of the fit
    r.dh_dpos += z * std::sin(t) * sec2 * kHalfDeg;
    return r;
}

int Peak_Base(const ARC_MODEL_TYPE& m, int k) { return 10 + m.nb + 4 * (k - 1); }

}  // namespace

int Arc_Parameter_Count(int nb, int npk) { return kArcGlobals + nb + 4 * npk; }

Array1<std::string> Arc_Parameter_Names(int nb, int npk) {
    Array1<std::string> n(Arc_Parameter_Count(nb, npk));
    const char* globals[kArcGlobals] = {"Ka2/Ka1-ratio", "Asym-1(S_L)", "Asym-2(D_L)", "U-Caglioti", "V-Caglioti",
                                        "W-Caglioti",    "Z-parameter", "Eta0-PV",     "X-PV"};
    for (int i = 1; i <= kArcGlobals; ++i) n(i) = globals[i - 1];
    for (int i = 1; i <= nb; ++i) n(kArcGlobals + i) = "background_" + std::to_string(i);
    for (int k = 1; k <= npk; ++k) {
        const int b = kArcGlobals + nb + 4 * (k - 1);
        const std::string num = std::to_string(k);
        n(b + 1) = "Bragg_Pos_" + num;
        n(b + 2) = "Intensity_" + num;
        n(b + 3) = "Shf_Gamma_" + num;
        n(b + 4) = "Shf_EtaPV_" + num;
    }
    return n;
}

bool Arc_Has_Second_Line(const ARC_MODEL_TYPE& m) {
    return (m.inst == 1 || m.inst == 3) && m.lambda1 > 0 && m.lambda2 > 0 && m.lambda2 != m.lambda1;
}

void Arc_Prepare(ARC_MODEL_TYPE& m, const Array1<float>& pv) {
    m.second_line = Arc_Has_Second_Line(m);
    const float r = m.second_line ? pv(1) : 0.0f;
    m.c = 1 / (1 + r);
    const float s_l = pv(2), d_l = pv(3), u = pv(4), v = pv(5), w = pv(6), z = pv(7), eta0 = pv(8), x = pv(9);
    const float ratio = m.second_line ? m.lambda2 / m.lambda1 : 1.0f;

    // Old lines keep their asymmetry weights: find them by peak and line.
    std::vector<ARC_LINE_TYPE> old;
    old.swap(m.lines);
    std::vector<int> slot(static_cast<std::size_t>(2 * m.npk + 2), -1);
    for (std::size_t i = 0; i < old.size(); ++i)
        if (old[i].peak >= 1 && old[i].peak <= m.npk)
            slot[static_cast<std::size_t>(2 * old[i].peak + (old[i].second ? 1 : 0))] = static_cast<int>(i);

    const auto add = [&](int k, bool second, float pos, float area, float dpos_dp, float shf_g, float shf_e) {
        ARC_LINE_TYPE l;
        const int from = slot[static_cast<std::size_t>(2 * k + (second ? 1 : 0))];
        if (from >= 0) l.asym = std::move(old[static_cast<std::size_t>(from)].asym);
        const WIDTH_TYPE wd = Width_At(pos, u, v, w, z, shf_g);
        l.peak = k;
        l.second = second;
        l.pos = pos;
        l.area = area;
        l.h = wd.h;
        const float eta = eta0 + x * pos + shf_e;
        l.eta = second ? eta : std::max(eta, 1e-6f);  // the second line's mixing is not clamped
        l.dh_du = wd.dh_du;
        l.dh_dv = wd.dh_dv;
        l.dh_dw = wd.dh_dw;
        l.dh_dz = wd.dh_dz;
        l.dpos_dp = dpos_dp;
        // Width and mixing follow the position too, so the position's
        // derivative is the full one.
        l.dh_dp = wd.dh_dpos * dpos_dp;
        l.deta_dp = x * dpos_dp;
        l.reach = std::isfinite(l.h) ? 40 * std::fabs(l.h) : std::numeric_limits<float>::infinity();
        Asym_Refresh(l.asym, m.asymmetry, pos, s_l, d_l);
        m.lines.push_back(std::move(l));
    };

    for (int k = 1; k <= m.npk; ++k) {
        const int b = Peak_Base(m, k);
        const float p = pv(b), a1 = pv(b + 1) * m.c, shf_g = pv(b + 2), shf_e = pv(b + 3);
        add(k, false, p, a1, 1.0f, shf_g, shf_e);
        if (!m.second_line) continue;
        const float t = p * kHalfDeg, sin2 = std::sin(t) * ratio;
        if (!(std::fabs(sin2) < 1)) continue;  // no reflection of the second line
        const float p2 = 114.59156f * std::asin(sin2);
        const float dp2 = ratio * std::cos(t) / std::cos(p2 * kHalfDeg);
        add(k, true, p2, a1 * r, dp2, shf_g, shf_e);
    }
    std::stable_sort(m.lines.begin(), m.lines.end(),
                     [](const ARC_LINE_TYPE& a, const ARC_LINE_TYPE& b) { return a.pos < b.pos; });
    m.max_reach = 0;
    for (const ARC_LINE_TYPE& l : m.lines) m.max_reach = std::max(m.max_reach, l.reach);
}

float Arc_Background(const ARC_MODEL_TYPE& m, const Array1<float>& pv, float x, int& i1, float& t) {
    i1 = 1;
    t = 0;
    if (m.nb <= 0) {
        i1 = 0;
        return 0;
    }
    if (m.nb == 1) return pv(kArcGlobals + 1);
    float far = m.xb(m.nb);  // no interval holds x: the first one with the last end, on purpose
    for (int i = 1; i < m.nb; ++i) {
        if (m.xb(i) <= x && x <= m.xb(i + 1)) {
            i1 = i;
            far = m.xb(i + 1);
            break;
        }
    }
    const float den = far - m.xb(i1);
    t = den != 0 ? (x - m.xb(i1)) / den : 0.0f;
    const float b1 = pv(kArcGlobals + i1), b2 = pv(kArcGlobals + i1 + 1);
    return b1 + t * (b2 - b1);
}

float Arc_Point(const ARC_MODEL_TYPE& m, const Array1<float>& pv, float x, std::vector<ARC_DERIV_TYPE>& deriv,
                float* peaks, std::vector<float>* single) {
    deriv.clear();
    struct PEAK_D {
        int k;
        double dp, di, dg, de;
    };
    // A few peaks at a point: a short list searched by hand beats a map.
    std::vector<PEAK_D> touched;
    double g[kArcGlobals + 1] = {};
    double sum = 0;
    const float r = m.second_line ? pv(1) : 0.0f;

    auto first = m.lines.begin();
    if (std::isfinite(m.max_reach))
        first = std::lower_bound(m.lines.begin(), m.lines.end(), x - m.max_reach,
                                 [](const ARC_LINE_TYPE& l, float v) { return l.pos < v; });
    for (auto it = first; it != m.lines.end(); ++it) {
        const ARC_LINE_TYPE& l = *it;
        if (std::isfinite(m.max_reach) && l.pos > x + m.max_reach) break;
        const float cut = std::fabs(2 * (x - l.pos) / l.h);
        if (l.second ? !(cut <= 80) : !(cut < 80)) {
            if (!std::isnan(cut)) continue;
        }
        const ARC_PROFILE_TYPE f = Peak_Function(x, l.pos, l.h, l.eta, l.asym);
        const double a = l.area, y = a * f.v;
        sum += y;
        if (single && l.peak >= 1 && l.peak <= static_cast<int>(single->size()))
            (*single)[static_cast<std::size_t>(l.peak - 1)] += static_cast<float>(y);
        const double ah = a * f.dh, ae = a * f.deta;
        if (m.second_line) {
            const double ik = pv(Peak_Base(m, l.peak) + 1);
            g[1] += l.second ? m.c * (ik * f.v - y) : -m.c * y;
        }
        g[2] += a * f.ds;
        g[3] += a * f.dd;
        g[4] += ah * l.dh_du;
        g[5] += ah * l.dh_dv;
        g[6] += ah * l.dh_dw;
        g[7] += ah * l.dh_dz;
        g[8] += ae;
        g[9] += ae * l.pos;
        PEAK_D* pd = nullptr;
        for (PEAK_D& q : touched)
            if (q.k == l.peak) pd = &q;
        if (!pd) {
            touched.push_back({l.peak, 0, 0, 0, 0});
            pd = &touched.back();
        }
        pd->dp += a * f.dp * l.dpos_dp + ah * l.dh_dp + ae * l.deta_dp;
        pd->di += m.c * (l.second ? r : 1.0f) * f.v;
        pd->dg += ah;
        pd->de += ae;
    }
    for (int i = 1; i <= kArcGlobals; ++i) deriv.push_back({i, static_cast<float>(g[i])});
    int i1 = 0;
    float t = 0;
    const float b = Arc_Background(m, pv, x, i1, t);
    if (i1 >= 1) {
        deriv.push_back({kArcGlobals + i1, m.nb == 1 ? 1.0f : 1 - t});
        if (m.nb > 1) deriv.push_back({kArcGlobals + i1 + 1, t});
    }
    std::sort(touched.begin(), touched.end(), [](const PEAK_D& a, const PEAK_D& b) { return a.k < b.k; });
    for (const PEAK_D& q : touched) {
        const int base = Peak_Base(m, q.k);
        deriv.push_back({base, static_cast<float>(q.dp)});
        deriv.push_back({base + 1, static_cast<float>(q.di)});
        deriv.push_back({base + 2, static_cast<float>(q.dg)});
        deriv.push_back({base + 3, static_cast<float>(q.de)});
    }
    if (peaks) *peaks = static_cast<float>(sum);
    return b + static_cast<float>(sum);
}

float Arc_Point_Dense(const ARC_MODEL_TYPE& m, const Array1<float>& pv, float x, Array1<float>& row) {
    std::vector<ARC_DERIV_TYPE> d;
    const float y = Arc_Point(m, pv, x, d);
    row.resize(Arc_Parameter_Count(m.nb, m.npk));
    for (const ARC_DERIV_TYPE& e : d) row(e.index) = e.value;
    return y;
}

}  // namespace hxl
