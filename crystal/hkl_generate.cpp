// The list of reflections of a cell and group over a range of s.
#include <algorithm>
#include <cmath>

#include "crystal/reflections.h"

namespace hxl {

namespace {

constexpr double pi = 3.14159265358979323846;

struct ROT {
    int r[3][3];
};

// A region that meets every set of equivalents of the Laue class; the exact
// choice among its members is made by the orbit test below.
enum class REGION { FRIEDEL, OCTANT, OCTANT_H_GE_K, CUBIC_M3, CUBIC_M3M, TWO_AXES };

bool in_region(REGION reg, int uniq, int h, int k, int l) {
    switch (reg) {
        case REGION::OCTANT: return h >= 0 && k >= 0 && l >= 0;
        case REGION::OCTANT_H_GE_K: return h >= k && k >= 0 && l >= 0;
        case REGION::CUBIC_M3: return h >= k && h >= l && k >= 0 && l >= 0;
        case REGION::CUBIC_M3M: return h >= k && k >= l && l >= 0;
        case REGION::TWO_AXES: {
            const int v[3] = {h, k, l};
            return v[uniq] >= 0 && v[(uniq + 1) % 3] >= 0;
        }
        case REGION::FRIEDEL:
        default: return l > 0 || (l == 0 && (k > 0 || (k == 0 && h >= 0)));
    }
}

}  // namespace

bool Hkl_S_Limits(HKL_XSPACE space, float xmin, float xmax, float lambda, float dtt1, float dtt2, float& smin,
                  float& smax, std::string& message) {
    message.clear();
    auto s_of = [&](double x, double& s) {
        switch (space) {
            case HKL_XSPACE::TWOTHETA: s = std::sin(x * pi / 360.0) / lambda; return lambda > 0;
            case HKL_XSPACE::D: s = x > 0 ? 0.5 / x : 0.0; return true;
            case HKL_XSPACE::Q: s = x / (4 * pi); return true;
            case HKL_XSPACE::S: s = x / 2; return true;
            case HKL_XSPACE::TOF: {
                // t = dtt1 d + dtt2 d^2
                double d;
                if (std::fabs(dtt2) < 1e-12) d = dtt1 != 0 ? x / dtt1 : 0.0;
                else {
                    const double disc = static_cast<double>(dtt1) * dtt1 + 4.0 * dtt2 * x;
                    d = disc >= 0 ? (-dtt1 + std::sqrt(disc)) / (2.0 * dtt2) : 0.0;
                }
                s = d > 0 ? 0.5 / d : 0.0;
                return dtt1 != 0 || dtt2 != 0;
            }
        }
        return false;
    };
    double s1 = 0, s2 = 0;
    if (!s_of(xmin, s1) || !s_of(xmax, s2)) {
        message = "Bad wavelength";
        return false;
    }
    if (space == HKL_XSPACE::D || (space == HKL_XSPACE::TOF && s1 > s2)) std::swap(s1, s2);
    if (!(s1 > 0) || !(s1 * s2 >= 0.0001) || !std::isfinite(s1 * s2)) {
        message = "Error liminf*limsup < 0.0001";
        return false;
    }
    if (xmax < xmin || s2 < s1) {
        message = "Bad window limits";
        return false;
    }
    smin = static_cast<float>(s1);
    smax = static_cast<float>(s2 + 0.2);
    return true;
}

long Hkl_Size_Estimate(float smax, float volume, int count) {
    const double sm = smax;
    const double n = 8.0 * sm * sm * sm * 1.05 * (4.0 * pi / 3.0) * static_cast<double>(volume);
    // a huge window must reach the refusal of the caller, not wrap around
    const long base = n < 1e15 ? static_cast<long>(n) : static_cast<long>(1e15);
    return base * 2 / std::max(1, count);
}

bool Hkl_Position(HKL_XSPACE space, float s, float lambda, float dtt1, float dtt2, float& pos) {
    const double ds = s;
    switch (space) {
        case HKL_XSPACE::TWOTHETA: {
            const double x = ds * lambda;
            if (!(x <= 1.0) || !(lambda > 0)) return false;
            pos = static_cast<float>(2.0 * std::asin(x) * 180.0 / pi);
            return true;
        }
        case HKL_XSPACE::D: pos = static_cast<float>(0.5 / ds); return ds > 0;
        case HKL_XSPACE::Q: pos = static_cast<float>(4 * pi * ds); return true;
        case HKL_XSPACE::S: pos = static_cast<float>(2 * ds); return true;
        case HKL_XSPACE::TOF: {
            if (!(ds > 0)) return false;
            const double d = 0.5 / ds;
            pos = static_cast<float>(dtt1 * d + dtt2 * d * d);
            return true;
        }
    }
    return false;
}

bool Hkl_Generate(const Cell_Record& cell, const SPACE_GROUP_TYPE& sg, float smin, float smax,
                  std::vector<HKL_GEN_TYPE>& list, std::string& message) {
    message.clear();
    if (!(smin >= 0) || !(smax > smin) || !std::isfinite(smax)) {
        message = "Bad window limits";
        return false;
    }
    if (!(cell.volume > 0) || !std::isfinite(cell.volume)) {
        message = "Wrong cell parameters";
        return false;
    }
    if (sg.seitz.size() == 0) {
        message = " Problems in SpaceGroup: no operators";
        return false;
    }
    // The rotations of the point group, the Laue class (with -1) and one
    // operator per rotation: with the centring checked apart, these decide absences.
    std::vector<ROT> laue;
    std::vector<SEITZ_TYPE> reps;
    for (const SEITZ_TYPE& s : sg.seitz) {
        bool known = false;
        for (const SEITZ_TYPE& r : reps)
            if (std::equal(&r.r[0][0], &r.r[0][0] + 9, &s.r[0][0])) known = true;
        if (known) continue;
        reps.push_back(s);
        for (int sign = 1; sign >= -1; sign -= 2) {
            ROT x;
            for (int i = 0; i < 3; ++i)
                for (int j = 0; j < 3; ++j) x.r[i][j] = sign * s.r[i][j];
            bool dup = false;
            for (const ROT& y : laue)
                if (std::equal(&y.r[0][0], &y.r[0][0] + 9, &x.r[0][0])) dup = true;
            if (!dup) laue.push_back(x);
        }
    }
    // The region: the tight ones only where the class stands in its usual orientation.
    REGION reg = REGION::FRIEDEL;
    int uniq = 1;
    const std::string& lc = sg.laue_class;
    if (lc == "m-3m") reg = REGION::CUBIC_M3M;
    else if (lc == "m-3") reg = REGION::CUBIC_M3;
    else if (lc == "mmm") reg = REGION::OCTANT;
    else if ((lc == "4/mmm" || lc == "6/mmm") && sg.lattice_symbol != "R") reg = REGION::OCTANT_H_GE_K;
    else if (lc == "4/m" || lc == "6/m") reg = REGION::OCTANT;
    else if (lc == "2/m") {
        reg = REGION::TWO_AXES;
        for (const ROT& x : laue) {
            const int tr = x.r[0][0] + x.r[1][1] + x.r[2][2];
            if (tr == -1)
                for (int i = 0; i < 3; ++i)
                    if (x.r[i][i] == 1) uniq = i;
        }
    }
    // The chosen region must hold the identity's images: check the tight
    // regions against the class once, falling back to the Friedel half.
    if (reg != REGION::FRIEDEL) {
        const int probe[4][3] = {{7, 3, 1}, {5, -2, 3}, {-4, 1, 6}, {2, 9, -5}};
        for (const auto& p : probe) {
            bool hit = false;
            for (const ROT& x : laue) {
                int w[3];
                for (int j = 0; j < 3; ++j) w[j] = p[0] * x.r[0][j] + p[1] * x.r[1][j] + p[2] * x.r[2][j];
                if (in_region(reg, uniq, w[0], w[1], w[2])) hit = true;
            }
            if (!hit) reg = REGION::FRIEDEL;
        }
    }

    const double smax2 = 4.0 * static_cast<double>(smax) * smax, smin2 = 4.0 * static_cast<double>(smin) * smin;
    // A window that would hold millions of reflections is a mistake of units, not a pattern.
    const char* too_many = "Too many reflections in the window: reduce the range or the cell";
    for (int i = 0; i < 3; ++i)
        if (!(2.0 * smax * cell.cell[i] < 2000.0) || !(cell.cell[i] > 0)) {
            message = too_many;
            return false;
        }
    const int hmax = static_cast<int>(2.0 * smax * cell.cell[0]) + 1;
    const int kmax = static_cast<int>(2.0 * smax * cell.cell[1]) + 1;
    const int lmax = static_cast<int>(2.0 * smax * cell.cell[2]) + 1;
    const long nest = Hkl_Size_Estimate(smax, cell.volume, static_cast<int>(laue.size()));
    if (nest > 4000000 || static_cast<double>(hmax) * kmax * lmax > 2.0e8) {
        message = too_many;
        return false;
    }
    std::vector<HKL_GEN_TYPE> out;
    out.reserve(static_cast<std::size_t>(std::clamp<long>(nest, 16, 4000000)));
    double g[3][3];
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) g[i][j] = cell.metric_recip[i][j];

