// The two filters: edges, refusals, and a real pattern against the table made
// by tests/tools/smoothing_reference.py (scipy savgol_coeffs, numpy.fft).
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <sstream>
#include <vector>

#include "calc/smoothing.h"

namespace {

std::vector<float> read_y(const std::string& file) {
    std::ifstream in(file);
    std::vector<float> y;
    double x = 0, v = 0;
    while (in >> x >> v) y.push_back(static_cast<float>(v));
    return y;
}

struct REFERENCE_ROW {
    int i = 0;
    double y = 0, poly = 0, fw5 = 0, fw40 = 0;
};

std::vector<REFERENCE_ROW> reference() {
    std::ifstream in(ZD_TEST_DATA "/calc/smoothing_reference.txt");
    std::vector<REFERENCE_ROW> rows;
    std::string line;
    while (std::getline(in, line)) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream s(line);
        REFERENCE_ROW r;
        s >> r.i >> r.y >> r.poly >> r.fw5 >> r.fw40;
        rows.push_back(r);
    }
    return rows;
}

}  // namespace

TEST(Smooth5Point, EndsSurviveAndShortPatternsStay) {
    std::vector<float> y = {1, 9, 2, 8, 3, 7, 4};
    const std::vector<float> raw = y;
    hxl::Smooth_5Point(y.data(), 7);
    EXPECT_EQ(y[0], raw[0]);
    EXPECT_EQ(y[1], raw[1]);
    EXPECT_EQ(y[5], raw[5]);
    EXPECT_EQ(y[6], raw[6]);
    // point 3 by hand: (-3*1 + 12*9 + 17*2 + 12*8 - 3*3) / 35 = 226/35
    EXPECT_NEAR(y[2], 226.0 / 35.0, 1e-5);
    for (int n = 1; n <= 4; ++n) {
        std::vector<float> s = {5, -1, 7, 2};
        hxl::Smooth_5Point(s.data(), n);
        EXPECT_EQ(s, (std::vector<float>{5, -1, 7, 2})) << n;
    }
}

TEST(SmoothingParameters, RangesOfOrderAndWindow) {
    std::string m;
    EXPECT_TRUE(hxl::Check_Polynomial_Order(1, m));
    EXPECT_TRUE(hxl::Check_Polynomial_Order(20, m));
    EXPECT_FALSE(hxl::Check_Polynomial_Order(21, m));
    EXPECT_EQ(m, "Incorrect value of parameter ");
    EXPECT_FALSE(hxl::Check_Polynomial_Order(0, m));
    const std::string window = "Incorrect value of Fourier Windows: FW > Npoints/2 ! Diminish the value of FW !";
    EXPECT_TRUE(hxl::Check_Fourier_Window(50, 101, m));  // 101/2 = 50
    m.clear();
    EXPECT_FALSE(hxl::Check_Fourier_Window(51, 101, m));
    EXPECT_EQ(m, window);
    m.clear();
    EXPECT_FALSE(hxl::Check_Fourier_Window(0, 101, m));
    EXPECT_EQ(m, window);
    EXPECT_FALSE(hxl::Check_Fourier_Window(-3, 101, m));
    EXPECT_FALSE(hxl::Check_Fourier_Window(NAN, 101, m));
    // a pattern too short to smooth takes the usual window and is left alone
    EXPECT_TRUE(hxl::Check_Fourier_Window(5, 3, m));
    std::vector<float> s = {4, 1, 3};
    hxl::Fourier_Smooth(s.data(), 3, 5);
    EXPECT_EQ(s, (std::vector<float>{4, 1, 3}));
}

