// The curves of one slot in the frame, with the style of its slot.
#include <algorithm>
#include <cmath>
#include <vector>

#include "app/present.h"
#include "app/store/zendrite_param_global.h"
#include "graphics/plot_parts.h"
#include "graphics/plot_settings.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {
using hxl::Same;

float log_value(float v, bool log) { return log ? (v > 1.0f ? std::log10(v) : 0.0f) : v; }

std::vector<float> copy_of(const hxl::Array1<float>& a, int n, bool log) {
    std::vector<float> c(static_cast<std::size_t>(n));
    for (int i = 1; i <= n; ++i) c[static_cast<std::size_t>(i - 1)] = log_value(a(i), log);
    return c;
}

void line_style(const CURVE_STYLE& c) { IPgStyle(1, PgLine, 1, c.colour, c.line_type, c.line_width, c.marker_size); }

// Points of the slot inside one excluded region, redrawn in the excluded colour.
void draw_excluded(const DIFFRACTION_PATTERN_TYPE& p, const PRF_INFO_ADD_TYPE& info, const PROFILE_STYLE& st,
                   const std::vector<float>& y, float xmin, float xmax, bool mono) {
    const PLOT_SETTINGS& s = Plot_Settings();
    const int nexcl = std::min(info.nexcl, hxl::kMaxExcluded);
    for (int r = 1; r <= nexcl; ++r) {
        const float lo = info.excl_low(r), hi = info.excl_high(r);
        if (lo > hi || !(lo < xmax) || !(hi > xmin)) continue;
        int first = 0, last = 0;
        for (int i = 1; i <= p.npts; ++i) {
            if (p.x(i) < lo || p.x(i) > hi) continue;
            if (first == 0) first = i;
            last = i;
        }
        if (first == 0 || last - first + 1 < 2) continue;
        const int count = last - first + 1;
        const float* xs = &p.x(first);
        const float* ys = &y[static_cast<std::size_t>(first - 1)];
        IPgStartGraph(PgXY, 1, count);
        IPgStyle(1, PgNoFill, st.marker, s.excluded_colour, 0, 1, st.marker_size);
        IPgXYMarkers(xs, ys, count);
        if (st.line_type != -1 && !mono) {
            IPgStyle(1, PgLine, 1, s.excluded_colour, st.line_type, st.line_width, st.marker_size);
            IPgXYLine(xs, ys, count);
        }
    }
}
}  // namespace

void Draw_Slot_Curves(int slot, float xmin, float xmax, bool log) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    const PLOT_SETTINGS& s = Plot_Settings();
    const DIFFRACTION_PATTERN_TYPE& p = g.pattern[static_cast<std::size_t>(slot)];
    const PRF_INFO_ADD_TYPE& info = g.info[static_cast<std::size_t>(slot)];
    const int n = p.npts;
    if (n < 1 || p.x.size() < n || p.y.size() < n) return;
    const PROFILE_STYLE& st = s.styles[static_cast<std::size_t>(Style_Of_Slot(slot))];
    const bool mono = Same(info.prf_type, "MONO");

    const std::vector<float> y = copy_of(p.y, n, log);
    IPgStartGraph(PgXY, 1, n);
    IPgStyle(1, PgNoFill, st.marker, st.marker_colour, st.line_type, st.line_width, st.marker_size);
    IPgXYMarkers(p.x.data(), y.data(), n);

    if (mono && p.sigma.size() >= n) {
        std::vector<float> low(static_cast<std::size_t>(n)), high(static_cast<std::size_t>(n));
        for (int i = 1; i <= n; ++i) {
            // sigma holds variances while sig_var is set
            const float sd = p.sig_var ? std::sqrt(std::max(p.sigma(i), 0.0f)) : p.sigma(i);
            low[static_cast<std::size_t>(i - 1)] = p.y(i) - sd;
            high[static_cast<std::size_t>(i - 1)] = p.y(i) + sd;
        }
        IPgStyle(1, PgLine, 1, st.line_colour, 0, 1, st.marker_size);
        IPgErrorBars(p.x.data(), low.data(), high.data(), n);
    }
    if (st.line_type != -1 && !mono) {
        IPgStyle(1, PgLine, 1, st.line_colour, st.line_type, st.line_width, st.marker_size);
        IPgXYLine(p.x.data(), y.data(), n);
    }
    const bool calc = g.plot_calc[static_cast<std::size_t>(slot)] && p.ycalc.size() >= n;
    if (calc) {
        line_style(s.calc_style);
        IPgXYLine(p.x.data(), copy_of(p.ycalc, n, log).data(), n);
    }
    if (g.plot_bgr[static_cast<std::size_t>(slot)] && p.bgr.size() >= n) {
        line_style(s.diff_style);
        IPgXYLine(p.x.data(), copy_of(p.bgr, n, log).data(), n);
    }
    if (calc) {
        std::vector<float> d(static_cast<std::size_t>(n));
        for (int i = 1; i <= n; ++i) d[static_cast<std::size_t>(i - 1)] = p.y(i) - p.ycalc(i);
        line_style(s.diff_style);
        IPgXYLine(p.x.data(), d.data(), n);
    }
    if (s.excluded_drawn && info.nexcl > 0) draw_excluded(p, info, st, y, xmin, xmax, mono);
}

}  // namespace zendrite
