// The stack (waterfall): the patterns one behind the other, front to back, each hiding
// what lies under it; and the box axes that the 3D views share.
#include <algorithm>
#include <cmath>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "app/present.h"
#include "graphics/multi_parts.h"
#include "graphics/multi_views.h"
#include "graphics/plot_settings.h"

namespace zendrite {

namespace {

int wrgb(unsigned rgb) {
    return WRGB(static_cast<int>(rgb >> 16 & 0xFF), static_cast<int>(rgb >> 8 & 0xFF), static_cast<int>(rgb & 0xFF));
}

}  // namespace

// Box edges, ticks of X and the names of the three axes; `to_page` maps the box to page units.
void Draw_Box_Axes(const hxl::VIEW_3D_TYPE& view, const MULTI_FRAME_TYPE& f, double x1, double x2,
                   const MULTI_ROWS_TYPE& rows, double zlo, double zhi) {
    double umin = 0, umax = 1, wmin = 0, wmax = 1;
    hxl::Projected_Box(view, umin, umax, wmin, wmax);
    auto page = [&](double x, double d, double h, float& px, float& py) {
        const hxl::PROJECTED_TYPE p = hxl::Project(view, x, d, h);
        px = f.left + static_cast<float>((p.u - umin) / std::max(umax - umin, 1e-9)) * (f.right - f.left);
        py = f.bottom + static_cast<float>((p.w - wmin) / std::max(wmax - wmin, 1e-9)) * (f.top - f.bottom);
    };
    auto edge = [&](double xa, double da, double ha, double xb, double db, double hb) {
        float ax = 0, ay = 0, bx = 0, by = 0;
        page(xa, da, ha, ax, ay);
        page(xb, db, hb, bx, by);
        IGrMoveTo(ax, ay);
        IGrLineTo(bx, by);
    };
    const PLOT_SETTINGS& s = Plot_Settings();
    IGrColourN(s.x_scale.colour);
    IGrLineWidth(1);
    const bool first_front = hxl::First_Row_In_Front(view);
    const double front = first_front ? 0 : 1, back = 1 - front;
    // the X axis runs along the front of the base, the rows along its left side, the height
    // stands at the back right corner
    const double side = std::cos(view.rotation * 3.14159265358979 / 180) >= 0 ? 0 : 1, other = 1 - side;
    const int out = side == 0 ? 1 : -1;  // texts beside the left edge end at it
    edge(0, front, 0, 1, front, 0);
    edge(side, 0, 0, side, 1, 0);
    edge(other, back, 0, other, back, 1);
    const double step = Nice_Tick_Step(x1, x2, 7);
    if (step > 0) {
        for (double v = std::ceil(x1 / step - 1e-9) * step; v <= x2 + 1e-9 * step; v += step) {
            const double t = (v - x1) / (x2 - x1);
            float ax = 0, ay = 0;
            page(t, front, 0, ax, ay);
            IGrMoveTo(ax, ay);
            IGrLineTo(ax, ay - 8);
            Multi_Text(ax, ay - 28, Tick_Text(v, step), 0, 11);
        }
    }
    float px = 0, py = 0;
    page(0.5, front, 0, px, py);
    Multi_Text(px, py - 62, Multi_X_Legend(rows.slots.front()), 0, 12);
    // the first and last row values at the ends of the side edge
    const double vstep = rows.by_temperature || rows.by_time ? 0.01 : 1;
    const float gap = side == 0 ? -10.0f : 10.0f;
    page(side, 0, 0, px, py);
    Multi_Text(px + gap, py - 6, Tick_Text(rows.values.front(), vstep), out, 11);
    page(side, 1, 0, px, py);
    Multi_Text(px + gap, py - 6, Tick_Text(rows.values.back(), vstep), out, 11);
    page(side, 0.5, 0, px, py);
    Multi_Text(px + 1.4f * gap, py - 6, Row_Axis_Name(rows), out, 12);
    const double zstep = std::max(std::fabs(zhi - zlo) / 1000, 1e-6);
    page(other, back, 1, px, py);
    Multi_Text(px - gap, py - 6, Tick_Text(zhi, zstep), -out, 11);
    page(other, back, 0, px, py);
    Multi_Text(px - gap, py - 6, Tick_Text(zlo, zstep), -out, 11);
    page(other, back, 0.5, px, py);
    Multi_Text(px - 2.5f * gap, py, "Intensity", 0, 12, 90);
}

void Draw_Stack(int width, int height, const MULTI_ROWS_TYPE& rows) {
    const PLOT_SETTINGS& s = Plot_Settings();
    MULTI_PAGE_TYPE page;
    Start_Multi_Page(width, height, rows, page);
    const MULTI_FRAME_TYPE& f = page.f;
    const hxl::MULTI_MAP_TYPE& map = *page.map;
    const float zmin = page.zmin, zmax = page.zmax;
    const bool any = page.any;
    const hxl::VIEW_3D_TYPE view = Present_3D_View();
    double umin = 0, umax = 1, wmin = 0, wmax = 1;
    hxl::Projected_Box(view, umin, umax, wmin, wmax);
    const double su = (f.px_width - 1) / std::max(umax - umin, 1e-9), sw = (f.px_height - 1) / std::max(wmax - wmin, 1e-9);
    const double zr = zmax > zmin ? zmax - zmin : 1;

    IPgArea(s.zone_left, s.zone_bottom, s.zone_right, s.zone_top);
    IPgUnits(0, 0, static_cast<float>(f.px_width), static_cast<float>(f.px_height));
    IPgStartGraph(PgXY, 1, 0);
    hxl::HORIZON_TYPE horizon;
    horizon.Reset(f.px_width);
    hxl::POLYLINES_TYPE lines;
    std::vector<int> colours;
    const bool front_first = hxl::First_Row_In_Front(view);
    const hxl::PROJECTOR_TYPE project(view);
    const int nr = map.nrows, px = f.px_width;
    const std::size_t ncols = static_cast<std::size_t>(std::max(map.ncols, 0));
    // Rows in chunks: the columns of each row need no horizon and are found on two threads,
    // then the rows meet the horizon one after another, front to back.
    constexpr int kChunk = 256;
    std::vector<float> at(static_cast<std::size_t>(kChunk) * static_cast<std::size_t>(std::max(px, 0)));
    std::vector<int> c0(kChunk), c1(kChunk);
    auto row_of = [&](int k) { return front_first ? k + 1 : nr - k; };
    auto columns = [&](int k0, int k1) {
        std::vector<float> u(ncols), w(ncols);
        for (int k = k0; k < k1; ++k) {
            const int row = row_of(k);
            const double d = nr > 1 ? (row - 1) / double(nr - 1) : 0;
            // the projection is linear in X and in the height: a row is two steps and a scale
            const hxl::PROJECTED_TYPE p0 = project(0.5 / map.ncols, d, 0), p1 = project(1.5 / map.ncols, d, 0),
                                      ph = project(0.5 / map.ncols, d, 1);
            const double u0 = (p0.u - umin) * su, du = (p1.u - p0.u) * su, w0 = (p0.w - wmin) * sw,
                         dw = (p1.w - p0.w) * sw, hw = (ph.w - p0.w) * sw / zr;
            const float* zrow = &map.z[static_cast<std::size_t>(row - 1) * ncols];
            for (std::size_t c = 0; c < ncols; ++c) {
                const float z = zrow[c];
                u[c] = static_cast<float>(u0 + static_cast<double>(c) * du);
                w[c] = std::isfinite(z) ? static_cast<float>(w0 + static_cast<double>(c) * dw + (z - zmin) * hw) : NAN;
            }
            const std::size_t slot = static_cast<std::size_t>(k % kChunk);
            hxl::Column_Line(u.data(), w.data(), ncols, px, &at[slot * static_cast<std::size_t>(px)], c0[slot],
                             c1[slot]);
        }
    };
    for (int first = 0; first < nr && any && px > 0; first += kChunk) {
        const int last = std::min(nr, first + kChunk), half = (first + last) / 2;
        try {
            std::thread other(columns, half, last);
            columns(first, half);
            other.join();
        } catch (const std::system_error&) {  // no second thread to be had: all on this one
            columns(first, last);
        }
        for (int k = first; k < last; ++k) {
            const std::size_t slot = static_cast<std::size_t>(k % kChunk);
            const int added = hxl::Visible_Line(&at[slot * static_cast<std::size_t>(px)], c0[slot], c1[slot], horizon, lines);
            const double d = nr > 1 ? (row_of(k) - 1) / double(nr - 1) : 0;
            // the rows run along the scale from dark blue to green, so that neighbours can be told apart
            if (added > 0) colours.insert(colours.end(), static_cast<std::size_t>(added), wrgb(hxl::Scale_Colour(hxl::kScaleViridis, 0.05 + 0.7 * d)));
        }
    }
    IPgStyle(1, PgNoFill, 1, 0, 0, 1);
    IPgPolylines(lines.u, lines.w, lines.start, colours);
    Draw_Box_Axes(view, f, map.xlo, map.xhi, rows, zmin, zmax);
    const float ph = static_cast<float>(s.page_height);
    std::string title = "Stack of " + std::to_string(rows.slots.size()) + " patterns";
    if (!any) title += ": no intensity to show";
    Multi_Text(0.5f * (f.left + f.right), f.top + 0.03f * ph, title, 0, 14);
}

}  // namespace zendrite
