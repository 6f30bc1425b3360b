#include <gtest/gtest.h>

#include <cmath>

#include "support/list_read.h"

using namespace hxl;

TEST(ListRead, SeparatorsSignsAndExponents) {
    float v[8] = {};
    ASSERT_EQ(List_Read("1.5, -2  +3.25e1,\t4D-2 , 1.0+3 -.5 5. 1d0", v, 8), List_Result::Ok);
    const float want[8] = {1.5f, -2.0f, 32.5f, 0.04f, 1000.0f, -0.5f, 5.0f, 1.0f};
    for (int i = 0; i < 8; ++i) EXPECT_FLOAT_EQ(v[i], want[i]) << i;

    double d = 0;
    ASSERT_EQ(List_Read("1.234567890123D-300", &d, 1), List_Result::Ok);
    EXPECT_DOUBLE_EQ(d, 1.234567890123e-300);
    // Beyond the range: too small is zero, too large is infinite.
    float tiny = 1, huge = 0;
    ASSERT_EQ(List_Read("1e-60 1e60", &tiny, 1), List_Result::Ok);
    EXPECT_EQ(tiny, 0.0f);
    ASSERT_EQ(List_Read("1e60", &huge, 1), List_Result::Ok);
    EXPECT_TRUE(std::isinf(huge));
}

TEST(ListRead, RepeatCountsNullsAndSlash) {
    float v[7] = {9, 9, 9, 9, 9, 9, 9};
    ASSERT_EQ(List_Read("3*1.5, 2*, ,4", v, 7), List_Result::Ok);
    // three 1.5, two nulls, one null between the commas, then 4
    EXPECT_FLOAT_EQ(v[0], 1.5f);
    EXPECT_FLOAT_EQ(v[2], 1.5f);
    EXPECT_FLOAT_EQ(v[3], 9.0f);
    EXPECT_FLOAT_EQ(v[4], 9.0f);
    EXPECT_FLOAT_EQ(v[5], 9.0f);
    EXPECT_FLOAT_EQ(v[6], 4.0f);

    int k[5] = {7, 7, 7, 7, 7};
    ASSERT_EQ(List_Read(",2,,4/ 5", k, 5), List_Result::Ok);
    EXPECT_EQ(k[0], 7);  // a leading comma is a null value
    EXPECT_EQ(k[1], 2);
    EXPECT_EQ(k[2], 7);
    EXPECT_EQ(k[3], 4);
    EXPECT_EQ(k[4], 7);  // the slash ended the list

    int m[3] = {0, 0, 0};
    ASSERT_EQ(List_Read("2*5 6", m, 3), List_Result::Ok);
    EXPECT_EQ(m[0], 5);
    EXPECT_EQ(m[1], 5);
    EXPECT_EQ(m[2], 6);
}

TEST(ListRead, OverLinesAndRestOfLastLineSkipped) {
    Text_Unit unit;
    unit.Set_Text("1 2\n\n  3,\n4 5 6\n7\n");
    int v[4] = {};
    ASSERT_EQ(List_Read(unit, v, 4), List_Result::Ok);
    EXPECT_EQ(v[2], 3);
    EXPECT_EQ(v[3], 4);  // a comma at the end of a line does not make a null
    int w = 0;
    ASSERT_EQ(List_Read(unit, &w, 1), List_Result::Ok);
    EXPECT_EQ(w, 7);  // 5 and 6 went with the line
    EXPECT_EQ(List_Read(unit, &w, 1), List_Result::End_Of_File);

    unit.Set_Text("1,\n,3\n");  // a comma opening a line after one ending the last: a null
    float f[3] = {0, 8, 0};
    ASSERT_EQ(List_Read(unit, f, 3), List_Result::Ok);
    EXPECT_FLOAT_EQ(f[1], 8.0f);
    EXPECT_FLOAT_EQ(f[2], 3.0f);
}

TEST(ListRead, BadValuesAreRefused) {
    int k = 0;
    EXPECT_EQ(List_Read("1.5", &k, 1), List_Result::Bad_Value);
    EXPECT_EQ(List_Read("99999999999", &k, 1), List_Result::Bad_Value);
    float x = 0;
    for (const char* bad : {"abc", "1.5e", "1..2", "0*3", "*3", "2*x", "1.5.", "+", "e5", "1e5e"})
        EXPECT_EQ(List_Read(bad, &x, 1), List_Result::Bad_Value) << bad;
    EXPECT_EQ(List_Read("   ", &x, 1), List_Result::End_Of_File);

    double d;
    EXPECT_TRUE(Parse_Real("-Inf", d));
    EXPECT_TRUE(std::isinf(d) && d < 0);
    EXPECT_TRUE(Parse_Real("2.5Q1", d));
    EXPECT_DOUBLE_EQ(d, 25.0);
    EXPECT_FALSE(Parse_Real("", d));
    int i;
    EXPECT_TRUE(Parse_Integer("+17", i));
    EXPECT_EQ(i, 17);
    EXPECT_TRUE(Parse_Integer("-2147483648", i));
    EXPECT_EQ(i, -2147483648);
    EXPECT_FALSE(Parse_Integer("2147483648", i));
}
