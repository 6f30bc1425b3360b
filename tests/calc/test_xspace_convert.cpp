// Conversions of values and patterns, against the table of an independent numpy script.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <random>
#include <sstream>

#include "calc/xspace.h"

using hxl::X_STEP;

namespace {

double convert(double x, std::vector<X_STEP> steps, double c1, double c2 = 0.0) {
    EXPECT_TRUE(hxl::Convert_X_Value(x, steps, c1, c2)) << x;
    return x;
}

void expect_rel(double got, double want, double tol, const std::string& what) {
    EXPECT_LE(std::fabs(got - want), tol * std::fabs(want)) << what << ": " << got << " vs " << want;
}

hxl::DIFFRACTION_PATTERN_TYPE pattern(std::vector<float> x, float lambda) {
    hxl::DIFFRACTION_PATTERN_TYPE p;
    hxl::Allocate_Pattern(p, static_cast<int>(x.size()));
    for (int i = 1; i <= p.npts; ++i) {
        p.x(i) = x[static_cast<std::size_t>(i - 1)];
        p.y(i) = 10.0f * static_cast<float>(i);
        p.sigma(i) = 3.0f;
    }
    p.xmin = x.front();
    p.xmax = x.back();
    p.step = 0.05f;
    p.lambda1 = lambda;
    p.scat_var = "2theta";
    return p;
}

}  // namespace

TEST(XSpaceConvert, AgreesWithTheNumpyTable) {
    std::ifstream in(std::string(ZD_TEST_DATA) + "/calc/xspace_reference.txt");
    ASSERT_TRUE(in) << "reference table missing";
    int angles = 0, times = 0;
    for (std::string line; std::getline(in, line);) {
        std::istringstream l(line);
        std::string kind;
        l >> kind;
        if (kind == "angle") {
            double lam, tt, d, q, s;
            l >> lam >> tt >> d >> q >> s;
            expect_rel(convert(tt, {X_STEP::Theta_To_D}, lam), d, 1e-10, line);
            expect_rel(convert(tt, {X_STEP::Theta_To_D, X_STEP::D_To_Q}, lam), q, 1e-10, line);
            expect_rel(convert(tt, {X_STEP::Theta_To_D, X_STEP::D_To_S}, lam), s, 1e-10, line);
            expect_rel(convert(d, {X_STEP::D_To_Theta}, lam), tt, 1e-8, line);
            expect_rel(convert(q, {X_STEP::Q_To_D, X_STEP::D_To_Theta}, lam), tt, 1e-8, line);
            expect_rel(convert(s, {X_STEP::S_To_D, X_STEP::D_To_Theta}, lam), tt, 1e-8, line);
            expect_rel(convert(q, {X_STEP::Q_To_S}, lam), s, 1e-9, line);
            expect_rel(convert(s, {X_STEP::S_To_Q}, lam), q, 1e-9, line);
            ++angles;
        } else if (kind == "time") {
            double dtt1, dtt2, tof, d;
            l >> dtt1 >> dtt2 >> tof >> d;
            expect_rel(hxl::D_From_Time(tof, dtt1, dtt2), d, 1e-9, line);
            expect_rel(convert(d, {X_STEP::D_To_Time}, dtt1, dtt2), tof, 1e-9, line);
            ++times;
        }
    }
    EXPECT_EQ(angles, 8);
    EXPECT_EQ(times, 8);
}

TEST(XSpaceConvert, QuadraticRootLinearLimitAndRandomInputs) {
    // |dtt2| <= 1e-6 is linear, exactly.
    EXPECT_EQ(hxl::D_From_Time(12000.0, 5000.0, 1e-6), 12000.0 / 5000.0);
    EXPECT_EQ(hxl::D_From_Time(12000.0, 5000.0, -1e-6), 12000.0 / 5000.0);
    EXPECT_NE(hxl::D_From_Time(12000.0, 5000.0, 1.1e-6), 12000.0 / 5000.0);
    // No positive root: dtt2 < 0 and a time beyond the top of the parabola.
    EXPECT_TRUE(std::isnan(hxl::D_From_Time(1e9, 1000.0, -1.0)));
    // Against the plain formula in long double, refined by Newton steps, on 10^5 inputs
    // that include the ranges where the plain formula in double cancels.
    std::mt19937_64 rng(14);
    std::uniform_real_distribution<double> u(0.0, 1.0);
    double worst = 0.0;
    for (int k = 0; k < 100000; ++k) {
        const double dtt1 = 1000.0 + 20000.0 * u(rng);
        const double dtt2 = (u(rng) < 0.5 ? -1.0 : 1.0) * std::pow(10.0, -5.0 + 7.0 * u(rng));
        const double d_true = 0.2 + 10.0 * u(rng);
        const double tof = dtt1 * d_true + dtt2 * d_true * d_true;
        if (tof <= 0.0 || dtt1 + 2.0 * dtt2 * d_true <= 0.0) continue;  // beyond the top of the parabola
        const long double a = dtt2, b = dtt1, c = -tof;
        long double ref = (-b + std::sqrt(b * b - 4.0L * a * c)) / (2.0L * a);
        for (int n = 0; n < 3; ++n) ref -= (a * ref * ref + b * ref + c) / (2.0L * a * ref + b);
        const double got = hxl::D_From_Time(tof, dtt1, dtt2);
        worst = std::max(worst, static_cast<double>(std::fabs((got - ref) / ref)));
    }
    EXPECT_LT(worst, 1e-6);
}

