#include <gtest/gtest.h>

#include <cmath>

#include "support/spline.h"

using namespace hxl;

// The end rows of the tridiagonal system, solved by hand for four equal
// steps of 1 through y = x^2 (second differences 2): y2(1) = -0.5 y2(2) and
// y2(4) = -0.5 y2(3), with the inner rows y2(i-1) + 4 y2(i) + y2(i+1) = 12.
TEST(Spline, SecondDerivativesWithThisLibrarysEnds) {
    const float x[4] = {0, 1, 2, 3};
    const float y[4] = {0, 1, 4, 9};
    float y2[4];
    Spline_Second_Derivative(x, y, 4, y2);
    // -0.5 a + 4a + b = 12 and a + 4b - 0.5 b = 12 give a = b = 12 / 4.5.
    const float a = 12.0f / 4.5f;
    EXPECT_NEAR(y2[1], a, 1e-5);
    EXPECT_NEAR(y2[2], a, 1e-5);
    EXPECT_NEAR(y2[0], -0.5f * a, 1e-5);
    EXPECT_NEAR(y2[3], -0.5f * a, 1e-5);

    // Through the knots whatever the ends.
    float v;
    for (int i = 0; i < 4; ++i) {
        Spline_Value(x, y, y2, 4, x[i], v);
        EXPECT_NEAR(v, y[i], 1e-5);
    }
    // Middle of the second interval: a = b = 1/2, a^3 - a = -3/8, h = 1.
    Spline_Value(x, y, y2, 4, 1.5f, v);
    EXPECT_NEAR(v, 2.5f - 0.375f * 2.0f * a / 6.0f, 1e-5);
}

TEST(Spline, FollowsASineAndItsSlope) {
    const int n = 41;
    Array1<float> x(n), y(n), y2(n), d(n);
    for (int i = 1; i <= n; ++i) {
        x(i) = static_cast<float>((i - 1) * 0.1);
        y(i) = std::sin(x(i));
    }
    Spline_Second_Derivative(x, y, n, y2);
    for (int i = 7; i <= n - 7; ++i) EXPECT_NEAR(y2(i), -y(i), 2e-3) << i;
    float v;
    Spline_Value(x, y, y2, n, 1.23f, v);
    EXPECT_NEAR(v, std::sin(1.23f), 1e-5);
    // Outside the range the end interval's cubic goes on.
    Spline_Value(x, y, y2, n, -0.05f, v);
    EXPECT_NEAR(v, std::sin(-0.05f), 1e-3);

    Spline_First_Derivative(x, y, n, y2, d);
    for (int i = 3; i <= n - 3; ++i) EXPECT_NEAR(d(i), std::cos(x(i)), 1e-3) << i;
    EXPECT_NEAR(d(n), std::cos(x(n)), 0.1);  // the last step is kept for the last point
}

TEST(Spline, DegenerateInputsDoNotFail) {
    const float x[2] = {1, 2};
    const float y[2] = {3, 5};
    float y2[2] = {9, 9};
    Spline_Second_Derivative(x, y, 2, y2);
    EXPECT_EQ(y2[0], 0.0f);
    EXPECT_EQ(y2[1], 0.0f);
    float v;
    Spline_Value(x, y, y2, 2, 1.25f, v);
    EXPECT_FLOAT_EQ(v, 3.5f);
    Spline_Value(x, y, y2, 1, 7.0f, v);
    EXPECT_FLOAT_EQ(v, 3.0f);
    const float xs[3] = {1, 1, 2};  // repeated abscissa
    Spline_Value(xs, y, y2, 2, 1.0f, v);
    EXPECT_TRUE(std::isfinite(v));
}
