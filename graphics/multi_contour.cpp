// The contour map: the rows as a picture in a colour scale, axes, colour bar.
#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "app/present.h"
#include "app/store/zendrite_param_global.h"
#include "graphics/multi_parts.h"
#include "graphics/multi_views.h"
#include "graphics/plot_settings.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

// Cells with nothing in them; unlike any colour of the scale in use.
unsigned empty_colour(int scale) { return scale == hxl::kScaleGrey ? 0xF0DCC8u : 0xFFFFFFu; }

// The map of the last contour drawn, for the intensity under the mouse.
std::shared_ptr<const hxl::MULTI_MAP_TYPE>& last_map() {
    static std::shared_ptr<const hxl::MULTI_MAP_TYPE> map = std::make_shared<hxl::MULTI_MAP_TYPE>();
    return map;
}

void y_ticks(const MULTI_FRAME_TYPE& f, double y1, double y2, bool integers) {
    double step = Nice_Tick_Step(y1, y2, 6);
    if (integers) step = std::max(step, 1.0);
    if (!(step > 0)) return;
    IGrColourN(Plot_Settings().y_scale.colour);
    const float tick = 0.008f * static_cast<float>(Plot_Settings().page_width);
    for (double v = std::ceil(y1 / step - 1e-9) * step; v <= y2 + 1e-9 * step; v += step) {
        const float py = f.bottom + static_cast<float>((v - y1) / (y2 - y1)) * (f.top - f.bottom);
        IGrMoveTo(f.left, py);
        IGrLineTo(f.left + tick, py);
        IGrMoveTo(f.right, py);
        IGrLineTo(f.right - tick, py);
        Multi_Text(f.left - 1.2f * tick, py - 6, Tick_Text(v, step), 1);
    }
}

void colour_bar(const MULTI_FRAME_TYPE& f, int scale, double lo, double hi, bool log) {
    const float pw = static_cast<float>(Plot_Settings().page_width);
    const float b1 = f.right + 0.02f * pw, b2 = b1 + 0.022f * pw;
    std::vector<unsigned> bar(256);
    for (int i = 0; i < 256; ++i) bar[static_cast<std::size_t>(255 - i)] = hxl::Scale_Colour(scale, i / 255.0);
    IGrImage(b1, f.bottom, b2, f.top, 1, 256, bar);
    IGrColourN(Plot_Settings().y_scale.colour);
    IGrFillPattern(0);
    IGrRectangle(b1, f.bottom, b2, f.top);
    auto mark = [&](double value, const std::string& text) {
        const double t = hxl::Scale_Fraction(value, lo, hi, log);
        const float py = f.bottom + static_cast<float>(t) * (f.top - f.bottom);
        IGrMoveTo(b2, py);
        IGrLineTo(b2 + 0.006f * pw, py);
        Multi_Text(b2 + 0.009f * pw, py - 6, text, -1);
    };
    if (log && lo > 0 && hi > lo) {
        const int k0 = static_cast<int>(std::ceil(std::log10(lo) - 1e-9)), k1 = static_cast<int>(std::floor(std::log10(hi) + 1e-9));
        for (int k = k0; k <= k1 && k1 - k0 < 40; ++k) {
            const double v = std::pow(10.0, k);
            mark(v, Tick_Text(v, std::min(1.0, v)));
        }
        if (k1 - k0 < 1) {  // less than a decade: the ends say the range
            mark(lo, Tick_Text(lo, lo / 100));
            mark(hi, Tick_Text(hi, hi / 100));
        }
    } else if (hi > lo) {
        const double step = Nice_Tick_Step(lo, hi, 6);
        for (double v = std::ceil(lo / step - 1e-9) * step; v <= hi + 1e-9 * step; v += step) mark(v, Tick_Text(v, step));
    }
    Multi_Text(b2 + 0.075f * pw, 0.5f * (f.bottom + f.top), log ? "Intensity (log scale)" : "Intensity", 0, 12, 90);
}

// The chosen iso-lines over the map, white on viridis and red on grey.
void iso_lines(const std::vector<float>& raster, const MULTI_FRAME_TYPE& f, double x1, double x2, double y1, double y2,
               const MULTI_VIEW_STATE& st) {
    std::vector<std::vector<float>> xs, ys;
    std::vector<float> sx, sy;
    for (double level : st.levels) {
        hxl::Iso_Segments(raster, f.px_width, f.px_height, level, sx, sy);
        for (std::size_t k = 0; k + 1 < sx.size(); k += 2) {
            std::vector<float> a(2), b(2);
            for (int e = 0; e < 2; ++e) {
                a[static_cast<std::size_t>(e)] = static_cast<float>(x1 + sx[k + static_cast<std::size_t>(e)] / f.px_width * (x2 - x1));
                b[static_cast<std::size_t>(e)] = static_cast<float>(y2 - sy[k + static_cast<std::size_t>(e)] / f.px_height * (y2 - y1));
            }
            xs.push_back(std::move(a));
            ys.push_back(std::move(b));
        }
    }
    if (xs.empty()) return;
    IPgStyle(1, PgNoFill, 1, 0, 0, 1);
    IPgPolylines(xs, ys, std::vector<int>(xs.size(), st.colour_scale == hxl::kScaleGrey ? WRGB(220, 0, 0) : WRGB(255, 255, 255)));
}

}  // namespace

