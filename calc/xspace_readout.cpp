// The position in several spaces at once, and the ticks of a second X axis.
#include <cmath>
#include <cstdio>

#include "calc/xspace.h"

namespace hxl {

namespace {

std::string fixed(const char* name, double v, int decimals, const char* unit) {
    char b[64];
    std::snprintf(b, sizeof b, "%s %.*f%s", name, decimals, v, unit);
    return b;
}

// The position as d, and the name of the origin space that the constants serve; false without them.
bool as_d(const std::string& present, const std::string& origin, double x, double c1, double c2, double& d,
          std::string& base) {
    const std::string p = X_Space_Name(present), o = X_Space_Name(origin);
    const bool angle = o == "2theta" || o == "Omega", time = o == "TOF" || o == "Energy";
    if (!(angle || time) || !std::isfinite(c1) || c1 <= 0.0) return false;
    base = o;
    std::vector<X_STEP> s;
    if (p == "2theta" || p == "Omega") {
        if (!angle) return false;
        s = {X_STEP::Theta_To_D};
    } else if (p == "TOF" || p == "Energy") {
        if (!time) return false;
        s = {X_STEP::Time_To_D};
    } else if (p == "q-space") {
        s = {X_STEP::Q_To_D};
    } else if (p == "s-space") {
        s = {X_STEP::S_To_D};
    } else if (p != "d-space") {
        return false;
    }
    d = x;
    return Convert_X_Value(d, s, c1, c2);
}

}  // namespace

std::string X_Readout(const std::string& present, const std::string& origin, double x, double c1, double c2) {
    double d = 0, back = 0;
    std::string base;
    if (!as_d(present, origin, x, c1, c2, d, base)) return {};
    const bool angle = base == "2theta" || base == "Omega";
    back = d;
    if (!Convert_X_Value(back, {angle ? X_STEP::D_To_Theta : X_STEP::D_To_Time}, c1, c2)) return {};
    return fixed(base.c_str(), back, angle ? 3 : 1, "") + " | " + fixed("d", d, 4, " \u00C5") + " | " +
           fixed("Q", kTwoPi / d, 4, " \u00C5-1");
}

std::vector<X_TICK> Second_Axis_Ticks(const std::string& present, const std::string& origin, const std::string& unit,
                                      double xmin, double xmax, double c1, double c2, int wanted) {
    std::vector<X_TICK> ticks;
    const bool q = unit == "q-space";
    // The unit at the two ends of the frame; a d or Q axis may run against X.
    auto to_unit = [&](double x, double& u) {
        std::string base;
        if (!as_d(present, origin, x, c1, c2, u, base)) return false;
        if (q) u = kTwoPi / u;
        return true;
    };
    // The frame may start where the unit has no value (2theta 0): step in until it has one.
    double lo = 0, hi = 0;
    double a = xmin, b = xmax;
    const double span = xmax - xmin;
    if (!(span > 0.0)) return ticks;
    int k = 0;
    while (!to_unit(a, lo) && k++ < 1000) a += span / 1000.0;
    k = 0;
    while (!to_unit(b, hi) && k++ < 1000) b -= span / 1000.0;
    if (!(a < b) || !to_unit(a, lo) || !to_unit(b, hi)) return ticks;
    double u1 = std::min(lo, hi), u2 = std::max(lo, hi);
    // A d axis from 2theta near 0 runs to very large values: ticks where they are dense enough to read.
    if (!q && u2 > 20.0 * u1) u2 = 20.0 * u1;
    const double raw = (u2 - u1) / std::max(wanted, 1);
    const double p10 = std::pow(10.0, std::floor(std::log10(raw)));
    const double m = raw / p10;
    const double step = (m < 1.5 ? 1.0 : m < 3.5 ? 2.0 : m < 7.5 ? 5.0 : 10.0) * p10;
    // Place each round value by the inverse mapping: the frame's X of that d or Q.
    const std::string p = X_Space_Name(present), o = X_Space_Name(origin);
    for (double v = std::ceil(u1 / step) * step; v <= u2 * (1 + 1e-12) && ticks.size() < 200; v += step) {
        double d = q ? kTwoPi / v : v;
        std::vector<X_STEP> s;
        if (p == "2theta" || p == "Omega") s = {X_STEP::D_To_Theta};
        else if (p == "TOF" || p == "Energy") s = {X_STEP::D_To_Time};
        else if (p == "q-space") s = {X_STEP::D_To_Q};
        else if (p == "s-space") s = {X_STEP::D_To_S};
        double x = d;
        if (!Convert_X_Value(x, s, c1, c2)) continue;
        if (x < xmin || x > xmax) continue;
        ticks.push_back({std::fabs(v) < step * 1e-9 ? 0.0 : v, x});
    }
    return ticks;
}

}  // namespace hxl
