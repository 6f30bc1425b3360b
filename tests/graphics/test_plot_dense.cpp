// Dense curves reduced per pixel column: nothing the pixels could show is lost, sparse
// curves are drawn point by point as before, and later curves cover earlier ones.
#include <set>
#include <utility>

#include "plot_fixture.h"

using namespace ptest;

namespace {

// A frame of 100 columns and 200 rows: X 0..100, Y 0..200, a pixel a unit.
CURVE_PIXELS Unit_Frame() {
    CURVE_PIXELS m;
    m.sx = 1, m.ox = 10.25, m.sy = -1, m.oy = 209.5;
    m.left = 10, m.right = 109, m.top = 10, m.bottom = 209;
    return m;
}

int Row_Of(const CURVE_PIXELS& m, float y) { return static_cast<int>(std::floor(m.oy + m.sy * y)); }
int Column_Of(const CURVE_PIXELS& m, float x) { return static_cast<int>(std::floor(m.ox + m.sx * x)); }

// Rows (top, bottom) of the run of one column, or (1, 0) when the column has none.
std::pair<int, int> Run_At(const CURVE_PIXELS& m, const COLUMN_SPANS& s, int column) {
    for (int i = 0; i < s.Count(); ++i)
        if (Column_Of(m, s.x[static_cast<std::size_t>(i)]) == column)
            return {Row_Of(m, s.high[static_cast<std::size_t>(i)]), Row_Of(m, s.low[static_cast<std::size_t>(i)])};
    return {1, 0};
}

// The same rows, column by column.
void Expect_Same_Rows(const CURVE_PIXELS& m, const COLUMN_SPANS& a, const COLUMN_SPANS& b, const char* what) {
    ASSERT_EQ(a.Count(), b.Count()) << what;
    for (int i = 0; i < a.Count(); ++i) {
        EXPECT_EQ(Row_Of(m, a.low[static_cast<std::size_t>(i)]), Row_Of(m, b.low[static_cast<std::size_t>(i)])) << what;
        EXPECT_EQ(Row_Of(m, a.high[static_cast<std::size_t>(i)]), Row_Of(m, b.high[static_cast<std::size_t>(i)])) << what;
    }
}

// Pixels of the window in a colour.
std::set<std::pair<int, int>> Pixels_Of(int rgb) {
    std::set<std::pair<int, int>> out;
    const int w = WInfoWindow(1), h = WInfoWindow(2);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            if (IGrGetPixelRGB(x, y) == rgb) out.emplace(x, y);
    return out;
}

}  // namespace

TEST(CurveReduce, SingleSpikeOfAMillionPointsReachesItsRow) {
    const CURVE_PIXELS m = Unit_Frame();
    const int n = 1000000, spike = 612345;
    std::vector<float> x(n), y(n, 50.0f);
    for (int i = 0; i < n; ++i) x[static_cast<std::size_t>(i)] = 100.0f * static_cast<float>(i) / (n - 1);
    y[spike] = 180.0f;
    COLUMN_SPANS line, band;
    // the points right of x = 99.75 lie beyond the last column
    EXPECT_EQ(Reduce_Curve(m, x.data(), y.data(), n, false, 2.5, &line, &band), n - n / 400 - 1);
    const int c = Column_Of(m, x[spike]);
    EXPECT_EQ(Run_At(m, line, c).first, Row_Of(m, 180.0f));
    EXPECT_EQ(Run_At(m, line, c).second, Row_Of(m, 50.0f));
    // the markers' band reaches past the spike by the marker radius
    EXPECT_LE(Run_At(m, band, c).first, Row_Of(m, 180.0f) - 2);
    // the columns beside it show only the flat line
    EXPECT_EQ(Run_At(m, line, c - 2).first, Row_Of(m, 50.0f));
    EXPECT_EQ(line.Count(), 100);
    // a dip in a log frame likewise: a value of 0.5 draws at 0
    y[spike] = 0.5f;
    Reduce_Curve(m, x.data(), y.data(), n, true, 2.5, &line, nullptr);
    EXPECT_EQ(Run_At(m, line, c).second, Row_Of(m, 0.0f));
    EXPECT_EQ(Run_At(m, line, c).first, Row_Of(m, std::log10(50.0f)));
}

