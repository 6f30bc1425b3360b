// The map of many patterns, its picture, the colour scales and the 3D projection with its
// hidden lines, against values worked by hand (the integrals of straight pieces, the
// midpoints of row values) and the published ends and middle of the viridis scale.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "graphics/multi_map.h"
#include "graphics/multi_project.h"

namespace {
using namespace hxl;

MAP_ROW_TYPE row(const std::vector<float>& x, const std::vector<float>& y) {
    return MAP_ROW_TYPE{x.data(), y.data(), static_cast<int>(x.size())};
}

TEST(MultiMap, GridTakesTheFinestStepOfTheSetUpToTheCap) {
    const std::vector<float> xa = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, ya(11, 1.0f);
    std::vector<float> xb, yb;
    for (int i = 0; i <= 20; ++i) xb.push_back(5 + 0.5f * i), yb.push_back(1);
    const std::vector<MAP_ROW_TYPE> rows = {row(xa, ya), row(xb, yb)};
    double lo = 0, hi = 0;
    ASSERT_TRUE(Map_X_Range(rows, lo, hi));
    EXPECT_EQ(lo, 0);
    EXPECT_EQ(hi, 15);
    EXPECT_EQ(Map_Columns(rows, lo, hi, 1000), 30);  // 15 / 0.5
    EXPECT_EQ(Map_Columns(rows, lo, hi, 20), 20);    // the frame's pixel columns
    EXPECT_EQ(Map_Columns(rows, 0, 0.1, 20), 1);
    // single points give no step: the cap stands
    const std::vector<float> one = {3};
    EXPECT_EQ(Map_Columns({row(one, one)}, 0, 10, 50), 50);
    EXPECT_FALSE(Map_X_Range({}, lo, hi));
}

TEST(MultiMap, CellsAverageTheLinearInterpolationAndNeverExtrapolate) {
    // y = 10x on [0, 2], and y = 10(x - 1) on [1, 4]; cells [0,1], [1,2], [2,3], [3,4]
    const std::vector<float> xa = {0, 1, 2}, ya = {0, 10, 20};
    const std::vector<float> xb = {1, 4}, yb = {0, 30};
    const std::vector<float> xd = {2, 1, 0}, yd = {20, 10, 0};  // the first row in falling X
    MULTI_MAP_TYPE m;
    Build_Multi_Map({row(xa, ya), row(xb, yb), row(xd, yd)}, 0, 4, 4, m);
    ASSERT_EQ(m.nrows, 3);
    ASSERT_EQ(m.ncols, 4);
    EXPECT_DOUBLE_EQ(m.Centre(3), 2.5);
    EXPECT_FLOAT_EQ(m.At(1, 1), 5);
    EXPECT_FLOAT_EQ(m.At(1, 2), 15);
    EXPECT_TRUE(std::isnan(m.At(1, 3)));  // centre 2.5 beyond the last point 2
    EXPECT_TRUE(std::isnan(m.At(1, 4)));
    EXPECT_TRUE(std::isnan(m.At(2, 1)));  // centre 0.5 before the first point 1
    EXPECT_FLOAT_EQ(m.At(2, 2), 5);
    EXPECT_FLOAT_EQ(m.At(2, 3), 15);
    EXPECT_FLOAT_EQ(m.At(2, 4), 25);
    for (int c = 1; c <= 4; ++c) {
        if (std::isnan(m.At(1, c))) EXPECT_TRUE(std::isnan(m.At(3, c)));
        else EXPECT_FLOAT_EQ(m.At(3, c), m.At(1, c));
    }
    float zmin = 0, zmax = 0, pos = 0;
    ASSERT_TRUE(Map_Z_Range(m, zmin, zmax, pos));
    EXPECT_FLOAT_EQ(zmin, 5);
    EXPECT_FLOAT_EQ(zmax, 25);
    EXPECT_FLOAT_EQ(pos, 5);
}

TEST(MultiMap, WideCellsKeepThePeakArea) {
    // a triangle of height 4 and base 1 (area 2) on [0, 2]
    const std::vector<float> x = {0, 0.5f, 1, 1.5f, 2}, y = {0, 0, 4, 0, 0};
    MULTI_MAP_TYPE m;
    Build_Multi_Map({row(x, y)}, 0, 2, 1, m);
    EXPECT_FLOAT_EQ(m.At(1, 1), 1.0f);  // 2 / 2
    Build_Multi_Map({row(x, y)}, 0, 2, 2, m);
    EXPECT_FLOAT_EQ(m.At(1, 1), 1.0f);  // half the triangle in each cell of width 1
    EXPECT_FLOAT_EQ(m.At(1, 2), 1.0f);
    Build_Multi_Map({row(x, y)}, 0, 2, 8, m);  // no finer than the data: 4 cells of 0.5
    ASSERT_EQ(m.ncols, 4);
    EXPECT_FLOAT_EQ(m.At(1, 2), 2.0f);  // the rise from 0 to 4
    EXPECT_FLOAT_EQ(m.At(1, 4), 0.0f);
}

TEST(MultiMap, BadRowsGiveEmptyCellsNotNumbers) {
    const float nan = std::nanf("");
    const std::vector<float> xn = {0, 1, 2, 3}, yn = {1, nan, 3, 3};
    const std::vector<float> x1 = {2.2f}, y1 = {7};
    const std::vector<float> none;
    const std::vector<float> xnan = {nan, 1, 2}, ynan = {5, 5, 6};
    MULTI_MAP_TYPE m;
    Build_Multi_Map({row(xn, yn), row(x1, y1), row(none, none), row(xnan, ynan)}, 0, 3, 3, m);
    ASSERT_EQ(m.ncols, 3);
    EXPECT_TRUE(std::isnan(m.At(1, 1)));  // both pieces touch the NaN
    EXPECT_TRUE(std::isnan(m.At(1, 2)));
    EXPECT_FLOAT_EQ(m.At(1, 3), 3);
    EXPECT_TRUE(std::isnan(m.At(2, 1)));  // the one point fills its own cell only
    EXPECT_TRUE(std::isnan(m.At(2, 2)));
    EXPECT_FLOAT_EQ(m.At(2, 3), 7);
    for (int c = 1; c <= 3; ++c) EXPECT_TRUE(std::isnan(m.At(3, c)));
    EXPECT_TRUE(std::isnan(m.At(4, 1)));  // the point of NaN X is left out: the row starts at 1
    EXPECT_FLOAT_EQ(m.At(4, 2), 5.5f);
    // numbers at both ends but out of order inside: read as sorted, y = x
    const std::vector<float> xu = {0, 2, 1, 3}, yu = {0, 2, 1, 3};
    Build_Multi_Map({row(xu, yu)}, 0, 3, 3, m);
    EXPECT_FLOAT_EQ(m.At(1, 1), 0.5f);
    EXPECT_FLOAT_EQ(m.At(1, 2), 1.5f);
    EXPECT_FLOAT_EQ(m.At(1, 3), 2.5f);
    // no range at all: one point everywhere still gives a map around it
    const std::vector<float> xs = {4}, ys = {2};
    Build_Multi_Map({row(xs, ys), row(xs, ys)}, 4, 4, 10, m);
    EXPECT_LT(m.xlo, 4);
    EXPECT_GT(m.xhi, 4);
    int filled = 0;
    for (float v : m.z) filled += std::isfinite(v) ? 1 : 0;
    EXPECT_EQ(filled, 2);
    // 2000 patterns of one point each: one cell each
    std::vector<std::vector<float>> px(2000), py(2000);
    std::vector<MAP_ROW_TYPE> many;
    for (int k = 0; k < 2000; ++k) {
        px[k] = {static_cast<float>(k % 100)};
        py[k] = {static_cast<float>(k)};
        many.push_back(row(px[k], py[k]));
    }
    Build_Multi_Map(many, 0, 99, 1200, m);
    ASSERT_EQ(m.nrows, 2000);
    for (int r = 1; r <= 2000; r += 199) {
        int n = 0;
        for (int c = 1; c <= m.ncols; ++c) n += std::isfinite(m.At(r, c)) ? 1 : 0;
        EXPECT_EQ(n, 1) << r;
    }
}

TEST(MultiMap, RowBandsLieBetweenTheMidpoints) {
    std::vector<double> lo, hi;
    ASSERT_TRUE(Row_Bands({1, 2, 3}, lo, hi));
    EXPECT_EQ(lo, (std::vector<double>{0.5, 1.5, 2.5}));
    EXPECT_EQ(hi, (std::vector<double>{1.5, 2.5, 3.5}));
    ASSERT_TRUE(Row_Bands({300, 310, 330}, lo, hi));  // temperatures, unevenly spaced
    EXPECT_EQ(lo, (std::vector<double>{295, 305, 320}));
    EXPECT_EQ(hi, (std::vector<double>{305, 320, 340}));
    ASSERT_TRUE(Row_Bands({30, 20}, lo, hi));  // cooling
    EXPECT_EQ(lo, (std::vector<double>{25, 15}));
    EXPECT_EQ(hi, (std::vector<double>{35, 25}));
    ASSERT_TRUE(Row_Bands({7}, lo, hi));
    EXPECT_EQ(lo[0], 6.5);
    EXPECT_FALSE(Row_Bands({1, 3, 2}, lo, hi));  // a ramp up and down would overlap
    EXPECT_FALSE(Row_Bands({5, 5}, lo, hi));
    EXPECT_FALSE(Row_Bands({1, std::nan("")}, lo, hi));
}

TEST(MultiMap, PictureAveragesOrRepeatsCellsWithTheFirstRowOnTop) {
    MULTI_MAP_TYPE m;
    m.nrows = 2, m.ncols = 2, m.xlo = 0, m.xhi = 2, m.step = 1;
    m.z = {1, 2, 3, 4};
    const std::vector<double> lo = {0.5, 1.5}, hi = {1.5, 2.5};
    std::vector<float> p;
    Map_Raster(m, lo, hi, 0, 2, 0.5, 2.5, 2, 2, p);
    EXPECT_EQ(p, (std::vector<float>{3, 4, 1, 2}));
    Map_Raster(m, lo, hi, 0, 2, 0.5, 2.5, 1, 1, p);
    EXPECT_FLOAT_EQ(p[0], 2.5f);
    Map_Raster(m, lo, hi, 0, 2, 0.5, 2.0, 1, 1, p);  // all of row 1, half of row 2
    EXPECT_NEAR(p[0], (1.5 * 1.0 + 3.5 * 0.5) / 1.5, 1e-6);
    Map_Raster(m, lo, hi, 0, 2, 0.5, 2.5, 4, 4, p);
    EXPECT_EQ(p[0], 3);
    EXPECT_EQ(p[3], 4);
    EXPECT_EQ(p[15], 2);
    m.z = {std::nanf(""), 2, 3, 4};
    Map_Raster(m, lo, hi, 0, 2, 0.5, 2.5, 2, 2, p);
    EXPECT_TRUE(std::isnan(p[2]));
    Map_Raster(m, lo, hi, 5, 7, 0.5, 2.5, 2, 2, p);  // beyond the map
    EXPECT_TRUE(std::isnan(p[0]));
}

TEST(MultiMap, IsoLinesCrossTheSquaresWhereTheLevelLies) {
    std::vector<float> x, y;
    // 0 | 10 over two rows: the line of 5 runs down the middle, x = 1
    Iso_Segments({0, 10, 0, 10}, 2, 2, 5, x, y);
    ASSERT_EQ(x.size(), 2u);
    EXPECT_FLOAT_EQ(x[0], 1.0f);
    EXPECT_FLOAT_EQ(x[1], 1.0f);
    EXPECT_FLOAT_EQ(std::min(y[0], y[1]), 0.5f);
    EXPECT_FLOAT_EQ(std::max(y[0], y[1]), 1.5f);
    Iso_Segments({0, 10, 0, 10}, 2, 2, 2.5, x, y);  // a quarter of the way
    EXPECT_FLOAT_EQ(x[0], 0.75f);
    // a peak in the middle of 3 x 3: the level 5 closes round it in four segments
    Iso_Segments({0, 0, 0, 0, 10, 0, 0, 0, 0}, 3, 3, 5, x, y);
    EXPECT_EQ(x.size(), 8u);
    Iso_Segments({0, 0, 0, 0}, 2, 2, 5, x, y);  // nowhere near
    EXPECT_TRUE(x.empty());
    Iso_Segments({0, std::nanf(""), 0, 10}, 2, 2, 5, x, y);  // an empty corner
    EXPECT_TRUE(x.empty());
}

TEST(MultiMap, ScalesLinearLogAndTheirColours) {
    EXPECT_DOUBLE_EQ(Scale_Fraction(5, 0, 10, false), 0.5);
    EXPECT_DOUBLE_EQ(Scale_Fraction(100, 1, 10000, true), 0.5);
    EXPECT_DOUBLE_EQ(Scale_Fraction(0, 1, 10000, true), 0);  // the lowest colour, never NaN
    EXPECT_DOUBLE_EQ(Scale_Fraction(-3, 1, 10000, true), 0);
    EXPECT_DOUBLE_EQ(Scale_Fraction(1e5, 1, 1e4, true), 1);
    EXPECT_DOUBLE_EQ(Scale_Fraction(3, 3, 3, false), 0.5);
    EXPECT_TRUE(std::isnan(Scale_Fraction(std::nan(""), 0, 1, false)));
    // matplotlib's viridis: #440154 at 0, #21918C at the middle, #FDE725 at 1
    EXPECT_EQ(Scale_Colour(kScaleViridis, 0), 0x440154u);
    EXPECT_EQ(Scale_Colour(kScaleViridis, 0.5), 0x21918Cu);
    EXPECT_EQ(Scale_Colour(kScaleViridis, 1), 0xFDE725u);
    EXPECT_EQ(Scale_Colour(kScaleViridis, 7), 0xFDE725u);
    EXPECT_EQ(Scale_Colour(kScaleGrey, 0), 0x000000u);
    EXPECT_EQ(Scale_Colour(kScaleGrey, 0.5), 0x808080u);
    EXPECT_EQ(Scale_Colour(kScaleGrey, 1), 0xFFFFFFu);
}

TEST(MultiProject, ProjectionOfTheBoxAndTheRowInFront) {
    VIEW_3D_TYPE flat;
    flat.elevation = 0;
    const PROJECTED_TYPE p = Project(flat, 0.75, 0.25, 0.5);
    EXPECT_NEAR(p.u, 0.25, 1e-12);
    EXPECT_NEAR(p.w, 0.5, 1e-12);
    EXPECT_NEAR(p.depth, -0.25, 1e-12);
    flat.offset = 1;  // the waterfall: the last row one box height above the first
    EXPECT_NEAR(Project(flat, 0.2, 1, 0.3).w - Project(flat, 0.2, 0, 0.3).w, 1.0, 1e-12);
    VIEW_3D_TYPE v;  // rotation 0, elevation 22: the last row higher and farther
    EXPECT_NEAR(Project(v, 0.5, 1, 0).w - Project(v, 0.5, 0, 0).w, std::sin(22 * M_PI / 180), 1e-12);
    EXPECT_GT(Project(v, 0.5, 1, 0).depth, Project(v, 0.5, 0, 0).depth);
    double umin = 0, umax = 0, wmin = 0, wmax = 0;
    Projected_Box(flat, umin, umax, wmin, wmax);
    EXPECT_NEAR(umin, -0.5, 1e-12);
    EXPECT_NEAR(wmax, 2.0, 1e-12);
    EXPECT_TRUE(First_Row_In_Front(v));
    v.rotation = 180;
    EXPECT_FALSE(First_Row_In_Front(v));
    EXPECT_NEAR(Project(v, 0, 0, 0).u, 0.5, 1e-12);  // turned round: X runs right to left
    v.rotation = 90;
    EXPECT_NEAR(Project(v, 0.9, 0, 0).u, -0.5, 1e-12);  // rows now run across
}

TEST(MultiProject, HiddenLinesStayUnderTheNearerPatterns) {
    HORIZON_TYPE h;
    h.Reset(10);
    POLYLINES_TYPE p;
    EXPECT_EQ(Visible_Pieces({0.5f, 9.5f}, {5, 5}, h, p), 1);  // the front pattern: all of it
    ASSERT_EQ(p.Count(), 1u);
    EXPECT_EQ(p.Size(0), 10u);
    EXPECT_FLOAT_EQ(p.W(0, 3), 5);
    p.Clear();
    EXPECT_EQ(Visible_Pieces({0.5f, 9.5f}, {3, 3}, h, p), 0);  // lower and behind: hidden
    EXPECT_EQ(p.Count(), 0u);
    EXPECT_TRUE(p.u.empty());
    // a peak behind: only its top shows, cut where it meets the horizon at 5
    EXPECT_EQ(Visible_Pieces({0.5f, 3.5f, 5.5f, 7.5f, 9.5f}, {3, 3, 9, 3, 3}, h, p), 1);
    ASSERT_EQ(p.Count(), 1u);
    ASSERT_EQ(p.Size(0), 5u);
    EXPECT_NEAR(p.U(0, 0), 3.5 + 2.0 / 3, 1e-5);
    EXPECT_NEAR(p.W(0, 0), 5, 1e-5);
    EXPECT_FLOAT_EQ(p.W(0, 1), 6);
    EXPECT_FLOAT_EQ(p.W(0, 2), 9);
    EXPECT_NEAR(p.U(0, 4), 6.5 + 1.0 / 3, 1e-5);
    EXPECT_FLOAT_EQ(h.top[5], 9);
    EXPECT_FLOAT_EQ(h.top[0], 5);
    // three peaks rising over the horizon add three parts after the one kept
    EXPECT_EQ(Visible_Pieces({0.5f, 1.5f, 2.5f, 4.5f, 5.5f, 6.5f, 8.5f, 9.5f}, {5, 20, 5, 5, 9.5f, 5, 7, 5}, h, p), 3);
    ASSERT_EQ(p.Count(), 4u);
    EXPECT_EQ(p.Size(0), 5u);  // the first piece stays as it was
    EXPECT_FLOAT_EQ(p.W(1, 1), 20);
    EXPECT_EQ(p.start.back() + static_cast<int>(p.Size(3)), static_cast<int>(p.u.size()));
    // NaN and lines beyond the picture draw nothing and break nothing
    p.Clear();
    EXPECT_EQ(Visible_Pieces({-30, -20, std::nanf("")}, {50, 60, 70}, h, p), 0);
    EXPECT_EQ(Visible_Pieces({}, {}, h, p), 0);
    EXPECT_TRUE(p.u.empty());
    // a line from far off one side to far off the other crosses every column
    h.Reset(10);
    EXPECT_EQ(Visible_Pieces({-3e30f, 3e30f}, {1, 1}, h, p), 1);
    ASSERT_EQ(p.Count(), 1u);
    EXPECT_EQ(p.Size(0), 10u);
    EXPECT_FLOAT_EQ(h.top[9], 1);
}

TEST(MultiProject, SurfaceShadingCoverAndGridReduction) {
    // a flat surface seen from 45 degrees covers the lower half of the box's picture, in
    // its colour shaded by the light: 0.5 + 0.6 * 0.7 / sqrt(0.35^2 + 0.6^2 + 0.7^2)
    VIEW_3D_TYPE v;
    v.elevation = 45;
    const int w = 40, ht = 40;
    std::vector<unsigned> pic;
    Render_Surface(std::vector<float>(9, 0.0f), std::vector<unsigned>(9, 0x808080u), 3, 3, v, w, ht, 0xFFFFFFu, pic);
    const double shade = 0.5 + 0.6 * 0.7 / std::sqrt(0.35 * 0.35 + 0.6 * 0.6 + 0.7 * 0.7);
    const unsigned c = static_cast<unsigned>(128 * shade);
    EXPECT_EQ(c, 118u);
    int covered = 0;
    for (int y = 0; y < ht; ++y)
        for (int x = 0; x < w; ++x) {
            const unsigned p = pic[static_cast<std::size_t>(y) * w + x];
            if (p == 0xFFFFFFu) continue;
            EXPECT_EQ(p, c << 16 | c << 8 | c);
            EXPECT_GE(y, ht / 2 - 1);  // nothing above the middle
            ++covered;
        }
    EXPECT_NEAR(covered, w * ht / 2, w * 2);
    // empty cells leave holes, a single column draws nothing
    Render_Surface(std::vector<float>(9, std::nanf("")), std::vector<unsigned>(9, 0), 3, 3, v, w, ht, 7, pic);
    for (unsigned p : pic) EXPECT_EQ(p, 7u);
    Render_Surface({0.5f}, {0}, 1, 1, v, 5, 5, 7, pic);
    EXPECT_EQ(pic.size(), 25u);

    std::vector<float> out;
    int r = 0, k = 0;
    Reduce_Grid({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}, 4, 4, 2, 2, out, r, k);
    ASSERT_EQ(r, 2);
    ASSERT_EQ(k, 2);
    EXPECT_EQ(out, (std::vector<float>{3.5f, 5.5f, 11.5f, 13.5f}));
    Reduce_Grid({1, std::nanf(""), 3, 4}, 2, 2, 1, 1, out, r, k);
    EXPECT_FLOAT_EQ(out[0], 8.0f / 3);
}

}  // namespace
