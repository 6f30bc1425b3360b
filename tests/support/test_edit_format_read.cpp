#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "support/edit_format.h"
#include "support/list_read.h"

using namespace hxl;

namespace {

EDIT_FORMAT_TYPE parsed(std::string_view text) {
    EDIT_FORMAT_TYPE f;
    std::string message;
    EXPECT_TRUE(Parse_Edit_Format(text, f, message)) << message;
    return f;
}

}  // namespace

TEST(EditFormatRead, FieldsOfTheirWidths) {
    const EDIT_FORMAT_TYPE f = parsed("(i5,2f14.5)");
    Edit_Reader r(f, std::string_view("   42       3.14159      -0.50000"));
    int i = 0;
    float a = 0, b = 0;
    ASSERT_TRUE(r.Int(i));
    ASSERT_TRUE(r.Real(a));
    ASSERT_TRUE(r.Real(b));
    EXPECT_EQ(i, 42);
    EXPECT_FLOAT_EQ(a, 3.14159f);
    EXPECT_FLOAT_EQ(b, -0.5f);
    EXPECT_EQ(r.Status(), Edit_Result::Ok);
}

TEST(EditFormatRead, ImpliedDecimalsExponentsBlanksAndShortLines) {
    const EDIT_FORMAT_TYPE f = parsed("(f8.2,f8.2,f8.2,f8.2,f8.2,f8.2,f8.3,i3,i3)");
    // 12345 -> 123.45; a written point wins; 12E1 -> 0.12e1; D and bare exponents;
    // blanks inside are ignored; a blank field and the part past the end read zero.
    Edit_Reader r(f, std::string_view("   12345     1.5    12E1   1.5D3   1.5-3  -1 2 3        "));
    double v[7];
    for (double& x : v) ASSERT_TRUE(r.Real(x)) << r.Message();
    EXPECT_DOUBLE_EQ(v[0], 123.45);
    EXPECT_DOUBLE_EQ(v[1], 1.5);
    EXPECT_DOUBLE_EQ(v[2], 1.2);
    EXPECT_DOUBLE_EQ(v[3], 1500.0);
    EXPECT_DOUBLE_EQ(v[4], 0.0015);
    EXPECT_DOUBLE_EQ(v[5], -1.23);
    EXPECT_DOUBLE_EQ(v[6], 0.0);
    int k1 = 9, k2 = 9;
    ASSERT_TRUE(r.Int(k1));
    ASSERT_TRUE(r.Int(k2));
    EXPECT_EQ(k1, 0);
    EXPECT_EQ(k2, 0);
}

TEST(EditFormatRead, BadFieldIsAnErrorTheCallerGets) {
    const EDIT_FORMAT_TYPE f = parsed("(i3,f6.2)");
    Edit_Reader r(f, std::string_view("  1 1.2.3"));
    int i = 0;
    float x = 7.0f;
    ASSERT_TRUE(r.Int(i));
    EXPECT_FALSE(r.Real(x));
    EXPECT_FLOAT_EQ(x, 7.0f);
    EXPECT_EQ(r.Status(), Edit_Result::Bad_Value);
    EXPECT_NE(r.Message().find("\" 1.2.3\""), std::string::npos) << r.Message();
    EXPECT_NE(r.Message().find("column 4"), std::string::npos) << r.Message();
    EXPECT_FALSE(r.Int(i));  // the failure stays
    EXPECT_EQ(r.Status(), Edit_Result::Bad_Value);

    Edit_Reader r2(f, std::string_view("1x3"));
    EXPECT_FALSE(r2.Int(i));
    EXPECT_EQ(r2.Status(), Edit_Result::Bad_Value);

    Edit_Reader r3(f, std::string_view(" 12"));  // an integer variable for a real field
    ASSERT_TRUE(r3.Int(i));
    EXPECT_FALSE(r3.Int(i));
    EXPECT_EQ(r3.Status(), Edit_Result::Bad_Format);

    const EDIT_FORMAT_TYPE wide = parsed("(i12)");
    Edit_Reader r4(wide, std::string_view("99999999999"));  // beyond an integer
    EXPECT_FALSE(r4.Int(i));
    EXPECT_EQ(r4.Status(), Edit_Result::Bad_Value);
}

TEST(EditFormatRead, FormatReusedOverLinesAndRestOfLastLineSkipped) {
    Text_Unit unit;
    std::string text;
    for (int i = 1; i <= 10; ++i) text += (i < 10 ? " " : "") + std::to_string(i) + "   " + std::to_string(100 + i) + ".5";
    text += "\n11   111.5 9 99.\nnext line\n";
    unit.Set_Text(text);
    const EDIT_FORMAT_TYPE f = parsed("(10(i2,f8.0))");
    {
        Edit_Reader r(f, unit);
        for (int i = 1; i <= 11; ++i) {
            int k = 0;
            float y = 0;
            ASSERT_TRUE(r.Int(k)) << r.Message();
            ASSERT_TRUE(r.Real(y)) << r.Message();
            EXPECT_EQ(k, i);
            EXPECT_FLOAT_EQ(y, 100.5f + i);
        }
        EXPECT_EQ(r.Line_Number(), 2);
    }
    std::string rest;
    ASSERT_TRUE(unit.Read_Line(rest));
    EXPECT_EQ(rest, "next line");

    // Running out of lines is the end of file.
    unit.Set_Text("  1  2\n");
    const EDIT_FORMAT_TYPE g = parsed("(2i3)");
    int v[3] = {0, 0, 0};
    std::string message;
    EXPECT_EQ(Edit_Read(unit, g, v, 3, message), Edit_Result::End_Of_File);
    EXPECT_EQ(v[0], 1);
    EXPECT_EQ(v[1], 2);
    EXPECT_FALSE(message.empty());
}

