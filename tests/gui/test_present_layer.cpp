// The presentation layer on the offscreen platform: events, dialog fields, drawing, units, ticks.
#include <gtest/gtest.h>

#include <cmath>

#include "app/present.h"

using namespace zendrite;

namespace {
struct Layer : ::testing::Test {
    static void SetUpTestSuite() {
        static int argc = 1;
        static char name[] = "test";
        static char* argv[] = {name, nullptr};
        WInitialise(argc, argv, true);
        WSetUnattended(true);
        WindowOpen(0, 0, 640, 400, "layer test");
    }
};
}  // namespace

TEST_F(Layer, EventsComeOutInOrder) {
    while (WMessagePending()) {
        int t;
        WIN_MESSAGE m;
        WMessage(t, m);
    }
    for (int i = 1; i <= 3; ++i) {
        WIN_MESSAGE m;
        m.type = MenuSelect;
        m.value1 = 40000 + i;
        WMessagePost(m);
    }
    WIN_MESSAGE b;
    b.type = PushButton;
    b.win = 128;
    b.value1 = 1267;
    WMessagePost(b);
    int type = 0;
    WIN_MESSAGE m;
    for (int i = 1; i <= 3; ++i) {
        WMessage(type, m);
        EXPECT_EQ(type, MenuSelect);
        EXPECT_EQ(m.value1, 40000 + i);
    }
    WMessage(type, m);
    EXPECT_EQ(type, PushButton);
    EXPECT_EQ(m.win, 128);
    EXPECT_EQ(m.value1, 1267);
    // With nothing queued and no script, an unattended run asks to close.
    WMessage(type, m);
    EXPECT_EQ(type, CloseRequest);
}

TEST_F(Layer, DialogFieldsRoundTrip) {
    DIALOG_TEMPLATE t;
    t.id = 501;
    t.title = "Round trip";
    t.fields = {Fld(10, FIELD_KIND::Text, "Name"), Fld(11, FIELD_KIND::Real, "Value"),
                Fld(12, FIELD_KIND::Integer, "Count"), Fld(13, FIELD_KIND::CheckBox, "Flag"),
                Fld(20, FIELD_KIND::Radio, "A"), Fld(21, FIELD_KIND::Radio, "B"), Fld(22, FIELD_KIND::Radio, "C"),
                Fld(30, FIELD_KIND::Combo, "Kind"), Fld(31, FIELD_KIND::Spin, "Spin")};
    for (auto& f : t.fields)
        if (f.kind == FIELD_KIND::Radio) f.group = 20;
    DIALOG_FIELD g = Fld(40, FIELD_KIND::Grid, "Grid");
    g.rows = 3;
    g.columns = {{"x", CELL_KIND::Real, {}}, {"on", CELL_KIND::CheckBox, {}}};
    t.fields.push_back(g);
    WDialogDefine(t);
    WDialogLoad(501);
    WDialogPutString(10, "PSI DMC");
    WDialogPutReal(11, 1.494);
    WDialogPutInteger(12, -7);
    WDialogPutCheckBox(13, 1);
    WDialogPutRadioButton(22);
    WDialogPutMenu(30, {"one", "two", "three"}, 2);
    WDialogRangeInteger(31, 0, 10);
    WDialogPutInteger(31, 25);  // beyond the range is kept as given, then clipped at the next range
    WGridPutCellReal(40, 1, 3, 2.5);
    WGridPutCellCheckBox(40, 2, 2, 1);
    std::string s;
    float r = 0;
    int i = 0, c = 0, radio = 0, menu = 0;
    WDialogGetString(10, s);
    WDialogGetReal(11, r);
    WDialogGetInteger(12, i);
    WDialogGetCheckBox(13, c);
    WDialogGetRadioButton(20, radio);
    std::string text;
    WDialogGetMenu(30, menu, &text);
    EXPECT_EQ(s, "PSI DMC");
    EXPECT_FLOAT_EQ(r, 1.494f);
    EXPECT_EQ(i, -7);
    EXPECT_EQ(c, 1);
    EXPECT_EQ(radio, 3);
    EXPECT_EQ(menu, 2);
    EXPECT_EQ(text, "two");
    float x = 0;
    int on = -1;
    WGridGetCellReal(40, 1, 3, x);
    EXPECT_FLOAT_EQ(x, 2.5f);
    std::vector<int> col;
    WGridGetCheckBox(40, 2, col);
    EXPECT_EQ(col, (std::vector<int>{0, 1, 0}));
    WGridGetCellCheckBox(40, 2, 9, on);  // outside the grid: untouched
    EXPECT_EQ(on, -1);
    // A field that is not a number leaves the value alone.
    WDialogPutString(11, "abc");
    r = 3.0f;
    WDialogGetReal(11, r);
    EXPECT_FLOAT_EQ(r, 3.0f);
    // A scripted answer sets fields and ends the dialog with the button pressed.
    WQueueDialogAnswer("Round trip", {"set", 10, 0, 0, "changed"});  // by title
    WQueueDialogAnswer("Round trip", {"radio", 20, 0, 0, ""});
    WQueueDialogAnswer("Round trip", {"press", 2, 0, 0, ""});
    WDialogShow(-1, -1, 0, Modal);
    EXPECT_EQ(WInfoDialog(4), 2);
    WDialogGetString(10, s);
    WDialogGetRadioButton(20, radio);
    EXPECT_EQ(s, "changed");
    EXPECT_EQ(radio, 1);
    // By number; answers without a press end with OK.
    WQueueDialogAnswer("501", {"radio", 21, 0, 0, ""});
    WDialogShow(-1, -1, 0, Modal);
    EXPECT_EQ(WInfoDialog(4), 1);
    WDialogGetRadioButton(20, radio);
    EXPECT_EQ(radio, 2);
    // Nothing queued: cancelled.
    WDialogShow(-1, -1, 0, Modal);
    EXPECT_EQ(WInfoDialog(4), 2);
    WDialogUnload();
    EXPECT_FALSE(WDialogOpen(501));
}

