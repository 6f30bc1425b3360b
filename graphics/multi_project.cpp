#include "graphics/multi_project.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace hxl {

namespace {
constexpr double kDeg = 3.14159265358979323846 / 180.0;
constexpr float kNone = -std::numeric_limits<float>::infinity();
}  // namespace

PROJECTOR_TYPE::PROJECTOR_TYPE(const VIEW_3D_TYPE& view)
    : cr(std::cos(view.rotation * kDeg)), sr(std::sin(view.rotation * kDeg)), ce(std::cos(view.elevation * kDeg)),
      se(std::sin(view.elevation * kDeg)), height(view.height), offset(view.offset) {}

PROJECTED_TYPE PROJECTOR_TYPE::operator()(double x, double d, double h) const {
    const double across = (x - 0.5) * cr + (d - 0.5) * sr;
    const double away = -(x - 0.5) * sr + (d - 0.5) * cr;
    PROJECTED_TYPE p;
    p.u = across;
    p.w = h * height * ce + away * se + offset * height * d;
    p.depth = away * ce - h * height * se;
    return p;
}

PROJECTED_TYPE Project(const VIEW_3D_TYPE& view, double x, double d, double h) { return PROJECTOR_TYPE(view)(x, d, h); }

void Projected_Box(const VIEW_3D_TYPE& view, double& umin, double& umax, double& wmin, double& wmax) {
    bool first = true;
    for (int c = 0; c < 8; ++c) {
        const PROJECTED_TYPE p = Project(view, c & 1, (c >> 1) & 1, (c >> 2) & 1);
        umin = first ? p.u : std::min(umin, p.u);
        umax = first ? p.u : std::max(umax, p.u);
        wmin = first ? p.w : std::min(wmin, p.w);
        wmax = first ? p.w : std::max(wmax, p.w);
        first = false;
    }
}

bool First_Row_In_Front(const VIEW_3D_TYPE& view) { return std::cos(view.rotation * kDeg) >= 0; }

void HORIZON_TYPE::Reset(int width) { top.assign(static_cast<std::size_t>(std::max(width, 0)), kNone); }

void Column_Line(const float* up, const float* wp, std::size_t n, int width, float* atp, int& c0, int& c1) {
    std::fill(atp, atp + width, kNone);
    c0 = width, c1 = -1;
    if (width == 0 || n == 0) return;
    // a line far beyond the picture must not overflow the column numbers
    const float limit = 2.0f * static_cast<float>(width) + 2;
    // floor of x >= -2 without the library's rounding (this loop sees every point of every row)
    auto fl = [](float x) { return static_cast<int>(x + 2.0f) - 2; };
    for (std::size_t i = 0; i + 1 < n || (n == 1 && i == 0); ++i) {
        const float ua = up[i], wa = wp[i], ub = n == 1 ? ua : up[i + 1], wb = n == 1 ? wa : wp[i + 1];
        if (!(std::isfinite(ua) && std::isfinite(ub) && std::isfinite(wa) && std::isfinite(wb))) continue;
        const float lo = std::min(ua, ub), hi = std::max(ua, ub);
        if (hi < -1 || lo > limit) continue;
        const float lo_in = std::max(lo, -1.0f), hi_in = std::min(hi, limit);
        // the column centres c + 0.5 within [lo, hi]
        const int k0 = fl(lo_in - 0.5f) + (lo_in - 0.5f == static_cast<float>(fl(lo_in - 0.5f)) ? 0 : 1);
        const int k1 = fl(hi_in - 0.5f);
        if (k1 < k0) {  // a piece narrower than a column: its highest end stands for it
            const int c = fl(lo_in);
            if (c >= 0 && c < width) {
                atp[c] = std::max(atp[c], std::max(wa, wb));
                c0 = std::min(c0, c), c1 = std::max(c1, c);
            }
            continue;
        }
        const double slope = (static_cast<double>(wb) - wa) / (static_cast<double>(ub) - ua);  // hi > lo here
        const int ka = std::max(k0, 0), kb = std::min(k1, width - 1);
        for (int k = ka; k <= kb; ++k) atp[k] = std::max(atp[k], static_cast<float>(wa + (k + 0.5 - ua) * slope));
        if (ka <= kb) c0 = std::min(c0, ka), c1 = std::max(c1, kb);
    }
}

int Visible_Pieces(const std::vector<float>& u, const std::vector<float>& w, HORIZON_TYPE& horizon, POLYLINES_TYPE& out) {
    const int width = static_cast<int>(horizon.top.size());
    const std::size_t n = std::min(u.size(), w.size());
    if (width == 0 || n == 0) return 0;
    horizon.line.resize(static_cast<std::size_t>(width));
    int c0 = 0, c1 = -1;
    Column_Line(u.data(), w.data(), n, width, horizon.line.data(), c0, c1);
    return Visible_Line(horizon.line.data(), c0, c1, horizon, out);
}

