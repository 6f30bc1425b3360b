#include "graphics/multi_map.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace hxl {

namespace {

constexpr float kEmpty = std::numeric_limits<float>::quiet_NaN();

// What one pass over a row tells: its finite X, their extent and their order.
struct ROW_FACTS {
    int count = 0;           // finite X
    double lo = 0, hi = 0;
    bool rising = true, falling = true;  // over the finite X, in the given order
    bool all_finite = true;
    bool y_finite = true;    // every intensity is a number
    bool trusted = false;    // from the ends alone: see trusted()
};

bool finite(float v) { return v - v == 0.0f; }  // false for NaN and the infinities

ROW_FACTS facts(const MAP_ROW_TYPE& r) {
    ROW_FACTS f;
    if (r.n <= 0) return f;
    // the usual row first: loops without branches over numbers in rising order
    int bad_x = 0, bad_y = 0, falls = 0;
    for (int i = 0; i < r.n; ++i) bad_x += finite(r.x[i]) ? 0 : 1;
    for (int i = 0; i < r.n; ++i) bad_y += finite(r.y[i]) ? 0 : 1;
    f.y_finite = bad_y == 0;
    if (bad_x == 0) {
        for (int i = 1; i < r.n; ++i) falls += r.x[i] < r.x[i - 1] ? 1 : 0;
        if (falls == 0) {
            f.count = r.n;
            f.lo = r.x[0];
            f.hi = r.x[r.n - 1];
            return f;
        }
    }
    double last = 0;
    for (int i = 0; i < r.n; ++i) {
        const double x = r.x[i];
        if (!std::isfinite(x)) {
            f.all_finite = false;
            continue;
        }
        if (f.count++ == 0) {
            f.lo = f.hi = last = x;
            continue;
        }
        f.rising = f.rising && x >= last;
        f.falling = f.falling && x <= last;
        f.lo = std::min(f.lo, x);
        f.hi = std::max(f.hi, x);
        last = x;
    }
    return f;
}

int finite_extent(const MAP_ROW_TYPE& r, double& lo, double& hi) {
    int count = 0;
    float l = 0, h = 0;
    for (int i = 0; i < r.n; ++i) {
        const float x = r.x[i];
        if (!finite(x)) continue;
        l = count == 0 ? x : std::min(l, x);
        h = count == 0 ? x : std::max(h, x);
        ++count;
    }
    lo = l, hi = h;
    return count;
}

// The row's points in rising X when they are not already: reversed, or sorted.
std::vector<int> rising_order(const MAP_ROW_TYPE& r, const ROW_FACTS& f) {
    std::vector<int> idx;
    idx.reserve(static_cast<std::size_t>(f.count));
    for (int i = 0; i < r.n; ++i)
        if (std::isfinite(r.x[i])) idx.push_back(i);
    if (f.falling) std::reverse(idx.begin(), idx.end());
    else std::stable_sort(idx.begin(), idx.end(), [&](int a, int b) { return r.x[a] < r.x[b]; });
    return idx;
}

// Each cell takes the integral of the interpolation over it divided by the length it
// covers. Both are running sums from the first point, read at the cell edges in one walk
// along the points; sums in double, as thousands of pieces add up before a difference.
// Facts taken on trust from the ends of the row, as nearly every row is numbers in rising X;
// fill_row checks them on its way along the row.
ROW_FACTS trusted(const MAP_ROW_TYPE& r) {
    if (r.n < 2 || !finite(r.x[0]) || !finite(r.x[r.n - 1]) || !(r.x[r.n - 1] > r.x[0]) || !finite(r.y[0])) return facts(r);
    ROW_FACTS f;
    f.count = r.n;
    f.lo = r.x[0];
    f.hi = r.x[r.n - 1];
    f.trusted = true;
    return f;
}

// False when facts taken on trust turn out wrong: the row is then to be read again.
bool fill_row(const MAP_ROW_TYPE& r, const ROW_FACTS& f, const MULTI_MAP_TYPE& m, float* out) {
    std::fill(out, out + m.ncols, kEmpty);
    if (f.count == 0) return true;
    if (f.count == 1) {
        for (int i = 0; i < r.n; ++i) {
            if (!std::isfinite(r.x[i]) || !std::isfinite(r.y[i])) continue;
            if (r.x[i] < m.xlo || r.x[i] > m.xhi) continue;
            const int j = std::clamp(static_cast<int>(std::floor((r.x[i] - m.xlo) / m.step)), 0, m.ncols - 1);
            out[j] = r.y[i];
        }
        return true;
    }
    std::vector<int> idx;
    const bool direct = f.all_finite && f.rising;
    if (!direct) idx = rising_order(r, f);
    const int n = direct ? r.n : static_cast<int>(idx.size());
    auto at = [&](int k) { return direct ? k : idx[static_cast<std::size_t>(k)]; };
    int p = 0;  // the piece from point p to p+1 holds the edge being read
    double area = 0, covered = 0;  // from the first point to point p
    // the common row: numbers throughout, in rising X; every piece counts, so the covered
    // length is the distance from the first point
    const bool plain = direct && f.y_finite;
    bool broken = false;
    const float* px = r.x;
    const float* py = r.y;
    auto read_plain = [&](double x, double& a, double& c) {
        // the few pieces inside one cell are summed in float: the difference of two near
        // floats is exact, and the running total over the row stays in double
        float part = 0;
        bool bad = false;
        while (p + 1 < n && px[p + 1] <= x) {
            const float dx = px[p + 1] - px[p];
            bad |= !(dx >= 0.0f) | !finite(py[p + 1]);
            part += dx * (py[p] + py[p + 1]);
            ++p;
        }
        area += 0.5 * part;
        broken |= bad;
        a = area, c = static_cast<double>(px[p]) - px[0];
        if (p + 1 >= n || !(x > px[p]) || !(px[p + 1] > px[p])) return;
        const double t = x - px[p];
        a += 0.5 * t * (2.0 * py[p] + (static_cast<double>(py[p + 1]) - py[p]) * t / (static_cast<double>(px[p + 1]) - px[p]));
        c += t;
    };
    auto read_any = [&](double x, double& a, double& c) {
        while (p + 1 < n && r.x[at(p + 1)] <= x) {
            const double xa = r.x[at(p)], xb = r.x[at(p + 1)], ya = r.y[at(p)], yb = r.y[at(p + 1)];
            if (xb > xa && std::isfinite(ya) && std::isfinite(yb)) area += 0.5 * (xb - xa) * (ya + yb), covered += xb - xa;
            ++p;
        }
        a = area, c = covered;
        if (p + 1 >= n) return;
        const double xa = r.x[at(p)], xb = r.x[at(p + 1)], ya = r.y[at(p)], yb = r.y[at(p + 1)];
        if (!(x > xa) || !(xb > xa) || !std::isfinite(ya) || !std::isfinite(yb)) return;
        const double t = x - xa;
        a += 0.5 * t * (2 * ya + (yb - ya) * t / (xb - xa));
        c += t;
    };
    auto read = [&](double x, double& a, double& c) {
        if (plain) read_plain(x, a, c);
        else read_any(x, a, c);
    };
    double a0 = 0, c0 = 0;
    read(m.xlo, a0, c0);
    for (int j = 0; j < m.ncols; ++j) {
        double a1 = 0, c1 = 0;
        read(m.xlo + (j + 1) * m.step, a1, c1);
        const double centre = m.xlo + (j + 0.5) * m.step;
        if (centre >= f.lo && centre <= f.hi && c1 - c0 > 0) out[j] = static_cast<float>((a1 - a0) / (c1 - c0));
        a0 = a1, c0 = c1;
    }
    if (!f.trusted) return true;
    for (int i = p + 1; i < n; ++i) broken |= !(px[i] >= px[i - 1]) | !finite(py[i]);
    return !broken;
}

// For each of `pixels` equal pieces of [p1, p2], the (index, overlap) of the intervals
// [low(i), high(i)] that meet it.
void overlaps(const std::vector<double>& low, const std::vector<double>& high, double p1, double p2, int pixels,
              std::vector<std::vector<std::pair<int, double>>>& out) {
    out.assign(static_cast<std::size_t>(pixels), {});
    const double w = (p2 - p1) / pixels;
    if (!(w > 0)) return;
    for (std::size_t i = 0; i < low.size(); ++i) {
        const double a = std::min(low[i], high[i]), b = std::max(low[i], high[i]);
        if (b <= p1 || a >= p2) continue;
        const int k0 = std::clamp(static_cast<int>(std::floor((a - p1) / w)), 0, pixels - 1);
        const int k1 = std::clamp(static_cast<int>(std::floor((b - p1) / w)), 0, pixels - 1);
        for (int k = k0; k <= k1; ++k) {
            const double o = std::min(b, p1 + (k + 1) * w) - std::max(a, p1 + k * w);
            if (o > 0) out[static_cast<std::size_t>(k)].emplace_back(static_cast<int>(i), o);
        }
    }
}

}  // namespace

