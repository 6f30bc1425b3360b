#include "peaks/arcfit_profile.h"

#include <array>
#include <cmath>

namespace hxl {
namespace {

constexpr double kDeg = 0.017453292519943295;
constexpr std::array<int, 14> kNodeTable = {6, 10, 20, 40, 60, 80, 100, 150, 200, 300, 400, 600, 800, 1000};

struct GL_RULE {
    std::vector<double> s, w;  // nodes and weights on (0, 1)
};

// Gauss-Legendre nodes by Newton's method on P_n, made once per node count.
const GL_RULE& Gauss_Legendre(int n) {
    static std::array<GL_RULE, kNodeTable.size()> rules;
    std::size_t slot = 0;
    while (kNodeTable[slot] != n) ++slot;
    GL_RULE& r = rules[slot];
    if (!r.s.empty()) return r;
    r.s.resize(static_cast<std::size_t>(n));
    r.w.resize(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) {
        double z = std::cos(M_PI * (i + 0.75) / (n + 0.5)), dp = 1;
        for (int it = 0; it < 100; ++it) {
            double p0 = 1, p1 = z;
            for (int k = 2; k <= n; ++k) {
                const double p2 = ((2 * k - 1) * z * p1 - (k - 1) * p0) / k;
                p0 = p1;
                p1 = p2;
            }
            dp = n * (z * p1 - p0) / (z * z - 1);
            const double dz = p1 / dp;
            z -= dz;
            if (std::fabs(dz) < 1e-15) break;
        }
        r.s[static_cast<std::size_t>(i)] = 0.5 * (1 - z);
        r.w[static_cast<std::size_t>(i)] = 1 / ((1 - z * z) * dp * dp);  // half of the [-1,1] weight
    }
    return r;
}

}  // namespace

ARC_PROFILE_TYPE Pseudo_Voigt(float d, float h, float eta) {
    ARC_PROFILE_TYPE r;
    const float h2 = h * h, q = h2 + 4 * d * d, q2 = q * q;
    const float lor = 0.63661975f * h / q;
    float gau = 0, u2 = 0;
    if (std::fabs(d) / h <= 6) {
        const float u = 1.6651093f * d / h;
        u2 = u * u;
        gau = 0.93943727f / h * std::exp(-u2);
    }
    r.v = eta * lor + (1 - eta) * gau;
    r.dp = eta * 5.092958f * h * d / q2 + (1 - eta) * 5.545178f * d * gau / h2;
    r.dh = eta * 0.63661975f * (4 * d * d - h2) / q2 + (1 - eta) * (2 * u2 - 1) * gau / h;
    r.deta = lor - gau;
    return r;
}

int Asym_Node_Count(float spread) {
    const float need = 1000 * std::fabs(spread);
    for (int n : kNodeTable)
        if (static_cast<float>(n) >= need) return n;
    return kNodeTable.back();
}

bool Asym_Refresh(ASYM_CACHE_TYPE& c, bool on, float p, float s_l, float d_l) {
    const bool plain_now = !on || std::fabs(p - 90) < 0.4f || !(p > 0 && p < 180) || !(s_l + d_l > 0);
    if (c.valid && plain_now && c.plain) return false;
    if (c.valid && !plain_now && !c.plain && std::fabs(p - c.p) <= 1e-6f && std::fabs(s_l - c.s_l) <= 1e-6f &&
        std::fabs(d_l - c.d_l) <= 1e-6f)
        return false;
    c.valid = true;
    c.p = p;
    c.s_l = s_l;
    c.d_l = d_l;
    c.plain = plain_now;
    c.delta.clear();
    c.a.clear();
    c.as.clear();
    c.ad.clear();
    c.sum_a = c.sum_as = c.sum_ad = 0;
    if (plain_now) return true;

    // The weights are made in double: the distance of a node from P is tiny
    // next to P itself, and h comes from a difference of two cosines.
    const double s = s_l, dd = d_l, c0 = std::cos(p * kDeg);
    const auto edge = [&](double spread) {
        const double c = std::fmax(-1.0, std::fmin(1.0, c0 * std::sqrt(spread * spread + 1)));
        return std::acos(c) / kDeg;
    };
    const double p_min = edge(s + dd);
    const double wide = std::fabs(dd - s), narrow = 2 * std::fmin(s, dd);
    const double span = p - p_min;  // negative above 90 degrees
    c.p_min = static_cast<float>(p_min);
    c.nodes = Asym_Node_Count(static_cast<float>(span));
    const GL_RULE& gl = Gauss_Legendre(c.nodes);
    // delta = P - span t^2 takes the 1/h end of the weight at P out of the sum.
    for (int i = 0; i < c.nodes; ++i) {
        const double t = gl.s[static_cast<std::size_t>(i)];
        const double off = span * t * t, delta = p - off;
        const double h = std::sqrt(std::fabs(std::sin((p + delta) * kDeg) * std::sin(off * kDeg))) / std::fabs(c0);
        const double base = h > 0 ? gl.w[static_cast<std::size_t>(i)] * 2 * std::fabs(span) * t /
                                        (h * std::fabs(std::cos(delta * kDeg)))
                                  : 0.0;
        double w, ws, wd;
        if (h >= wide) {
            w = s + dd - h;
            ws = wd = 1;
        } else {
            w = narrow;
            ws = s < dd ? 2 : 0;
            wd = dd < s ? 2 : 0;
        }
        c.delta.push_back(static_cast<float>(delta));
        c.a.push_back(static_cast<float>(base * w));
        c.as.push_back(static_cast<float>(base * ws));
        c.ad.push_back(static_cast<float>(base * wd));
        c.sum_a += base * w;
        c.sum_as += base * ws;
        c.sum_ad += base * wd;
    }
    if (!(c.sum_a > 0)) c.plain = true;  // no weight left to fold with
    return true;
}

ARC_PROFILE_TYPE Peak_Function(float x, float p, float h, float eta, const ASYM_CACHE_TYPE& c) {
    if (c.plain || !c.valid) return Pseudo_Voigt(x - p, h, eta);
    // Up to 1000 terms: the sums are kept in double.
    double v = 0, dp = 0, dh = 0, de = 0, vs = 0, vd = 0;
    const std::size_t n = c.delta.size();
    for (std::size_t i = 0; i < n; ++i) {
        const ARC_PROFILE_TYPE q = Pseudo_Voigt(x - c.delta[i], h, eta);
        v += c.a[i] * q.v;
        dp += c.a[i] * q.dp;
        dh += c.a[i] * q.dh;
        de += c.a[i] * q.deta;
        vs += c.as[i] * q.v;
        vd += c.ad[i] * q.v;
    }
    ARC_PROFILE_TYPE r;
    const double inv = 1 / c.sum_a, value = v * inv;
    r.v = static_cast<float>(value);
    r.dp = static_cast<float>(dp * inv);
    r.dh = static_cast<float>(dh * inv);
    r.deta = static_cast<float>(de * inv);
    r.ds = static_cast<float>((vs - value * c.sum_as) * inv);
    r.dd = static_cast<float>((vd - value * c.sum_ad) * inv);
    return r;
}

}  // namespace hxl
