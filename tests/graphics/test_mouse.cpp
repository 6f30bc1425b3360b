// Mouse sequences on a real pattern: zoom, click, undo, drag, excluded regions, wheel and Home.
#include "graphics/multi_views.h"
#include "app/store/x_space.h"
#include "plot_fixture.h"

using namespace ptest;

namespace {
void Real_Single() {
    Start_Window();
    Fresh_Store();
    ASSERT_GT(Load_Real("PSI_DMC.dat"), 0);
    Enter_Single_Mode(0);
    Plot_ReMake();
}
}  // namespace

TEST(Mouse, RubberBandZoomClickKeepsLimitsRightClickUndoes) {
    Real_Single();
    ZENDRITE_STORE& g = zendrite_param_global();
    const float full_xmin = g.win_xmin, full_xmax = g.win_xmax, full_ymax = g.win_ymax;
    float x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    Page_To_Data(600, 500, x1, y1);
    Page_To_Data(300, 300, x2, y2);
    Mouse_Event(Mouse(MouseButDown, kLeftButton, 600, 500));
    Mouse_Event(Mouse(MouseMove, 0, 450, 400));
    Mouse_Event(Mouse(MouseMove, 0, 300, 300));
    Mouse_Event(Mouse(MouseButUp, kLeftButton, 300, 300));
    EXPECT_FLOAT_EQ(g.win_xmin, x2);
    EXPECT_FLOAT_EQ(g.win_xmax, x1);
    EXPECT_FLOAT_EQ(g.win_ymin, y2);
    EXPECT_FLOAT_EQ(g.win_ymax, y1);
    EXPECT_FLOAT_EQ(Graphics_State().frame.xmin, x2);
    EXPECT_EQ(Mouse_State().drag, 0);
    EXPECT_TRUE(WPictureSave(kRootWindow, "plot_zoom.png"));

    // a click without movement keeps the window, and its band leaves nothing behind
    const int zone_before = Count_Colour(180, 120, 1020, 680, 0xEBEBEB, 0);
    Mouse_Event(Mouse(MouseButDown, kLeftButton, 700, 400));
    EXPECT_EQ(Mouse_State().drag, 1);
    Mouse_Event(Mouse(MouseMove, 0, 700, 400));
    Mouse_Event(Mouse(MouseButUp, kLeftButton, 700, 400));
    EXPECT_EQ(Count_Colour(180, 120, 1020, 680, 0xEBEBEB, 0), zone_before);
    EXPECT_FLOAT_EQ(g.win_xmin, x2);
    EXPECT_FLOAT_EQ(g.win_xmax, x1);

    // a second zoom, then one right click undoes both
    Mouse_Event(Mouse(MouseButDown, kLeftButton, 400, 400));
    Mouse_Event(Mouse(MouseButUp, kLeftButton, 500, 500));
    EXPECT_GT(g.win_xmin, x2);
    Mouse_Event(Mouse(MouseButDown, kRightButton, 500, 500));
    EXPECT_FLOAT_EQ(g.win_xmin, full_xmin);
    EXPECT_FLOAT_EQ(g.win_xmax, full_xmax);
    EXPECT_FLOAT_EQ(g.win_ymax, full_ymax);
}