TEST(CurveReduce, LineHasNoGapsAndOrderDoesNotChangeTheRuns) {
    const CURVE_PIXELS m = Unit_Frame();
    // a steep saw tooth: every column holds a few points, jumps between columns are large
    const int n = 700;
    std::vector<float> x(n), y(n);
    for (int i = 0; i < n; ++i) {
        x[static_cast<std::size_t>(i)] = -5.0f + 110.0f * static_cast<float>(i) / (n - 1);
        y[static_cast<std::size_t>(i)] = (i / 9) % 2 ? 190.0f : 5.0f + static_cast<float>(i % 9);
    }
    COLUMN_SPANS walked, band;
    ASSERT_GE(Reduce_Curve(m, x.data(), y.data(), n, false, 2.5, &walked, &band), 100);
    ASSERT_EQ(walked.Count(), 100);  // every column of the frame, the points left and right of it joined in
    for (int c = m.left + 1; c <= m.right; ++c) {
        const auto a = Run_At(m, walked, c - 1), b = Run_At(m, walked, c);
        // neighbouring runs touch or overlap: the line is continuous
        EXPECT_LE(std::max(a.first, b.first), std::min(a.second, b.second) + 1) << "column " << c;
    }
    // the same points with one missing value: the general pass joins across it, same runs
    std::vector<float> y2 = y;
    y2[350] = std::nanf("");
    x.insert(x.begin() + 350, x[350]);
    y2.insert(y2.begin() + 350, y[350]);
    COLUMN_SPANS scanned;
    Reduce_Curve(m, x.data(), y2.data(), n + 1, false, 2.5, &scanned, nullptr);
    Expect_Same_Rows(m, scanned, walked, "missing value");
    // the points in the opposite order take the general pass: the same segments, the same runs
    std::vector<float> rx(x.rbegin(), x.rend()), ry(y2.rbegin(), y2.rend());
    COLUMN_SPANS reversed;
    Reduce_Curve(m, rx.data(), ry.data(), n + 1, false, 2.5, &reversed, nullptr);
    Expect_Same_Rows(m, reversed, walked, "reversed");
    // the band holds the line's points and lies within the frame
    for (int i = 0; i < band.Count(); ++i) {
        EXPECT_GE(Row_Of(m, band.high[static_cast<std::size_t>(i)]), m.top);
        EXPECT_LE(Row_Of(m, band.low[static_cast<std::size_t>(i)]), m.bottom);
    }
}

TEST(CurveReduce, FaultFarIntoALongCurveIsFoundAndDrawnAsTheGeneralPassDoes) {
    const CURVE_PIXELS m = Unit_Frame();
    // many points a column, checked a stretch at a time ahead of the walk
    const int n = 60000;
    std::vector<float> x(n), y(n);
    for (int i = 0; i < n; ++i) {
        x[static_cast<std::size_t>(i)] = -2.0f + 104.0f * static_cast<float>(i) / (n - 1);
        y[static_cast<std::size_t>(i)] = 20.0f + static_cast<float>((i * 7919) % 150);
    }
    COLUMN_SPANS walked;
    const int inside = Reduce_Curve(m, x.data(), y.data(), n, false, 2.5, &walked, nullptr);
    ASSERT_EQ(walked.Count(), 100);
    // a missing value and then a step back, both past the first stretch checked
    for (int at : {41000, 52000}) {
        std::vector<float> x2 = x, y2 = y;
        if (at == 41000) {
            x2.insert(x2.begin() + at, x[static_cast<std::size_t>(at)]);
            y2.insert(y2.begin() + at, std::nanf(""));
        } else {
            // the same point again after its successor: X goes back, the segments stay
            x2.insert(x2.begin() + at + 1, x[static_cast<std::size_t>(at)]);
            y2.insert(y2.begin() + at + 1, y[static_cast<std::size_t>(at)]);
        }
        COLUMN_SPANS scanned;
        EXPECT_EQ(Reduce_Curve(m, x2.data(), y2.data(), n + 1, false, 2.5, &scanned, nullptr), inside + (at == 41000 ? 0 : 1));
        Expect_Same_Rows(m, scanned, walked, at == 41000 ? "missing value far in" : "step back far in");
    }
    // a frame too tall for the rows' 16 bits: nothing is reduced, the curve is drawn point by point
    CURVE_PIXELS tall = m;
    tall.bottom = 40000;
    EXPECT_EQ(Reduce_Curve(tall, x.data(), y.data(), n, false, 2.5, &walked, nullptr), 0);
    EXPECT_EQ(walked.Count(), 0);
}

