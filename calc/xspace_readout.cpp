// The position in several spaces at once, and the ticks of a second X axis.
#include "calc/xspace_readout.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "calc/xspace.h"

namespace hxl {

namespace {

bool is_angle(const std::string& s) { return s == "2theta" || s == "Omega"; }
bool is_time(const std::string& s) { return s == "TOF" || s == "Energy"; }

// The constants serve the space group of the pattern's origin only: a wavelength turns
// angles into d, dtt1 and dtt2 times or energies.
bool constants_for(const std::string& space, const std::string& origin, double c1, double c2) {
    const bool wave = std::isfinite(c1) && c1 > 0.0;
    if (is_angle(space)) return wave && is_angle(origin);
    if (is_time(space)) return wave && std::isfinite(c2) && is_time(origin);
    return true;
}

// The steps from `space` to d, or back; false when the space has no d or the constants lack.
bool to_d(const std::string& space, const std::string& origin, double c1, double c2, std::vector<X_STEP>& s) {
    if (!constants_for(space, origin, c1, c2)) return false;
    if (is_angle(space)) s = {X_STEP::Theta_To_D};
    else if (is_time(space)) s = {X_STEP::Time_To_D};
    else if (space == "q-space") s = {X_STEP::Q_To_D};
    else if (space == "s-space") s = {X_STEP::S_To_D};
    else if (space == "d-space") s = {};
    else return false;
    return true;
}

bool from_d(const std::string& space, const std::string& origin, double c1, double c2, std::vector<X_STEP>& s) {
    if (!constants_for(space, origin, c1, c2)) return false;
    if (is_angle(space)) s = {X_STEP::D_To_Theta};
    else if (is_time(space)) s = {X_STEP::D_To_Time};
    else if (space == "q-space") s = {X_STEP::D_To_Q};
    else if (space == "s-space") s = {X_STEP::D_To_S};
    else if (space == "d-space") s = {};
    else return false;
    return true;
}

// One mapping between two spaces through d; Convert_X_Value refuses what has no value.
struct MAPPING {
    std::vector<X_STEP> steps;
    double c1 = 0, c2 = 0;
    bool operator()(double in, double& out) const {
        out = in;
        return Convert_X_Value(out, steps, c1, c2);
    }
};

bool mapping(const std::string& from, const std::string& to, const std::string& origin, double c1, double c2,
             MAPPING& m) {
    std::vector<X_STEP> a, b;
    if (!to_d(from, origin, c1, c2, a) || !from_d(to, origin, c1, c2, b)) return false;
    a.insert(a.end(), b.begin(), b.end());
    m = MAPPING{a, c1, c2};
    return true;
}

// The decimals that show a multiple of `step` exactly.
int decimals_of(double step) { return std::max(0, static_cast<int>(std::ceil(-std::log10(step) - 1e-9))); }

}  // namespace

std::vector<X_READING> X_Readings(const std::string& present, const std::string& origin, double x, double c1,
                                  double c2) {
    const std::string p = X_Space_Name(present), o = X_Space_Name(origin);
    std::vector<X_STEP> s;
    double d = x;
    if (!to_d(p, o, c1, c2, s) || !Convert_X_Value(d, s, c1, c2)) return {{p, x}};
    std::vector<X_READING> out;
    // The space of origin first: the store's own when it is one, else the pattern's.
    const std::string base = is_angle(p) || is_time(p) ? p : o;
    double back = d;
    if (base == p) out.push_back({p, x});
    else if (from_d(base, o, c1, c2, s) && Convert_X_Value(back, s, c1, c2)) out.push_back({base, back});
    out.push_back({"d-space", d});
    out.push_back({"q-space", kTwoPi / d});
    if (p == "s-space") out.push_back({"s-space", x});
    return out;
}

std::string X_Readout_Text(const std::vector<X_READING>& readings) {
    std::string text;
    for (const X_READING& r : readings) {
        const char* name = r.space.c_str();
        const char* unit = "";
        int decimals = 4;
        if (is_angle(r.space)) decimals = 3;
        else if (r.space == "TOF") decimals = 1;
        else if (r.space == "d-space") name = "d", unit = " A";
        else if (r.space == "q-space") name = "Q", unit = " A-1";
        else if (r.space == "s-space") name = "s", unit = " A-1";
        char b[96];
        std::snprintf(b, sizeof b, "%s %.*f%s", name, decimals, r.value, unit);
        if (!text.empty()) text += " | ";
        text += b;
    }
    return text;
}

bool Second_Axis_Allowed(const std::string& present, const std::string& origin, const std::string& unit, double c1,
                         double c2) {
    const std::string p = X_Space_Name(present), u = X_Space_Name(unit), o = X_Space_Name(origin);
    MAPPING m;
    return p != u && !(is_angle(p) && is_angle(u)) && !(is_time(p) && is_time(u)) && mapping(p, u, o, c1, c2, m);
}

std::vector<X_TICK> Second_Axis_Ticks(const std::string& present, const std::string& origin, const std::string& unit,
                                      double xmin, double xmax, double c1, double c2, double gap) {
    std::vector<X_TICK> ticks;
    const std::string p = X_Space_Name(present), u = X_Space_Name(unit), o = X_Space_Name(origin);
    MAPPING forward, back;
    const double span = xmax - xmin;
    if (!Second_Axis_Allowed(p, o, u, c1, c2) || !mapping(p, u, o, c1, c2, forward) ||
        !mapping(u, p, o, c1, c2, back) || !(span > 0.0) || !std::isfinite(span) || !(gap > 0.0))
        return ticks;
    // The frame may begin where the unit has no value (2theta 0 has no d): step in until it has one.
    double a = xmin, b = xmax, ua = 0, ub = 0;
    for (int k = 0; k < 1000 && !forward(a, ua); ++k) a += span / 1000.0;
    for (int k = 0; k < 1000 && !forward(b, ub); ++k) b -= span / 1000.0;
    if (!(a < b) || !forward(a, ua) || !forward(b, ub)) return ticks;
    const double lo = std::min(ua, ub), hi = std::max(ua, ub);
    if (!(hi > lo)) return ticks;
    // The unit along the frame in pieces, each with the value change over one gap: a step
    // finer than that has no room there. A pole (d at 2theta 0) makes it vary a lot.
    constexpr int kPieces = 400;
    std::vector<double> px, pu;
    for (int i = 0; i <= kPieces; ++i) {
        const double x = a + (b - a) * i / kPieces;
        double u = 0;
        if (forward(x, u)) px.push_back(x), pu.push_back(u);
    }
    double finest = HUGE_VAL;
    for (std::size_t i = 1; i < pu.size(); ++i)
        finest = std::min(finest, std::fabs(pu[i] - pu[i - 1]) / (px[i] - px[i - 1]) * gap * span);
    // Steps from coarse to fine, each dividing the one before: 10, 5, 1, 0.5, 0.1, ...
    double step = std::pow(10.0, std::ceil(std::log10(hi - lo)));
    for (int level = 0; level < 40 && step >= 0.2 * finest && ticks.size() < 200;
         ++level, step /= (level % 2 ? 2.0 : 5.0)) {
        for (std::size_t i = 1; i < pu.size() && ticks.size() < 200; ++i) {
            const double u1 = std::min(pu[i - 1], pu[i]), u2 = std::max(pu[i - 1], pu[i]);
            if (std::fabs(pu[i] - pu[i - 1]) / (px[i] - px[i - 1]) * gap * span > 1.5 * step) continue;
            for (double k = std::ceil(u1 / step - 1e-9); k * step <= u2 * (1 + 1e-12); k += 1.0) {
                const double v = k * step;
                double x = 0;
                if (!back(v, x) || x < xmin || x > xmax) continue;
                const bool crowded = std::any_of(ticks.begin(), ticks.end(), [&](const X_TICK& t) {
                    return std::fabs(t.value - v) < 1e-6 * step || std::fabs(t.x - x) < gap * span;
                });
                if (crowded) continue;
                // A value of this step stands where a neighbour of the same step is far enough on
                // one side at least: runs of one step, ending where the mapping squeezes them.
                int near = 0, far = 0;
                for (double w : {v - step, v + step}) {
                    double xw = 0;
                    if (back(w, xw)) ++(std::fabs(xw - x) < gap * span ? near : far);
                }
                if (far > 0 || near == 0) ticks.push_back({v, x, decimals_of(step)});
            }
        }
    }
    std::sort(ticks.begin(), ticks.end(), [](const X_TICK& l, const X_TICK& r) { return l.x < r.x; });
    return ticks;
}

}  // namespace hxl
