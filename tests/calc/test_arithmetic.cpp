// Sum, average, difference and the Multiply/Shift rescaling at their edges.
#include <gtest/gtest.h>

#include "calc/arithmetic.h"

using hxl::DIFFRACTION_PATTERN_TYPE;

namespace {

DIFFRACTION_PATTERN_TYPE pattern(std::vector<float> x, std::vector<float> y, float sigma_scale = 1.0f) {
    DIFFRACTION_PATTERN_TYPE p;
    hxl::Allocate_Pattern(p, static_cast<int>(x.size()));
    for (int i = 1; i <= p.npts; ++i) {
        p.x(i) = x[static_cast<std::size_t>(i - 1)];
        p.y(i) = y[static_cast<std::size_t>(i - 1)];
        p.sigma(i) = p.y(i) * sigma_scale;
        p.ycalc(i) = 100.0f + static_cast<float>(i);
    }
    p.xmin = p.x(1);
    p.xmax = p.x(p.npts);
    p.title = "run";
    hxl::Pattern_Y_Limits(p);
    return p;
}

}  // namespace

TEST(Sum, CombinesOnlyYAndKeepsTheFirstSigmaAndExtras) {
    const auto a = pattern({1, 2, 3, 4}, {10, 20, 30, 40}, 1.0f);
    const auto b = pattern({1, 2, 3, 4}, {1, 2, 3, 4}, 7.0f);
    const auto c = pattern({1, 2, 3, 4}, {100, 0, -5, 2}, 3.0f);
    DIFFRACTION_PATTERN_TYPE sum, avg;
    std::string m;
    ASSERT_TRUE(hxl::Sum_Patterns({&a, &b, &c}, false, sum, m)) << m;
    EXPECT_EQ(sum.y.vec(), (std::vector<float>{111, 22, 28, 46}));
    EXPECT_EQ(sum.sigma.vec(), a.sigma.vec());  // the first's variances, not the sum of all three
    EXPECT_EQ(sum.ycalc.vec(), a.ycalc.vec());
    EXPECT_EQ(sum.title, "Summation of profiles run");
    EXPECT_FLOAT_EQ(sum.ymin, 22);
    EXPECT_FLOAT_EQ(sum.ymax, 111);
    ASSERT_TRUE(hxl::Sum_Patterns({&a, &b, &c}, true, avg, m));
    EXPECT_FLOAT_EQ(avg.y(1), 37.0f);
    EXPECT_FLOAT_EQ(avg.y(3), 28.0f / 3.0f);
    EXPECT_EQ(avg.title, "Average of profiles run");
}

TEST(Sum, RefusalsInTheirOrderLeaveTheOutputAlone) {
    const auto a = pattern({1, 2, 3, 4}, {1, 1, 1, 1});
    const auto shorter = pattern({1, 2, 3}, {1, 1, 1});
    auto moved = pattern({1, 2, 3, 4}, {1, 1, 1, 1});
    moved.x(3) = 3.0001f;
    DIFFRACTION_PATTERN_TYPE out = pattern({9}, {9});
    std::string m;
    EXPECT_FALSE(hxl::Sum_Patterns({}, false, out, m));
    EXPECT_EQ(m, "ERROR: No profile selected to make sum/average");
    EXPECT_FALSE(hxl::Sum_Patterns({&a}, true, out, m));
    EXPECT_EQ(m, "ERROR: Only one profile selected to make sum/average");
    // equal steps, different counts: the text speaks of the step all the same
    EXPECT_FALSE(hxl::Sum_Patterns({&a, &shorter}, false, out, m));
    EXPECT_EQ(m, "ERROR: The X step size of selected profiles are not equal");
    EXPECT_FALSE(hxl::Sum_Patterns({&a, &moved}, false, out, m));
    EXPECT_EQ(m, "ERROR: The points of selected profiles are at different positions ");
    EXPECT_EQ(out.npts, 1);
    EXPECT_FLOAT_EQ(out.y(1), 9.0f);
}