TEST(CurveReduce, SparseCurveDrawsTheSamePixelsAsPointByPoint) {
    // 300 points over some 840 columns, with markers and a line
    const int n = 300;
    std::vector<float> x(n), y(n);
    for (int i = 0; i < n; ++i) {
        x[static_cast<std::size_t>(i)] = static_cast<float>(i) / 3.0f;
        y[static_cast<std::size_t>(i)] = 50.0f + 40.0f * std::sin(static_cast<float>(i) * 0.2f);
    }
    CURVE_LOOK look;
    look.marker = 2, look.marker_colour = 0x0000FF, look.marker_size = 5;
    look.line_type = 0, look.line_colour = 0xFF0000, look.line_width = 1;

    Frame_On_Window(100, 100);
    IPgStartGraph(PgXY, 1, n);
    IPgStyle(1, PgNoFill, look.marker, look.marker_colour, 0, 1, look.marker_size);
    IPgXYMarkers(x.data(), y.data(), n);
    IPgStyle(1, PgLine, 1, look.line_colour, 0, 1, look.marker_size);
    IPgXYLine(x.data(), y.data(), n);
    const std::vector<int> before = Picture();
    ASSERT_GT(std::count_if(before.begin(), before.end(), [](int c) { return c != 0xFFFFFF; }), 5000);

    Frame_On_Window(100, 100);
    Draw_Curve(x.data(), y.data(), n, false, look);
    EXPECT_TRUE(Picture() == before);
}

TEST(CurveReduce, DenseLineCoversThePolylineAndStaysNearIt) {
    const int n = 20000;
    std::vector<float> x(n), y(n);
    for (int i = 0; i < n; ++i) {
        x[static_cast<std::size_t>(i)] = 100.0f * static_cast<float>(i) / (n - 1);
        const float t = x[static_cast<std::size_t>(i)];
        y[static_cast<std::size_t>(i)] = 20.0f + 60.0f * std::exp(-(t - 50.0f) * (t - 50.0f) / 4.0f) +
                                         static_cast<float>((i * 7919) % 13);
    }
    CURVE_LOOK look;
    look.line_type = 0, look.line_colour = 0x00FF00;
    Frame_On_Window(100, 100);
    IPgStartGraph(PgXY, 1, n);
    IPgStyle(1, PgLine, 1, look.line_colour, 0, 1, 5);
    IPgXYLine(x.data(), y.data(), n);
    const auto before = Pixels_Of(look.line_colour);
    Frame_On_Window(100, 100);
    Draw_Curve(x.data(), y.data(), n, false, look);
    const auto after = Pixels_Of(look.line_colour);
    ASSERT_GT(before.size(), 5000u);
    std::size_t kept = 0, far = 0;
    for (const auto& p : before) kept += after.count(p);
    for (const auto& [px, py] : after) {
        bool near = false;
        for (int dy = -1; dy <= 1 && !near; ++dy)
            for (int dx = -1; dx <= 1 && !near; ++dx) near = before.count({px + dx, py + dy}) > 0;
        far += !near;
    }
    EXPECT_GE(kept, before.size() * 99 / 100);
    EXPECT_EQ(far, 0u);
}