void Draw_Contour(bool log, int width, int height, const MULTI_ROWS_TYPE& rows) {
    MULTI_VIEW_STATE& st = Multi_View_State();
    const PLOT_SETTINGS& s = Plot_Settings();
    MULTI_PAGE_TYPE page;
    Start_Multi_Page(width, height, rows, page);
    last_map() = page.map;
    const hxl::MULTI_MAP_TYPE& map = *page.map;
    const MULTI_FRAME_TYPE& f = page.f;
    const float zmin = page.zmin, zmax = page.zmax, zpos = page.zpos;
    const bool any = page.any;
    std::vector<double> low, high;
    hxl::Row_Bands(rows.values, low, high);  // slots and kept temperatures are strictly ordered
    double y1 = *std::min_element(low.begin(), low.end()), y2 = *std::max_element(high.begin(), high.end());
    if (st.zoomed && st.y2 > st.y1) y1 = st.y1, y2 = st.y2;
    const double x1 = map.xlo, x2 = map.xhi;

    std::vector<float> raster;
    hxl::Map_Raster(map, low, high, x1, x2, y1, y2, f.px_width, f.px_height, raster);
    // in log the scale starts at the lowest intensity above zero; zero and below take its colour
    const double lo = log ? zpos : zmin, hi = zmax;
    const unsigned empty = empty_colour(st.colour_scale);
    std::vector<unsigned> rgb(raster.size());
    for (std::size_t i = 0; i < raster.size(); ++i)
        rgb[i] = std::isnan(raster[i]) ? empty : hxl::Scale_Colour(st.colour_scale, hxl::Scale_Fraction(raster[i], lo, hi, log));
    IGrImage(f.left, f.bottom, f.right, f.top, f.px_width, f.px_height, rgb);

    IPgArea(s.zone_left, s.zone_bottom, s.zone_right, s.zone_top);
    IPgUnits(static_cast<float>(x1), static_cast<float>(y1), static_cast<float>(x2), static_cast<float>(y2));
    iso_lines(raster, f, x1, x2, y1, y2, st);
    IGrColourN(s.x_scale.colour);
    WGrTextFont(1, 0, 0.012f, 0.024f);
    IPgXScale("TN");
    y_ticks(f, y1, y2, !rows.by_temperature && !rows.by_time);
    IGrColourN(s.x_scale.colour);
    IPgBorder();
    const float pw = static_cast<float>(s.page_width), ph = static_cast<float>(s.page_height);
    Multi_Text(0.5f * (f.left + f.right), f.bottom - 0.09f * ph, Multi_X_Legend(rows.slots.front()), 0, 13);
    Multi_Text(f.left - 0.075f * pw, 0.5f * (f.bottom + f.top), Row_Axis_Name(rows), 0,
               13, 90);
    std::string title = "Contour map of " + std::to_string(rows.slots.size()) + " patterns";
    if (log) title += " (log scale)";
    if (!any) title += ": no intensity to show";
    else if (log && !(zpos > 0)) title += ": no intensity above zero";
    Multi_Text(0.5f * (f.left + f.right), f.top + 0.03f * ph, title, 0, 14);
    if (any && hi >= lo) colour_bar(f, st.colour_scale, lo, hi, log && zpos > 0);

    st.contour_drawn = true;
    st.fx1 = x1, st.fx2 = x2, st.fy1 = y1, st.fy2 = y2;
    st.slots = rows.slots;
    st.row_low = low;
    st.row_high = high;
    st.by_temperature = rows.by_temperature;
    st.by_time = rows.by_time;
    st.row_time = rows.by_time ? rows.values : std::vector<double>{};
}

float Contour_Value(int row_index, double x) {
    const hxl::MULTI_MAP_TYPE& map = *last_map();
    if (row_index < 1 || row_index > map.nrows || !(map.step > 0)) return std::numeric_limits<float>::quiet_NaN();
    const int col = static_cast<int>(std::floor((x - map.xlo) / map.step)) + 1;
    if (col < 1 || col > map.ncols) return std::numeric_limits<float>::quiet_NaN();
    return map.At(row_index, col);
}

}  // namespace zendrite