TEST_F(Layer, ExclusiveOrTwiceRestoresThePicture) {
    int bm = 0;
    IGrPaletteBackground(WRGB(150, 200, 150));
    WBitmapCreate(bm, 300, 200);
    IGrSelect(2, bm);
    IGrArea(0, 0, 1, 1);
    IGrUnits(0, 0, 1200, 800);
    IGrColourN(WRGB(255, 0, 0));
    IGrMoveTo(0, 0);
    IGrLineTo(1200, 800);
    std::vector<int> before;
    for (int y = 0; y < 200; y += 3)
        for (int x = 0; x < 300; x += 3) before.push_back(IGrGetPixelRGB(x, y));
    IGrPlotMode(PlotXor);
    IGrColourN(WRGB(0, 255, 255));
    IGrRectangle(100, 100, 900, 600);
    IGrMoveTo(0, 800);
    IGrLineTo(1200, 0);
    const int changed = IGrGetPixelRGB(150, 100);  // where the new diagonal crosses
    IGrRectangle(100, 100, 900, 600);
    IGrMoveTo(0, 800);
    IGrLineTo(1200, 0);
    IGrPlotMode(PlotNormal);
    std::vector<int> after;
    for (int y = 0; y < 200; y += 3)
        for (int x = 0; x < 300; x += 3) after.push_back(IGrGetPixelRGB(x, y));
    EXPECT_NE(changed, before[static_cast<std::size_t>((99 / 3) * 100 + 50)]);
    EXPECT_EQ(before, after);
    WBitmapDestroy(bm);
    IGrSelect(1, kRootWindow);
}

TEST_F(Layer, PageAndDataUnitsInvertEachOther) {
    IGrSelect(1, kRootWindow);
    IGrArea(0, 0, 1, 1);
    IGrUnits(0, 0, 1200, 800);
    IPgArea(0.15f, 0.15f, 0.85f, 0.85f);
    IPgUnits(2.948f, -120.0f, 162.898f, 5400.0f);
    float px = 0, py = 0, x = 0, y = 0;
    IPgXYToPage(2.948f, -120.0f, px, py);
    EXPECT_NEAR(px, 180.0f, 1e-3);
    EXPECT_NEAR(py, 120.0f, 1e-3);
    IPgXYToPage(162.898f, 5400.0f, px, py);
    EXPECT_NEAR(px, 1020.0f, 1e-2);
    EXPECT_NEAR(py, 680.0f, 1e-2);
    for (float xv : {3.0f, 47.5f, 160.1f, -10.0f})
        for (float yv : {0.0f, 2500.0f, -500.0f}) {
            IPgXYToPage(xv, yv, px, py);
            IPgPageToXY(px, py, x, y);
            EXPECT_NEAR(x, xv, 1e-3);
            EXPECT_NEAR(y, yv, 1e-2);
        }
}

