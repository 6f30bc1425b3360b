// Peaks and background points by the mouse, and the reflections listed under it.
#include "plot_fixture.h"

using namespace ptest;

namespace {
void Calculation(int mode) {
    Start_Window();
    Fresh_Store();
    Add_Slot(101, 0, 100, [](float x) { return 10.0f * x; });
    Enter_Single_Mode(0);
    Plot_ReMake();
    Enter_Calculation_Mode(mode);
    Plot_Again();
}

WIN_MESSAGE Press_At(float x, float y) {
    float px = 0, py = 0;
    Page_Of(x, y, px, py);
    return Mouse(MouseButDown, kLeftButton, px, py);
}
}  // namespace

TEST(MouseEdits, PeaksInsertSortedDeleteNearAndTheFourHundredFirst) {
    Calculation(2);
    ZENDRITE_STORE& g = zendrite_param_global();
    g.peak_insert = true;
    Mouse_Event(Press_At(50, 500));
    Mouse_Event(Press_At(20, 200));
    Mouse_Event(Press_At(80, 800));
    ASSERT_EQ(g.Peak_List.count, 3);
    EXPECT_NEAR(g.Peak_List.p[1].x, 20, 0.01);
    EXPECT_NEAR(g.Peak_List.p[2].x, 50, 0.01);
    EXPECT_NEAR(g.Peak_List.p[3].x, 80, 0.01);
    EXPECT_NEAR(g.Peak_List.p[3].y, 800, 0.5);
    EXPECT_EQ(Mouse_State().drag, 0);  // an edit press starts no zoom
    // background of a new peak: first, neighbours' mean, last
    g.Peak_List.p[1].bgr = 10, g.Peak_List.p[2].bgr = 30, g.Peak_List.p[3].bgr = 70;
    EXPECT_EQ(Edit_Peaks(5, 1), "");
    EXPECT_FLOAT_EQ(g.Peak_List.p[1].bgr, 10);
    EXPECT_EQ(Edit_Peaks(60, 1), "");
    EXPECT_FLOAT_EQ(g.Peak_List.p[4].x, 60);
    EXPECT_FLOAT_EQ(g.Peak_List.p[4].bgr, 50);
    EXPECT_EQ(Edit_Peaks(95, 1), "");
    EXPECT_FLOAT_EQ(g.Peak_List.p[6].bgr, 70);
    // the peak bars are drawn on the window in black
    float px = 0, py = 0;
    Page_Of(80, 400, px, py);
    EXPECT_GT(Count_Colour(px - 2, py - 5, px + 2, py + 5, 0, 30), 3);

    g.Peak_List.count = 400;
    EXPECT_EQ(Edit_Peaks(1, 1), "");
    EXPECT_EQ(g.Peak_List.count, 401);
    EXPECT_EQ(Edit_Peaks(2, 1), "The limit number of peaks has been attained!");
    EXPECT_EQ(g.Peak_List.count, 401);

    g.Peak_List.count = 3;
    g.Peak_List.p[1].x = 20, g.Peak_List.p[2].x = 50, g.Peak_List.p[3].x = 80;
    g.peak_insert = false;
    g.peak_delete = true;
    Mouse_Event(Press_At(50.5f, 0));  // Y is not tested
    ASSERT_EQ(g.Peak_List.count, 2);
    EXPECT_FLOAT_EQ(g.Peak_List.p[2].x, 80);
    Mouse_Event(Press_At(35, 300));
    EXPECT_EQ(g.Peak_List.count, 2);
    ASSERT_EQ(Messages().size(), 1u);
    EXPECT_EQ(Messages()[0], "No peaks found in this position for removing");
}