TEST(XSpaceConvert, DomainEdgesGiveNoValueNeverNaN) {
    double x = 0.0;
    EXPECT_FALSE(hxl::Convert_X_Value(x, {X_STEP::Theta_To_D}, 1.5, 0.0));  // 2theta 0: d infinite
    x = -3.0;
    EXPECT_FALSE(hxl::Convert_X_Value(x, {X_STEP::Theta_To_D}, 1.5, 0.0));
    EXPECT_EQ(x, -3.0);
    x = 0.5;
    EXPECT_FALSE(hxl::Convert_X_Value(x, {X_STEP::D_To_Theta}, 1.5, 0.0));  // lambda/2d > 1
    x = std::nan("");
    EXPECT_FALSE(hxl::Convert_X_Value(x, {X_STEP::D_To_S}, 1.5, 0.0));
    x = 10.0;
    EXPECT_FALSE(hxl::Convert_X_Value(x, {X_STEP::Theta_To_D}, 0.0, 0.0));  // no wavelength: d 0
    x = 180.0;
    EXPECT_TRUE(hxl::Convert_X_Value(x, {X_STEP::Theta_To_D}, 1.5, 0.0));
    EXPECT_NEAR(x, 0.75, 1e-12);

    // Random records in the allowed domain: every point converts to a finite positive value,
    // there and back.
    std::mt19937 rng(5);
    std::uniform_real_distribution<float> tt(1e-3f, 179.999f), lam(0.1f, 5.0f);
    for (int r = 0; r < 200; ++r) {
        std::vector<float> xs(50);
        for (float& v : xs) v = tt(rng);
        hxl::DIFFRACTION_PATTERN_TYPE p = pattern(xs, lam(rng));
        hxl::PRF_INFO_ADD_TYPE info;
        for (const auto& steps : {std::vector<X_STEP>{X_STEP::Theta_To_D}, {X_STEP::Theta_To_D, X_STEP::D_To_Q},
                                  {X_STEP::Theta_To_D, X_STEP::D_To_S}}) {
            hxl::DIFFRACTION_PATTERN_TYPE c = p;
            ASSERT_EQ(hxl::Unconvertible_Point(c, info, steps), "");
            std::vector<std::string> m;
            hxl::Convert_Pattern_X(c, info, steps, m);
            for (int i = 1; i <= c.npts; ++i) ASSERT_TRUE(std::isfinite(c.x(i)) && c.x(i) > 0.0f);
        }
    }
}

