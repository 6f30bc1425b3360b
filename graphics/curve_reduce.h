#pragma once
// A curve reduced, per pixel column of the frame, to what the pixels can show:
// the rows its line passes through and the band its markers paint.
#include <cstdint>
#include <vector>

namespace zendrite {

// Data units -> pixels of the frame's picture; rows grow downwards.
struct CURVE_PIXELS {
    double sx = 1, ox = 0, sy = -1, oy = 0;
    int left = 0, right = -1, top = 0, bottom = -1;  // the frame, inclusive
    int Columns() const { return right - left + 1; }
    bool Valid() const { return right >= left && bottom >= top; }
    // Rows fit the 16 bits of COLUMN_ROWS.
    bool Rows_Fit() const { return Valid() && top > -32000 && bottom < 32000; }
};

// Vertical runs of pixels, one entry a column at most, in data units at pixel centres.
struct COLUMN_SPANS {
    std::vector<float> x, low, high;
    void Clear() { x.clear(), low.clear(), high.clear(); }
    int Count() const { return static_cast<int>(x.size()); }
};

// One run of rows a column of the frame, from the left; top > bottom where a column has none.
struct COLUMN_ROWS {
    std::vector<std::int16_t> top, bottom;
    int Columns() const { return static_cast<int>(top.size()); }
};

// The line through the points (log: Y drawn as its logarithm) as column runs, and the
// band that markers of `radius` pixels paint; with `joined`, one run a column stands for
// both (the line lies within the band in the same colour) and goes to `band`. Returns the
// number of points inside the frame: with fewer than the frame has columns the curve is
// sparse, and drawing each marker and segment shows more than the runs do.
// Needs m.Rows_Fit().
int Reduce_Curve_Rows(const CURVE_PIXELS& m, const float* x, const float* y, int n, bool log, double radius,
                      COLUMN_ROWS* line, COLUMN_ROWS* band, bool joined = false);
// Error bars from low to high, joined per column.
void Reduce_Error_Bars_Rows(const CURVE_PIXELS& m, const float* x, const float* low, const float* high, int n,
                            COLUMN_ROWS& bars);

// The same, as runs in data units.
int Reduce_Curve(const CURVE_PIXELS& m, const float* x, const float* y, int n, bool log, double radius,
                 COLUMN_SPANS* line, COLUMN_SPANS* band, bool joined = false);

// Data units of the centres of the frame's columns (from its left) and rows (from its top).
const std::vector<float>& Column_Centres(const CURVE_PIXELS& m);
const std::vector<float>& Row_Centres(const CURVE_PIXELS& m);

}  // namespace zendrite
