// The free-format and XY writers, checked by reading their files back.
#include <gtest/gtest.h>

#include <cmath>

#include "patterns/pattern_writers.h"
#include "patterns/read_pattern.h"
#include "support/fixed_text.h"
#include "test_files.h"

using namespace hxl;
using zdtest::Scratch_Path;
using zdtest::Slurp;

namespace {

DIFFRACTION_PATTERN_TYPE make_pattern(int n, float x0, float dx, float peak) {
    DIFFRACTION_PATTERN_TYPE p;
    Allocate_Pattern(p, n);
    for (int i = 1; i <= n; ++i) {
        p.x(i) = x0 + static_cast<float>(i - 1) * dx;
        p.y(i) = peak * std::exp(-0.05f * static_cast<float>((i - n / 2) * (i - n / 2)));
        p.sigma(i) = std::max(p.y(i), 1.0f);
    }
    p.xmin = p.x(1);
    p.xmax = p.x(n);
    p.step = dx;
    p.title = "Written by a test";
    p.scat_var = "2theta";
    Pattern_Y_Limits(p);
    return p;
}

}  // namespace

TEST(Writers, FreeFormatResamplesUnequalStepsAndReadsBack) {
    DIFFRACTION_PATTERN_TYPE p = make_pattern(40, 10.0f, 0.1f, 500.0f);
    // Unequal steps: squeeze the first half.
    for (int i = 2; i <= 20; ++i) p.x(i) = 10.0f + 0.08f * static_cast<float>(i - 1);
    std::string msg;
    const std::string path = Scratch_Path("unequal.dat");
    ASSERT_TRUE(Save_Free_Format(path, p, msg)) << msg;
    DIFFRACTION_PATTERN_TYPE q;
    Read_Pattern(path, q);
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(q.npts, 40);
    EXPECT_NEAR(q.xmin, 10.0f, 1e-5);
    EXPECT_NEAR(q.xmax, p.x(40), 1e-4);
    EXPECT_NEAR(q.step, (p.x(40) - 10.0f) / 39.0f, 1e-5);
    EXPECT_EQ(Trim(q.title), "Written by a test");
    // Equal steps after resampling; the end points are kept exactly.
    for (int i = 2; i <= q.npts; ++i) EXPECT_NEAR(q.x(i) - q.x(i - 1), q.step, 1e-4);
    EXPECT_NEAR(q.y(1), p.y(1), 1e-3);
    EXPECT_NEAR(q.y(40), p.y(40), 1e-3);
}

TEST(Writers, FreeFormatDecimalsFollowTheLargestRoundedValue) {
    EXPECT_EQ(Free_Format_Decimals(99.4f), 4);
    EXPECT_EQ(Free_Format_Decimals(99.6f), 3);
    EXPECT_EQ(Free_Format_Decimals(999.4f), 3);
    EXPECT_EQ(Free_Format_Decimals(999.6f), 2);
    EXPECT_EQ(Free_Format_Decimals(9999.4f), 2);
    EXPECT_EQ(Free_Format_Decimals(12345.0f), 1);
    EXPECT_EQ(Free_Format_Decimals(2.0e6f), 0);

    std::string msg;
    for (float top : {99.4f, 99.6f}) {
        DIFFRACTION_PATTERN_TYPE p = make_pattern(12, 1.0f, 1.0f, 1.0f);
        for (int i = 1; i <= 12; ++i) p.y(i) = (i == 6) ? top : 1.25f;
        const std::string path = Scratch_Path("magnitude.dat");
        ASSERT_TRUE(Save_Free_Format(path, p, msg)) << msg;
        const std::string text = Slurp(path);
        const std::string second = text.substr(text.find('\n') + 1, 80);
        EXPECT_EQ(second.substr(0, 16), top < 99.5f ? "  1.2500  1.2500" : "   1.250   1.250") << second;
        EXPECT_EQ(text.find('\n', text.find('\n') + 1) - text.find('\n') - 1, 80u);  // ten fields of 8
    }
}

TEST(Writers, FreeFormatRefusesTooFewPointsAndBadPaths) {
    DIFFRACTION_PATTERN_TYPE p = make_pattern(1, 1.0f, 1.0f, 5.0f);
    std::string msg;
    EXPECT_FALSE(Save_Free_Format(Scratch_Path("one.dat"), p, msg));
    EXPECT_EQ(msg, "Number of Points to Save was Wrong!");
    DIFFRACTION_PATTERN_TYPE q = make_pattern(20, 1.0f, 1.0f, 5.0f);
    EXPECT_FALSE(Save_Free_Format("/nonexistent-dir/x.dat", q, msg));
    EXPECT_EQ(msg, "Unable to write Free Format Pattern File!");
    EXPECT_FALSE(Save_XY("/nonexistent-dir/x.xys", q, "x", XY_Export_Defaults(q), msg));
    EXPECT_EQ(msg, "Unable to write XY Pattern File!");
}