    // Lower bounds of the loops from the region's sign conditions.
    bool pos[3] = {false, false, true};
    if (reg != REGION::FRIEDEL && reg != REGION::TWO_AXES) pos[0] = pos[1] = true;
    if (reg == REGION::TWO_AXES) {
        pos[0] = pos[1] = pos[2] = false;
        pos[uniq] = pos[(uniq + 1) % 3] = true;
    }
    for (int h = pos[0] ? 0 : -hmax; h <= hmax; ++h)
        for (int k = pos[1] ? 0 : -kmax; k <= kmax; ++k) {
            // The l interval inside the sphere: g33 l^2 + 2 b l + c <= 4 smax^2.
            const double b = g[0][2] * h + g[1][2] * k, c0 = g[0][0] * h * h + 2 * g[0][1] * h * k + g[1][1] * k * k;
            const double disc = b * b - g[2][2] * (c0 - smax2);
            if (disc < 0) continue;
            const double root = std::sqrt(disc);
            int l0 = static_cast<int>(std::floor((-b - root) / g[2][2])) - 1;
            int l1 = static_cast<int>(std::ceil((-b + root) / g[2][2])) + 1;
            l0 = std::max(l0, pos[2] ? 0 : -lmax);
            l1 = std::min(l1, lmax);
            for (int l = l0; l <= l1; ++l) {
                if (!in_region(reg, uniq, h, k, l) || (h == 0 && k == 0 && l == 0)) continue;
                const double q = h * (g[0][0] * h + 2 * g[0][1] * k + 2 * g[0][2] * l) + k * (g[1][1] * k + 2 * g[1][2] * l) +
                                 l * g[2][2] * l;
                if (q > smax2 || q <= smin2) continue;
                bool absent = false;
                for (const SEITZ_TYPE& c : sg.centring.translations)
                    if (Mod_Den(h * c.t[0] + k * c.t[1] + l * c.t[2]) != 0) absent = true;
                if (absent) continue;
                // Orbit: keep hkl only when it is the largest member inside the region.
                int orbit[96][3];
                int n = 0;
                bool keep = true;
                for (const ROT& x : laue) {
                    const int w0 = h * x.r[0][0] + k * x.r[1][0] + l * x.r[2][0];
                    const int w1 = h * x.r[0][1] + k * x.r[1][1] + l * x.r[2][1];
                    const int w2 = h * x.r[0][2] + k * x.r[1][2] + l * x.r[2][2];
                    if (in_region(reg, uniq, w0, w1, w2) &&
                        (w0 > h || (w0 == h && (w1 > k || (w1 == k && w2 > l))))) {
                        keep = false;
                        break;
                    }
                    bool dup = false;
                    for (int i = 0; i < n && !dup; ++i) dup = orbit[i][0] == w0 && orbit[i][1] == w1 && orbit[i][2] == w2;
                    if (!dup && n < 96) {
                        orbit[n][0] = w0;
                        orbit[n][1] = w1;
                        orbit[n][2] = w2;
                        ++n;
                    }
                }
                if (!keep) continue;
                for (const SEITZ_TYPE& s : reps) {
                    if (h * s.r[0][0] + k * s.r[1][0] + l * s.r[2][0] != h || h * s.r[0][1] + k * s.r[1][1] + l * s.r[2][1] != k ||
                        h * s.r[0][2] + k * s.r[1][2] + l * s.r[2][2] != l)
                        continue;
                    if (Mod_Den(h * s.t[0] + k * s.t[1] + l * s.t[2]) != 0) {
                        absent = true;
                        break;
                    }
                }
                if (absent) continue;
                HKL_GEN_TYPE r;
                r.h = h;
                r.k = k;
                r.l = l;
                r.mult = n;
                r.s = static_cast<float>(0.5 * std::sqrt(q));
                out.push_back(r);
            }
        }
    std::stable_sort(out.begin(), out.end(), [](const HKL_GEN_TYPE& a, const HKL_GEN_TYPE& b) { return a.s < b.s; });
    list.swap(out);
    return true;
}

}  // namespace hxl
