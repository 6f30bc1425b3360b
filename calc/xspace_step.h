#pragma once
// One step of an X conversion on one value in double, shared by the value and the
// array conversions so that both give the same numbers.
#include <cmath>
#include <limits>

#include "calc/xspace.h"

namespace hxl {

inline constexpr double kDegree = kTwoPi / 360.0;

// 2theta from d; NaN where lambda/2d > 1.
inline double Theta_From_D(double x, double lambda) {
    const double a = lambda / (2.0 * x);
    return a > 1.0 ? std::numeric_limits<double>::quiet_NaN() : 2.0 * std::asin(a) / kDegree;
}

inline double X_Step_Value(X_STEP s, double x, double c1, double c2) {
    switch (s) {
    case X_STEP::Theta_To_D: return c1 / (2.0 * std::sin(0.5 * x * kDegree));
    case X_STEP::D_To_Theta: return Theta_From_D(x, c1);
    case X_STEP::D_To_Q:
    case X_STEP::Q_To_D: return kTwoPi / x;
    case X_STEP::D_To_S:
    case X_STEP::S_To_D: return 1.0 / x;
    case X_STEP::S_To_Q: return kTwoPi * x;
    case X_STEP::Q_To_S: return x / kTwoPi;
    case X_STEP::D_To_Time: return x * (c1 + c2 * x);
    case X_STEP::Time_To_D: return D_From_Time(x, c1, c2);
    }
    return std::numeric_limits<double>::quiet_NaN();
}

}  // namespace hxl
