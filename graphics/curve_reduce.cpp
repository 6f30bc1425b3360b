#include "graphics/curve_reduce.h"

#include <algorithm>
#include <cmath>
#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zendrite {

namespace {

// Columns beyond the frame on each side, so that a marker's reach needs no bounds tests.
constexpr int kPad = 16;
// Points whose order and values are checked at a time, just ahead of the walk that reads them.
constexpr int kCheckChunk = 8192;

// Floor of a pixel coordinate, bounded: shifted so that truncation floors, without a call to floor.
int row_of(double py) { return static_cast<int>(std::clamp(py, -1.0e7, 1.0e7) + 16777216.0) - 16777216; }

float lg(float v) { return v > 1.0f ? std::log10(v) : 0.0f; }

// Rows beyond any picture: empty columns have the top row here and the bottom row at -kFar.
constexpr float kFar = 1.0e7f;

// One curve's columns on its way to runs; kept between curves, one set a thread, so that a
// frame of thousands of curves allocates once. Rows are whole numbers held in floats, so that
// the per-column passes vectorise with the plainest instructions.
struct WORK {
    int w = -1;
    // Y extremes of each column's points and of its line (the points and the halves of the
    // steps to its neighbours), in data units with the logarithm taken
    std::vector<float> pmin, pmax, lmin, lmax;
    // the walk's step into each column from the one before, when both have points (NaN: none);
    // one more than the columns, for the step out of the last
    std::vector<float> mid;
    // rows reached by segments that cross columns without points, or leave the frame
    std::vector<float> slo, shi;
    // rows of the points, with empty columns beyond the frame for the markers' reach
    std::vector<float> plo_padded, phi_padded;
    std::vector<float> ltop, lbottom, btop, bbottom;
    void Reset(int columns) {
        if (columns != w) {
            w = columns;
            const std::size_t s = static_cast<std::size_t>(w);
            for (auto* v : {&pmin, &pmax, &lmin, &lmax, &slo, &shi, &ltop, &lbottom, &btop, &bbottom}) v->resize(s);
            mid.assign(s + 1, NAN);
            plo_padded.assign(s + 2 * kPad, kFar);
            phi_padded.assign(s + 2 * kPad, -kFar);
        }
        std::fill(slo.begin(), slo.end(), kFar);
        std::fill(shi.begin(), shi.end(), -kFar);
    }
    void Clear_Extremes() {
        std::fill(pmin.begin(), pmin.end(), INFINITY), std::fill(lmin.begin(), lmin.end(), INFINITY);
        std::fill(pmax.begin(), pmax.end(), -INFINITY), std::fill(lmax.begin(), lmax.end(), -INFINITY);
    }
    float* Plo() { return plo_padded.data() + kPad; }
    float* Phi() { return phi_padded.data() + kPad; }
};

// The part of the segment a-b (pixels, columns from the frame's left) inside each column it crosses.
void add_segment(int columns, float* lo, float* hi, double ax, double ay, double bx, double by) {
    if (bx < ax) std::swap(ax, bx), std::swap(ay, by);
    const int c0 = std::max(row_of(ax), 0);
    const int c1 = std::min(row_of(bx), columns - 1);
    const double slope = bx > ax ? (by - ay) / (bx - ax) : 0.0;
    for (int c = c0; c <= c1; ++c) {
        const double xa = std::max(ax, static_cast<double>(c)), xb = std::min(bx, static_cast<double>(c + 1));
        const double ya = ay + slope * (xa - ax), yb = ay + slope * (xb - ax);
        lo[c] = std::min(lo[c], static_cast<float>(row_of(std::min(ya, yb))));
        hi[c] = std::max(hi[c], static_cast<float>(row_of(std::max(ya, yb))));
    }
}

// The step between two points that are not in neighbouring columns of the frame (data units,
// log taken): in pixels, the columns it crosses.
void join_pixels(const CURVE_PIXELS& m, WORK& k, float xa, float ya, float xb, float yb) {
    const double ox = m.ox - m.left;
    const double ax = ox + m.sx * xa, bx = ox + m.sx * xb, ay = m.oy + m.sy * ya, by = m.oy + m.sy * yb;
    const int width = m.Columns();
    const int ca = row_of(ax), cb = row_of(bx);
    if (cb == ca + 1 || cb == ca - 1) {
        // each side takes its half of the rows between
        const int rb = row_of(0.5 * (ay + by));
        for (const auto& [c, r] : {std::pair{ca, row_of(ay)}, std::pair{cb, row_of(by)}}) {
            if (c < 0 || c >= width) continue;
            float& lo = k.slo[static_cast<std::size_t>(c)];
            float& hi = k.shi[static_cast<std::size_t>(c)];
            lo = std::min(lo, static_cast<float>(std::min(r, rb))), hi = std::max(hi, static_cast<float>(std::max(r, rb)));
        }
        return;
    }
    add_segment(width, k.slo.data(), k.shi.data(), ax, ay, bx, by);
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

// True when X never decreases and every value is a number. Written so that the compiler vectorises it.
[[gnu::always_inline]] inline bool sorted_and_finite(const float* x, const float* y, int n) {
    if (!std::isfinite(x[0]) || !std::isfinite(x[n - 1])) return false;
    int bad = 0;
    for (int i = 1; i < n; ++i) bad |= !(x[i - 1] <= x[i]);
    for (int i = 0; i < n; ++i) bad |= !(y[i] - y[i] == 0.0f);
    return bad == 0;
}

#if defined(__SSE2__)
__m128 pick(__m128 keep, __m128 a, __m128 b) { return _mm_or_ps(_mm_and_ps(keep, a), _mm_andnot_ps(keep, b)); }
float lowest(__m128 v) {
    v = _mm_min_ps(v, _mm_shuffle_ps(v, v, _MM_SHUFFLE(2, 3, 0, 1)));
    return _mm_cvtss_f32(_mm_min_ps(v, _mm_shuffle_ps(v, v, _MM_SHUFFLE(1, 0, 3, 2))));
}
float highest(__m128 v) {
    v = _mm_max_ps(v, _mm_shuffle_ps(v, v, _MM_SHUFFLE(2, 3, 0, 1)));
    return _mm_cvtss_f32(_mm_max_ps(v, _mm_shuffle_ps(v, v, _MM_SHUFFLE(1, 0, 3, 2))));
}
#endif

// From point i on, the points below `stop` in X (ascending) up to point `limit`: folds their
// Y into mn and mx and returns the point after them. Eight points are compared at a time, so
// that a column of a few points costs no mispredicted branch.
[[gnu::always_inline]] inline int take_column(const float* x, const float* y, int limit, int i, float stop, float& mn, float& mx) {
#if defined(__SSE2__)
    const __m128 s = _mm_set1_ps(stop), up = _mm_set1_ps(INFINITY), down = _mm_set1_ps(-INFINITY);
    __m128 lo = up, hi = down;
    bool closed = false;
    while (i + 8 <= limit) {
        const __m128 k0 = _mm_cmplt_ps(_mm_loadu_ps(x + i), s), k1 = _mm_cmplt_ps(_mm_loadu_ps(x + i + 4), s);
        const __m128 y0 = _mm_loadu_ps(y + i), y1 = _mm_loadu_ps(y + i + 4);
        lo = _mm_min_ps(lo, _mm_min_ps(pick(k0, y0, up), pick(k1, y1, up)));
        hi = _mm_max_ps(hi, _mm_max_ps(pick(k0, y0, down), pick(k1, y1, down)));
        const int mask = _mm_movemask_ps(k0) | (_mm_movemask_ps(k1) << 4);
        if (mask != 0xFF) {
            i += __builtin_ctz(~static_cast<unsigned>(mask));  // X ascends: the points below come first
            closed = true;
            break;
        }
        i += 8;
    }
    mn = std::min(mn, lowest(lo)), mx = std::max(mx, highest(hi));
    if (closed) return i;
#endif
    for (; i < limit && x[i] < stop; ++i) mn = std::min(mn, y[i]), mx = std::max(mx, y[i]);
    return i;
}

// Points in ascending X, column by column. The points left and right of the frame are found
// by bisection and form one group each side; the order and values are checked a chunk at a
// time just ahead of the walk, which stays within the array whatever it finds. False when X
// does not ascend or a value is missing.
template <bool LOG>
[[gnu::always_inline]] inline bool walk_sorted(const CURVE_PIXELS& m, const float* x, const float* y, int n, WORK& k, int& inside) {
    const int w = m.Columns();
    const float* e = column_edges(m).data();
    float *pmin = k.pmin.data(), *pmax = k.pmax.data(), *mid = k.mid.data();
    auto Y = [y](int i) { return LOG ? lg(y[i]) : y[i]; };
    int checked = 0;  // points [0, checked) ascend and are numbers
    auto check_to = [&](int upto) {
        const int to = std::min(n, std::max(upto, checked + kCheckChunk));
        const int from = std::max(checked - 1, 0);
        if (!sorted_and_finite(x + from, y + from, to - from)) return false;
        checked = to;
        return true;
    };
    const int i0 = static_cast<int>(std::lower_bound(x, x + n, e[0]) - x);
    const int i1 = static_cast<int>(std::lower_bound(x + i0, x + n, e[w]) - x);
    if (!check_to(i0 + 1)) return false;
    int last = i0 - 1, last_c = -1;  // last point of the group before, and its column (-1: left of the frame)
    int i = i0, c = 0;
    for (; c < w && i < i1; ++c) {
        const float stop = e[c + 1];
        const int first = i;
        float mn = INFINITY, mx = -INFINITY;
        while (true) {
            i = take_column(x, y, checked, i, stop, mn, mx);
            if (i < checked || checked == n) break;
            if (!check_to(checked + 1)) return false;  // the column goes on past the points checked
        }
        if (i == first) {
            pmin[c] = INFINITY, pmax[c] = -INFINITY, mid[c] = NAN;
            continue;
        }
        if (LOG) mn = lg(mn), mx = lg(mx);
        float step = NAN;
        if (last >= 0) {
            const float a = Y(last), b = Y(first);
            // a step to the next column: each side takes its half of the rows between
            if (last_c >= 0 && last_c == c - 1) step = 0.5f * (a + b);
            else join_pixels(m, k, x[last], a, x[first], b);
        }
        pmin[c] = mn, pmax[c] = mx, mid[c] = step;
        last = i - 1, last_c = c;
    }
    for (; c < w; ++c) pmin[c] = INFINITY, pmax[c] = -INFINITY, mid[c] = NAN;
    if (checked < n && !check_to(n)) return false;
    if (i1 < n && last >= 0) join_pixels(m, k, x[last], Y(last), x[i1], Y(i1));
    inside = i1 - i0;
    return true;
}

// Any order of points, missing values skipped: per point its column, by bisection of the
// same edges, and the same joins as the walk.
int scan_points(const CURVE_PIXELS& m, const float* x, const float* y, int n, bool log, WORK& k) {
    const int w = m.Columns();
    const std::vector<float>& edges = column_edges(m);  // ascending when sx > 0
    k.Clear_Extremes();
    float *pmin = k.pmin.data(), *pmax = k.pmax.data(), *lmin = k.lmin.data(), *lmax = k.lmax.data();
    int inside = 0, prev_c = 0;
    bool have = false;
    float prev_x = 0, prev_y = 0;
    for (int i = 0; i < n; ++i) {
        if (!std::isfinite(x[i]) || !std::isfinite(y[i])) continue;  // the line joins across a missing value
        const int c = m.sx > 0 ? static_cast<int>(std::upper_bound(edges.begin(), edges.end(), x[i]) - edges.begin()) - 1
                               : std::clamp(row_of(m.ox - m.left + m.sx * x[i]), -1, w);
        const float v = log ? lg(y[i]) : y[i];
        const bool in = c >= 0 && c < w;
        if (in) {
            pmin[c] = std::min(pmin[c], v), pmax[c] = std::max(pmax[c], v);
            lmin[c] = std::min(lmin[c], v), lmax[c] = std::max(lmax[c], v);
            ++inside;
        }
        if (have && c != prev_c) {
            if (in && prev_c >= 0 && prev_c < w && (c == prev_c + 1 || c == prev_c - 1)) {
                const float mid = 0.5f * (prev_y + v);
                lmin[c] = std::min(lmin[c], mid), lmax[c] = std::max(lmax[c], mid);
                lmin[prev_c] = std::min(lmin[prev_c], mid), lmax[prev_c] = std::max(lmax[prev_c], mid);
            } else {
                join_pixels(m, k, prev_x, prev_y, x[i], v);
            }
        }
        have = true;
        prev_c = c, prev_x = x[i], prev_y = v;
    }
    return inside;
}

// The rows a marker of `radius` reaches, by horizontal distance from its centre; kept for the last radius.
const std::vector<float>& marker_reach(double radius) {
    thread_local std::vector<float> reach;
    thread_local double made = -1;
    if (radius == made) return reach;
    made = radius;
    reach.clear();
    for (int dx = 0; dx <= std::min(static_cast<int>(std::ceil(radius)), kPad); ++dx) {
        const double h2 = radius * radius - static_cast<double>(dx) * dx;
        if (h2 < 0) break;
        reach.push_back(std::floor(static_cast<float>(std::sqrt(h2) + 0.5)));
    }
    return reach;
}

// The line's extremes of the walk: each column's points and the steps into it and out of it.
[[gnu::always_inline]] inline void line_of_steps(int w, WORK& k) {
    const float *pmin = k.pmin.data(), *pmax = k.pmax.data(), *mid = k.mid.data();
    float *lmin = k.lmin.data(), *lmax = k.lmax.data();
    for (int c = 0; c < w; ++c) {
        // written so that a missing step (NaN) loses every comparison
        float lo = pmin[c], hi = pmax[c];
        lo = mid[c] < lo ? mid[c] : lo, lo = mid[c + 1] < lo ? mid[c + 1] : lo;
        hi = mid[c] > hi ? mid[c] : hi, hi = mid[c + 1] > hi ? mid[c + 1] : hi;
        lmin[c] = lo, lmax[c] = hi;
    }
}

// Row of a value: the floor of its pixel coordinate, bounded, in a form the compiler vectorises.
// In double, as the painter maps points: a value on a row's edge falls on the same side.
[[gnu::always_inline]] inline float row_float(double oy, double sy, float v) {
    double p = oy + sy * static_cast<double>(v);
    p = std::min(std::max(p, -1.0e7), 1.0e7);
    return static_cast<float>(static_cast<int>(p + 16777216.0) - 16777216);
}

// Rows of the points and of the line from the extremes, a whole row of columns at a time so
// that the compiler vectorises it. An empty column's extremes are infinite the wrong way round,
// and its rows become kFar above -kFar.
[[gnu::always_inline]] inline void rows_of_extremes(const CURVE_PIXELS& m, WORK& k) {
    const int w = m.Columns();
    const double oy = m.oy, sy = m.sy;
    // sy < 0: the highest value is the top row; a frame upside down swaps them
    const bool down = sy < 0;
    const float* ptop = down ? k.pmax.data() : k.pmin.data();
    const float* pbottom = down ? k.pmin.data() : k.pmax.data();
    const float* ltop_v = down ? k.lmax.data() : k.lmin.data();
    const float* lbottom_v = down ? k.lmin.data() : k.lmax.data();
    const float *slo = k.slo.data(), *shi = k.shi.data();
    float *plo = k.Plo(), *phi = k.Phi(), *ltop = k.ltop.data(), *lbottom = k.lbottom.data();
    for (int c = 0; c < w; ++c) plo[c] = row_float(oy, sy, ptop[c]), phi[c] = row_float(oy, sy, pbottom[c]);
    for (int c = 0; c < w; ++c) {
        ltop[c] = std::min(row_float(oy, sy, ltop_v[c]), slo[c]);
        lbottom[c] = std::max(row_float(oy, sy, lbottom_v[c]), shi[c]);
    }
}

// Runs clipped to the frame's rows, into 16 bits.
[[gnu::always_inline]] inline void store_rows(const CURVE_PIXELS& m, const float* top, const float* bottom, COLUMN_ROWS& out) {
    const int w = m.Columns();
    out.top.resize(static_cast<std::size_t>(w)), out.bottom.resize(static_cast<std::size_t>(w));
    std::int16_t *t = out.top.data(), *b = out.bottom.data();
    const float mt = static_cast<float>(m.top), mb = static_cast<float>(m.bottom);
    for (int c = 0; c < w; ++c) {
        const float a = std::max(top[c], mt), z = std::min(bottom[c], mb);
        const bool empty = a > z;
        t[c] = static_cast<std::int16_t>(empty ? 32767.0f : a);
        b[c] = static_cast<std::int16_t>(empty ? -32768.0f : z);
    }
}

// Pixel centres in data units, kept while the frame's mapping stays.
struct CENTRES {
    std::vector<float> v;
    double scale = 0, offset = 0;
    int first = 0, last = -1;
    bool ready = false;
    const std::vector<float>& Of(double s, double o, int from, int to) {
        if (ready && s == scale && o == offset && from == first && to == last) return v;
        v.resize(static_cast<std::size_t>(std::max(to - from + 1, 0)));
        for (int k = from; k <= to; ++k) v[static_cast<std::size_t>(k - from)] = static_cast<float>((k + 0.5 - o) / s);
        scale = s, offset = o, first = from, last = to, ready = true;
        return v;
    }
};

void spans_of_rows(const CURVE_PIXELS& m, const COLUMN_ROWS& rows, COLUMN_SPANS& out) {
    out.Clear();
    const std::vector<float>& cx = Column_Centres(m);
    const float* cy = Row_Centres(m).data() - m.top;
    for (int c = 0; c < rows.Columns(); ++c) {
        const int t = rows.top[static_cast<std::size_t>(c)], b = rows.bottom[static_cast<std::size_t>(c)];
        if (t > b) continue;
        out.x.push_back(cx[static_cast<std::size_t>(c)]), out.low.push_back(cy[b]), out.high.push_back(cy[t]);
    }
}

}  // namespace

const std::vector<float>& Column_Centres(const CURVE_PIXELS& m) {
    thread_local CENTRES c;
    return c.Of(m.sx, m.ox, m.left, m.right);
}

const std::vector<float>& Row_Centres(const CURVE_PIXELS& m) {
    thread_local CENTRES c;
    return c.Of(m.sy, m.oy, m.top, m.bottom);
}

namespace {

// The processors with wider vectors get their own copy of the reduction, chosen when the
// program loads: its column passes then take eight columns at a time.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && !defined(__SANITIZE_ADDRESS__)
#define ZD_WIDE_VECTORS __attribute__((target_clones("avx2", "default")))
#else
#define ZD_WIDE_VECTORS
#endif

ZD_WIDE_VECTORS
int reduce_rows(const CURVE_PIXELS& m, const float* x, const float* y, int n, bool log, double radius,
                COLUMN_ROWS* line, COLUMN_ROWS* band, bool joined) {
    thread_local WORK k;
    const int w = m.Columns();
    k.Reset(w);
    int inside = 0;
    const bool walked = m.sx > 0 && (log ? walk_sorted<true>(m, x, y, n, k, inside) : walk_sorted<false>(m, x, y, n, k, inside));
    if (walked) {
        line_of_steps(w, k);
    } else {
        k.Reset(w);
        inside = scan_points(m, x, y, n, log, k);
    }
    rows_of_extremes(m, k);
    if (joined && !band) joined = false;
    if (band) {
        // the union of the markers of each column and of its neighbours within reach, a whole
        // row of columns at a time so that the compiler can vectorise it
        const float *plo = k.Plo(), *phi = k.Phi();
        float *btop = k.btop.data(), *bbottom = k.bbottom.data();
        const std::vector<float>& reach = marker_reach(std::max(radius, 0.5));
        const float h0 = reach[0];
        const int d = static_cast<int>(reach.size()) - 1;
        for (int c = 0; c < w; ++c) btop[c] = plo[c] - h0, bbottom[c] = phi[c] + h0;
        for (int j = 1; j <= d; ++j) {
            const float h = reach[static_cast<std::size_t>(j)];
            const float *la = plo - j, *lb = plo + j, *ha = phi - j, *hb = phi + j;
            for (int c = 0; c < w; ++c) {
                btop[c] = std::min(btop[c], std::min(la[c], lb[c]) - h);
                bbottom[c] = std::max(bbottom[c], std::max(ha[c], hb[c]) + h);
            }
        }
        // empty columns came nearer by the reach, but stay far beyond the frame
        if (joined) {
            for (int c = 0; c < w; ++c)
                btop[c] = std::min(btop[c], k.ltop[static_cast<std::size_t>(c)]),
                bbottom[c] = std::max(bbottom[c], k.lbottom[static_cast<std::size_t>(c)]);
        }
        store_rows(m, btop, bbottom, *band);
    }
    if (line && !joined) store_rows(m, k.ltop.data(), k.lbottom.data(), *line);
    return inside;
}

}  // namespace

int Reduce_Curve_Rows(const CURVE_PIXELS& m, const float* x, const float* y, int n, bool log, double radius,
                      COLUMN_ROWS* line, COLUMN_ROWS* band, bool joined) {
    if (line) line->top.clear(), line->bottom.clear();
    if (band) band->top.clear(), band->bottom.clear();
    if (!m.Rows_Fit() || !x || !y || n < 1) return 0;
    return reduce_rows(m, x, y, n, log, radius, line, band, joined);
}

void Reduce_Error_Bars_Rows(const CURVE_PIXELS& m, const float* x, const float* low, const float* high, int n,
                            COLUMN_ROWS& bars) {
    bars.top.clear(), bars.bottom.clear();
    if (!m.Rows_Fit() || !x || !low || !high || n < 1) return;
    thread_local WORK k;
    k.Reset(m.Columns());
    float *lo = k.slo.data(), *hi = k.shi.data();
    for (int i = 0; i < n; ++i) {
        if (!std::isfinite(x[i]) || !std::isfinite(low[i]) || !std::isfinite(high[i])) continue;
        const double px = m.ox + m.sx * static_cast<double>(x[i]);
        if (!(px >= m.left && px < m.right + 1)) continue;
        const float a = static_cast<float>(row_of(m.oy + m.sy * low[i]));
        const float b = static_cast<float>(row_of(m.oy + m.sy * high[i]));
        const int c = static_cast<int>(std::floor(px)) - m.left;
        lo[c] = std::min({lo[c], a, b}), hi[c] = std::max({hi[c], a, b});
    }
    store_rows(m, lo, hi, bars);
}

int Reduce_Curve(const CURVE_PIXELS& m, const float* x, const float* y, int n, bool log, double radius,
                 COLUMN_SPANS* line, COLUMN_SPANS* band, bool joined) {
    thread_local COLUMN_ROWS line_rows, band_rows;
    const int inside = Reduce_Curve_Rows(m, x, y, n, log, radius, line ? &line_rows : nullptr,
                                         band ? &band_rows : nullptr, joined);
    if (line) spans_of_rows(m, line_rows, *line);
    if (band) spans_of_rows(m, band_rows, *band);
    return inside;
}

}  // namespace zendrite
