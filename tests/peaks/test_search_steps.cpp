// The search driver step by step: the window, the smoothing of the
// derivatives, the background zones, the maxima and the thresholds.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "peaks/search_points.h"
#include "search_fixture.h"

using namespace hxl;

namespace {

const SEARCH_FILE_TYPE kNoFile{"", "", "", false};

int Search(const DIFFRACTION_PATTERN_TYPE& p, float x0, float x1, const char* mode, PKB_TYPE& r,
           const SEARCH_CONDITIONS_TYPE& c = {}) {
    return Search_Points(p, x0, x1, mode, c, kNoFile, r);
}

}  // namespace

TEST(SmoothDerivative, SevenPointMeanWithoutCentreWeight) {
    // A spike spreads to its neighbours and leaves nothing on itself.
    std::vector<float> v(20, 0.0f);
    v[9] = 32.0f;  // v(10)
    Smooth_Derivative(v.data(), 20, 1);
    EXPECT_FLOAT_EQ(v[9], 0.0f);
    EXPECT_FLOAT_EQ(v[8], 10.0f);
    EXPECT_FLOAT_EQ(v[10], 10.0f);
    EXPECT_FLOAT_EQ(v[7], 5.0f);
    EXPECT_FLOAT_EQ(v[6], 1.0f);
    EXPECT_FLOAT_EQ(v[5], 0.0f);
    // The edge weights: v(1) = (10 v(2) + 5 v(3) + v(4)) / 16 from old values.
    std::vector<float> e = {0, 16, 0, 0, 0, 0, 0, 0, 0, 0};
    Smooth_Derivative(e.data(), 10, 1);
    EXPECT_FLOAT_EQ(e[0], 10.0f);
    EXPECT_FLOAT_EQ(e[1], 0.0f);
    EXPECT_FLOAT_EQ(e[2], 160.0f / 31.0f);
    EXPECT_FLOAT_EQ(e[3], 80.0f / 32.0f);  // v(2) is two away from v(4)
    // The last three points mirror the first three.
    std::vector<float> m = {0, 0, 0, 0, 0, 0, 0, 0, 16, 0};
    Smooth_Derivative(m.data(), 10, 1);
    EXPECT_FLOAT_EQ(m[9], 10.0f);
    EXPECT_FLOAT_EQ(m[7], 160.0f / 31.0f);
    // A constant stays, zero passes and too short arrays are left alone.
    std::vector<float> c(12, 3.0f), z = {1, 5, 2, 8, 3, 9, 4, 7}, s = {1, 9, 1, 9, 1, 9};
    Smooth_Derivative(c.data(), 12, 4);
    for (float x : c) EXPECT_FLOAT_EQ(x, 3.0f);
    const auto z0 = z, s0 = s;
    Smooth_Derivative(z.data(), 8, 0);
    Smooth_Derivative(s.data(), 6, 3);
    EXPECT_EQ(z, z0);
    EXPECT_EQ(s, s0);
}

TEST(SearchWindow, TooFewPointsFlatAndBadValuesEndWithTheirTexts) {
    const auto p = Gauss_Pattern(10, 40, 0.02, {{20, 1000, 0.05}});
    PKB_TYPE r;
    r.np = 7;  // a previous result must survive every failure
    // One point in the window.
    EXPECT_EQ(Search(p, 20.0f, 20.0f, " ", r), 0);
    EXPECT_TRUE(ERR_Search);
    EXPECT_EQ(ERR_Search_Mess, kMsgFewBackground);
    // A window beside the pattern.
    EXPECT_EQ(Search(p, 50.0f, 60.0f, " ", r), 0);
    EXPECT_EQ(ERR_Search_Mess, kMsgFewBackground);
    // A flat pattern: every derivative is zero, no zone passes the strict test.
    const auto flat = Gauss_Pattern(10, 40, 0.02, {});
    EXPECT_EQ(Search(flat, 0.0f, 100.0f, " ", r), 0);
    EXPECT_EQ(ERR_Search_Mess, kMsgFewBackground);
    EXPECT_EQ(Search(flat, 0.0f, 100.0f, "background", r), 0);
    EXPECT_TRUE(ERR_Search);
    // Not-a-number and infinite counts are refused, not searched.
    auto bad = p;
    bad.y(700) = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(Search(bad, 0.0f, 100.0f, " ", r), 0);
    EXPECT_EQ(ERR_Search_Mess, kMsgBadIntensity);
    bad.y(700) = std::numeric_limits<float>::infinity();
    EXPECT_EQ(Search(bad, 0.0f, 100.0f, " ", r), 0);
    EXPECT_EQ(ERR_Search_Mess, kMsgBadIntensity);
    // ... but outside the window they do no harm.
    EXPECT_GT(Search(bad, 10.0f, 20.5f, " ", r), 0);
    EXPECT_FALSE(ERR_Search);
    r.np = 7;
    auto back = p;
    back.x(300) = back.x(299);
    EXPECT_EQ(Search(back, 0.0f, 100.0f, " ", r), 0);
    EXPECT_EQ(ERR_Search_Mess, kMsgBadX);
    EXPECT_EQ(r.np, 7);
}

