#include "calc/arithmetic.h"

#include <algorithm>
#include <cmath>

namespace hxl {

namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

// The number of usable points: npts, bounded by what the arrays hold.
int points(const DIFFRACTION_PATTERN_TYPE& p) { return std::max(0, std::min({p.npts, p.x.size(), p.y.size()})); }

bool count_ok(std::size_t n, std::string& message) {
    if (n == 0) {
        message = "ERROR: No profile selected to make sum/average";
        return false;
    }
    if (n == 1) {
        message = "ERROR: Only one profile selected to make sum/average";
        return false;
    }
    return true;
}

void name_result(DIFFRACTION_PATTERN_TYPE& out, bool average) {
    out.title = (average ? "Average of profiles " : "Summation of profiles ") + out.title;
    if (out.title.size() > kTitleLen) out.title.resize(kTitleLen);
}

}  // namespace

bool Same_Grid(const std::vector<const DIFFRACTION_PATTERN_TYPE*>& set, std::string& message) {
    if (set.empty()) return true;
    const DIFFRACTION_PATTERN_TYPE& first = *set.front();
    for (const auto* p : set)
        if (p->npts != first.npts) {
            message = "ERROR: The X step size of selected profiles are not equal";
            return false;
        }
    const int n = points(first);
    for (const auto* p : set) {
        if (points(*p) != n) {
            message = "ERROR: The points of selected profiles are at different positions ";
            return false;
        }
        for (int i = 1; i <= n; ++i)
            if (p->x(i) != first.x(i)) {
                message = "ERROR: The points of selected profiles are at different positions ";
                return false;
            }
    }
    return true;
}

bool Sum_Patterns(const std::vector<const DIFFRACTION_PATTERN_TYPE*>& set, bool average,
                  DIFFRACTION_PATTERN_TYPE& out, std::string& message) {
    if (!count_ok(set.size(), message) || !Same_Grid(set, message)) return false;
    const DIFFRACTION_PATTERN_TYPE& first = *set.front();
    const int n = points(first);
    // Summed in double: thousands of runs of large counts would lose the last digits in floats.
    std::vector<double> acc(at(n));
    for (const auto* p : set) {
        const float* y = p->y.data();
        for (std::size_t i = 0; i < acc.size(); ++i) acc[i] += y[i];
    }
    DIFFRACTION_PATTERN_TYPE r = first;
    const double scale = average ? 1.0 / static_cast<double>(set.size()) : 1.0;
    float* y = r.y.data();
    for (std::size_t i = 0; i < acc.size(); ++i) y[i] = static_cast<float>(acc[i] * scale);
    name_result(r, average);
    Pattern_Y_Limits(r);
    out = std::move(r);
    return true;
}