TEST_F(Layer, TicksAreOneTwoFiveSteps) {
    EXPECT_DOUBLE_EQ(Nice_Tick_Step(0, 10, 10), 1.0);
    EXPECT_DOUBLE_EQ(Nice_Tick_Step(2.948, 162.898, 8), 20.0);
    EXPECT_DOUBLE_EQ(Nice_Tick_Step(0, 5400, 6), 1000.0);
    EXPECT_DOUBLE_EQ(Nice_Tick_Step(0, 0.03, 6), 0.005);
    EXPECT_DOUBLE_EQ(Nice_Tick_Step(-1, 1, 8), 0.2);
    EXPECT_EQ(Nice_Tick_Step(3, 3, 8), 0.0);  // an empty range has no ticks
    for (double hi : {0.7, 13.0, 99.0, 1234.0, 7.7e5}) {
        const double s = Nice_Tick_Step(0, hi, 7);
        const double m = s / std::pow(10.0, std::floor(std::log10(s) + 1e-12));
        EXPECT_TRUE(std::fabs(m - 1) < 1e-9 || std::fabs(m - 2) < 1e-9 || std::fabs(m - 5) < 1e-9) << hi;
        EXPECT_GE(hi / s, 3.0);
        EXPECT_LE(hi / s, 15.0);
    }
}

TEST_F(Layer, LongCurvesDrawLikeEveryPoint) {
    // A reduced curve covers the same pixels as the joined points: compare the column extents.
    int bm = 0;
    IGrPaletteBackground(WRGB(255, 255, 255));
    WBitmapCreate(bm, 400, 300);
    IGrSelect(2, bm);
    IGrArea(0, 0, 1, 1);
    IGrUnits(0, 0, 1200, 800);
    IPgArea(0, 0, 1, 1);
    IPgUnits(0, -1.2f, 100, 1.2f);
    IPgStartGraph(PgXY, 1, 20000);
    IPgStyle(1, 0, 1, WRGB(0, 0, 0), 0, 1, 5);
    std::vector<float> x(20000), y(20000);
    for (int i = 0; i < 20000; ++i) {
        x[static_cast<std::size_t>(i)] = i * 100.0f / 19999.0f;
        y[static_cast<std::size_t>(i)] = std::sin(i * 0.5f);
    }
    IPgXYLine(x.data(), y.data(), 20000);
    // Every column across the frame is inked from near the top to near the bottom.
    for (int col = 20; col < 380; col += 37) {
        int top = 300, bottom = -1;
        for (int row = 0; row < 300; ++row)
            if (IGrGetPixelRGB(col, row) != WRGB(255, 255, 255)) top = std::min(top, row), bottom = std::max(bottom, row);
        EXPECT_LT(top, 30) << col;
        EXPECT_GT(bottom, 270) << col;
    }
    WBitmapDestroy(bm);
}

TEST_F(Layer, SelectorsAndMessageBoxesTakeTheirQueuedAnswers) {
    std::string name = "unchanged";
    WQueueFiles({"/d/a.dat", "/d/b.dat"});
    WSelectFile("Input Data File |*.dat|", LoadDialog | MultiFile, name, "Select data files to open");
    EXPECT_EQ(WInfoDialog(4), kIdOk);
    EXPECT_EQ(name, std::string("/d\0a.dat\0b.dat", 14));
    EXPECT_EQ(Selected_Files(name), (std::vector<std::string>{"/d/a.dat", "/d/b.dat"}));
    // A single selector keeps the first name only.
    WQueueFiles({"/d/a.dat", "/d/b.dat"});
    WSelectFile("x|*|", LoadDialog, name, "one");
    EXPECT_EQ(name, "/d/a.dat");
    // An empty answer is Cancel, and the name stays.
    WQueueFiles({});
    WSelectFile("x|*|", LoadDialog, name, "cancel");
    EXPECT_EQ(WInfoDialog(4), kIdCancel);
    EXPECT_EQ(name, "/d/a.dat");
    // No answer at all is also Cancel.
    WSelectDir(0, name, "Select Corvane Directory");
    EXPECT_EQ(WInfoDialog(4), kIdCancel);
    WQueueAnswer(2);
    WMessageBox(YesNo, QuestionIcon, 1, "Do you want to run DICVOL?", "Running DICVOL");
    EXPECT_EQ(WInfoDialog(4), 2);
    WMessageBox(YesNo, QuestionIcon, 1, "Do you want to run DICVOL?", "Running DICVOL");
    EXPECT_EQ(WInfoDialog(4), 1) << "without an answer the default button";
    WQueueAnswer(2);
    WMessageBox(OkOnly, InformationIcon, 1, "text", "title");
    EXPECT_EQ(WInfoDialog(4), 1) << "a box with one button ends with OK";
}

