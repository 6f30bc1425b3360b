// Frames drawn off-screen and probed by pixel: page, zone, curves, styles, log mode, legend, band.
#include "plot_fixture.h"

#include "app/store/profile_shift.h"

using namespace ptest;

namespace {
const int kRed = 255;                       // style 1
const int kPurple = 0xC800C8;               // WRGB(200,0,200): a colour no default uses
const int kDiffBlue = 0xFF0000;             // WRGB(0,0,255)
const int kTickGreen = 0x008000;            // WRGB(0,128,0)
const int kExcluded = 0xC0C0C0;

void Single_Mode() { Enter_Single_Mode(0); }
}  // namespace

TEST(PlotDrawing, RealPatternPaintsPageZoneCurveFrameAndLegend) {
    Start_Window();
    Fresh_Store();
    ASSERT_GT(Load_Real("PSI_DMC.dat"), 0);
    Single_Mode();
    Plot_ReMake();
    const ZENDRITE_STORE& g = zendrite_param_global();
    EXPECT_EQ(g.graph_mode, "single");
    EXPECT_FLOAT_EQ(g.win_xmin, g.pattern[1].x(1));
    EXPECT_FLOAT_EQ(g.win_xmax, g.pattern[1].x(g.pattern[1].npts));
    const FRAME_LIMITS& f = Graphics_State().frame;
    EXPECT_FLOAT_EQ(f.xmin, g.win_xmin);
    EXPECT_FLOAT_EQ(f.ymax, g.win_ymax);
    EXPECT_TRUE(Near(Pixel_At(10, 10), WRGB(150, 200, 150), 6));
    EXPECT_GT(Count_Colour(180, 120, 1020, 680, kRed, 60), 500);   // the curve
    EXPECT_GT(Count_Colour(300, 116, 900, 124, 0, 30), 300);       // frame bottom in black
    EXPECT_GT(Count_Colour(840, 625, 1010, 655, kRed, 60), 5);     // legend line of slot 1
    EXPECT_TRUE(WPictureSave(kRootWindow, "plot_single.png"));
}

TEST(PlotDrawing, ThirteenProfilesSlotThirteenTakesStyleOne) {
    Start_Window();
    Fresh_Store();
    Plot_Settings().styles[1].line_colour = Plot_Settings().styles[1].marker_colour = kPurple;
    Plot_Settings().styles[1].line_width = 3;  // a core of pure colour under the smoothing
    Plot_Settings().legend.position = 1;
    for (int k = 1; k <= 13; ++k) Add_Slot(50, 0, 100, [k](float) { return 100.0f * static_cast<float>(k); });
    Enter_Multi_Mode(false);
    Plot_ReMake();
    auto row_has = [](int slot) {
        float px = 0, py = 0;
        Page_Of(50, 100.0f * static_cast<float>(slot), px, py);
        return Count_Colour(300, py - 2, 900, py + 2, kPurple, 30) > 100;
    };
    EXPECT_TRUE(row_has(1));
    EXPECT_TRUE(row_has(13));
    EXPECT_FALSE(row_has(7));
    EXPECT_FALSE(row_has(12));
    EXPECT_TRUE(WPictureSave(kRootWindow, "plot_thirteen.png"));
}

TEST(PlotDrawing, LogFrameDrawsHalfAtZero) {
    Start_Window();
    Fresh_Store();
    Plot_Settings().legend.position = 1;
    Add_Slot(60, 0, 100, [](float) { return 0.5f; });
    Enter_Multi_Mode(true);
    // frame from -1 to 3: 0.5 draws at 0, a quarter up the zone (page 260), not at log(0.5)
    plot_graph2d(1, 0, 100, -1, 3, true);
    EXPECT_TRUE(Graphics_State().frame.log);
    EXPECT_GT(Count_Colour(300, 256, 900, 264, kRed, 60), 200);
    EXPECT_EQ(Count_Colour(300, 212, 900, 224, kRed, 60), 0);
    plot_graph2d(1, 0, 100, -1, 3);
    EXPECT_GT(Count_Colour(300, 326, 900, 334, kRed, 60), 200);  // linear: at 0.5
    EXPECT_EQ(Count_Colour(300, 256, 900, 264, kRed, 60), 0);

    // Plot_ReMake in "multi_log": from 0 to the logarithm of the top of the window
    Fresh_Store();
    Add_Slot(101, 0, 100, [](float x) { return 1.0f + x * x; });
    Enter_Multi_Mode(true);
    Plot_ReMake();
    const ZENDRITE_STORE& g = zendrite_param_global();
    EXPECT_EQ(g.graph_mode, "multi_log");
    EXPECT_FLOAT_EQ(Graphics_State().frame.ymin, 0.0f);
    EXPECT_NEAR(Graphics_State().frame.ymax, std::log10(g.win_ymax), 1e-5);
    EXPECT_TRUE(WPictureSave(kRootWindow, "plot_log.png"));
}

