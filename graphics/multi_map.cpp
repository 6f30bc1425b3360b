#include "graphics/multi_map.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace hxl {

namespace {

constexpr float kEmpty = std::numeric_limits<float>::quiet_NaN();

// Lowest and highest finite X of a row and how many finite X it has.
int finite_extent(const MAP_ROW_TYPE& r, double& lo, double& hi) {
    int count = 0;
    for (int i = 0; i < r.n; ++i) {
        const double x = r.x[i];
        if (!std::isfinite(x)) continue;
        if (count++ == 0) lo = hi = x;
        lo = std::min(lo, x);
        hi = std::max(hi, x);
    }
    return count;
}

// The row's points in rising X: the given order, reversed, or sorted when neither.
std::vector<int> rising_order(const MAP_ROW_TYPE& r) {
    std::vector<int> idx;
    idx.reserve(static_cast<std::size_t>(r.n));
    for (int i = 0; i < r.n; ++i)
        if (std::isfinite(r.x[i])) idx.push_back(i);
    bool up = true, down = true;
    for (std::size_t k = 1; k < idx.size(); ++k) {
        up = up && r.x[idx[k]] >= r.x[idx[k - 1]];
        down = down && r.x[idx[k]] <= r.x[idx[k - 1]];
    }
    if (!up && down) std::reverse(idx.begin(), idx.end());
    else if (!up) std::stable_sort(idx.begin(), idx.end(), [&](int a, int b) { return r.x[a] < r.x[b]; });
    return idx;
}

// Sums of the interpolation over each cell and the covered lengths, accumulated in double:
// a cell may gather thousands of short segments.
void fill_row(const MAP_ROW_TYPE& r, const MULTI_MAP_TYPE& m, std::vector<double>& sum, std::vector<double>& len,
              float* out) {
    double first = 0, last = 0;
    const int count = finite_extent(r, first, last);
    std::fill(out, out + m.ncols, kEmpty);
    if (count == 0) return;
    if (count == 1) {
        for (int i = 0; i < r.n; ++i) {
            if (!std::isfinite(r.x[i]) || !std::isfinite(r.y[i])) continue;
            if (r.x[i] < m.xlo || r.x[i] > m.xhi) continue;
            const int j = std::clamp(static_cast<int>(std::floor((r.x[i] - m.xlo) / m.step)), 0, m.ncols - 1);
            out[j] = r.y[i];
        }
        return;
    }
    std::fill(sum.begin(), sum.end(), 0.0);
    std::fill(len.begin(), len.end(), 0.0);
    const std::vector<int> idx = rising_order(r);
    for (std::size_t k = 1; k < idx.size(); ++k) {
        const double xa = r.x[idx[k - 1]], xb = r.x[idx[k]];
        const double ya = r.y[idx[k - 1]], yb = r.y[idx[k]];
        if (!(xb > xa) || !std::isfinite(ya) || !std::isfinite(yb)) continue;
        if (xb <= m.xlo || xa >= m.xhi) continue;
        const double slope = (yb - ya) / (xb - xa);
        const double a = std::max(xa, m.xlo), b = std::min(xb, m.xhi);
        const int j0 = std::clamp(static_cast<int>(std::floor((a - m.xlo) / m.step)), 0, m.ncols - 1);
        const int j1 = std::clamp(static_cast<int>(std::floor((b - m.xlo) / m.step)), 0, m.ncols - 1);
        for (int j = j0; j <= j1; ++j) {
            const double cl = std::max(a, m.xlo + j * m.step), cr = std::min(b, m.xlo + (j + 1) * m.step);
            if (!(cr > cl)) continue;
            // the mean of a straight piece is its value at the middle
            sum[static_cast<std::size_t>(j)] += (cr - cl) * (ya + slope * (0.5 * (cl + cr) - xa));
            len[static_cast<std::size_t>(j)] += cr - cl;
        }
    }
    for (int j = 0; j < m.ncols; ++j) {
        const double c = m.xlo + (j + 0.5) * m.step;
        if (c < first || c > last || !(len[static_cast<std::size_t>(j)] > 0)) continue;
        out[j] = static_cast<float>(sum[static_cast<std::size_t>(j)] / len[static_cast<std::size_t>(j)]);
    }
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

int Map_Columns(const std::vector<MAP_ROW_TYPE>& rows, double xlo, double xhi, int max_cols) {
    max_cols = std::max(max_cols, 1);
    double finest = 0;
    for (const MAP_ROW_TYPE& r : rows) {
        double lo = 0, hi = 0;
        const int count = finite_extent(r, lo, hi);
        if (count < 2 || !(hi > lo)) continue;
        const double step = (hi - lo) / (count - 1);
        if (finest == 0 || step < finest) finest = step;
    }
    if (!(finest > 0) || !(xhi > xlo)) return max_cols;
    const double cells = std::ceil((xhi - xlo) / finest - 1e-9);
    return static_cast<int>(std::clamp(cells, 1.0, static_cast<double>(max_cols)));
}

void Build_Multi_Map(const std::vector<MAP_ROW_TYPE>& rows, double xlo, double xhi, int max_cols,
                     MULTI_MAP_TYPE& map) {
    if (!(xhi > xlo)) {
        const double pad = std::max(0.5, 0.05 * std::fabs(xlo));
        xlo -= pad;
        xhi += pad;
    }
    map.nrows = static_cast<int>(rows.size());
    map.ncols = Map_Columns(rows, xlo, xhi, max_cols);
    map.xlo = xlo;
    map.xhi = xhi;
    map.step = (xhi - xlo) / map.ncols;
    map.z.assign(static_cast<std::size_t>(map.nrows) * map.ncols, kEmpty);
    std::vector<double> sum(static_cast<std::size_t>(map.ncols)), len(static_cast<std::size_t>(map.ncols));
    for (int i = 0; i < map.nrows; ++i)
        fill_row(rows[static_cast<std::size_t>(i)], map, sum, len, map.z.data() + static_cast<std::size_t>(i) * map.ncols);
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
