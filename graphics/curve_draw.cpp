#include "graphics/curve_draw.h"

#include <algorithm>
#include <cmath>

#include "app/present.h"
#include "graphics/plot_settings.h"

namespace zendrite {

namespace {
CURVE_PIXELS& frame() {
    static CURVE_PIXELS m;
    return m;
}

// Kept between curves: a frame of thousands of curves allocates once.
COLUMN_SPANS& line_runs() {
    static COLUMN_SPANS s;
    return s;
}
COLUMN_SPANS& marker_band() {
    static COLUMN_SPANS s;
    return s;
}

void draw_runs(const COLUMN_SPANS& s, int colour, int marker_size) {
    if (s.Count() < 1) return;
    IPgStartGraph(PgXY, 1, s.Count());
    IPgStyle(1, PgLine, 1, colour, 0, 1, marker_size);
    IPgErrorBars(s.x.data(), s.low.data(), s.high.data(), s.Count());
}

const float* logarithm_of(const float* y, int n, std::vector<float>& keep) {
    keep.resize(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i) keep[static_cast<std::size_t>(i)] = y[i] > 1.0f ? std::log10(y[i]) : 0.0f;
    return keep.data();
}

void draw_points(const float* x, const float* y, int n, const CURVE_LOOK& look, bool markers, bool line) {
    IPgStartGraph(PgXY, 1, n);
    if (markers) {
        IPgStyle(1, PgNoFill, look.marker, look.marker_colour, look.line_type, look.line_width, look.marker_size);
        IPgXYMarkers(x, y, n);
    }
    if (line) {
        IPgStyle(1, PgLine, 1, look.line_colour, look.line_type, look.line_width, look.marker_size);
        IPgXYLine(x, y, n);
    }
}
}  // namespace

void Set_Frame_Pixels(float xmin, float xmax, float ymin, float ymax, int width, int height) {
    const PLOT_SETTINGS& s = Plot_Settings();
    CURVE_PIXELS& m = frame();
    m = CURVE_PIXELS{};
    if (!(xmax != xmin) || !(ymax != ymin) || width < 1 || height < 1 || s.page_width <= 0 || s.page_height <= 0) return;
    float px0 = 0, py0 = 0, px1 = 0, py1 = 0;
    IPgXYToPage(xmin, ymin, px0, py0);
    IPgXYToPage(xmax, ymax, px1, py1);
    const double kx = width / static_cast<double>(s.page_width), ky = height / static_cast<double>(s.page_height);
    const double left = px0 * kx, right = px1 * kx, bottom = height - py0 * ky, top = height - py1 * ky;
    if (!std::isfinite(left) || !std::isfinite(right) || !std::isfinite(top) || !std::isfinite(bottom) ||
        std::fabs(right - left) < 1 || std::fabs(bottom - top) < 1 || std::max(right, left) > 1.0e6 ||
        std::max(top, bottom) > 1.0e6 || std::min(left, right) < -1.0e6 || std::min(top, bottom) < -1.0e6)
        return;  // no frame to reduce to: curves are drawn point by point
    m.sx = (right - left) / (static_cast<double>(xmax) - xmin);
    m.ox = left - m.sx * xmin;
    m.sy = (top - bottom) / (static_cast<double>(ymax) - ymin);
    m.oy = bottom - m.sy * ymin;
    m.left = static_cast<int>(std::floor(std::min(left, right)));
    m.right = static_cast<int>(std::ceil(std::max(left, right))) - 1;
    m.top = static_cast<int>(std::floor(std::min(top, bottom)));
    m.bottom = static_cast<int>(std::ceil(std::max(top, bottom))) - 1;
}

void Draw_Curve(const float* x, const float* y, int n, bool log, const CURVE_LOOK& look) {
    if (!x || !y || n < 1) return;
    const bool markers = look.marker > 1, line = look.line_type != -1;
    if (!markers && !line) return;
    const CURVE_PIXELS& m = frame();
    // Runs stand for a line only when it is solid and one pixel wide.
    const bool line_runs_fit = look.line_type == 0 && look.line_width <= 1;
    if (m.Valid() && n >= m.Columns() && (markers || line_runs_fit)) {
        const double radius = std::max(1.0, look.marker_size * 0.5);
        COLUMN_SPANS* runs = line && line_runs_fit ? &line_runs() : nullptr;
        // a line in the colour of its markers lies within their band: one run a column shows both
        const bool joined = runs && markers && look.line_colour == look.marker_colour;
        if (joined) runs = nullptr;
        const int inside = Reduce_Curve(m, x, y, n, log, radius, runs, markers ? &marker_band() : nullptr, joined);
        if (inside >= m.Columns()) {
            if (markers) draw_runs(marker_band(), look.marker_colour, look.marker_size);
            if (runs) {
                draw_runs(*runs, look.line_colour, look.marker_size);
            } else if (line && !joined) {
                std::vector<float> keep;
                draw_points(x, log ? logarithm_of(y, n, keep) : y, n, look, false, true);
            }
            return;
        }
    }
    std::vector<float> keep;
    draw_points(x, log ? logarithm_of(y, n, keep) : y, n, look, markers, line);
}

void Draw_Error_Bars(const float* x, const float* low, const float* high, int n, int colour, int marker_size) {
    if (!x || !low || !high || n < 1) return;
    const CURVE_PIXELS& m = frame();
    if (m.Valid() && n >= m.Columns()) {
        static COLUMN_SPANS bars;
        Reduce_Error_Bars(m, x, low, high, n, bars);
        if (bars.Count() > 0) {
            draw_runs(bars, colour, marker_size);
            return;
        }
    }
    IPgStyle(1, PgLine, 1, colour, 0, 1, marker_size);
    IPgErrorBars(x, low, high, n);
}

}  // namespace zendrite
