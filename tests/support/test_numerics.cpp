#include <gtest/gtest.h>

#include <cmath>

#include "support/numerics.h"

using namespace hxl;

TEST(ZeroOf, FindsBracketedRoots) {
    bool ok = false;
    const float r2 = Zero_Of([](float x) { return x * x - 2.0f; }, 0.0f, 2.0f, 1e-6f, &ok);
    EXPECT_TRUE(ok);
    EXPECT_NEAR(r2, std::sqrt(2.0f), 2e-6);
    const float rc = Zero_Of([](float x) { return std::cos(x) - x; }, 0.0f, 1.0f, 1e-7f);
    EXPECT_NEAR(rc, 0.7390851f, 1e-6);
    // A root at an end, and a steep function that needs bisection.
    EXPECT_EQ(Zero_Of([](float x) { return x - 3.0f; }, 3.0f, 5.0f, 1e-6f), 3.0f);
    const float rs = Zero_Of([](float x) { return std::atan(1000.0f * (x - 0.3f)); }, -5.0f, 5.0f, 1e-6f, &ok);
    EXPECT_TRUE(ok);
    EXPECT_NEAR(rs, 0.3f, 1e-5);
    // The half width of a Gaussian of unit sigma: exp(-x^2/2) = 1/2.
    const float hw = Zero_Of([](float x) { return std::exp(-0.5f * x * x) - 0.5f; }, 0.0f, 5.0f, 1e-6f);
    EXPECT_NEAR(hw, std::sqrt(2.0f * std::log(2.0f)), 2e-6);

    const float none = Zero_Of([](float x) { return x * x + 1.0f; }, -1.0f, 2.0f, 1e-6f, &ok);
    EXPECT_FALSE(ok);
    EXPECT_EQ(none, -1.0f);
}

TEST(Erfc, MatchesTheLibraryFunction) {
    double worst = 0.0;
    for (double x = -4.0; x <= 9.0; x += 0.01) {
        const double want = std::erfc(x);
        const double rel = std::fabs(Erfc(x) - want) / want;
        worst = std::max(worst, rel);
    }
    EXPECT_LT(worst, 1.3e-7);
    EXPECT_NEAR(Erfc(0.0f), 1.0f, 2e-7);
    // The reflection erfc(-x) = 2 - erfc(x).
    EXPECT_NEAR(Erfc(-1.5) + Erfc(1.5), 2.0, 1e-15);
    EXPECT_EQ(Erfc(30.0f), 0.0f);
    EXPECT_FLOAT_EQ(Erfc(-30.0f), 2.0f);
}

TEST(Sind, DegreesInDoublePrecision) {
    EXPECT_DOUBLE_EQ(Sind(30.0), 0.5);
    EXPECT_NEAR(Sind(180.0), 0.0, 1e-15);
    EXPECT_DOUBLE_EQ(Sind(-90.0), -1.0);
    EXPECT_FLOAT_EQ(Sind(45.0f), static_cast<float>(std::sqrt(0.5)));
}

TEST(Locate, LastValueNotAbove) {
    const float x[5] = {1, 2, 2, 4, 8};
    EXPECT_EQ(Locate(x, 5, 0.5f), 0);
    EXPECT_EQ(Locate(x, 5, 1.0f), 1);
    EXPECT_EQ(Locate(x, 5, 1.5f), 1);
    EXPECT_EQ(Locate(x, 5, 2.0f), 3);  // the last of equal values
    EXPECT_EQ(Locate(x, 5, 7.99f), 4);
    EXPECT_EQ(Locate(x, 5, 8.0f), 5);
    EXPECT_EQ(Locate(x, 5, 100.0f), 5);
    EXPECT_EQ(Locate(x, 0, 3.0f), 0);
    EXPECT_EQ(Locate(x, 5, std::nanf("")), 0);
    Array1<float> a(3);
    a(1) = 10;
    a(2) = 20;
    a(3) = 30;
    EXPECT_EQ(Locate(a, 3, 25.0f), 2);
    EXPECT_EQ(Locate(a, 9, 35.0f), 3);  // n beyond the array is cut to it
}