bool Map_X_Range(const std::vector<MAP_ROW_TYPE>& rows, double& xlo, double& xhi) {
    bool any = false;
    for (const MAP_ROW_TYPE& r : rows) {
        double lo = 0, hi = 0;
        if (finite_extent(r, lo, hi) == 0) continue;
        xlo = any ? std::min(xlo, lo) : lo;
        xhi = any ? std::max(xhi, hi) : hi;
        any = true;
    }
    return any;
}

namespace {
int columns(const std::vector<ROW_FACTS>& all, double xlo, double xhi, int max_cols) {
    max_cols = std::max(max_cols, 1);
    double finest = 0;
    for (const ROW_FACTS& f : all) {
        if (f.count < 2 || !(f.hi > f.lo)) continue;
        const double step = (f.hi - f.lo) / (f.count - 1);
        if (finest == 0 || step < finest) finest = step;
    }
    if (!(finest > 0) || !(xhi > xlo)) return max_cols;
    const double cells = std::ceil((xhi - xlo) / finest - 1e-9);
    return static_cast<int>(std::clamp(cells, 1.0, static_cast<double>(max_cols)));
}
}  // namespace

int Map_Columns(const std::vector<MAP_ROW_TYPE>& rows, double xlo, double xhi, int max_cols) {
    std::vector<ROW_FACTS> all;
    for (const MAP_ROW_TYPE& r : rows) all.push_back(facts(r));
    return columns(all, xlo, xhi, max_cols);
}