TEST(FourierFilter, ConstantKeepsItsLevelWhereThePaddingOutreachesTheWindow) {
    // The gain is 1: far from the ends a constant stays. The mirrored quarters end in the
    // zero fill of the transform, and the window's kernel, about FW points wide with slowly
    // decaying tails, reaches that edge: up to FW = npts/50 every point stays within 1e-4,
    // beyond it the ends dip or rise (2.4% at FW = npts/2). The numbers are numpy's
    // (tests/data/calc/fourier_constant_reference.txt), not this code's.
    std::ifstream in(ZD_TEST_DATA "/calc/fourier_constant_reference.txt");
    const std::vector<float> windows = {5, 20, 50, 100, 250, 500};
    std::vector<std::vector<double>> ref(windows.size());
    std::string line;
    while (std::getline(in, line)) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream s(line);
        int i = 0;
        s >> i;
        for (auto& col : ref) {
            double v = 0;
            s >> v;
            col.push_back(v);
        }
    }
    const int n = 1000;
    ASSERT_EQ(ref[0].size(), static_cast<std::size_t>(n));
    for (std::size_t w = 0; w < windows.size(); ++w) {
        std::vector<float> y(n, 1234.5f);
        hxl::Fourier_Smooth(y.data(), n, windows[w]);
        double worst = 0;
        for (int i = 0; i < n; ++i) {
            const double got = y[static_cast<std::size_t>(i)] / 1234.5;
            ASSERT_NEAR(got, ref[w][static_cast<std::size_t>(i)], 5e-6) << "fw " << windows[w] << " i " << i + 1;
            worst = std::max(worst, std::abs(got - 1.0));
        }
        if (windows[w] <= n / 50.0f)
            EXPECT_LT(worst, 1e-4) << windows[w];
        else
            EXPECT_GT(worst, 1e-4) << windows[w];  // the edge of the zero fill is felt
        EXPECT_NEAR(y[n / 2] / 1234.5, 1.0, windows[w] <= 100 ? 1e-5 : 2e-3) << windows[w];
    }
    // a longer pattern: at FW = n/50 the worst point is 1.03e-4 off (numpy)
    for (float fw : {1.0f, 5.0f, 89.0f}) {
        std::vector<float> y(4489, -7.25f);
        hxl::Fourier_Smooth(y.data(), 4489, fw);
        for (std::size_t i = 0; i < y.size(); ++i) ASSERT_NEAR(y[i], -7.25f, 7.25f * 1.1e-4f) << fw << " " << i;
    }
}

TEST(FourierFilter, PaddedEndsRepeatTheirNeighboursButThePatternsOwnDoNot) {
    std::vector<float> y(64);
    for (std::size_t i = 0; i < y.size(); ++i) y[i] = static_cast<float>(i * i % 17);
    std::vector<float> kernel = y;
    hxl::Fourier_Filter(kernel.data(), 64, 4);
    EXPECT_EQ(kernel[0], kernel[1]);
    EXPECT_EQ(kernel[63], kernel[62]);
    std::vector<float> padded = y;
    hxl::Fourier_Smooth(padded.data(), 64, 4);
    EXPECT_NE(padded[0], padded[1]);
    EXPECT_NE(padded[63], padded[62]);
}

TEST(Smoothing, RealPatternAgainstScipyAndNumpy) {
    const std::vector<float> raw = read_y(ZD_TEST_DATA "/patterns/210520step1_30min.xy");
    ASSERT_EQ(raw.size(), 4489u);
    const std::vector<REFERENCE_ROW> rows = reference();
    ASSERT_GT(rows.size(), 1000u);
    std::vector<float> poly = raw, fw5 = raw, fw40 = raw;
    const int n = static_cast<int>(raw.size());
    hxl::Smooth_5Point(poly.data(), n);
    hxl::Fourier_Smooth(fw5.data(), n, 5);
    hxl::Fourier_Smooth(fw40.data(), n, 40);
    double largest = 0;
    for (float v : raw) largest = std::max(largest, static_cast<double>(std::abs(v)));
    // float work on a transform of 16384 points: a few 1e-6 of the largest value
    const double tol = 2e-5 * largest;
    for (const REFERENCE_ROW& r : rows) {
        const std::size_t i = static_cast<std::size_t>(r.i - 1);
        ASSERT_NEAR(raw[i], r.y, 1e-3) << r.i;
        EXPECT_NEAR(poly[i], r.poly, 1e-3 + 1e-6 * std::abs(r.poly)) << r.i;
        EXPECT_NEAR(fw5[i], r.fw5, tol) << r.i;
        EXPECT_NEAR(fw40[i], r.fw40, tol) << r.i;
    }
}