TEST(SearchPeaks, FindsSeparatePeaksAndTheirBackground) {
    const std::vector<GAUSS> g = {{15, 2000, 0.04}, {22.5, 500, 0.05}, {31, 120, 0.06}, {37.2, 3000, 0.05}};
    const auto p = Gauss_Pattern(10, 40, 0.01, g, 200.0, -2.0);
    PKB_TYPE r;
    ASSERT_EQ(Search(p, 10.0f, 40.0f, " ", r), 4) << ERR_Search_Mess;
    for (int i = 1; i <= 4; ++i) {
        const GAUSS& k = g[static_cast<std::size_t>(i - 1)];
        EXPECT_NEAR(r.x(i), k.x, 0.005) << i;
        const double bg = 200.0 - 2.0 * k.x;
        EXPECT_NEAR(r.y(i), bg + k.height, 0.01 * k.height) << i;
        EXPECT_NEAR(r.bgr(i), bg, 3.0) << i;
    }
    // The window plays the part of the plot: only the peaks inside it.
    ASSERT_EQ(Search(p, 20.0f, 33.0f, " ", r), 2);
    EXPECT_NEAR(r.x(1), 22.5, 0.005);
    EXPECT_NEAR(r.x(2), 31.0, 0.005);
}

TEST(SearchBackground, PointsLieOnTheBackgroundAwayFromPeaks) {
    const auto p = Gauss_Pattern(10, 40, 0.01, {{15, 2000, 0.04}, {25, 800, 0.05}}, 300.0, -3.0);
    PKB_TYPE r;
    const int n = Search(p, 10.0f, 40.0f, "background", r);
    ASSERT_GE(n, 20) << ERR_Search_Mess;
    EXPECT_LE(n, 54);  // one point per zone at most: int(sqrt(3001)) zones
    for (int i = 1; i <= n; ++i) {
        EXPECT_NEAR(r.y(i), 300.0 - 3.0 * r.x(i), 0.5) << r.x(i);
        EXPECT_GT(std::fabs(r.x(i) - 15.0f), 0.15f);  // beyond 3.5 sigma of the peak
        if (i > 1) {
            EXPECT_GT(r.x(i), r.x(i - 1));
        }
    }
}

TEST(SearchThresholds, ZeroIterationsAndThePeakThreshold) {
    // A rippled pattern: without smoothing the ripple gives many crossings,
    // but the swing threshold relative to the largest swing still applies.
    const auto p = Gauss_Pattern(10, 40, 0.01, {{18, 5000, 0.05}, {30, 3000, 0.05}}, 200.0, 0.0, 3.0);
    SEARCH_CONDITIONS_TYPE c;
    c.iterations = 0;
    c.peak_threshold = 0.0f;
    c.shoulder_threshold = 1e9f;
    PKB_TYPE loose, strict;
    const int n_loose = Search(p, 10.0f, 40.0f, " ", loose, c);
    c.peak_threshold = 0.2f;
    const int n_strict = Search(p, 10.0f, 40.0f, " ", strict, c);
    ASSERT_EQ(n_strict, 2) << ERR_Search_Mess;
    EXPECT_NEAR(strict.x(1), 18.0, 0.01);
    EXPECT_NEAR(strict.x(2), 30.0, 0.01);
    EXPECT_GT(n_loose, 2);
    // Smoothing (the default three passes) removes the ripple's crossings.
    c = {};
    PKB_TYPE smooth;
    EXPECT_EQ(Search(p, 10.0f, 40.0f, " ", smooth, c), 2);
}

TEST(SearchShoulders, AShoulderOnAFlankIsFound) {
    // A small peak on the right flank of a large one gives no maximum of its own.
    const auto p = Gauss_Pattern(10, 30, 0.005, {{20, 10000, 0.08}, {20.17, 1500, 0.05}}, 100.0, 0.0);
    PKB_TYPE r;
    SEARCH_CONDITIONS_TYPE c;
    ASSERT_GE(Search(p, 10.0f, 30.0f, " ", r, c), 2) << ERR_Search_Mess;
    bool main = false, shoulder = false;
    for (int i = 1; i <= r.np; ++i) {
        main = main || std::fabs(r.x(i) - 20.0f) < 0.01f;
        shoulder = shoulder || std::fabs(r.x(i) - 20.17f) < 0.04f;
    }
    EXPECT_TRUE(main);
    EXPECT_TRUE(shoulder);
    // With an unreachable shoulder threshold only the maximum stays.
    c.shoulder_threshold = 1e9f;
    ASSERT_EQ(Search(p, 10.0f, 30.0f, " ", r, c), 1);
    EXPECT_NEAR(r.x(1), 20.0, 0.01);
}
