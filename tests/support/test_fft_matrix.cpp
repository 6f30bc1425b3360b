#include <gtest/gtest.h>

#include <cmath>

#include "support/fft.h"
#include "support/matrix_inverse.h"

using namespace hxl;

TEST(RealFFT, CosineAndSineGiveTheirBin) {
    // 2^17 points: long enough for the stages that walk the whole array, past the blocked ones
    for (int n : {64, 1 << 17}) {
        const double pi = 3.14159265358979323846;
        const int cos_bin = n == 64 ? 5 : 12345, sin_bin = n == 64 ? 9 : 40001;
        const double tol = 1e-4 + 2e-6 * n;
        std::vector<float> d(n);
        for (int k = 0; k < n; ++k)
            d[k] = 1.0f + static_cast<float>(std::cos(2 * pi * cos_bin * k / n) + 0.5 * std::sin(2 * pi * sin_bin * static_cast<double>(k) / n));
        ASSERT_TRUE(Real_FFT(d.data(), n, false));
        EXPECT_NEAR(d[0], n, tol);      // the mean
        EXPECT_NEAR(d[1], 0.0, tol);    // F(n/2)
        for (int j = 1; j < n / 2; ++j) {
            const double re = j == cos_bin ? n / 2.0 : 0.0;
            // exp(+i) in the forward transform: a sine shows as +n/4 in Im F(j).
            const double im = j == sin_bin ? n / 4.0 : 0.0;
            ASSERT_NEAR(d[2 * j], re, tol) << n << " " << j;
            ASSERT_NEAR(d[2 * j + 1], im, tol) << n << " " << j;
        }
    }

    std::vector<float> alt(8);
    for (int k = 0; k < 8; ++k) alt[k] = k % 2 ? -1.0f : 1.0f;  // all in F(n/2)
    ASSERT_TRUE(Real_FFT(alt.data(), 8, false));
    EXPECT_NEAR(alt[0], 0.0, 1e-6);
    EXPECT_NEAR(alt[1], 8.0, 1e-6);
}

TEST(RealFFT, InverseOfForwardIsHalfNTimesTheData) {
    for (int n : {2, 4, 16, 1024, 1 << 17}) {
        Array1<float> d(n), orig(n);
        for (int k = 1; k <= n; ++k) orig(k) = d(k) = static_cast<float>(std::sin(0.37 * k * k) + 0.1 * k);
        ASSERT_TRUE(Real_FFT(d, false));
        ASSERT_TRUE(Real_FFT(d, true));
        // float work: the rounding is measured against the largest point, here 0.1 n
        const double tol = 1e-3 * n + 5e-7 * (0.1 * n + 1) * n / 2;
        for (int k = 1; k <= n; ++k) ASSERT_NEAR(d(k), orig(k) * n / 2.0f, tol) << n << " " << k;
    }
    float bad[6] = {1, 2, 3, 4, 5, 6};
    EXPECT_FALSE(Real_FFT(bad, 6, false));
    EXPECT_FALSE(Real_FFT(bad, 1, false));
    EXPECT_EQ(bad[0], 1.0f);
}

TEST(InvertMatrix, InverseTimesMatrixIsIdentity) {
    double a[9] = {4, -2, 1, -2, 4, -2, 1, -2, 4};
    double keep[9];
    std::copy(a, a + 9, keep);
    bool singular = true;
    Invert_Matrix(a, 3, singular);
    ASSERT_FALSE(singular);
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j) {
            double s = 0;
            for (int k = 0; k < 3; ++k) s += a[i * 3 + k] * keep[k * 3 + j];
            EXPECT_NEAR(s, i == j ? 1.0 : 0.0, 1e-12);
        }

    float f[4] = {0, 2, 1, 0};  // needs pivoting
    Invert_Matrix(f, 2, singular);
    ASSERT_FALSE(singular);
    EXPECT_FLOAT_EQ(f[0], 0.0f);
    EXPECT_FLOAT_EQ(f[1], 1.0f);
    EXPECT_FLOAT_EQ(f[2], 0.5f);
    EXPECT_FLOAT_EQ(f[3], 0.0f);
}

TEST(InvertMatrix, SingularIsFlaggedAndTheMatrixKept) {
    double a[9] = {1, 2, 3, 2, 4, 6, 1, 0, 1};  // row 2 = 2 row 1
    double keep[9];
    std::copy(a, a + 9, keep);
    bool singular = false;
    Invert_Matrix(a, 3, singular);
    EXPECT_TRUE(singular);
    for (int i = 0; i < 9; ++i) EXPECT_EQ(a[i], keep[i]);

    double z[4] = {0, 0, 0, 0};
    Invert_Matrix(z, 2, singular);
    EXPECT_TRUE(singular);
    double nan[4] = {1, 0, 0, std::nan("")};
    Invert_Matrix(nan, 2, singular);
    EXPECT_TRUE(singular);
    Eigen::MatrixXd rect(2, 3);
    rect.setOnes();
    Invert_Matrix(rect, singular);
    EXPECT_TRUE(singular);
}
