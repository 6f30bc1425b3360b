// The views of many patterns on profiles that could break them: the refusals, empty
// profiles, NaN intensities, zero and negative intensities in log, single points, and
// 2000 patterns of one point each. Each view must draw a picture or refuse with its text.
#include "graphics/multi_parts.h"
#include "graphics/multi_views.h"
#include "plot_fixture.h"

namespace {
using namespace zendrite;
using namespace ptest;

const MULTI_VIEW kViews[] = {MULTI_VIEW::Contour, MULTI_VIEW::Contour_Log, MULTI_VIEW::Stack, MULTI_VIEW::Surface};

// Draws `view` into a fresh bitmap of 600 x 400, left selected for reading its pixels.
bool draw(MULTI_VIEW view, std::string& message) {
    static int bitmap = 0;
    if (bitmap != 0) WBitmapDestroy(bitmap);
    WBitmapCreate(bitmap, 600, 400);
    IGrSelect(2, bitmap);
    return Draw_Multi_View(view, 600, 400, message);
}

int count_rgb(int rgb) {
    int n = 0;
    for (int y = 0; y < 400; ++y)
        for (int x = 0; x < 600; ++x) n += IGrGetPixelRGB(x, y) == rgb ? 1 : 0;
    return n;
}

TEST(MultiViews, ChecksRefuseWithTheirTexts) {
    Start_Window();
    Fresh_Store();
    ZENDRITE_STORE& g = zendrite_param_global();
    Add_Slot(50, 10, 20, [](float x) { return x; }, "a.dat");
    std::string message;
    EXPECT_FALSE(draw(MULTI_VIEW::Contour, message));
    EXPECT_EQ(message, "At least two profiles must be shown for this graph");
    Add_Slot(50, 10, 20, [](float x) { return 2 * x; }, "b.dat");
    EXPECT_TRUE(draw(MULTI_VIEW::Contour, message)) << message;
    g.show_profile[2] = false;  // hidden: one left
    EXPECT_FALSE(draw(MULTI_VIEW::Stack, message));
    g.show_profile[2] = true;
    g.pattern[2].scat_var = "TOF";
    EXPECT_FALSE(draw(MULTI_VIEW::Surface, message));
    EXPECT_EQ(message, "The profiles shown are not in one X space (profile 2 is in TOF)");
    g.pattern[2].scat_var = "2theta";
    for (const char* type : {"PRF", "MONO", "RIETV"}) {
        g.info[2].prf_type = type;
        EXPECT_FALSE(draw(MULTI_VIEW::Contour_Log, message)) << type;
        EXPECT_EQ(message, "Profile 2 comes from a Rietveld profile file: these graphs take observed patterns only");
    }
}

TEST(MultiViews, BadProfilesStillGiveAPicture) {
    Start_Window();
    Fresh_Store();
    ZENDRITE_STORE& g = zendrite_param_global();
    Add_Slot(200, 10, 30, [](float x) { return 100 + 50 * std::exp(-(x - 20) * (x - 20)); }, "good.dat");
    const int empty = ++g.nperfiles;  // a profile with no points
    g.pattern[static_cast<std::size_t>(empty)].scat_var = "2theta";
    g.info[static_cast<std::size_t>(empty)].prf_type = "DATA";
    Add_Slot(100, 10, 30, [](float) { return std::nanf(""); }, "nan.dat");
    Add_Slot(1, 15, 15, [](float) { return 70.0f; }, "one.dat");
    Add_Slot(100, 10, 30, [](float x) { return x < 20 ? 0.0f : -5.0f; }, "zero_and_negative.dat");
    std::string message;
    for (MULTI_VIEW v : kViews) EXPECT_TRUE(draw(v, message)) << static_cast<int>(v) << message;
    // in log the row of zero and negative intensities is all the lowest colour, never a hole
    ASSERT_TRUE(draw(MULTI_VIEW::Contour_Log, message));
    const int lowest = WRGB(0x44, 0x01, 0x54);
    const int rows = 5, frame_w = static_cast<int>(0.7 * 600), frame_h = static_cast<int>(0.7 * 400);
    EXPECT_GT(count_rgb(lowest), frame_w * frame_h / rows * 8 / 10);
    // the read-out: the peak of the first row, 100 + 50 at X = 20; nothing in the empty and NaN rows
    EXPECT_NEAR(Contour_Value(1, 20.0), 150.0, 1.0);
    EXPECT_TRUE(std::isnan(Contour_Value(2, 20.0)));
    EXPECT_TRUE(std::isnan(Contour_Value(3, 20.0)));
    EXPECT_FLOAT_EQ(Contour_Value(4, 15.0), 70.0f);
    EXPECT_TRUE(std::isnan(Contour_Value(4, 25.0)));
}

TEST(MultiViews, TwoThousandPatternsOfOnePoint) {
    Start_Window();
    Fresh_Store();
    for (int k = 0; k < 2000; ++k) {
        const float x = static_cast<float>(k % 100);
        Add_Slot(1, x, x, [k](float) { return static_cast<float>(k); }, "p" + std::to_string(k) + ".dat");
    }
    std::string message;
    for (MULTI_VIEW v : kViews) EXPECT_TRUE(draw(v, message)) << static_cast<int>(v) << message;
    EXPECT_EQ(Multi_View_State().slots.size(), 2000u);
}

}  // namespace
