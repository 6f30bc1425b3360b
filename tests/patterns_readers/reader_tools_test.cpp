// The row and column readers every format reader leans on.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>

#include "patterns/reader_tools.h"

using namespace hxl;

TEST(ReaderTools, RowFieldsAgreeWithTheCLibrary) {
    std::mt19937 rng(12345);
    std::uniform_real_distribution<double> mag(-8.0, 8.0);
    std::uniform_int_distribution<int> dec(0, 9);
    char a[64], b[64], c[64], line[256];
    for (int k = 0; k < 20000; ++k) {
        const double v1 = std::pow(10.0, mag(rng)) * (k % 3 == 0 ? -1 : 1);
        std::snprintf(a, sizeof a, "%.*f", dec(rng), v1);
        std::snprintf(b, sizeof b, "%.*e", dec(rng), std::pow(10.0, mag(rng)));
        std::snprintf(c, sizeof c, "%.*g", 1 + dec(rng), v1 * 7.3);
        std::snprintf(line, sizeof line, "  %s\t%s %s  ", a, b, c);
        float out[4];
        int count = 0;
        ASSERT_TRUE(Read_Row_Fields(line, out, 4, count)) << line;
        ASSERT_EQ(count, 3) << line;
        const float ref[3] = {std::strtof(a, nullptr), std::strtof(b, nullptr), std::strtof(c, nullptr)};
        for (int j = 0; j < 3; ++j)  // equal, or one unit in the last place for long mantissas
            ASSERT_LE(std::fabs(out[j] - ref[j]), std::fabs(ref[j]) * 1.2e-7f) << line << " field " << j;
        EXPECT_EQ(out[3], 0.0f);
    }
}

TEST(ReaderTools, RowFieldsSeparatorsAndDecimalCommas) {
    float v[4];
    int n = 0;
    ASSERT_TRUE(Read_Row_Fields("1,5 2,25 -0,75", v, 4, n));
    ASSERT_EQ(n, 3);
    EXPECT_FLOAT_EQ(v[1], 2.25f);
    EXPECT_FLOAT_EQ(v[2], -0.75f);
    ASSERT_TRUE(Read_Row_Fields("10.5,20,3", v, 4, n));  // one word: commas separate
    ASSERT_EQ(n, 3);
    EXPECT_FLOAT_EQ(v[0], 10.5f);
    ASSERT_TRUE(Read_Row_Fields("1.5, 2.5", v, 4, n));
    ASSERT_EQ(n, 2);
    EXPECT_FLOAT_EQ(v[1], 2.5f);
    ASSERT_TRUE(Read_Row_Fields("1.0D+02 +3 .5", v, 4, n));  // Fortran forms go to the general reader
    EXPECT_FLOAT_EQ(v[0], 100.0f);
    EXPECT_FLOAT_EQ(v[1], 3.0f);
    EXPECT_FLOAT_EQ(v[2], 0.5f);
    EXPECT_FALSE(Read_Row_Fields("1.0 abc", v, 4, n));
    EXPECT_FALSE(Read_Row_Fields("1.0 2..5", v, 4, n));
    ASSERT_TRUE(Read_Row_Fields("1 2 3 4 5 6", v, 2, n));
    EXPECT_EQ(n, 2);
}

TEST(ReaderTools, FixedFieldsImpliedDecimalsAndPointGuards) {
    float v = 0;
    EXPECT_TRUE(Fixed_Real("   12345", 0, 8, v, 3));
    EXPECT_FLOAT_EQ(v, 12.345f);
    EXPECT_TRUE(Fixed_Real("  12.5  ", 0, 8, v, 3));
    EXPECT_FLOAT_EQ(v, 12.5f);
    EXPECT_TRUE(Fixed_Real("12", 5, 8, v));  // beyond the line: blank, 0
    EXPECT_EQ(v, 0.0f);
    EXPECT_FALSE(Fixed_Real("  1x3   ", 0, 8, v));
    EXPECT_EQ(Point_Count(12.9), 12);
    EXPECT_EQ(Point_Count(std::nan("")), -1);
    EXPECT_EQ(Point_Count(1e30), -1);
}