TEST_F(Layer, StatusBarMenusAndAreas) {
    WStatusBarParts(5, {4500, 1500, 1500, 1500, -1});
    WindowOutStatusBar(2, "2theta");
    WindowOutStatusBar(9, "beyond the parts is kept, not shown");
    EXPECT_EQ(WindowStatusBarText(2), "2theta");
    EXPECT_EQ(WindowStatusBarText(9), "beyond the parts is kept, not shown");
    EXPECT_EQ(WindowStatusBarText(0), "");
    WMenuDefine(7, {{MenuPopup, 0, "File", false}, {MenuItem, 40014, "Open", false},
                    {MenuItem, 40111, "View target at centre", true}, {MenuEnd, 0, "", false}});
    WMenu(7);
    EXPECT_TRUE(WMenuHasItem(40111));
    EXPECT_FALSE(WMenuHasItem(40999));
    WMenuSetState(40111, 2, 1);
    WMenuSetState(40014, 1, 0);
    EXPECT_EQ(WMenuGetState(40111, 2), 1);
    EXPECT_EQ(WMenuGetState(40014, 1), 0);
    WMenuSetString(40014, "1. <Empty>");
    EXPECT_EQ(WMenuGetString(40014), "1. <Empty>");
    // Clearing the right half of a bitmap leaves the left half alone.
    int bm = 0;
    IGrPaletteBackground(WRGB(0, 0, 0));
    WBitmapCreate(bm, 100, 50);
    IGrSelect(2, bm);
    IGrArea(0.5f, 0, 1, 1);
    IGrPaletteBackground(WRGB(255, 255, 255));
    IGrAreaClear();
    EXPECT_EQ(IGrGetPixelRGB(10, 25), WRGB(0, 0, 0));
    EXPECT_EQ(IGrGetPixelRGB(90, 25), WRGB(255, 255, 255));
    EXPECT_EQ(IGrGetPixelRGB(500, 25), -1);
    IGrArea(0, 0, 1, 1);
    WBitmapDestroy(bm);
    IGrSelect(1, kRootWindow);
}

TEST_F(Layer, MarkersOnePerOccupiedPixelStayInTheFrame) {
    int bm = 0;
    IGrPaletteBackground(WRGB(255, 255, 255));
    WBitmapCreate(bm, 200, 100);
    IGrSelect(2, bm);
    IGrArea(0, 0, 1, 1);
    IGrUnits(0, 0, 1200, 800);
    IPgArea(0.25f, 0.25f, 0.75f, 0.75f);  // pixels 50..150 by 25..75
    IPgUnits(0, 0, 10, 10);
    IPgStartGraph(PgXY, 1, 0);
    IPgStyle(1, 3, 3, WRGB(0, 0, 255), -1, 1, 3);
    // Many points on two spots, and points outside the frame.
    std::vector<float> x, y;
    for (int i = 0; i < 5000; ++i) {
        x.push_back(i % 2 ? 2.0f : 8.0f);
        y.push_back(5.0f);
    }
    x.push_back(-50), y.push_back(5);
    x.push_back(5), y.push_back(500);
    IPgXYMarkers(x.data(), y.data(), static_cast<int>(x.size()));
    int inked = 0, outside = 0;
    for (int r = 0; r < 100; ++r)
        for (int c = 0; c < 200; ++c)
            if (IGrGetPixelRGB(c, r) != WRGB(255, 255, 255)) {
                ++inked;
                if (c < 47 || c > 153 || r < 22 || r > 78) ++outside;
            }
    EXPECT_GT(inked, 4);
    EXPECT_LE(inked, 2 * 16) << "two filled squares of side 3 or 4";
    EXPECT_EQ(outside, 0);
    WBitmapDestroy(bm);
    IGrSelect(1, kRootWindow);
}
