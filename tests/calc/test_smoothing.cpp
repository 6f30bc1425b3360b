// The two filters: edges, refusals, and a real pattern against the table made
// by tests/tools/smoothing_reference.py (scipy savgol_coeffs, numpy.fft).
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>

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

TEST(FourierFilter, ConstantComesBackUnchanged) {
    // The gain of the filter is 1. Windows beyond about npts/50 feel the zero fill
    // past the mirrored quarters at the ends (2% at FW = npts/2), so the check is
    // made where the padding is long against the window.
    for (int n : {1000, 4489}) {
        for (float fw : {1.0f, 2.0f, 5.0f, 20.0f}) {
            std::vector<float> y(static_cast<std::size_t>(n), 1234.5f);
            hxl::Fourier_Smooth(y.data(), n, fw);
            for (int i = 0; i < n; ++i)
                ASSERT_NEAR(y[static_cast<std::size_t>(i)], 1234.5f, 1234.5f * 1e-4f) << "n " << n << " fw " << fw << " i " << i;
        }
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