bool Sum_Patterns_Interpolated(const std::vector<const DIFFRACTION_PATTERN_TYPE*>& set, bool average,
                               DIFFRACTION_PATTERN_TYPE& out, SUM_LEFT_OUT_TYPE& left_out, std::string& message) {
    if (!count_ok(set.size(), message)) return false;
    const DIFFRACTION_PATTERN_TYPE& first = *set.front();
    const int n = points(first);
    SUM_LEFT_OUT_TYPE lost;
    for (const auto* p : set) {
        const int m = points(*p);
        for (int i = 2; i <= m; ++i)
            if (!(p->x(i) > p->x(i - 1))) {
                message = "ERROR: The X values of a selected profile do not rise: it cannot be interpolated";
                return false;
            }
        if (m < 1 || n < 1) {
            message = "ERROR: zero points in profiles!";
            return false;
        }
    }
    const float lo = first.x(1), hi = first.x(n);
    std::vector<double> y(at(n)), var(at(n));
    std::vector<bool> keep(at(n), true);
    for (std::size_t k = 0; k < set.size(); ++k) {
        const DIFFRACTION_PATTERN_TYPE& p = *set[k];
        const int m = points(p);
        const bool has_sigma = p.sigma.size() >= m;
        auto variance = [&](int j) -> double {
            if (!has_sigma) return 0.0;
            const double s = p.sigma(j);
            return p.sig_var ? s : s * s;
        };
        if (k > 0)
            for (int j = 1; j <= m; ++j)
                if (p.x(j) < lo || p.x(j) > hi) ++lost.beyond_first;
        int j = 1;
        for (int i = 1; i <= n; ++i) {
            const float xi = first.x(i);
            if (xi < p.x(1) || xi > p.x(m)) {
                keep[at(i - 1)] = false;
                continue;
            }
            while (j < m - 1 && p.x(j + 1) < xi) ++j;
            double v = 0, s = 0;
            if (m == 1) {
                v = p.y(1), s = variance(1);
            } else {
                const double t = (static_cast<double>(xi) - p.x(j)) / (static_cast<double>(p.x(j + 1)) - p.x(j));
                v = (1 - t) * p.y(j) + t * p.y(j + 1);
                s = (1 - t) * (1 - t) * variance(j) + t * t * variance(j + 1);
            }
            y[at(i - 1)] += v;
            var[at(i - 1)] += s;
        }
    }
    const int kept = static_cast<int>(std::count(keep.begin(), keep.end(), true));
    lost.not_covered = n - kept;
    if (kept < 1) {
        message = "ERROR: The selected profiles have no X range in common";
        return false;
    }
    const double c = static_cast<double>(set.size());
    DIFFRACTION_PATTERN_TYPE r = first;
    Allocate_Pattern(r, kept);
    r.sig_var = true;
    int o = 0;
    for (int i = 1; i <= n; ++i) {
        if (!keep[at(i - 1)]) continue;
        ++o;
        r.x(o) = first.x(i);
        r.y(o) = static_cast<float>(average ? y[at(i - 1)] / c : y[at(i - 1)]);
        r.sigma(o) = static_cast<float>(average ? var[at(i - 1)] / (c * c) : var[at(i - 1)]);
        if (first.ycalc.size() >= i) r.ycalc(o) = first.ycalc(i);
        if (first.bgr.size() >= i) r.bgr(o) = first.bgr(i);
        if (first.istat.size() >= i) r.istat(o) = first.istat(i);
    }
    r.aux.clear();
    r.aux.resize(kept, 0.0f);
    r.xmin = r.x(1);
    r.xmax = r.x(kept);
    name_result(r, average);
    Pattern_Y_Limits(r);
    out = std::move(r);
    left_out = lost;
    return true;
}

bool Difference_Patterns(const DIFFRACTION_PATTERN_TYPE& a, const DIFFRACTION_PATTERN_TYPE& b,
                         DIFFRACTION_PATTERN_TYPE& out, std::string& message) {
    if (a.npts != b.npts) {
        message = "Size of selected profiles must be the same";
        return false;
    }
    const int n = points(a);
    if (points(b) != n) {
        message = "X arrays of each profile are diferent";
        return false;
    }
    for (int i = 1; i <= n; ++i)
        if (a.x(i) != b.x(i)) {
            message = "X arrays of each profile are diferent";
            return false;
        }
    DIFFRACTION_PATTERN_TYPE r = a;
    for (int i = 1; i <= n; ++i) r.y(i) = a.y(i) - b.y(i);
    Pattern_Y_Limits(r);
    out = std::move(r);
    return true;
}

void Multiply_Shift_Pattern(DIFFRACTION_PATTERN_TYPE& p, float shift, float factor) {
    for (float& v : p.x) v += shift;
    for (float& v : p.y) v *= factor;
    // sigma holds variances while sig_var is set
    for (float& v : p.sigma) v *= p.sig_var ? factor * factor : std::abs(factor);
    p.ymin *= factor;
    p.ymax *= factor;
}

void Normalize_Pattern_Monitor(DIFFRACTION_PATTERN_TYPE& p, float to) {
    const float f = to / p.monitor;
    for (float& v : p.y) v *= f;
    for (float& v : p.sigma) v *= p.sig_var ? f * f : std::abs(f);
    p.monitor = to;
    Pattern_Y_Limits(p);
}

}  // namespace hxl