int Visible_Line(const float* atp, int c0, int c1, HORIZON_TYPE& horizon, POLYLINES_TYPE& out) {
    const std::size_t first_piece = out.start.size();
    float* top = horizon.top.data();
    auto push = [&](float pu, float pw) { out.u.push_back(pu), out.w.push_back(pw); };
    // a piece of one point is dropped when the next one opens or at the end
    auto close = [&] {
        if (out.start.size() > first_piece && out.u.size() - static_cast<std::size_t>(out.start.back()) < 2) {
            out.u.resize(static_cast<std::size_t>(out.start.back()));
            out.w.resize(static_cast<std::size_t>(out.start.back()));
            out.start.pop_back();
        }
    };
    auto open = [&] {
        close();
        out.start.push_back(static_cast<int>(out.u.size()));
    };
    // where the line from column c to c+1 meets the horizon between them
    auto crossing = [&](int c, float& cu, float& cw) {
        const double a = atp[c], b = atp[c + 1];
        const double ha = top[c], hb = top[c + 1];
        double t = 0.5;
        if (std::isfinite(ha) && std::isfinite(hb) && (a - ha) - (b - hb) != 0) t = (a - ha) / ((a - ha) - (b - hb));
        t = std::clamp(t, 0.0, 1.0);
        cu = static_cast<float>(c + 0.5 + t);
        cw = static_cast<float>(a + t * (b - a));
    };
    bool visible_before = false;
    for (int c = c0; c <= c1; ++c) {
        const float v = atp[c];
        const bool visible = v != kNone && v > top[c];
        const bool joined = c > c0 && atp[c - 1] != kNone && v != kNone;
        if (visible && !visible_before) {
            open();
            if (joined) {
                float cu = 0, cw = 0;
                crossing(c - 1, cu, cw);
                push(cu, cw);
            }
        } else if (!visible && visible_before && joined) {
            float cu = 0, cw = 0;
            crossing(c - 1, cu, cw);
            push(cu, cw);
        }
        if (visible) push(static_cast<float>(c + 0.5), v);
        visible_before = visible;
    }
    for (int c = c0; c <= c1; ++c)
        top[c] = std::max(top[c], atp[c]);
    close();
    return static_cast<int>(out.start.size() - first_piece);
}

void Reduce_Grid(const std::vector<float>& in, int rows, int cols, int max_rows, int max_cols, std::vector<float>& out,
                 int& out_rows, int& out_cols) {
    out_rows = std::clamp(rows, 0, std::max(max_rows, 1));
    out_cols = std::clamp(cols, 0, std::max(max_cols, 1));
    out.assign(static_cast<std::size_t>(out_rows) * out_cols, std::numeric_limits<float>::quiet_NaN());
    for (int r = 0; r < out_rows; ++r) {
        const int r0 = r * rows / out_rows, r1 = std::max(r0 + 1, (r + 1) * rows / out_rows);
        for (int c = 0; c < out_cols; ++c) {
            const int k0 = c * cols / out_cols, k1 = std::max(k0 + 1, (c + 1) * cols / out_cols);
            double s = 0;
            int m = 0;
            for (int i = r0; i < r1; ++i)
                for (int k = k0; k < k1; ++k) {
                    const float v = in[static_cast<std::size_t>(i) * cols + k];
                    if (std::isfinite(v)) s += v, ++m;
                }
            if (m > 0) out[static_cast<std::size_t>(r) * out_cols + c] = static_cast<float>(s / m);
        }
    }
}