TEST(EditFormatRead, TextFields) {
    const EDIT_FORMAT_TYPE f = parsed("(a4,3x,a)");
    Edit_Reader r(f, std::string_view("ab\n"));
    std::string a, b;
    ASSERT_TRUE(r.Text(a));
    ASSERT_TRUE(r.Text(b));
    EXPECT_EQ(a, "ab  ");
    EXPECT_EQ(b, "");

    Edit_Reader r2(f, std::string_view("NAME   the rest, kept"));
    ASSERT_TRUE(r2.Text(a));
    ASSERT_TRUE(r2.Text(b));
    EXPECT_EQ(a, "NAME");
    EXPECT_EQ(b, "the rest, kept");

    float x;
    Edit_Reader r3(f, std::string_view("1234"));
    EXPECT_FALSE(r3.Real(x));
    EXPECT_EQ(r3.Status(), Edit_Result::Bad_Format);
}

TEST(EditFormatRead, WhatIsWrittenReadsBack) {
    const EDIT_FORMAT_TYPE f = parsed("(f13.0,10x,f8.3,45x,4f9.3)");
    const float in[12] = {12345.0f, 1.25f, 0.5f, -2.125f, 3.0f, 4.75f, 7.0f, 8.5f, -9.25f, 10.0f, 11.125f, 0.0f};
    std::string out;
    Edit_Write(f, in, 12, out);
    ASSERT_EQ(std::count(out.begin(), out.end(), '\n'), 2);
    EXPECT_EQ(out.find('\n'), 13u + 10 + 8 + 45 + 36);
    Text_Unit unit;
    unit.Set_Text(out);
    float back[12];
    std::string message;
    ASSERT_EQ(Edit_Read(unit, f, back, 12, message), Edit_Result::Ok) << message;
    for (int i = 0; i < 12; ++i) EXPECT_FLOAT_EQ(back[i], in[i]) << i;

    const EDIT_FORMAT_TYPE e = parsed("(3e12.4,g12.5)");
    const float ein[4] = {1.5e-7f, -2.5e12f, 0.0f, 123.45f};
    out.clear();
    Edit_Write(e, ein, 4, out);
    unit.Set_Text(out);
    ASSERT_EQ(Edit_Read(unit, e, back, 4, message), Edit_Result::Ok) << message << out;
    for (int i = 0; i < 4; ++i) EXPECT_FLOAT_EQ(back[i], ein[i]) << i;
}

// A real file in the fixed layout of ten (counter, count) pairs a line. From
// its 101st line on the counter has two digits and touches the count
// ("10   32410   347"), which only a fixed-width read can take apart; before
// that the list reader must agree.
TEST(EditFormatRead, RealFileOfCounterCountPairs) {
    Text_Unit unit;
    ASSERT_TRUE(unit.Open(std::string(ZD_TEST_DATA) + "/support/PBSO4.CWN"));
    std::string header;
    ASSERT_TRUE(unit.Read_Line(header));
    ASSERT_TRUE(unit.Read_Line(header));
    ASSERT_EQ(header.rfind("BANK 1 2919 292", 0), 0u);
    const std::size_t data_start = unit.Position();

    const int n = 2919;
    const EDIT_FORMAT_TYPE f = parsed("(10(i2,f6.0))");
    std::vector<int> counter(n);
    std::vector<float> y(n);
    {
        Edit_Reader r(f, unit);
        for (int i = 0; i < n; ++i) {
            ASSERT_TRUE(r.Int(counter[i]) && r.Real(y[i])) << i << " " << r.Message();
        }
        EXPECT_EQ(r.Line_Number(), 292);
    }
    EXPECT_EQ(counter[0], 1);
    EXPECT_FLOAT_EQ(y[0], 220.0f);
    EXPECT_FLOAT_EQ(y[9], 229.0f);
    EXPECT_FLOAT_EQ(y[10], 202.0f);
    EXPECT_EQ(counter[1000], 10);
    EXPECT_FLOAT_EQ(y[1000], 324.0f);
    EXPECT_FLOAT_EQ(y[1001], 347.0f);
    EXPECT_FLOAT_EQ(y[1009], 291.0f);
    EXPECT_FLOAT_EQ(y[n - 1], 450.0f);
    std::string rest;
    ASSERT_TRUE(unit.Read_Line(rest));  // the repeated line after the last record
    EXPECT_EQ(rest.rfind(" 1   347 1   336", 0), 0u);
    EXPECT_FALSE(unit.Read_Line(rest));

    unit.Seek(data_start);
    const int m = 1000;
    std::vector<float> pairs(2 * m);
    ASSERT_EQ(List_Read(unit, pairs.data(), 2 * m), List_Result::Ok);
    for (int i = 0; i < m; ++i) {
        ASSERT_FLOAT_EQ(pairs[2 * i], static_cast<float>(counter[i])) << i;
        ASSERT_FLOAT_EQ(pairs[2 * i + 1], y[i]) << i;
    }
}