TEST(Sum, InterpolatedOntoTheFirstGridWithVariancesAndCounts) {
    // b lies half a step off a and starts later; values of a straight line so
    // that linear interpolation is exact.
    const auto a = pattern({0, 1, 2, 3, 4}, {10, 10, 10, 10, 10}, 1.0f);
    const auto b = pattern({0.5f, 1.5f, 2.5f, 3.5f, 4.5f, 5.5f}, {1.5f, 2.5f, 3.5f, 4.5f, 5.5f, 6.5f}, 2.0f);
    DIFFRACTION_PATTERN_TYPE out;
    hxl::SUM_LEFT_OUT_TYPE lost;
    std::string m;
    ASSERT_TRUE(hxl::Sum_Patterns_Interpolated({&a, &b}, false, out, lost, m)) << m;
    // x = 0 lies before b: left out; 1..4 kept
    ASSERT_EQ(out.npts, 4);
    EXPECT_EQ(out.x.vec(), (std::vector<float>{1, 2, 3, 4}));
    EXPECT_FLOAT_EQ(out.y(1), 12.0f);
    EXPECT_FLOAT_EQ(out.y(4), 15.0f);
    // b's variances are 2*y: at x = 1 halfway between 3 and 5: 0.25*3 + 0.25*5 = 2, plus a's 10
    EXPECT_FLOAT_EQ(out.sigma(1), 12.0f);
    EXPECT_EQ(lost.beyond_first, 2);  // 4.5 and 5.5
    EXPECT_EQ(lost.not_covered, 1);
    DIFFRACTION_PATTERN_TYPE avg;
    ASSERT_TRUE(hxl::Sum_Patterns_Interpolated({&a, &b}, true, avg, lost, m));
    EXPECT_FLOAT_EQ(avg.y(1), 6.0f);
    EXPECT_FLOAT_EQ(avg.sigma(1), 3.0f);  // 12 / 2^2
    const auto apart = pattern({10, 11}, {1, 1});
    EXPECT_FALSE(hxl::Sum_Patterns_Interpolated({&a, &apart}, false, out, lost, m));
    EXPECT_EQ(out.npts, 4);
}

TEST(Difference, SubtractsOnEqualGridsAndRefusesOthers) {
    const auto a = pattern({1, 2, 3}, {5, 6, 7}, 1.0f);
    const auto b = pattern({1, 2, 3}, {1, 8, 2}, 5.0f);
    DIFFRACTION_PATTERN_TYPE d;
    std::string m;
    ASSERT_TRUE(hxl::Difference_Patterns(a, b, d, m));
    EXPECT_EQ(d.y.vec(), (std::vector<float>{4, -2, 5}));
    EXPECT_EQ(d.sigma.vec(), a.sigma.vec());
    EXPECT_FLOAT_EQ(d.ymin, -2);
    EXPECT_FLOAT_EQ(d.ymax, 5);
    EXPECT_FALSE(hxl::Difference_Patterns(a, pattern({1, 2}, {1, 1}), d, m));
    EXPECT_EQ(m, "Size of selected profiles must be the same");
    EXPECT_FALSE(hxl::Difference_Patterns(a, pattern({1, 2, 3.5f}, {1, 1, 1}), d, m));
    EXPECT_EQ(m, "X arrays of each profile are diferent");
}

TEST(MultiplyShift, AppliedTwiceAddsShiftsAndScalesVariancesBySquare) {
    auto p = pattern({1, 2, 3}, {2, 4, 6}, 1.0f);
    p.xmin = 1, p.xmax = 3;
    hxl::Multiply_Shift_Pattern(p, 1.0f, 2.0f);
    hxl::Multiply_Shift_Pattern(p, 1.0f, 2.0f);
    EXPECT_EQ(p.x.vec(), (std::vector<float>{3, 4, 5}));
    EXPECT_EQ(p.y.vec(), (std::vector<float>{8, 16, 24}));
    EXPECT_EQ(p.sigma.vec(), (std::vector<float>{32, 64, 96}));  // 2 * 2^2 * 2^2
    EXPECT_FLOAT_EQ(p.ymax, 24);
    EXPECT_FLOAT_EQ(p.xmin, 1);  // the panel does not move the limits
}

TEST(Monitor, RescalesToTheGivenMonitor) {
    auto p = pattern({1, 2}, {100, 50}, 1.0f);
    p.monitor = 2000;
    hxl::Normalize_Pattern_Monitor(p, 1000);
    EXPECT_FLOAT_EQ(p.y(1), 50);
    EXPECT_FLOAT_EQ(p.sigma(1), 25);
    EXPECT_FLOAT_EQ(p.monitor, 1000);
    EXPECT_FLOAT_EQ(p.ymax, 50);
}
