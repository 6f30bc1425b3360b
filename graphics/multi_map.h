#pragma once
// Many patterns as one map: rows are patterns, columns a common X grid. No window system,
// no store: the views of many patterns build on these routines.
#include <string>
#include <vector>

namespace hxl {

// One pattern as the map sees it; the arrays are not owned.
struct MAP_ROW_TYPE {
    const float* x = nullptr;
    const float* y = nullptr;
    int n = 0;
};

// Rows by columns of cells, row-major; NaN marks an empty cell (outside the row's range,
// or no finite intensity there). Cell j (from 1) covers [xlo + (j-1)*step, xlo + j*step].
struct MULTI_MAP_TYPE {
    int nrows = 0, ncols = 0;
    double xlo = 0, xhi = 0, step = 0;
    std::vector<float> z;
    float At(int row, int col) const { return z[static_cast<std::size_t>(row - 1) * ncols + (col - 1)]; }
    double Centre(int col) const { return xlo + (col - 0.5) * step; }
};

// Number of columns of the grid over [xlo, xhi]: the range at the finest mean step of the
// rows, at most `max_cols`, at least 1. Rows of fewer than two points give no step.
int Map_Columns(const std::vector<MAP_ROW_TYPE>& rows, double xlo, double xhi, int max_cols);

// Lowest and highest X of the rows together; false when no row has a finite X.
bool Map_X_Range(const std::vector<MAP_ROW_TYPE>& rows, double& xlo, double& xhi);

// The map over [xlo, xhi]. A cell takes the mean of the row's linear interpolation over the
// part of the cell that the row covers, when the cell's centre lies within the row's range
// (no extrapolation); a row of one point fills the one cell that holds it. Rows may run in
// falling X; segments with a non-finite end are skipped.
void Build_Multi_Map(const std::vector<MAP_ROW_TYPE>& rows, double xlo, double xhi, int max_cols,
                     MULTI_MAP_TYPE& map);

// Smallest and largest finite cell, and the smallest cell above zero (for a log scale);
// false when the map has no finite cell. `lowest_positive` is 0 when no cell is above zero.
bool Map_Z_Range(const MULTI_MAP_TYPE& map, float& zmin, float& zmax, float& lowest_positive);

// Where each row lies on the Y axis: its value and the band it fills, between the midpoints
// to its neighbours (half a unit each side for a single row). Values must rise or fall
// strictly; false otherwise.
bool Row_Bands(const std::vector<double>& values, std::vector<double>& low, std::vector<double>& high);

// The map resampled to a picture of width x height pixels showing X [x1, x2] and Y [y1, y2]
// (Y upwards; the first picture row is the top). A pixel takes the overlap-weighted mean of
// the finite cells under it: more rows than pixels are averaged, fewer are repeated. NaN
// where nothing finite lies under the pixel.
void Map_Raster(const MULTI_MAP_TYPE& map, const std::vector<double>& row_low, const std::vector<double>& row_high,
                double x1, double x2, double y1, double y2, int width, int height, std::vector<float>& out);

// The iso-line of `level` through a picture of values (width x height, first row the top,
// NaN empty), as segments: points 2k and 2k+1 of x, y join, in pixel units with the centre
// of pixel (i, j) at (i + 0.5, j + 0.5). Squares with an empty corner give none.
void Iso_Segments(const std::vector<float>& grid, int width, int height, double level, std::vector<float>& x,
                  std::vector<float>& y);

// Colour scales: 1 viridis, 2 grey (black low, white high).
inline constexpr int kScaleViridis = 1, kScaleGrey = 2;
// Colour of the fraction t (0..1, clamped) as 0xRRGGBB.
unsigned Scale_Colour(int scale, double t);

// Where an intensity falls on the colour scale, 0..1. In log the scale runs over log10 of
// [lo, hi] (lo > 0); zero and negative intensities take the lowest colour. NaN stays NaN.
double Scale_Fraction(double value, double lo, double hi, bool log);

}  // namespace hxl