TEST(Writers, LargeValuesNeverRunTogether) {
    DIFFRACTION_PATTERN_TYPE p = make_pattern(12, 1.0f, 1.0f, 1.0f);
    for (int i = 1; i <= 12; ++i) p.y(i) = (i % 2) ? 123456789.0f : -98765.0f;
    p.sigma.fill(1.0f);
    std::string msg;
    const std::string path = Scratch_Path("large.dat");
    ASSERT_TRUE(Save_Free_Format(path, p, msg)) << msg;
    DIFFRACTION_PATTERN_TYPE q;
    Read_Pattern(path, q);
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    ASSERT_EQ(q.npts, 12);
    EXPECT_NEAR(q.y(1), 123456789.0f, 10.0f);
    EXPECT_NEAR(q.y(2), -98765.0f, 0.5f);
}

TEST(Writers, XYRoundTripKeepsInclusiveLimitsAndStandardDeviations) {
    DIFFRACTION_PATTERN_TYPE p = make_pattern(30, 5.0f, 0.5f, 400.0f);
    XY_EXPORT_TYPE o = XY_Export_Defaults(p);
    EXPECT_EQ(o.xmin, 5.0f);
    EXPECT_EQ(o.xmax, p.x(30));
    o.xmin = p.x(3);   // equal to a point: kept
    o.xmax = p.x(27);
    std::string msg;
    const std::string path = Scratch_Path("limits.xys");
    ASSERT_TRUE(Save_XY(path, p, "orig.dat", o, msg)) << msg;
    const std::string text = Slurp(path);
    EXPECT_EQ(text.find("XYDATA\nTITLE: Written by a test\n! File saved from Zendrite-2006\n! File name: orig.dat\n"
                        "! Scattering variable: 2theta\n! 2theta     Intensity\n"),
              0u);
    EXPECT_EQ(text.find("multiplied"), std::string::npos);

    DIFFRACTION_PATTERN_TYPE q;
    Read_Pattern(path, q, "XYSIGMA");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(q.npts, 25);
    EXPECT_FLOAT_EQ(q.xmin, p.x(3));
    EXPECT_FLOAT_EQ(q.xmax, p.x(27));
    EXPECT_EQ(Trim(q.title), "Written by a test");
    EXPECT_EQ(Trim(q.scat_var), "2theta");
    for (int i = 1; i <= q.npts; ++i) {
        EXPECT_NEAR(q.y(i), p.y(i + 2), 1e-3);
        EXPECT_NEAR(q.sigma(i), p.sigma(i + 2), 2e-3 * p.sigma(i + 2) + 1e-3);  // variance again
    }
}

TEST(Writers, XYMultiplierLineAndBackground) {
    DIFFRACTION_PATTERN_TYPE p = make_pattern(20, 1.0f, 1.0f, 100.0f);
    XY_EXPORT_TYPE o = XY_Export_Defaults(p);
    std::string msg;
    o.multiplier = 1.0005f;
    ASSERT_TRUE(Save_XY(Scratch_Path("f1.xys"), p, "a", o, msg));
    EXPECT_EQ(Slurp(Scratch_Path("f1.xys")).find("multiplied"), std::string::npos);
    o.multiplier = 2.0f;
    o.a = 0.5f;
    o.b = 3.0f;
    ASSERT_TRUE(Save_XY(Scratch_Path("f2.xys"), p, "a", o, msg));
    const std::string text = Slurp(Scratch_Path("f2.xys"));
    EXPECT_NE(text.find("! The original data and sigma have been multiplied by:       2.0000\n"), std::string::npos);
    DIFFRACTION_PATTERN_TYPE q;
    Read_Pattern(Scratch_Path("f2.xys"), q, "XYSIGMA");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    ASSERT_EQ(q.npts, 20);
    for (int i : {1, 10, 20}) {
        EXPECT_NEAR(q.y(i), (p.y(i) - (0.5f * p.x(i) + 3.0f)) * 2.0f, 1e-3);
        EXPECT_NEAR(std::sqrt(q.sigma(i)), std::sqrt(p.sigma(i)) * 2.0f, 1e-3);
    }
}

TEST(Writers, ExportNameGetsItsExtension) {
    EXPECT_EQ(Export_File_Name("out", ".dat"), "out.dat");
    EXPECT_EQ(Export_File_Name("out.txt", ".xys"), "out.txt");
    EXPECT_EQ(Export_File_Name("dir.v2/out", ".xys"), "dir.v2/out.xys");
}