TEST(XSpaceConvert, APatternKeepsItsOrderIntensitiesAndStep) {
    hxl::DIFFRACTION_PATTERN_TYPE p = pattern({20.0f, 40.0f, 60.0f, 80.0f}, 1.5f);
    hxl::PRF_INFO_ADD_TYPE info;
    info.prf_type = "PRF";
    info.nrefl = 2;
    info.refl_pos = hxl::Array1<float>(2);
    info.refl_pos(1) = 30.0f;
    info.refl_pos(2) = 70.0f;
    std::vector<std::string> m;
    hxl::Convert_Pattern_X(p, info, {X_STEP::Theta_To_D}, m);
    // d = 1.5 / (2 sin 10 deg) = 4.3190, by hand.
    EXPECT_NEAR(p.x(1), 4.31902f, 1e-4f);
    EXPECT_GT(p.x(1), p.x(4));  // the order of the file stays: d falls
    EXPECT_EQ(p.xmin, p.x(4));
    EXPECT_EQ(p.xmax, p.x(1));
    EXPECT_EQ(p.y(3), 30.0f);
    EXPECT_EQ(p.sigma(2), 3.0f);
    EXPECT_EQ(p.step, 0.05f);
    EXPECT_EQ(p.ymin, 10.0f);
    EXPECT_EQ(p.ymax, 40.0f);
    EXPECT_NEAR(info.refl_pos(1), 1.5f / (2.0f * std::sin(15.0f * 3.14159265f / 180.0f)), 1e-5f);
    // A pattern file without reflections of its own keeps its arrays as they are.
    hxl::PRF_INFO_ADD_TYPE data = info;
    data.prf_type = "DATA";
    data.refl_pos(1) = 30.0f;
    hxl::Convert_Pattern_X(p, data, {X_STEP::D_To_Q}, m);
    EXPECT_EQ(data.refl_pos(1), 30.0f);
    // An empty pattern gets the largest float as its minimum.
    hxl::DIFFRACTION_PATTERN_TYPE e;
    hxl::Convert_Pattern_X(e, data, {X_STEP::D_To_Q}, m);
    EXPECT_EQ(e.xmin, 3.4028235e38f);
    // One point outside the domain is named before anything changes.
    hxl::DIFFRACTION_PATTERN_TYPE bad = pattern({0.0f, 10.0f}, 1.5f);
    EXPECT_EQ(hxl::Unconvertible_Point(bad, data, {X_STEP::Theta_To_D}), "point 1 (X = 0.000000)");
}

TEST(XSpaceConvert, TheRangeCheckNamesThePointTheConversionRefuses) {
    // Arrays that reach up to, and past, the edges of each domain: the check from the range of
    // the points must name the first point that the conversion itself finds without a value.
    std::mt19937 rng(21);
    auto uniform = [&](double a, double b) { return std::uniform_real_distribution<double>(a, b)(rng); };
    const std::vector<std::vector<X_STEP>> plans = {
        {X_STEP::Theta_To_D}, {X_STEP::Theta_To_D, X_STEP::D_To_Q}, {X_STEP::D_To_Theta},
        {X_STEP::Q_To_D, X_STEP::D_To_Theta}, {X_STEP::S_To_D, X_STEP::D_To_Theta}, {X_STEP::Q_To_S},
        {X_STEP::D_To_Time}, {X_STEP::Time_To_D}};
    int refused = 0, accepted = 0;
    for (int r = 0; r < 3000; ++r) {
        const auto& steps = plans[static_cast<std::size_t>(r) % plans.size()];
        const bool time = steps[0] == X_STEP::D_To_Time || steps[0] == X_STEP::Time_To_D;
        const double c1 = time ? uniform(1000.0, 20000.0) : uniform(0.3, 3.0);
        const double c2 = time ? uniform(-5.0, 5.0) : 0.0;
        std::vector<float> x(700);
        const int kind = (r / static_cast<int>(plans.size())) % 5;
        for (float& v : x) {
            if (kind == 0) v = static_cast<float>(uniform(0.01, 179.0));                   // plain data
            if (kind == 1) v = static_cast<float>(0.5 * c1 * (1.0 + uniform(-2e-7, 4e-6)));  // d near lambda/2
            if (kind == 2) v = static_cast<float>(uniform(170.0, 370.0));                  // angles past 180
            if (kind == 3) v = static_cast<float>(std::exp(uniform(-90.0, 90.0)));        // far out
            if (kind == 4) v = static_cast<float>(uniform(0.5, 5.0) * c1);
        }
        if (r % 11 == 0) x[static_cast<std::size_t>(r) % x.size()] = std::nanf("");
        if (r % 13 == 0) x.back() = -x.back();
        std::vector<float> out(x.size());
        const int n = static_cast<int>(x.size());
        const int want = hxl::Convert_X_Points(x.data(), out.data(), n, steps, c1, c2);
        ASSERT_EQ(hxl::Unconvertible_X_Point(x.data(), n, steps, c1, c2), want) << "case " << r;
        (want == 0 ? accepted : refused) += 1;
        // In place the same numbers come out.
        hxl::Map_X_Points(x.data(), n, steps, c1, c2);
        if (want == 0) {
            ASSERT_EQ(x, out) << "case " << r;
        }
    }
    // Both answers were met often.
    EXPECT_GT(refused, 500);
    EXPECT_GT(accepted, 500);
}