TEST(Mouse, StatusBarReadOut) {
    Real_Single();
    float px = 0, py = 0;
    Page_Of(50.0f, 1000.0f, px, py);
    Mouse_Event(Mouse(MouseMove, 0, px, py));
    EXPECT_EQ(WindowStatusBarText(1).substr(0, 4), " X= ");
    EXPECT_NE(WindowStatusBarText(1).find("50.0000"), std::string::npos) << WindowStatusBarText(1);
    EXPECT_NE(WindowStatusBarText(2).find("1000.0"), std::string::npos) << WindowStatusBarText(2);
    EXPECT_EQ(WindowStatusBarText(3), " N= " + std::to_string(static_cast<int>(std::lround((50.0 - 2.948) / 0.05)) + 1));
    Mouse_Event(Mouse(MouseMove, 0, 50, 50));  // outside the frame
    EXPECT_EQ(WindowStatusBarText(1), "");
    EXPECT_EQ(WindowStatusBarText(3), "");

    // In a space, X is told in every space the wavelength of the file (1.494) allows;
    // numpy: 2theta 50 is d 1.767553, Q 3.554737.
    Set_X_Space("2theta");
    Mouse_Event(Mouse(MouseMove, 0, px, py));
    EXPECT_EQ(WindowStatusBarText(1), "2theta 50.000 | d 1.7676 A | Q 3.5547 A-1");
    // Not shown, the first profile lends nothing; without a wavelength, X alone.
    ZENDRITE_STORE& g = zendrite_param_global();
    g.show_profile[1] = false;
    Mouse_Event(Mouse(MouseMove, 0, px, py));
    EXPECT_EQ(WindowStatusBarText(1).substr(0, 4), " X= ");
    g.show_profile[1] = true;
    g.pattern[1].lambda1 = 0.0f;
    Mouse_Event(Mouse(MouseMove, 0, px, py));
    EXPECT_EQ(WindowStatusBarText(1).substr(0, 4), " X= ");
    // Converted to Q, the same place still reads 2theta 50 from the wavelength.
    g.pattern[1].lambda1 = 1.494f;
    bool error = true;
    std::string message;
    Convert_X_Space("q-space", error, message);
    ASSERT_FALSE(error) << message;
    Plot_ReMake();
    Page_Of(3.554737f, 1000.0f, px, py);
    Mouse_Event(Mouse(MouseMove, 0, px, py));
    EXPECT_EQ(WindowStatusBarText(1), "2theta 50.000 | d 1.7676 A | Q 3.5547 A-1");
}

TEST(Mouse, DragPlotMovesHalfTheMouseStep) {
    Real_Single();
    ZENDRITE_STORE& g = zendrite_param_global();
    g.MoveMode = 1;
    const float xmin = g.win_xmin, xmax = g.win_xmax, ymin = g.win_ymin;
    float xa = 0, ya = 0, xb = 0, yb = 0;
    Page_To_Data(600, 400, xa, ya);
    Page_To_Data(500, 350, xb, yb);
    Mouse_Event(Mouse(MouseButDown, kLeftButton, 600, 400));
    Mouse_Event(Mouse(MouseMove, 0, 500, 350));
    EXPECT_NEAR(g.win_xmin, xmin + 0.5f * (xa - xb), 1e-3);
    EXPECT_NEAR(g.win_xmax, xmax + 0.5f * (xa - xb), 1e-3);
    EXPECT_NEAR(g.win_ymin, ymin + 0.5f * (ya - yb), 1e-1);
    Mouse_Event(Mouse(MouseButUp, kLeftButton, 500, 350));
    Mouse_Event(Mouse(MouseButDown, kRightButton, 500, 350));
    EXPECT_EQ(g.MoveMode, 0);
}