TEST(PlotDrawing, LegendOnlyBelowThirtyThreeProfiles) {
    Start_Window();
    auto fill = [](int n) {
        Fresh_Store();
        for (int k = 1; k <= n; ++k) Add_Slot(101, 0, 100, [](float x) { return x > 99.0f ? 1000.0f : 0.0f; });
        Enter_Multi_Mode(false);
        Plot_ReMake();
        return Count_Colour(840, 628, 1005, 652, kRed, 60);
    };
    EXPECT_GT(fill(32), 5);
    EXPECT_EQ(fill(33), 0);
    Fresh_Store();
    Plot_Settings().legend.position = 1;
    Add_Slot(101, 0, 100, [](float x) { return x > 99.0f ? 1000.0f : 0.0f; });
    Enter_Multi_Mode(false);
    Plot_ReMake();
    EXPECT_EQ(Count_Colour(840, 628, 1005, 652, kRed, 60), 0);
}

TEST(PlotDrawing, RietveldBandExcludedRegionAndTicks) {
    Start_Window();
    Fresh_Store();
    ZENDRITE_STORE& g = zendrite_param_global();
    const int k = Add_Slot(201, 0, 100, [](float x) { return 100.0f + 50.0f * std::sin(x / 5.0f); }, "run.prf", "PRF");
    DIFFRACTION_PATTERN_TYPE& p = g.pattern[static_cast<std::size_t>(k)];
    for (int i = 1; i <= p.npts; ++i) p.ycalc(i) = p.y(i) - 10.0f;
    PRF_INFO_ADD_TYPE& info = g.info[static_cast<std::size_t>(k)];
    info.nexcl = 1;
    info.excl_low(1) = 40;
    info.excl_high(1) = 60;
    info.nphases = 1;
    info.nrefl = 2;
    info.refl_pos = hxl::Array1<float>(2);
    info.refl_phase = hxl::Array1<int>(2, 1);
    info.refl_code = hxl::Array1<int>(2, 1);
    info.refl_label = hxl::Array1<std::string>(2, "(1 0 0)");
    info.refl_pos(1) = 25;
    info.refl_pos(2) = 75;
    Plot_Settings().legend.position = 1;
    Plot_Settings().diff_style.line_width = 3;  // a core of pure colour under the smoothing
    Plot_Settings().tick_width = 3;
    Single_Mode();
    Plot_ReMake();
    ASSERT_TRUE(g.prf_loaded);
    float px = 0, base = 0, above = 0;
    Page_Of(50, g.diff_base, px, base);
    Page_Of(50, g.diff_base + 10, px, above);
    float x45 = 0, x55 = 0, x20 = 0, x30 = 0, y = 0;
    Page_Of(45, 0, x45, y);
    Page_Of(55, 0, x55, y);
    Page_Of(20, 0, x20, y);
    Page_Of(30, 0, x30, y);
    // the difference is flat at its base inside the region, 10 above it outside
    EXPECT_GT(Count_Colour(x45, base - 1.5f, x55, base + 1.5f, kDiffBlue, 60), 20);
    EXPECT_EQ(Count_Colour(x20, base - 1.5f, x30, base + 1.5f, kDiffBlue, 60), 0);
    EXPECT_GT(Count_Colour(x20, above - 1.5f, x30, above + 1.5f, kDiffBlue, 60), 20);
    // observed points of the region in the excluded colour
    EXPECT_GT(Count_Colour(x45, 120, x55, 680, kExcluded, 20), 10);
    // tick row of phase 1 at 25, nothing green at 35
    float tx = 0, t1 = 0, t2 = 0, ox = 0;
    Page_Of(25, g.diff_base + g.tick_top[1], tx, t1);
    Page_Of(25, g.diff_base + g.tick_bottom[1], tx, t2);
    Page_Of(35, 0, ox, y);
    EXPECT_GT(Count_Colour(tx - 2, t2, tx + 2, t1, kTickGreen, 40), 3);
    EXPECT_EQ(Count_Colour(ox - 2, t2, ox + 2, t1, kTickGreen, 40), 0);
    EXPECT_TRUE(WPictureSave(kRootWindow, "plot_rietveld.png"));
}

TEST(PlotDrawing, ThreeRealPatternsInLogModeWithALegendLineEach) {
    Start_Window();
    Fresh_Store();
    ASSERT_GT(Load_Real("PSI_DMC.dat"), 0);
    ASSERT_GT(Load_Real("DMC_n_Unknown_578.dat"), 0);
    ASSERT_GT(Load_Real("PSI_DMC.dat"), 0);
    ZENDRITE_STORE& g = zendrite_param_global();
    for (float& v : g.pattern[3].y) v *= 1.0e5f;  // the third lifted, so that the three stand apart
    hxl::Pattern_Y_Limits(g.pattern[3]);
    Enter_Multi_Mode(true);
    Plot_ReMake();
    const FRAME_LIMITS& f = Graphics_State().frame;
    EXPECT_TRUE(f.log);
    EXPECT_FLOAT_EQ(f.ymin, 0.0f);
    EXPECT_NEAR(f.ymax, std::log10(g.win_ymax), 1e-5);
    // one legend line per profile, in the colour of its style
    EXPECT_GT(Count_Colour(840, 628, 1005, 652, kRed, 60), 5);
    EXPECT_GT(Count_Colour(840, 612, 1005, 636, 0xFF0000, 60), 5);
    EXPECT_GT(Count_Colour(840, 596, 1005, 620, 0x00FFFF, 60), 5);  // WRGB(255,255,0)
    EXPECT_TRUE(WPictureSave(kRootWindow, "plot_three_log.png"));
}

