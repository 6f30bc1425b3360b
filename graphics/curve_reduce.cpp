#include "graphics/curve_reduce.h"

#include <algorithm>
#include <climits>
#include <cmath>

namespace zendrite {

namespace {

// Columns beyond the frame on each side, so that a marker's reach needs no bounds tests.
constexpr int kPad = 16;

// Per-column row ranges of one curve; kept between curves, one set a thread, so that a
// frame of thousands of curves allocates once. Column k of the frame is entry k + kPad.
struct COLUMN_RANGES {
    std::vector<int> lo, hi;
    void Reset(int columns) {
        lo.assign(static_cast<std::size_t>(columns + 2 * kPad), INT_MAX);
        hi.assign(static_cast<std::size_t>(columns + 2 * kPad), INT_MIN);
    }
    int* Lo() { return lo.data() + kPad; }
    int* Hi() { return hi.data() + kPad; }
};

// Floor of a pixel coordinate, bounded: shifted so that truncation floors, without a call to floor.
int row_of(double py) { return static_cast<int>(std::clamp(py, -1.0e7, 1.0e7) + 16777216.0) - 16777216; }

// The part of the segment a-b inside each column it crosses (columns relative to the frame).
void add_segment(int columns, int* lo, int* hi, double ax, double ay, double bx, double by) {
    if (bx < ax) std::swap(ax, bx), std::swap(ay, by);
    const int c0 = std::max(row_of(ax), 0);
    const int c1 = std::min(row_of(bx), columns - 1);
    const double slope = bx > ax ? (by - ay) / (bx - ax) : 0.0;
    for (int c = c0; c <= c1; ++c) {
        const double xa = std::max(ax, static_cast<double>(c)), xb = std::min(bx, static_cast<double>(c + 1));
        const double ya = ay + slope * (xa - ax), yb = ay + slope * (xb - ax);
        lo[c] = std::min(lo[c], row_of(std::min(ya, yb)));
        hi[c] = std::max(hi[c], row_of(std::max(ya, yb)));
    }
}

// The rows a marker of `radius` reaches, by horizontal distance from its centre; kept for the last radius.
const std::vector<int>& marker_reach(double radius) {
    thread_local std::vector<int> reach;
    thread_local double made = -1;
    if (radius == made) return reach;
    made = radius;
    reach.clear();
    for (int dx = 0; dx <= std::min(static_cast<int>(std::ceil(radius)), kPad); ++dx) {
        const double h2 = radius * radius - static_cast<double>(dx) * dx;
        if (h2 < 0) break;
        reach.push_back(static_cast<int>(std::floor(std::sqrt(h2) + 0.5)));
    }
    return reach;
}

// Data units of the centres of the frame's columns and rows, the same for every curve of a frame.
struct CENTRES {
    CURVE_PIXELS made;
    std::vector<float> x, y;  // x by column from the left of the frame, y by row from its top
};
const CENTRES& centres_of(const CURVE_PIXELS& m) {
    thread_local CENTRES c;
    const CURVE_PIXELS& o = c.made;
    if (c.x.empty() || o.sx != m.sx || o.ox != m.ox || o.sy != m.sy || o.oy != m.oy || o.left != m.left ||
        o.right != m.right || o.top != m.top || o.bottom != m.bottom) {
        c.x.resize(static_cast<std::size_t>(m.Columns()));
        c.y.resize(static_cast<std::size_t>(m.bottom - m.top + 1));
        for (int k = 0; k < m.Columns(); ++k)
            c.x[static_cast<std::size_t>(k)] = static_cast<float>((m.left + k + 0.5 - m.ox) / m.sx);
        for (int r = m.top; r <= m.bottom; ++r)
            c.y[static_cast<std::size_t>(r - m.top)] = static_cast<float>((r + 0.5 - m.oy) / m.sy);
        c.made = m;
    }
    return c;
}

// Writes the runs in data units, at pixel centres, into arrays sized for every column.
struct EMITTER {
    const float *cx, *cy;
    int top, bottom;
    COLUMN_SPANS* out;
    float *x = nullptr, *low = nullptr, *high = nullptr;
    int count = 0;
    EMITTER(const CURVE_PIXELS& m, const CENTRES& c, COLUMN_SPANS* spans)
        : cx(c.x.data()), cy(c.y.data() - m.top), top(m.top), bottom(m.bottom), out(spans) {
        if (!out) return;
        const std::size_t w = static_cast<std::size_t>(m.Columns());
        out->x.resize(w), out->low.resize(w), out->high.resize(w);
        x = out->x.data(), low = out->low.data(), high = out->high.data();
    }
    ~EMITTER() {
        if (!out) return;
        const std::size_t c = static_cast<std::size_t>(count);
        out->x.resize(c), out->low.resize(c), out->high.resize(c);
    }
    void operator()(int k, int t, int b) {
        t = std::max(t, top), b = std::min(b, bottom);
        if (t > b) return;
        x[count] = cx[k], low[count] = cy[b], high[count] = cy[t];
        ++count;
    }
};

// The rows of one column's points, and of the parts of the segments between columns.
struct SCAN_OUT {
    int* plo;  // points
    int* phi;
    int* slo;  // segments
    int* shi;
};

double y_of(float v, bool log) { return log ? (v > 1.0f ? std::log10(v) : 0.0f) : v; }

// The joining segment from the last point of one column to the first of the next.
void join(const CURVE_PIXELS& m, const SCAN_OUT& o, double ax, double ay, double bx, double by) {
    const int width = m.Columns();
    const int ca = row_of(ax), cb = row_of(bx);
    if (cb == ca + 1 || cb == ca - 1) {
        // each side takes its half of the rows between
        const int rb = row_of(0.5 * (ay + by));
        for (const auto& [c, r] : {std::pair{ca, row_of(ay)}, std::pair{cb, row_of(by)}}) {
            if (c < 0 || c >= width) continue;
            o.slo[c] = std::min({o.slo[c], r, rb});
            o.shi[c] = std::max({o.shi[c], r, rb});
        }
        return;
    }
    add_segment(width, o.slo, o.shi, ax, ay, bx, by);
}

// The join of a group of points (column c, or -1 and the width for left and right of the
// frame) to the group before it, whose last point is (ax, ay) and first point (bx, by).
[[gnu::always_inline]] inline void join_groups(const CURVE_PIXELS& m, const SCAN_OUT& o, int last_c, int c,
                                               double ax, double ay, double bx, double by) {
    if (c == last_c + 1 && last_c >= 0 && c < m.Columns()) {
        // a step to the next column: each side takes its half of the rows between
        // (its own end points are among the column's points already)
        const int rm = row_of(0.5 * (ay + by));
        o.slo[last_c] = std::min(o.slo[last_c], rm), o.shi[last_c] = std::max(o.shi[last_c], rm);
        o.slo[c] = rm, o.shi[c] = rm;
        return;
    }
    join(m, o, ax, ay, bx, by);
}

// Where each column of the frame begins in X, and where the last ends; kept while the frame stays.
const std::vector<float>& column_edges(const CURVE_PIXELS& m) {
    thread_local std::vector<float> edges;
    thread_local CURVE_PIXELS made;
    if (made.sx != m.sx || made.ox != m.ox || made.left != m.left || made.right != m.right || edges.empty()) {
        edges.resize(static_cast<std::size_t>(m.Columns()) + 1);
        for (int k = 0; k <= m.Columns(); ++k)
            edges[static_cast<std::size_t>(k)] = static_cast<float>((m.left + k - m.ox) / m.sx);
        made = m;
    }
    return edges;
}

// What a walk keeps from one group of points to the next: the rows of the column of a
// group are set once (each column is walked once), and each group is joined to the last.
template <bool LOG>
struct GROUPS {
    const CURVE_PIXELS& m;
    const SCAN_OUT o;
    const float *x, *y;
    int width = m.Columns(), inside = 0;  // points inside the frame
    double sx = m.sx, ox = m.ox - m.left, sy = m.sy, oy = m.oy;
    double last_x = 0, last_y = 0;
    int last_c = -2;
    double Py(float v) const { return oy + sy * y_of(v, LOG); }
    // Points first..end-1, with extremes mn and mx of Y, in column c (-1 left of the frame,
    // the width right of it).
    [[gnu::always_inline]] void Add(int c, int first, int end, float mn, float mx) {
        const double y0 = Py(y[first]);
        if (c >= 0 && c < width) {
            const int a = row_of(Py(mx)), b = row_of(Py(mn));
            o.plo[c] = std::min(a, b), o.phi[c] = std::max(a, b);
            inside += end - first;
        }
        if (last_c != -2) join_groups(m, o, last_c, c, last_x, last_y, ox + sx * x[first], y0);
        last_x = ox + sx * x[end - 1];
        last_y = Py(y[end - 1]);
        last_c = c;
    }
};

// Points in ascending X, walked column by column: per point only comparisons and the
// running extremes of Y, in data units; Y becomes pixels once a column. Points left and
// right of the frame form one group each side. False when X does not ascend or a value
// is missing.
template <bool LOG>
bool walk_ascending(const CURVE_PIXELS& m, const float* x, const float* y, int n, const SCAN_OUT& o, int& inside) {
    const int width = m.Columns();
    if (!(m.sx > 0)) return false;
    const float* e = column_edges(m).data();
    GROUPS<LOG> groups{m, o, x, y};
    int i = 0, c = -1;  // column of the group; -1 left of the frame, width right of it
    while (i < n) {
        const float xi = x[i];
        if (!std::isfinite(xi)) return false;
        if (c < 0 && xi >= e[0]) c = 0;
        if (c >= 0) while (c < width && xi >= e[c + 1]) ++c;
        const float low = c < 0 ? -INFINITY : c < width ? e[c] : e[width];
        const float stop = c < 0 ? e[0] : c < width ? e[c + 1] : INFINITY;
        if (xi < low) return false;
        const int first = i;
        float mn = y[i], mx = y[i];
        bool back = false;
        for (++i; i < n && x[i] < stop; ++i) {
            mn = std::min(mn, y[i]), mx = std::max(mx, y[i]);
            back |= x[i] < low;
        }
        if (back || !std::isfinite(mn) || !std::isfinite(mx) || !std::isfinite(y[i - 1])) return false;
        groups.Add(c, first, i, mn, mx);
        if (c < width) ++c;
    }
    inside = groups.inside;
    return true;
}

// True when X never decreases and every value is a number: the walk below then needs no
// test per point but where its column ends. Written so that the compiler vectorises it.
bool sorted_and_finite(const float* x, const float* y, int n) {
    if (!std::isfinite(x[0]) || !std::isfinite(x[n - 1])) return false;
    int bad = 0;
    for (int i = 1; i < n; ++i) bad |= !(x[i - 1] <= x[i]);
    for (int i = 0; i < n; ++i) bad |= !(y[i] - y[i] == 0.0f);
    return bad == 0;
}

// The walk of walk_ascending for points that sorted_and_finite accepts, with the same result:
// the points left and right of the frame are found by bisection, and a column costs its
// points' comparisons and extremes, four rows and the join with the column before.
template <bool LOG>
void walk_sorted(const CURVE_PIXELS& m, const float* x, const float* y, int n, const SCAN_OUT& o, int& inside) {
    const int width = m.Columns();
    const float* e = column_edges(m).data();
    GROUPS<LOG> groups{m, o, x, y};
    int i = static_cast<int>(std::lower_bound(x, x + n, e[0]) - x);
    if (i > 0) groups.Add(-1, 0, i, y[0], y[0]);
    const int end = static_cast<int>(std::lower_bound(x + i, x + n, e[width]) - x);
    int c = 0;
    while (i < end) {
        while (x[i] >= e[c + 1]) ++c;
        const float stop = e[c + 1];
        const int first = i;
        float mn = y[i], mx = y[i];
        for (++i; i < end && x[i] < stop; ++i) mn = std::min(mn, y[i]), mx = std::max(mx, y[i]);
        groups.Add(c, first, i, mn, mx);
        ++c;
    }
    if (i < n) groups.Add(width, i, n, y[i], y[i]);
    inside = groups.inside;
}

// Any order of points: per point the column and row in pixels.
int scan_points(const CURVE_PIXELS& m, const float* x, const float* y, int n, bool log, const SCAN_OUT& o) {
    const int width = m.Columns();
    const double sx = m.sx, ox = m.ox - m.left, sy = m.sy, oy = m.oy, far = 1.0e7;
    int inside = 0;
    bool have_prev = false;
    double last_x = 0, last_y = 0;
    int last_col = 0;
    for (int i = 0; i < n; ++i) {
        if (!std::isfinite(x[i]) || !std::isfinite(y[i])) continue;  // the line joins across a missing value
        const double px = std::clamp(ox + sx * x[i], -far, far), py = std::clamp(oy + sy * y_of(y[i], log), -far, far);
        const int c = static_cast<int>(std::floor(px)), row = row_of(py);
        if (c >= 0 && c < width) {
            o.plo[c] = std::min(o.plo[c], row), o.phi[c] = std::max(o.phi[c], row);
            ++inside;
        }
        // Within one column the segment lies between the column's own points.
        if (have_prev && c != last_col) join(m, o, last_x, last_y, px, py);
        have_prev = true;
        last_x = px, last_y = py, last_col = c;
    }
    return inside;
}

}  // namespace

int Reduce_Curve(const CURVE_PIXELS& m, const float* x, const float* y, int n, bool log, double radius,
                 COLUMN_SPANS* line, COLUMN_SPANS* band, bool joined) {
    if (line) line->Clear();
    if (band) band->Clear();
    if (!m.Valid() || !x || !y || n < 1) return 0;
    thread_local COLUMN_RANGES segs, pts;  // segs: the joins between columns; pts: the points
    const int w = m.Columns();
    segs.Reset(w);
    pts.Reset(w);
    const SCAN_OUT o{pts.Lo(), pts.Hi(), segs.Lo(), segs.Hi()};
    int inside = 0;
    // with many points a column, their tests cost little beside their extremes, and checking
    // the order first would read them twice
    if (m.sx > 0 && n <= 16 * w && sorted_and_finite(x, y, n)) {
        if (log) walk_sorted<true>(m, x, y, n, o, inside);
        else walk_sorted<false>(m, x, y, n, o, inside);
    } else if (!(log ? walk_ascending<true>(m, x, y, n, o, inside) : walk_ascending<false>(m, x, y, n, o, inside))) {
        pts.Reset(w);
        segs.Reset(w);
        inside = scan_points(m, x, y, n, log, o);
    }
    const int *plo = o.plo, *phi = o.phi, *slo = o.slo, *shi = o.shi;
    const std::vector<int>& reach = marker_reach(std::max(radius, 0.5));
    const int d = static_cast<int>(reach.size()) - 1;
    if (joined && !band) joined = false;
    // the union of the markers of each column and of its neighbours within reach, a whole
    // row of columns at a time so that the compiler can vectorise it
    thread_local std::vector<int> band_top, band_bottom;
    int *btop = nullptr, *bbottom = nullptr;
    if (band) {
        band_top.resize(static_cast<std::size_t>(w)), band_bottom.resize(static_cast<std::size_t>(w));
        btop = band_top.data(), bbottom = band_bottom.data();
        const int h0 = reach[0];
        for (int k = 0; k < w; ++k) btop[k] = plo[k] - h0, bbottom[k] = phi[k] + h0;
        for (int j = 1; j <= d; ++j) {
            const int h = reach[static_cast<std::size_t>(j)];
            const int *la = plo - j, *lb = plo + j, *ha = phi - j, *hb = phi + j;
            for (int k = 0; k < w; ++k) {
                btop[k] = std::min(btop[k], std::min(la[k], lb[k]) - h);
                bbottom[k] = std::max(bbottom[k], std::max(ha[k], hb[k]) + h);
            }
        }
    }
    const CENTRES& centres = centres_of(m);
    EMITTER to_band(m, centres, band), to_line(m, centres, joined ? nullptr : line);
    for (int k = 0; k < w; ++k) {
        const int top = band ? btop[k] : INT_MAX, bottom = band ? bbottom[k] : INT_MIN;
        const int ltop = std::min(plo[k], slo[k]), lbottom = std::max(phi[k], shi[k]);
        if (joined) {
            to_band(k, std::min(top, ltop), std::max(bottom, lbottom));
            continue;
        }
        if (band) to_band(k, top, bottom);
        if (line) to_line(k, ltop, lbottom);
    }
    return inside;
}

void Reduce_Error_Bars(const CURVE_PIXELS& m, const float* x, const float* low, const float* high, int n,
                       COLUMN_SPANS& bars) {
    bars.Clear();
    if (!m.Valid() || !x || !low || !high || n < 1) return;
    thread_local COLUMN_RANGES rows;
    rows.Reset(m.Columns());
    int *lo = rows.Lo(), *hi = rows.Hi();
    for (int i = 0; i < n; ++i) {
        if (!std::isfinite(x[i]) || !std::isfinite(low[i]) || !std::isfinite(high[i])) continue;
        const double px = m.ox + m.sx * static_cast<double>(x[i]);
        if (!(px >= m.left && px < m.right + 1)) continue;
        const int a = row_of(m.oy + m.sy * low[i]), b = row_of(m.oy + m.sy * high[i]);
        const int k = static_cast<int>(std::floor(px)) - m.left;
        lo[k] = std::min({lo[k], a, b}), hi[k] = std::max({hi[k], a, b});
    }
    EMITTER to_bars(m, centres_of(m), &bars);
    for (int k = 0; k < m.Columns(); ++k) to_bars(k, lo[k], hi[k]);
}

}  // namespace zendrite