TEST(PlotDense, ManyProfilesLaterCoverEarlierAndSpikeShows) {
    Start_Window();
    Fresh_Store();
    const int kBlue = 0xFF0000;  // style 2
    // two dense identical profiles: the second is drawn over the first
    for (int k = 1; k <= 2; ++k) Add_Slot(50000, 0, 100, [](float x) { return 100.0f + 50.0f * std::sin(x * 0.3f); });
    // a third with one spike among 200000 points, under the others' range
    const int s = Add_Slot(200000, 0, 100, [](float) { return 20.0f; });
    zendrite_param_global().pattern[static_cast<std::size_t>(s)].y(123457) = 190.0f;
    hxl::Pattern_Y_Limits(zendrite_param_global().pattern[static_cast<std::size_t>(s)]);
    Enter_Multi_Mode(false);
    Plot_ReMake();
    const ZENDRITE_STORE& g = zendrite_param_global();
    float px = 0, py = 0;
    Page_Of(30.0f, 100.0f + 50.0f * std::sin(9.0f), px, py);
    EXPECT_TRUE(Near(Pixel_At(px, py), kBlue, 30));
    EXPECT_EQ(Count_Colour(200, 130, 800, 560, 255, 30), 0);  // slot 1 lies wholly under slot 2 (legend aside)
    // the spike: the column of its X holds slot 3's colour up to its top
    const int kYellow = 0x00FFFF;  // style 3
    const float xs = g.pattern[static_cast<std::size_t>(s)].x(123457);
    Page_Of(xs, 185.0f, px, py);
    EXPECT_GT(Count_Colour(px - 1, py - 1, px + 1, py + 1, kYellow, 30), 0);
    EXPECT_TRUE(WPictureSave(kRootWindow, "plot_dense_spike.png"));
}

TEST(PlotDense, TwoThousandProfilesLeaveNoColumnEmpty) {
    Start_Window();
    Fresh_Store();
    for (int k = 1; k <= kMaxProfiles; ++k)
        Add_Slot(1000, 5, 155, [k](float x) {
            const float d = std::fmod(x, 10.0f) - 5.0f;
            return 100.0f + 10.0f * static_cast<float>(k % 50) + 900.0f * std::exp(-d * d * 8.0f) +
                   static_cast<float>(static_cast<int>(x * 7919.0f) % 97);
        });
    Enter_Multi_Mode(false);
    Plot_ReMake();
    // every column of the zone holds curve pixels: no gap where curves were reduced
    WindowSelect(kRootWindow);
    IGrSelect(1, kRootWindow);
    const int w = WInfoWindow(1), h = WInfoWindow(2);
    float px0 = 0, py0 = 0, px1 = 0, py1 = 0;
    Page_Of(5.0f, 0.0f, px0, py0);
    Page_Of(155.0f, 0.0f, px1, py1);
    int empty = 0;
    const int c0 = static_cast<int>(px0 / 1200.0f * static_cast<float>(w)) + 2;
    const int c1 = static_cast<int>(px1 / 1200.0f * static_cast<float>(w)) - 2;
    for (int c = c0; c <= c1; ++c) {
        bool any = false;
        for (int r = h * 16 / 100; r < h * 84 / 100 && !any; ++r) {
            const int rgb = IGrGetPixelRGB(c, r);
            any = rgb != 0xEBEBEB && rgb != 0;
        }
        empty += !any;
    }
    EXPECT_EQ(empty, 0);
    // the last profile (style 8) is drawn over all others at the top of its peaks
    float tx = 0, ty = 0;
    Page_Of(15.0f, 100.0f + 10.0f * static_cast<float>(kMaxProfiles % 50) + 900.0f, tx, ty);
    EXPECT_GT(Count_Colour(tx - 3, ty - 3, tx + 3, ty + 3, Plot_Settings().styles[8].line_colour, 30), 0);
    EXPECT_TRUE(WPictureSave(kRootWindow, "plot_dense_2000.png"));
}
