// Settings tables, the limits of Plot_ReMake and the command Focus, without drawing.
#include "plot_fixture.h"

using namespace ptest;

TEST(PlotSettings, StylesCycleByTwelveAndTickColourTable) {
    EXPECT_EQ(Style_Of_Slot(1), 1);
    EXPECT_EQ(Style_Of_Slot(12), 12);
    EXPECT_EQ(Style_Of_Slot(13), 1);
    EXPECT_EQ(Style_Of_Slot(25), 1);
    EXPECT_EQ(Style_Of_Slot(2000), 8);
    Set_Default_Plot_Settings();
    const PLOT_SETTINGS& s = Plot_Settings();
    EXPECT_EQ(s.styles[1].line_colour, 255);
    EXPECT_EQ(s.styles[2].marker_colour, 0xFF0000);
    EXPECT_EQ(s.styles[7].line_colour, 255);
    EXPECT_EQ(s.styles[12].line_colour, 0xFFFF00);
    EXPECT_EQ(s.background_colour, WRGB(150, 200, 150));
    EXPECT_EQ(s.multi_title, "Plot multi file");

    EXPECT_EQ(Bragg_Tick_Colour(0), 0x00FF00);
    EXPECT_EQ(Bragg_Tick_Colour(1), 0x00FF00);
    EXPECT_EQ(Bragg_Tick_Colour(2), 0x0000FF);
    EXPECT_EQ(Bragg_Tick_Colour(19), 667211);
    EXPECT_EQ(Bragg_Tick_Colour(21), 0x00FF00);
    EXPECT_EQ(Bragg_Tick_Colour(22), 0x0000FF);
    EXPECT_EQ(Bragg_Tick_Colour(-7), 0x00FF00);

    EXPECT_EQ(Title_Position_Letter(1), "N");
    EXPECT_EQ(Title_Position_Letter(2), "L");
    EXPECT_EQ(Title_Position_Letter(4), "R");
    EXPECT_EQ(Title_Position_Letter(9), "N");
    EXPECT_EQ(Y_Legend_Position(1), "--");
    EXPECT_EQ(Y_Legend_Position(7), "C9");
    EXPECT_EQ(Y_Legend_Position(10), "B9");
    EXPECT_FLOAT_EQ(Legend_Page_X(2, 1200), 216.0f);
    EXPECT_FLOAT_EQ(Legend_Page_X(4, 1200), 1044.0f);
    EXPECT_LT(Legend_Page_X(1, 1200), 0.0f);
}

TEST(PlotLimits, DataWindowBandAndTickRows) {
    Fresh_Store();
    ZENDRITE_STORE& g = zendrite_param_global();
    Add_Slot(41, 10, 50, [](float x) { return (x - 10) * 2.5f; });  // y 0..100
    const int k2 = Add_Slot(36, 5, 40, [](float x) { return 20 + (x - 5) * 180.0f / 35.0f; });  // y 20..200
    Compute_Plot_Limits();
    EXPECT_FLOAT_EQ(g.data_xmin, 5);
    EXPECT_FLOAT_EQ(g.data_xmax, 50);
    EXPECT_FLOAT_EQ(g.win_xmin, 5);
    EXPECT_FLOAT_EQ(g.win_xmax, 50);
    EXPECT_FLOAT_EQ(g.data_ymin, 0);
    EXPECT_FLOAT_EQ(g.data_ymax, 200);
    EXPECT_FLOAT_EQ(g.win_ymax, 210);
    EXPECT_FLOAT_EQ(g.win_ymin, -10);
    EXPECT_FLOAT_EQ(g.y_floor, -40);
    EXPECT_FLOAT_EQ(g.diff_band, 28);
    EXPECT_FLOAT_EQ(g.diff_base, -28);
    EXPECT_FALSE(g.prf_loaded);

    g.info[static_cast<std::size_t>(k2)].prf_type = "PRF";
    g.info[static_cast<std::size_t>(k2)].nphases = 2;
    Compute_Plot_Limits();
    EXPECT_TRUE(g.prf_loaded);
    EXPECT_EQ(g.ProfilePRFactive, k2);
    EXPECT_FLOAT_EQ(g.win_ymin, g.y_floor);
    const float step = 28.0f / 36.0f;
    EXPECT_FLOAT_EQ(g.tick_step, step);
    EXPECT_FLOAT_EQ(g.tick_top[1], 28 - 10 * step);
    EXPECT_FLOAT_EQ(g.tick_bottom[1], 28 - 17 * step);
    EXPECT_FLOAT_EQ(g.tick_top[2], 28 - 18 * step);
    EXPECT_FLOAT_EQ(g.tick_bottom[2], 28 - 25 * step);

    Update_X_Space_Menus();
    EXPECT_FALSE(g.mixed_scat_var);
    g.pattern[static_cast<std::size_t>(k2)].scat_var = "TOF";
    Update_X_Space_Menus();
    EXPECT_TRUE(g.mixed_scat_var);
}