void Build_Multi_Map(const std::vector<MAP_ROW_TYPE>& rows, double xlo, double xhi, int max_cols,
                     MULTI_MAP_TYPE& map) {
    if (!(xhi > xlo)) {
        const double pad = std::max(0.5, 0.05 * std::fabs(xlo));
        xlo -= pad;
        xhi += pad;
    }
    map.nrows = static_cast<int>(rows.size());
    std::vector<ROW_FACTS> all;
    all.reserve(rows.size());
    for (const MAP_ROW_TYPE& r : rows) all.push_back(trusted(r));
    // a row that broke the trust may change the grid: then every row is read with its true facts
    for (int pass = 0; pass < 2; ++pass) {
        map.ncols = columns(all, xlo, xhi, max_cols);
        map.xlo = xlo;
        map.xhi = xhi;
        map.step = (xhi - xlo) / map.ncols;
        map.z.assign(static_cast<std::size_t>(map.nrows) * map.ncols, kEmpty);
        bool held = true;
        for (int i = 0; i < map.nrows && held; ++i)
            held = fill_row(rows[static_cast<std::size_t>(i)], all[static_cast<std::size_t>(i)], map,
                            map.z.data() + static_cast<std::size_t>(i) * map.ncols);
        if (held) return;
        for (std::size_t i = 0; i < rows.size(); ++i) all[i] = facts(rows[i]);
    }
}

bool Map_Z_Range(const MULTI_MAP_TYPE& map, float& zmin, float& zmax, float& lowest_positive) {
    bool any = false;
    lowest_positive = 0;
    for (float v : map.z) {
        if (!std::isfinite(v)) continue;
        zmin = any ? std::min(zmin, v) : v;
        zmax = any ? std::max(zmax, v) : v;
        any = true;
        if (v > 0 && (lowest_positive == 0 || v < lowest_positive)) lowest_positive = v;
    }
    return any;
}

bool Row_Bands(const std::vector<double>& values, std::vector<double>& low, std::vector<double>& high) {
    const std::size_t n = values.size();
    low.assign(n, 0);
    high.assign(n, 0);
    if (n == 0) return true;
    for (double v : values)
        if (!std::isfinite(v)) return false;
    if (n == 1) {
        low[0] = values[0] - 0.5, high[0] = values[0] + 0.5;
        return true;
    }
    const double dir = values[1] > values[0] ? 1 : -1;
    for (std::size_t i = 1; i < n; ++i)
        if (!((values[i] - values[i - 1]) * dir > 0)) return false;
    for (std::size_t i = 0; i < n; ++i) {
        const double before = i > 0 ? 0.5 * (values[i] + values[i - 1]) : values[0] - 0.5 * (values[1] - values[0]);
        const double after =
            i + 1 < n ? 0.5 * (values[i] + values[i + 1]) : values[n - 1] + 0.5 * (values[n - 1] - values[n - 2]);
        low[i] = std::min(before, after);
        high[i] = std::max(before, after);
    }
    return true;
}