TEST(MouseEdits, BackgroundPointsLimitOfFourHundredAndDeleteNeedsXAndY) {
    Calculation(3);
    ZENDRITE_STORE& g = zendrite_param_global();
    g.bgr_insert = true;
    Mouse_Event(Press_At(70, 100));
    Mouse_Event(Press_At(30, 300));
    ASSERT_EQ(g.Bgr_List.count, 2);
    EXPECT_NEAR(g.Bgr_List.p[1].x, 30, 0.01);
    EXPECT_NEAR(g.Bgr_List.p[2].y, 100, 0.5);
    g.Bgr_List.count = 399;
    EXPECT_EQ(Edit_Background(5, 5), "");
    EXPECT_EQ(g.Bgr_List.count, 400);
    EXPECT_EQ(Edit_Background(6, 6), "The limit number of background points has been attained!");
    EXPECT_EQ(g.Bgr_List.count, 400);

    g.Bgr_List.count = 2;
    g.Bgr_List.p[1] = BGR_RECORD{30, 300};
    g.Bgr_List.p[2] = BGR_RECORD{70, 100};
    g.bgr_insert = false;
    g.bgr_delete = true;
    const float dy = 0.01f * (g.win_ymax - g.win_ymin);
    EXPECT_EQ(Edit_Background(30.5f, 300 + 2 * dy), "No background point found in this position for removing");
    EXPECT_EQ(Edit_Background(30.5f, 300 + 0.5f * dy), "");
    ASSERT_EQ(g.Bgr_List.count, 1);
    EXPECT_FLOAT_EQ(g.Bgr_List.p[1].x, 70);
    // the right click gives the full window back and stays in the mode
    g.win_xmin = 40;
    Mouse_Event(Mouse(MouseButDown, kRightButton, 600, 400));
    EXPECT_FLOAT_EQ(g.win_xmin, 0);
    EXPECT_EQ(g.graph_mode, "calculation");
}

TEST(MouseEdits, ReflectionsUnderTheMouseAtMost28AndNoneWithoutProfileFile) {
    Start_Window();
    Fresh_Store();
    ZENDRITE_STORE& g = zendrite_param_global();
    const int k = Add_Slot(201, 0, 100, [](float x) { return 100.0f + x; }, "run.prf", "PRF");
    DIFFRACTION_PATTERN_TYPE& p = g.pattern[static_cast<std::size_t>(k)];
    for (int i = 1; i <= p.npts; ++i) p.ycalc(i) = p.y(i);
    PRF_INFO_ADD_TYPE& info = g.info[static_cast<std::size_t>(k)];
    const int n = 40;
    info.nphases = 1;
    info.nrefl = n;
    info.refl_pos = hxl::Array1<float>(n);
    info.refl_phase = hxl::Array1<int>(n, 1);
    info.refl_code = hxl::Array1<int>(n, 1);
    info.refl_label = hxl::Array1<std::string>(n);
    for (int i = 1; i <= n; ++i) {
        info.refl_pos(i) = i <= 30 ? 50.0f + 0.01f * static_cast<float>(i) : 10.0f;
        info.refl_label(i) = "( " + std::to_string(i) + " 0 0)";
    }
    Enter_Single_Mode(0);
    Plot_ReMake();
    ASSERT_TRUE(g.prf_loaded);
    const float y_ticks = g.diff_base + 0.5f * (g.tick_top[1] + g.tick_bottom[1]);
    bool changed = false;
    Search_PRF_Refl(50.1f, y_ticks, changed);
    EXPECT_TRUE(changed);
    ASSERT_EQ(Mouse_State().found.size(), 28u);  // the 29th and 30th are not listed
    EXPECT_EQ(Mouse_State().found.front(), 1);
    EXPECT_EQ(Mouse_State().found.back(), 28);
    EXPECT_TRUE(WPictureSave(kRootWindow, "plot_reflection_box.png"));
    Search_PRF_Refl(50.2f, y_ticks, changed);
    EXPECT_FALSE(changed);
    // above the tick rows nothing is listed
    Search_PRF_Refl(50.1f, g.diff_base + g.tick_top[1] + 1.0f, changed);
    EXPECT_TRUE(changed);
    EXPECT_TRUE(Mouse_State().found.empty());
    // the movement of the mouse asks for the same search
    float px = 0, py = 0;
    Page_Of(10.0f, y_ticks, px, py);
    Mouse_Event(Mouse(MouseMove, 0, px, py));
    EXPECT_EQ(Mouse_State().found, (std::vector<int>{31, 32, 33, 34, 35, 36, 37, 38, 39, 40}));

    // without a profile file there is nothing to find
    g.prf_loaded = false;
    Search_PRF_Refl(50.1f, y_ticks, changed);
    EXPECT_TRUE(changed);
    EXPECT_TRUE(Mouse_State().found.empty());
}