TEST(Mouse, ExcludedRegionDraggedRightToLeftIsStoredLowHighAndLimited) {
    Real_Single();
    ZENDRITE_STORE& g = zendrite_param_global();
    g.MoveMode = 2;
    float low = 0, high = 0, y = 0;
    Page_To_Data(500, 400, low, y);
    Page_To_Data(800, 400, high, y);
    Mouse_Event(Mouse(MouseButDown, kLeftButton, 800, 400));
    Mouse_Event(Mouse(MouseMove, 0, 650, 400));
    Mouse_Event(Mouse(MouseButUp, kLeftButton, 500, 400));
    EXPECT_EQ(g.MoveMode, 0);
    ASSERT_EQ(g.info[1].nexcl, 1);
    EXPECT_FLOAT_EQ(g.info[1].excl_low(1), low);
    EXPECT_FLOAT_EQ(g.info[1].excl_high(1), high);
    // drawn in the excluded colour
    EXPECT_GT(Count_Colour(520, 120, 780, 680, 0xC0C0C0, 20), 10);

    // a press beside the frame starts the band at page 180
    g.MoveMode = 2;
    float left = 0;
    Page_To_Data(180, 400, left, y);
    Mouse_Event(Mouse(MouseButDown, kLeftButton, 60, 400));
    Mouse_Event(Mouse(MouseButUp, kLeftButton, 300, 400));
    ASSERT_EQ(g.info[1].nexcl, 2);
    EXPECT_FLOAT_EQ(g.info[1].excl_low(2), left);

    // the hundredth region is the last
    g.info[1].nexcl = 100;
    g.MoveMode = 2;
    Mouse_Event(Mouse(MouseButDown, kLeftButton, 400, 400));
    Mouse_Event(Mouse(MouseButUp, kLeftButton, 450, 400));
    EXPECT_EQ(g.info[1].nexcl, 100);
    ASSERT_EQ(Messages().size(), 1u);
    EXPECT_EQ(Messages()[0], "Profile No 1 has too much number of Excluded Regions");

    // a right press cancels
    g.info[1].nexcl = 2;
    g.MoveMode = 2;
    Mouse_Event(Mouse(MouseButDown, kLeftButton, 400, 400));
    Mouse_Event(Mouse(MouseButDown, kRightButton, 450, 400));
    Mouse_Event(Mouse(MouseButUp, kLeftButton, 450, 400));
    EXPECT_EQ(g.MoveMode, 0);
    EXPECT_EQ(g.info[1].nexcl, 2);
}

TEST(Mouse, SeveralProfilesAllTakeTheRegionAndAFullOneIsReported) {
    Start_Window();
    Fresh_Store();
    ASSERT_GT(Load_Real("PSI_DMC.dat"), 0);
    ASSERT_GT(Load_Real("DMC_n_Unknown_578.dat"), 0);
    Enter_Multi_Mode(false);
    Plot_ReMake();
    ZENDRITE_STORE& g = zendrite_param_global();
    g.info[2].nexcl = 100;
    g.MoveMode = 2;
    Mouse_Event(Mouse(MouseButDown, kLeftButton, 400, 400));
    Mouse_Event(Mouse(MouseButUp, kLeftButton, 450, 400));
    EXPECT_EQ(g.info[1].nexcl, 1);
    EXPECT_EQ(g.info[2].nexcl, 100);
    ASSERT_EQ(Messages().size(), 1u);
    EXPECT_EQ(Messages()[0], "Profile No 2 has too many Excluded Regions");
    EXPECT_TRUE(WPictureSave(kRootWindow, "plot_two_real.png"));
}

TEST(Mouse, WheelZoomsAboutTheCursorAndHomeGivesTheFullRange) {
    Real_Single();
    ZENDRITE_STORE& g = zendrite_param_global();
    const float xmin = g.win_xmin, xmax = g.win_xmax;
    float cx = 0, y = 0;
    Page_To_Data(400, 400, cx, y);
    Zoom_Wheel(400, 400, 2);
    EXPECT_NEAR(g.win_xmax - g.win_xmin, 0.64f * (xmax - xmin), 1e-2);
    float after = 0;
    Page_To_Data(400, 400, after, y);
    EXPECT_NEAR(after, cx, 1e-2);  // the point under the cursor stays
    Zoom_Wheel(400, 400, -2);
    EXPECT_NEAR(g.win_xmin, xmin, 1e-2);
    EXPECT_NEAR(g.win_xmax, xmax, 1e-2);
    Zoom_Wheel(400, 400, 3);
    Zoom_Home();
    EXPECT_FLOAT_EQ(g.win_xmin, g.data_xmin);
    EXPECT_FLOAT_EQ(g.win_xmax, g.data_xmax);
    EXPECT_FLOAT_EQ(Graphics_State().frame.xmax, g.data_xmax);
    // nothing moves on the title screen
    Enter_None_Mode();
    g.win_xmin = 1;
    Zoom_Wheel(400, 400, 1);
    EXPECT_FLOAT_EQ(g.win_xmin, 1);
}