TEST(PlotLimits, ExcludedRegionsLimitTheRangeOnlyWhenAsked) {
    Fresh_Store();
    ZENDRITE_STORE& g = zendrite_param_global();
    const int k = Add_Slot(101, 0, 100, [](float x) { return x; });
    PRF_INFO_ADD_TYPE& info = g.info[static_cast<std::size_t>(k)];
    info.nexcl = 2;
    info.excl_low(1) = -1, info.excl_high(1) = 10;
    info.excl_low(2) = 90, info.excl_high(2) = 120;
    Compute_Plot_Limits();
    EXPECT_FLOAT_EQ(g.data_xmin, 0);
    EXPECT_FLOAT_EQ(g.data_xmax, 100);
    Plot_Settings().excluded_limit_range = true;
    Compute_Plot_Limits();
    EXPECT_FLOAT_EQ(g.data_xmin, 10);
    EXPECT_FLOAT_EQ(g.data_xmax, 90);
    EXPECT_FLOAT_EQ(g.win_xmin, 10);
    // a region over everything leaves nothing: the plain limits stand
    info.nexcl = 1;
    info.excl_low(1) = -5, info.excl_high(1) = 200;
    Compute_Plot_Limits();
    EXPECT_FLOAT_EQ(g.data_xmin, 0);
    EXPECT_FLOAT_EQ(g.data_xmax, 100);
}

TEST(FocusY, LimitsFromPointsStrictlyInsideTheWindow) {
    Fresh_Store();
    ZENDRITE_STORE& g = zendrite_param_global();
    const int k = Add_Slot(101, 0, 100, [](float x) { return x; });
    Compute_Plot_Limits();
    g.win_xmin = 20;
    g.win_xmax = 40;
    Focus_Y();
    EXPECT_FLOAT_EQ(g.win_ymax, 39.9f);
    EXPECT_FLOAT_EQ(g.win_ymin, 20.1f);

    // with a profile file the bottom follows the shown layers
    g.info[static_cast<std::size_t>(k)].prf_type = "PRF";
    g.info[static_cast<std::size_t>(k)].nphases = 1;
    g.prf_loaded = true;
    g.ProfilePRFactive = k;
    Focus_Y();
    const float span = 39.9f - 20.1f;
    EXPECT_NEAR(g.y_floor, 20.1f - 0.2f * span, 1e-4);
    EXPECT_NEAR(g.diff_base, 20.1f - 0.14f * span, 1e-4);
    EXPECT_FLOAT_EQ(g.win_ymin, g.y_floor);
    g.show_ydiff = false;
    Focus_Y();
    EXPECT_FLOAT_EQ(g.win_ymin, g.diff_base + g.tick_bottom[1]);
    g.show_reflexions = false;
    Focus_Y();
    EXPECT_NEAR(g.win_ymin, 20.1f, 1e-4);

    // a window holding no point changes nothing
    g.win_xmin = 200;
    g.win_xmax = 300;
    const float before = g.win_ymax;
    Focus_Y();
    EXPECT_FLOAT_EQ(g.win_ymax, before);
}

TEST(PlotFaults, InvalidModesEndTheProcessWithTheirText) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    Start_Window();
    Fresh_Store();
    ZENDRITE_STORE& g = zendrite_param_global();
    Add_Slot(11, 0, 10, [](float x) { return x; });
    g.graph_mode = "graph3d";
    EXPECT_DEATH(Plot_ReMake(), "Fault /zendrite_graphics/Plot_ReMake/02 mode invalid por this subroutine");
    g.graph_mode = "single";
    g.MoveMode = 6;
    EXPECT_DEATH(Mouse_Event(Mouse(MouseMove, 0, 600, 400)), "Unknown MoveMode");
    g.MoveMode = 0;
    g.graph_mode = "calculation";
    EXPECT_DEATH(MouseMovement_DragPlot(Mouse(MouseMove, 0, 600, 400)),
                 "Fault /zendrite_win_root/MouseMovement_DragPlot/026 operation not permited");
    EXPECT_DEATH(MouseMovement_SelExclReg(Mouse(MouseMove, 0, 600, 400)), "MouseMovement_SelExclReg/028");
    g.graph_mode = "single";
    g.prf_loaded = true;
    g.ProfilePRFactive = 0;
    bool changed = false;
    EXPECT_DEATH(Search_PRF_Refl(5, 5, changed), "Fault: /zendrite_win_root/ ProfilePRFactive=0");
    g.ProfilePRFactive = 3;
    EXPECT_DEATH(Search_PRF_Refl(5, 5, changed), "ProfilePRFactive>nperfiles");
    EXPECT_DEATH(plot_graph2d(1, 0, 10, 0, 10), "Fault /zendrite_graphics/plot_graph2d/035");
    g.prf_loaded = false;
}