namespace {

struct VERTEX {
    double x, y, z;  // pixel X, pixel Y (down), depth
};

// Fills a triangle where it is nearer than the depth buffer.
void triangle(const VERTEX& a, const VERTEX& b, const VERTEX& c, unsigned rgb, int width, int height,
              std::vector<float>& zbuf, std::vector<unsigned>& picture) {
    const double area = (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
    if (area == 0 || !std::isfinite(area)) return;
    const int x0 = std::max(0, static_cast<int>(std::floor(std::min({a.x, b.x, c.x}))));
    const int x1 = std::min(width - 1, static_cast<int>(std::ceil(std::max({a.x, b.x, c.x}))));
    const int y0 = std::max(0, static_cast<int>(std::floor(std::min({a.y, b.y, c.y}))));
    const int y1 = std::min(height - 1, static_cast<int>(std::ceil(std::max({a.y, b.y, c.y}))));
    // the barycentric weights are linear in x: each row starts them once and steps them
    const double inv = 1 / area;
    const double d0 = -(c.y - b.y) * inv, d1 = -(a.y - c.y) * inv;
    for (int py = y0; py <= y1; ++py) {
        const double y = py + 0.5, x = x0 + 0.5;
        double l0 = ((b.x - x) * (c.y - y) - (b.y - y) * (c.x - x)) * inv;
        double l1 = ((c.x - x) * (a.y - y) - (c.y - y) * (a.x - x)) * inv;
        float* zrow = zbuf.data() + static_cast<std::size_t>(py) * static_cast<std::size_t>(width);
        unsigned* prow = picture.data() + static_cast<std::size_t>(py) * static_cast<std::size_t>(width);
        for (int px = x0; px <= x1; ++px, l0 += d0, l1 += d1) {
            const double l2 = 1 - l0 - l1;
            if (l0 < -1e-9 || l1 < -1e-9 || l2 < -1e-9) continue;
            const float z = static_cast<float>(l0 * a.z + l1 * b.z + l2 * c.z);
            if (z >= zrow[px]) continue;
            zrow[px] = z;
            prow[px] = rgb;
        }
    }
}

unsigned shade(unsigned rgb, double f) {
    auto ch = [&](int s) { return static_cast<unsigned>(std::clamp(((rgb >> s) & 0xFF) * f, 0.0, 255.0)) << s; };
    return ch(16) | ch(8) | ch(0);
}

}  // namespace

void Render_Surface(const std::vector<float>& heights, const std::vector<unsigned>& colours, int rows, int cols,
                    const VIEW_3D_TYPE& view, int width, int height, unsigned background,
                    std::vector<unsigned>& picture) {
    width = std::max(width, 1);
    height = std::max(height, 1);
    picture.assign(static_cast<std::size_t>(width) * height, background);
    if (rows < 1 || cols < 2 || heights.size() < static_cast<std::size_t>(rows) * cols) return;
    std::vector<float> zbuf(picture.size(), std::numeric_limits<float>::infinity());
    double umin = 0, umax = 1, wmin = 0, wmax = 1;
    Projected_Box(view, umin, umax, wmin, wmax);
    const double su = (width - 1) / std::max(umax - umin, 1e-9), sw = (height - 1) / std::max(wmax - wmin, 1e-9);
    // one row alone still shows: it is given the depth of a thin strip
    const int nr = std::max(rows, 2);
    auto at = [&](int r, int c) { return heights[static_cast<std::size_t>(std::min(r, rows - 1)) * cols + c]; };
    const PROJECTOR_TYPE project(view);
    auto vertex = [&](int r, int c) {
        const PROJECTED_TYPE p = project(c / double(cols - 1), r / double(nr - 1), at(r, c));
        return VERTEX{(p.u - umin) * su, (wmax - p.w) * sw, p.depth};
    };
    // light from the viewer's upper left, in the box's own axes
    const double kl = 1 / std::sqrt(0.35 * 0.35 + 0.6 * 0.6 + 0.7 * 0.7);
    const double lx = -0.35 * kl, ly = -0.6 * kl, lz = 0.7 * kl;
    for (int r = 0; r + 1 < nr; ++r)
        for (int c = 0; c + 1 < cols; ++c) {
            const float h00 = at(r, c), h01 = at(r, c + 1), h10 = at(r + 1, c), h11 = at(r + 1, c + 1);
            if (!std::isfinite(h00) || !std::isfinite(h01) || !std::isfinite(h10) || !std::isfinite(h11)) continue;
            // normal of the cell from its two diagonals' slopes
            const double dx = 1.0 / (cols - 1), dd = 1.0 / (nr - 1);
            const double gx = 0.5 * view.height * ((h01 - h00) + (h11 - h10)) / dx;
            const double gd = 0.5 * view.height * ((h10 - h00) + (h11 - h01)) / dd;
            const double nl = std::sqrt(gx * gx + gd * gd + 1);
            const double lambert = std::max(0.0, (-gx * lx - gd * ly + lz) / nl);
            const std::size_t ci = static_cast<std::size_t>(std::min(r, rows - 1)) * cols + c;
            const unsigned rgb = shade(ci < colours.size() ? colours[ci] : 0x808080u, 0.5 + 0.6 * lambert);
            const VERTEX a = vertex(r, c), b = vertex(r, c + 1), p = vertex(r + 1, c), q = vertex(r + 1, c + 1);
            triangle(a, b, q, rgb, width, height, zbuf, picture);
            triangle(a, q, p, rgb, width, height, zbuf, picture);
        }
}

}  // namespace hxl