TEST(Mouse, ScaleXAboutPivotAndOffsetAlignAfterConfirmation) {
    Real_Single();
    ZENDRITE_STORE& g = zendrite_param_global();
    Mouse_State().marked = {1};
    const float x10 = g.pattern[1].x(10);
    g.MoveMode = 5;
    Mouse_Event(Mouse(MouseButDown, kLeftButton, 50, 400));  // outside: a warning
    ASSERT_EQ(Messages().size(), 1u);
    EXPECT_EQ(Messages()[0], "Warning, out of plotting zone.");
    float pivot = 0, from = 0, to = 0, y = 0;
    Page_To_Data(300, 400, pivot, y);
    Page_To_Data(500, 400, from, y);
    Page_To_Data(700, 400, to, y);
    Mouse_Event(Mouse(MouseButDown, kLeftButton, 300, 400));
    EXPECT_TRUE(Mouse_State().pivot_chosen);
    Mouse_Event(Mouse(MouseButDown, kLeftButton, 500, 400));
    Mouse_Event(Mouse(MouseMove, 0, 700, 400));
    Mouse_Event(Mouse(MouseButUp, kLeftButton, 700, 400));
    EXPECT_EQ(g.MoveMode, 0);
    const float factor = (to - pivot) / (from - pivot);
    EXPECT_NEAR(g.pattern[1].x(10), pivot + (x10 - pivot) * factor, 1e-3);

    // offset: the marked profile moves by the line, after "Yes"
    const float xa = g.pattern[1].x(10), ya = g.pattern[1].y(10);
    g.MoveMode = 3;
    WSetUnattended(true);
    WQueueAnswer(1);
    float sx = 0, sy = 0, ex = 0, ey = 0;
    Page_To_Data(400, 300, sx, sy);
    Page_To_Data(600, 500, ex, ey);
    Mouse_Event(Mouse(MouseButDown, kLeftButton, 400, 300));
    Mouse_Event(Mouse(MouseMove, 0, 600, 500));
    Mouse_Event(Mouse(MouseButUp, kLeftButton, 600, 500));
    WSetUnattended(false);
    EXPECT_EQ(g.MoveMode, 0);
    EXPECT_NEAR(g.pattern[1].x(10), xa + (ex - sx), 1e-3);
    EXPECT_NEAR(g.pattern[1].y(10), ya + (ey - sy), 1e-1);
}

TEST(Mouse, TitleScreenIgnoresAndThreeDimensionalGraphsTurnOneDegreePerRelease) {
    Real_Single();
    ZENDRITE_STORE& g = zendrite_param_global();
    g.graph_mode = "none";
    const float xmin = g.win_xmin;
    Mouse_Event(Mouse(MouseButDown, kLeftButton, 400, 400));
    Mouse_Event(Mouse(MouseButUp, kLeftButton, 600, 600));
    EXPECT_EQ(Mouse_State().drag, 0);
    EXPECT_FLOAT_EQ(g.win_xmin, xmin);

    g.graph_mode = "graph3d";
    MOUSE_STATE& m = Mouse_State();
    m.rotation = 0;
    m.elevation = 22;
    Mouse_Event(Mouse(MouseButDown, kLeftButton, 500, 400));
    Mouse_Event(Mouse(MouseButUp, kLeftButton, 900, 100));  // a long drag is still one degree
    EXPECT_EQ(m.rotation, 1);
    EXPECT_EQ(m.elevation, 21);
    EXPECT_EQ(WindowStatusBarText(3), " Rotation : 1");
    m.elevation = 45;
    m.rotation = -180;
    Mouse_Event(Mouse(MouseButDown, kLeftButton, 500, 400));
    Mouse_Event(Mouse(MouseButUp, kLeftButton, 400, 500));
    EXPECT_EQ(m.rotation, -180);
    EXPECT_EQ(m.elevation, 45);

    g.graph_mode = "graph2dcontour";
    Multi_View_State().contour_drawn = false;
    WindowOutStatusBar(3, "Pattern: 9");
    float px = 0, py = 0;
    Page_Of(50, 0.0f, px, py);
    Mouse_Event(Mouse(MouseMove, 0, px, py + 1));
    EXPECT_EQ(WindowStatusBarText(3), "");  // no map drawn yet: no pattern to name
    g.graph_mode = "single";
}
