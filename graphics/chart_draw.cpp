// The five kinds of generic chart drawn on the page through the presentation layer:
// polyline and scatter, histogram, polar and pie, with title, axis legends and a key.
#include "graphics/chart_draw.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>

#include "app/present.h"
#include "graphics/multi_parts.h"
#include "graphics/plot_settings.h"

namespace zendrite {

namespace {

// Colours that stay apart in print and on a projector (none yellow).
const int kPalette[] = {WRGB(0, 90, 181),  WRGB(220, 50, 32),  WRGB(0, 140, 70),  WRGB(140, 60, 170),
                        WRGB(230, 120, 0), WRGB(0, 160, 170), WRGB(120, 80, 40), WRGB(90, 90, 90)};
int colour(std::size_t k) { return kPalette[k % std::size(kPalette)]; }

// The zone of the frame on the page.
struct ZONE {
    float left, bottom, right, top;
};
// With a second Y axis the frame leaves room for its numbers and legend.
bool g_two_axes = false;
ZONE zone() {
    const PLOT_SETTINGS& s = Plot_Settings();
    const float w = static_cast<float>(s.page_width), h = static_cast<float>(s.page_height);
    return {0.12f * w, 0.13f * h, (g_two_axes ? 0.68f : 0.78f) * w, 0.86f * h};
}

// The key at the right of the frame: a swatch and the legend of each curve.
void key(const hxl::CHART_TYPE& c) {
    const ZONE z = zone();
    float y = z.top - 10;
    const bool right = std::any_of(c.curves.begin(), c.curves.end(), [](const hxl::CHART_CURVE_TYPE& k) { return k.right; });
    const float shift = right ? 0.09f * static_cast<float>(Plot_Settings().page_width) : 0.0f;
    for (std::size_t k = 0; k < c.curves.size(); ++k) {
        if (c.curves[k].legend.empty()) continue;
        IGrColourN(colour(k));
        IGrFillPattern(3);
        IGrRectangle(z.right + shift + 18, y - 4, z.right + shift + 40, y + 8);
        Multi_Text(z.right + shift + 48, y - 4, c.curves[k].legend + (c.curves[k].right ? " (right)" : ""), -1, 11);
        y -= 24;
    }
}

void texts(const hxl::CHART_TYPE& c, bool axes) {
    const ZONE z = zone();
    const PLOT_SETTINGS& s = Plot_Settings();
    Multi_Text(0.5f * (z.left + z.right), z.top + 0.05f * static_cast<float>(s.page_height), c.title, 0, 15);
    if (!axes) return;
    Multi_Text(0.5f * (z.left + z.right), z.bottom - 0.085f * static_cast<float>(s.page_height), c.legend_x, 0, 13);
    Multi_Text(z.left - 0.075f * static_cast<float>(s.page_width), 0.5f * (z.bottom + z.top), c.legend_y, 0, 13, 90);
}

// The data frame on the zone, with ticks and numbers, in units [x1, x2] x [y1, y2].
void frame(float x1, float x2, float y1, float y2) {
    const PLOT_SETTINGS& s = Plot_Settings();
    const ZONE z = zone();
    const float w = static_cast<float>(s.page_width), h = static_cast<float>(s.page_height);
    IPgArea(z.left / w, z.bottom / h, z.right / w, z.top / h);
    IPgUnits(x1, y1, x2, y2);
    IGrColourN(s.x_scale.colour);
    WGrTextFont(1, 0, 0.011f, 0.022f);
    IPgXScale("TN");
    IPgYScale("TN");
    IPgBorder();
}

CHART_FRAME_TYPE& last_frame() {
    static CHART_FRAME_TYPE f;
    return f;
}

// Limits of the points (with their error bars) of the curves on one side (`right`), widened
// by 5%; a flat range opens to 1. False when that side has no point.
bool limits(const hxl::CHART_TYPE& c, float& x1, float& x2, float& y1, float& y2, bool from_zero, int right = -1) {
    x1 = y1 = 3e38f, x2 = y2 = -3e38f;
    for (const hxl::CHART_CURVE_TYPE& k : c.curves) {
        if (right >= 0 && k.right != (right == 1)) continue;
        for (std::size_t i = 0; i < k.x.size() && i < k.y.size(); ++i) {
            const float s = i < k.sigma.size() ? std::fabs(k.sigma[i]) : 0.0f;
            if (!std::isfinite(k.x[i]) || !std::isfinite(k.y[i])) continue;
            x1 = std::min(x1, k.x[i]), x2 = std::max(x2, k.x[i]);
            y1 = std::min(y1, k.y[i] - s), y2 = std::max(y2, k.y[i] + s);
        }
    }
    const bool any = x1 <= x2;
    if (!any) x1 = 0, x2 = 1, y1 = 0, y2 = 1;
    if (from_zero) y1 = std::min(y1, 0.0f), y2 = std::max(y2, 0.0f);
    auto open = [](float& a, float& b) {
        if (b - a <= std::fabs(a) * 1e-6f + 1e-30f) a -= 0.5f, b += 0.5f;
        const float m = 0.05f * (b - a);
        a -= m, b += m;
    };
    open(x1, x2), open(y1, y2);
    return any;
}

// The ticks and numbers of the second Y axis on the right edge of the frame.
void right_axis(const ZONE& z, float r1, float r2, const std::string& legend) {
    const PLOT_SETTINGS& s = Plot_Settings();
    IGrArea(0, 0, 1, 1);
    IGrUnits(0, 0, static_cast<float>(s.page_width), static_cast<float>(s.page_height));
    IGrColourN(s.y_scale.colour);
    const double step = Nice_Tick_Step(r1, r2, 6);
    for (double v = std::ceil(r1 / step - 1e-9) * step; step > 0 && v <= r2 + 1e-9 * step; v += step) {
        const float py = z.bottom + static_cast<float>((v - r1) / (r2 - r1)) * (z.top - z.bottom);
        IGrMoveTo(z.right, py);
        IGrLineTo(z.right - 8, py);
        Multi_Text(z.right + 6, py - 6, Tick_Text(v, step), -1, 11);
    }
    Multi_Text(z.right + 0.06f * static_cast<float>(s.page_width), 0.5f * (z.bottom + z.top), legend, 0, 13, 90);
}

void xy(const hxl::CHART_TYPE& c) {
    // X over all the curves; Y over the left ones, and the right ones on their own axis
    float x1, x2, y1, y2, lx1, lx2, r1 = 0, r2 = 1;
    limits(c, x1, x2, y1, y2, false);
    const bool two = limits(c, lx1, lx2, r1, r2, false, 1) && limits(c, lx1, lx2, y1, y2, false, 0);
    frame(x1, x2, y1, y2);
    CHART_FRAME_TYPE& f = last_frame();
    const ZONE z = zone();
    const float pw = static_cast<float>(Plot_Settings().page_width), ph = static_cast<float>(Plot_Settings().page_height);
    f = CHART_FRAME_TYPE{true, x1, x2, y1, y2, two ? r1 : y1, two ? r2 : y2, z.left / pw, z.bottom / ph, z.right / pw, z.top / ph};
    for (std::size_t k = 0; k < c.curves.size(); ++k) {
        const hxl::CHART_CURVE_TYPE& v = c.curves[k];
        const int n = static_cast<int>(std::min(v.x.size(), v.y.size()));
        if (n == 0) continue;
        std::vector<float> y(v.y.begin(), v.y.begin() + n), lo, hi;
        if (two && v.right)
            for (float& t : y) t = f.Left_Of_Right(t);
        const bool line = c.kind != "scatt" && !v.scatter;
        IPgStartGraph(PgXY, 1, n);
        if (line) {
            IPgStyle(1, PgLine, 1, colour(k), v.right ? 2 : 0, 2, 5);
            IPgXYLine(v.x.data(), y.data(), n);
        }
        if (!line || v.marker || v.errbar) {
            IPgStyle(1, PgNoFill, 2 + static_cast<int>(k % 6), colour(k), 0, 1, 6);
            IPgXYMarkers(v.x.data(), y.data(), n);
        }
        if (v.errbar && v.sigma.size() == v.y.size()) {
            for (int i = 0; i < n; ++i) {
                float a = v.y[static_cast<std::size_t>(i)] - v.sigma[static_cast<std::size_t>(i)];
                float b = v.y[static_cast<std::size_t>(i)] + v.sigma[static_cast<std::size_t>(i)];
                if (two && v.right) a = f.Left_Of_Right(a), b = f.Left_Of_Right(b);
                lo.push_back(a), hi.push_back(b);
            }
            IPgStyle(1, PgLine, 1, colour(k), 0, 1, 5);
            IPgErrorBars(v.x.data(), lo.data(), hi.data(), n);
        }
    }
    if (two) {
        std::string legend;
        for (const hxl::CHART_CURVE_TYPE& v : c.curves)
            if (v.right && legend.empty()) legend = v.legend;
        right_axis(zone(), r1, r2, legend);
    }
}

void histogram(const hxl::CHART_TYPE& c) {
    float x1, x2, y1, y2;
    limits(c, x1, x2, y1, y2, true);
    // bars as wide as the closest two X allow, side by side for the curves
    float gap = x2 - x1;
    for (const hxl::CHART_CURVE_TYPE& k : c.curves)
        for (std::size_t i = 1; i < k.x.size(); ++i)
            if (k.x[i] != k.x[i - 1]) gap = std::min(gap, std::fabs(k.x[i] - k.x[i - 1]));
    x1 -= 0.5f * gap, x2 += 0.5f * gap;
    frame(x1, x2, y1, y2);
    IPgToGrUnits();
    const float n = static_cast<float>(std::max<std::size_t>(c.curves.size(), 1));
    const float bar = 0.8f * gap / n;
    for (std::size_t k = 0; k < c.curves.size(); ++k) {
        const hxl::CHART_CURVE_TYPE& v = c.curves[k];
        IGrColourN(colour(k));
        IGrFillPattern(3);
        for (std::size_t i = 0; i < v.x.size() && i < v.y.size(); ++i) {
            if (!std::isfinite(v.x[i]) || !std::isfinite(v.y[i])) continue;
            const float left = v.x[i] - 0.4f * gap + bar * static_cast<float>(k);
            IGrRectangle(left, 0.0f, left + bar, v.y[i]);
        }
    }
}

// X is the angle in degrees, Y the radius; circles at the radius ticks, spokes every 30.
void polar(const hxl::CHART_TYPE& c) {
    float rmax = 0;
    for (const hxl::CHART_CURVE_TYPE& k : c.curves)
        for (float r : k.y)
            if (std::isfinite(r)) rmax = std::max(rmax, std::fabs(r));
    if (!(rmax > 0)) rmax = 1;
    const PLOT_SETTINGS& s = Plot_Settings();
    const ZONE z = zone();
    const float w = static_cast<float>(s.page_width), h = static_cast<float>(s.page_height);
    // a square frame in the middle of the zone
    const float side = std::min(z.right - z.left, z.top - z.bottom), cx = 0.5f * (z.left + z.right),
                cy = 0.5f * (z.bottom + z.top);
    IPgArea((cx - side / 2) / w, (cy - side / 2) / h, (cx + side / 2) / w, (cy + side / 2) / h);
    const float lim = 1.08f * rmax;
    IPgUnits(-lim, -lim, lim, lim);
    IPgToGrUnits();
    IGrColourN(WRGB(170, 170, 170));
    IGrLineWidth(1);
    const double step = Nice_Tick_Step(0, rmax, 4);
    for (double r = step; r <= rmax * 1.0001 && step > 0; r += step) {
        IGrFillPattern(0);
        IGrCircle(0, 0, static_cast<float>(r));
    }
    for (int a = 0; a < 360; a += 30) {
        const double t = a * std::numbers::pi / 180;
        IGrColourN(WRGB(170, 170, 170));
        IGrMoveTo(0, 0);
        IGrLineTo(static_cast<float>(rmax * std::cos(t)), static_cast<float>(rmax * std::sin(t)));
    }
    for (std::size_t k = 0; k < c.curves.size(); ++k) {
        const hxl::CHART_CURVE_TYPE& v = c.curves[k];
        std::vector<float> px, py;
        for (std::size_t i = 0; i < v.x.size() && i < v.y.size(); ++i) {
            if (!std::isfinite(v.x[i]) || !std::isfinite(v.y[i])) continue;
            const double t = v.x[i] * std::numbers::pi / 180;
            px.push_back(static_cast<float>(v.y[i] * std::cos(t)));
            py.push_back(static_cast<float>(v.y[i] * std::sin(t)));
        }
        if (px.empty()) continue;
        IPgStartGraph(PgXY, 1, static_cast<int>(px.size()));
        IPgStyle(1, PgLine, 1, colour(k), 0, 2, 5);
        IPgXYLine(px.data(), py.data(), static_cast<int>(px.size()));
    }
    // the radii along the 0 spoke and the angles round the rim, in page units
    IGrArea(0, 0, 1, 1);
    IGrUnits(0, 0, w, h);
    for (double r = step; r <= rmax * 1.0001 && step > 0; r += step)
        Multi_Text(cx + static_cast<float>(r / lim) * side / 2 + 2, cy + 3, Tick_Text(r, step), -1, 10);
    for (int a = 0; a < 360; a += 30) {
        const double t = a * std::numbers::pi / 180;
        Multi_Text(cx + 0.5f * side * static_cast<float>(std::cos(t)), cy + 0.5f * side * static_cast<float>(std::sin(t)) - 5,
                   std::to_string(a), 0, 10);
    }
}

// The slices of the first curve, each with its label and share.
void pie(const hxl::CHART_TYPE& c) {
    if (c.curves.empty()) return;
    const hxl::CHART_CURVE_TYPE& v = c.curves.front();
    double total = 0;
    for (float y : v.y)
        if (std::isfinite(y) && y > 0) total += y;
    const ZONE z = zone();
    const float cx = 0.5f * (z.left + z.right), cy = 0.5f * (z.bottom + z.top);
    const float r = 0.42f * std::min(z.right - z.left, z.top - z.bottom);
    if (!(total > 0)) {
        Multi_Text(cx, cy, "No slice above zero", 0, 13);
        return;
    }
    double start = 90;  // from the top, clockwise
    for (std::size_t i = 0; i < v.y.size(); ++i) {
        if (!(std::isfinite(v.y[i]) && v.y[i] > 0)) continue;
        const double sweep = 360.0 * v.y[i] / total;
        std::vector<float> x = {cx}, y = {cy};
        const int steps = std::max(2, static_cast<int>(sweep / 3));
        for (int s = 0; s <= steps; ++s) {
            const double t = (start - sweep * s / steps) * std::numbers::pi / 180;
            x.push_back(cx + r * static_cast<float>(std::cos(t)));
            y.push_back(cy + r * static_cast<float>(std::sin(t)));
        }
        IGrColourN(colour(i));
        IGrFillPattern(3);
        IGrPolygonSimple(x, y);
        const double mid = (start - sweep / 2) * std::numbers::pi / 180;
        char share[32];
        std::snprintf(share, sizeof share, " (%.1f%%)", 100.0 * v.y[i] / total);
        const std::string label = (i < v.labels.size() ? v.labels[i] : std::to_string(i + 1)) + share;
        Multi_Text(cx + 1.12f * r * static_cast<float>(std::cos(mid)), cy + 1.12f * r * static_cast<float>(std::sin(mid)) - 5,
                   label, std::cos(mid) > 0.2 ? -1 : std::cos(mid) < -0.2 ? 1 : 0, 11);
        start -= sweep;
    }
}

}  // namespace

const CHART_FRAME_TYPE& Last_Chart_Frame() { return last_frame(); }

void Draw_Chart(const hxl::CHART_TYPE& chart) {
    last_frame().xy = false;
    g_two_axes = (chart.kind == "polyl" || chart.kind == "scatt") &&
                 std::any_of(chart.curves.begin(), chart.curves.end(), [](const hxl::CHART_CURVE_TYPE& k) { return k.right; });
    const PLOT_SETTINGS& ps = Plot_Settings();
    // a white page: the charts are made for print and slides
    IGrPlotMode(PlotNormal);
    IGrArea(0, 0, 1, 1);
    IGrUnits(0, 0, static_cast<float>(ps.page_width), static_cast<float>(ps.page_height));
    IGrColourN(WRGB(255, 255, 255));
    IGrFillPattern(3);
    IGrRectangle(0, 0, static_cast<float>(ps.page_width), static_cast<float>(ps.page_height));
    IGrFillPattern(0);
    const std::string& k = chart.kind;
    if (k == "histo") histogram(chart);
    else if (k == "polar") polar(chart);
    else if (k == "piech") pie(chart);
    else xy(chart);
    IGrArea(0, 0, 1, 1);
    const PLOT_SETTINGS& s = Plot_Settings();
    IGrUnits(0, 0, static_cast<float>(s.page_width), static_cast<float>(s.page_height));
    texts(chart, k != "piech" && k != "polar");
    if (k != "piech") key(chart);
}

}  // namespace zendrite
