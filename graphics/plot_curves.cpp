// The curves of one slot in the frame, with the style of its slot.
#include <algorithm>
#include <cmath>
#include <vector>

#include "app/present.h"
#include "app/store/zendrite_param_global.h"
#include "graphics/curve_draw.h"
#include "graphics/plot_parts.h"
#include "graphics/plot_settings.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {
using hxl::Same;

// Where the Shift dialog moved the slot being drawn.
struct OFFSET {
    float dx = 0, dy = 0;
    bool Any() const { return dx != 0.0f || dy != 0.0f; }
};

// A curve of the slot: as it is, or, for a shifted slot, from a moved copy that lives until
// the curve is drawn. The offset is in data units in a log frame too, where the window is.
void curve(const OFFSET& o, const float* x, const float* y, int n, bool log, const CURVE_LOOK& look) {
    if (!o.Any()) {
        Draw_Curve(x, y, n, log, look);
        return;
    }
    float* mx = Curve_Scratch(n);
    float* my = Curve_Scratch(n);
    for (int i = 0; i < n; ++i) mx[i] = x[i] + o.dx;
    for (int i = 0; i < n; ++i) my[i] = y[i] + o.dy;
    Draw_Curve(mx, my, n, log, look);
}

CURVE_LOOK line_look(const CURVE_STYLE& c) {
    CURVE_LOOK k;
    k.marker_size = c.marker_size;
    k.line_type = c.line_type, k.line_colour = c.colour, k.line_width = c.line_width;
    return k;
}

// Points of the slot inside one excluded region, redrawn in the excluded colour.
void draw_excluded(const DIFFRACTION_PATTERN_TYPE& p, const PRF_INFO_ADD_TYPE& info, const PROFILE_STYLE& st,
                   bool log, float xmin, float xmax, bool mono, const OFFSET& o) {
    const PLOT_SETTINGS& s = Plot_Settings();
    const int nexcl = std::min(info.nexcl, hxl::kMaxExcluded);
    for (int r = 1; r <= nexcl; ++r) {
        // the regions belong to the data: they move with the slot
        const float lo = info.excl_low(r), hi = info.excl_high(r);
        if (lo > hi || !(lo + o.dx < xmax) || !(hi + o.dx > xmin)) continue;
        int first = 0, last = 0;
        for (int i = 1; i <= p.npts; ++i) {
            if (p.x(i) < lo || p.x(i) > hi) continue;
            if (first == 0) first = i;
            last = i;
        }
        if (first == 0 || last - first + 1 < 2) continue;
        CURVE_LOOK k;
        k.marker = st.marker, k.marker_colour = s.excluded_colour, k.marker_size = st.marker_size;
        if (st.line_type != -1 && !mono)
            k.line_type = st.line_type, k.line_colour = s.excluded_colour, k.line_width = st.line_width;
        curve(o, &p.x(first), &p.y(first), last - first + 1, log, k);
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
    const OFFSET o{g.draw_dx[static_cast<std::size_t>(slot)], g.draw_dy[static_cast<std::size_t>(slot)]};

    CURVE_LOOK look;
    look.marker = st.marker, look.marker_colour = st.marker_colour, look.marker_size = st.marker_size;
    look.line_colour = st.line_colour, look.line_width = st.line_width;
    // the error bars of a MONO file come between its markers and where a line would be
    look.line_type = mono ? -1 : st.line_type;
    // Publication: a line where the points are denser than the pixels, small circles on it where
    // they are fewer than one in four page units across the frame
    if (Plot_Style() == "Publication" && !mono) {
        int shown = 0;
        for (int i = 1; i <= n; ++i) shown += p.x(i) >= xmin && p.x(i) <= xmax;
        const float across = (s.zone_right - s.zone_left) * static_cast<float>(s.page_width);
        if (static_cast<float>(shown) * 4.0f < across) look.marker = 2, look.marker_size = 3;
    }
    curve(o, p.x.data(), p.y.data(), n, log, look);

    const bool bars = mono || (s.error_bars && p.gsigma && !log);
    if (bars && p.sigma.size() >= n) {
        float* low = Curve_Scratch(n);
        float* high = Curve_Scratch(n);
        for (int i = 1; i <= n; ++i) {
            // sigma holds variances while sig_var is set
            const float sd = p.sig_var ? std::sqrt(std::max(p.sigma(i), 0.0f)) : p.sigma(i);
            low[i - 1] = p.y(i) - sd + o.dy;
            high[i - 1] = p.y(i) + sd + o.dy;
        }
        const float* x = p.x.data();
        if (o.dx != 0.0f) {
            float* mx = Curve_Scratch(n);
            for (int i = 0; i < n; ++i) mx[i] = x[i] + o.dx;
            x = mx;
        }
        Draw_Error_Bars(x, low, high, n, st.line_colour, st.marker_size);
    }
    const bool calc = g.plot_calc[static_cast<std::size_t>(slot)] && p.ycalc.size() >= n;
    if (calc) curve(o, p.x.data(), p.ycalc.data(), n, log, line_look(s.calc_style));
    if (g.plot_bgr[static_cast<std::size_t>(slot)] && p.bgr.size() >= n)
        curve(o, p.x.data(), p.bgr.data(), n, log, line_look(s.diff_style));
    if (calc) {
        float* d = Curve_Scratch(n);
        for (int i = 1; i <= n; ++i) d[i - 1] = p.y(i) - p.ycalc(i);
        curve(o, p.x.data(), d, n, false, line_look(s.diff_style));
    }
    if (s.excluded_drawn && info.nexcl > 0) draw_excluded(p, info, st, log, xmin, xmax, mono, o);
}

}  // namespace zendrite