TEST(PlotDrawing, ShiftDrawsAStackAndLeavesTheDataAlone) {
    Start_Window();
    Fresh_Store();
    ZENDRITE_STORE& g = zendrite_param_global();
    for (int st = 1; st <= 3; ++st) {
        Plot_Settings().styles[st].line_colour = Plot_Settings().styles[st].marker_colour = kPurple;
        Plot_Settings().styles[st].line_width = 3;
    }
    Plot_Settings().legend.position = 1;
    for (int k = 1; k <= 3; ++k) Add_Slot(400, 0, 100, [](float) { return 100.0f; });
    g.show_profile[3] = false;  // hidden, yet moved and counted in the limits like the others
    const DIFFRACTION_PATTERN_TYPE before = g.pattern[2];

    // slot k drawn k-1 times the shift away; the difference to the last shift is what moves
    ASSERT_TRUE(Apply_Profile_Shift(10, 50));
    EXPECT_EQ(g.draw_dx[1], 0.0f);
    EXPECT_EQ(g.draw_dy[1], 0.0f);
    EXPECT_EQ(g.draw_dx[2], 10.0f);
    EXPECT_EQ(g.draw_dy[3], 100.0f);
    ASSERT_TRUE(Apply_Profile_Shift(5, 50));
    EXPECT_EQ(g.draw_dx[3], 10.0f);
    EXPECT_EQ(g.draw_dy[3], 100.0f);
    EXPECT_EQ(g.shift_x_last, 5.0f);
    EXPECT_FALSE(Apply_Profile_Shift(NAN, 1));
    EXPECT_FALSE(Apply_Profile_Shift(1, INFINITY));
    EXPECT_EQ(g.draw_dx[3], 10.0f);
    EXPECT_EQ(g.shift_x_last, 5.0f);
    EXPECT_EQ(g.pattern[2].x, before.x);
    EXPECT_EQ(g.pattern[2].y, before.y);
    EXPECT_EQ(g.pattern[2].ymax, before.ymax);

    Enter_Multi_Mode(false);
    Plot_ReMake();
    EXPECT_FLOAT_EQ(g.data_xmin, 0);
    EXPECT_FLOAT_EQ(g.data_xmax, 110);
    EXPECT_FLOAT_EQ(g.data_ymin, 100);
    EXPECT_FLOAT_EQ(g.data_ymax, 200);
    auto purple_row = [](float x0, float x1, float y) {
        float px0 = 0, px1 = 0, py = 0;
        Page_Of(x0, y, px0, py);
        Page_Of(x1, y, px1, py);
        return Count_Colour(px0, py - 2, px1, py + 2, kPurple, 30);
    };
    // slot 2 at y 150 from x 5 to 105; nothing of it at its own place beside slot 1
    EXPECT_GT(purple_row(10, 100, 150), 100);
    EXPECT_EQ(purple_row(1, 4, 150), 0);
    EXPECT_EQ(purple_row(10, 100, 200), 0);  // slot 3 is hidden
    EXPECT_GT(purple_row(10, 100, 100), 100);
    EXPECT_TRUE(WPictureSave(kRootWindow, "plot_shift.png"));

    // in a log frame the offset stays in data units: slot 2 at log10(100 + 50)
    Enter_Multi_Mode(true);
    Plot_ReMake();
    EXPECT_GT(purple_row(10, 100, std::log10(150.0f)), 100);
    EXPECT_EQ(purple_row(1, 4, std::log10(150.0f)), 0);

    // a reset brings every slot and the last shift back to 0
    Reset_Store();
    EXPECT_EQ(g.draw_dx[2], 0.0f);
    EXPECT_EQ(g.draw_dy[3], 0.0f);
    EXPECT_EQ(g.shift_y_last, 0.0f);
}

// Legend names of the Publication style: the start and the end of a long name, counted in characters.
TEST(PlotDrawing, LongNamesShortenedInTheMiddle) {
    EXPECT_EQ(Shorten_Middle("abcdefghijklmnopqrstuvwxyz", 10), "abcd\u2026vwxyz");
    EXPECT_EQ(Shorten_Middle("short.xy", 10), "short.xy");
    EXPECT_EQ(Shorten_Middle("0123456789", 10), "0123456789");  // exactly the limit: kept whole
    // "é" is two bytes and one character: never cut in half
    EXPECT_EQ(Shorten_Middle("\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9", 5),
              "\u00e9\u00e9\u2026\u00e9\u00e9");
    EXPECT_EQ(Shorten_Middle("abcdef", 2), "abcdef");  // too small a limit to say anything: whole
}