void Map_Raster(const MULTI_MAP_TYPE& map, const std::vector<double>& row_low, const std::vector<double>& row_high,
                double x1, double x2, double y1, double y2, int width, int height, std::vector<float>& out) {
    width = std::max(width, 1);
    height = std::max(height, 1);
    out.assign(static_cast<std::size_t>(width) * height, kEmpty);
    if (map.nrows == 0 || map.ncols == 0 || row_low.size() != static_cast<std::size_t>(map.nrows)) return;
    std::vector<double> cl(static_cast<std::size_t>(map.ncols)), cr(static_cast<std::size_t>(map.ncols));
    for (int j = 0; j < map.ncols; ++j) {
        cl[static_cast<std::size_t>(j)] = map.xlo + j * map.step;
        cr[static_cast<std::size_t>(j)] = map.xlo + (j + 1) * map.step;
    }
    std::vector<std::vector<std::pair<int, double>>> cols, rows;
    overlaps(cl, cr, x1, x2, width, cols);
    overlaps(row_low, row_high, y1, y2, height, rows);
    for (int py = 0; py < height; ++py) {
        const auto& rw = rows[static_cast<std::size_t>(height - 1 - py)];  // the first picture row is the top
        if (rw.empty()) continue;
        float* line = out.data() + static_cast<std::size_t>(py) * width;
        for (int px = 0; px < width; ++px) {
            const auto& cw = cols[static_cast<std::size_t>(px)];
            double s = 0, w = 0;
            for (const auto& [r, wr] : rw) {
                const float* zr = map.z.data() + static_cast<std::size_t>(r) * map.ncols;
                for (const auto& [c, wc] : cw) {
                    const float v = zr[c];
                    if (!std::isfinite(v)) continue;
                    s += wr * wc * v;
                    w += wr * wc;
                }
            }
            if (w > 0) line[px] = static_cast<float>(s / w);
        }
    }
}

void Iso_Segments(const std::vector<float>& grid, int width, int height, double level, std::vector<float>& x,
                  std::vector<float>& y) {
    x.clear();
    y.clear();
    if (width < 2 || height < 2 || grid.size() < static_cast<std::size_t>(width) * height) return;
    auto v = [&](int i, int j) { return static_cast<double>(grid[static_cast<std::size_t>(j) * width + i]); };
    for (int j = 0; j + 1 < height; ++j)
        for (int i = 0; i + 1 < width; ++i) {
            // corners in turn round the square: its edges top, right, bottom, left
            const int ci[4] = {i, i + 1, i + 1, i}, cj[4] = {j, j, j + 1, j + 1};
            double c[4];
            bool empty = false;
            for (int k = 0; k < 4; ++k) {
                c[k] = v(ci[k], cj[k]);
                empty = empty || !std::isfinite(c[k]);
            }
            if (empty) continue;
            float px[4], py[4];
            int n = 0;
            for (int k = 0; k < 4; ++k) {
                const int l = (k + 1) % 4;
                if ((c[k] < level) == (c[l] < level)) continue;
                const double t = (level - c[k]) / (c[l] - c[k]);
                px[n] = static_cast<float>(ci[k] + 0.5 + t * (ci[l] - ci[k]));
                py[n] = static_cast<float>(cj[k] + 0.5 + t * (cj[l] - cj[k]));
                ++n;
            }
            for (int k = 0; k + 1 < n; k += 2) {
                x.push_back(px[k]), y.push_back(py[k]);
                x.push_back(px[k + 1]), y.push_back(py[k + 1]);
            }
        }
}

double Scale_Fraction(double value, double lo, double hi, bool log) {
    if (std::isnan(value)) return value;
    if (log) {
        if (!(value > 0) || !(lo > 0)) return 0;
        value = std::log10(value);
        lo = std::log10(lo);
        hi = hi > 0 ? std::log10(hi) : lo;
    }
    if (!(hi > lo)) return 0.5;
    return std::clamp((value - lo) / (hi - lo), 0.0, 1.0);
}

}  // namespace hxl

namespace hxl {

unsigned Scale_Colour(int scale, double t) {
    static constexpr unsigned kViridis[256] = {
#include "graphics/viridis_table.inc"
    };
    t = std::isfinite(t) ? std::clamp(t, 0.0, 1.0) : 0.0;
    if (scale == kScaleGrey) {
        const unsigned v = static_cast<unsigned>(std::lround(t * 255));
        return v << 16 | v << 8 | v;
    }
    return kViridis[static_cast<std::size_t>(std::lround(t * 255))];
}

}  // namespace hxl
