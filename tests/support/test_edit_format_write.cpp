#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "support/edit_format.h"

using namespace hxl;

namespace {

EDIT_FORMAT_TYPE parsed(std::string_view text) {
    EDIT_FORMAT_TYPE f;
    std::string message;
    EXPECT_TRUE(Parse_Edit_Format(text, f, message)) << message;
    return f;
}

}  // namespace

TEST(EditFormatParse, GroupsExpandAndRevertAtLastOuterGroup) {
    EDIT_FORMAT_TYPE f = parsed("(i5,2f14.5)");
    ASSERT_EQ(f.items.size(), 3u);
    EXPECT_EQ(f.items[0].kind, Edit_Kind::Int);
    EXPECT_EQ(f.items[0].width, 5);
    EXPECT_EQ(f.items[2].kind, Edit_Kind::Real_F);
    EXPECT_EQ(f.items[2].width, 14);
    EXPECT_EQ(f.items[2].decimals, 5);
    EXPECT_EQ(f.revert, 0u);
    EXPECT_EQ(f.data_items, 3);

    f = parsed("(10(i2,f8.0))");
    EXPECT_EQ(f.data_items, 20);
    EXPECT_EQ(f.revert, 0u);

    f = parsed("(f13.0,10x,f8.3,45x,4f9.3)");
    EXPECT_EQ(f.data_items, 6);
    EXPECT_EQ(f.items[1].kind, Edit_Kind::Skip);
    EXPECT_EQ(f.items[1].width, 10);

    // Reversion goes to the last group of the outer level, with its count.
    f = parsed("(a4, 2(i3, 2(f5.1)), 3(i1))");
    EXPECT_EQ(f.data_items, 1 + 2 * 3 + 3);
    EXPECT_EQ(f.revert, 7u);
    EXPECT_EQ(f.revert_data_items, 3);

    f = parsed("(E12.4E3, D10.3, G12.5, A, A20, 3X, A, I4.3)");
    EXPECT_EQ(f.items[0].exp_digits, 3);
    EXPECT_EQ(f.items[3].kind, Edit_Kind::Text);
    EXPECT_EQ(f.items[3].width, 0);
    EXPECT_EQ(f.items[4].width, 20);
    EXPECT_EQ(f.items.size(), 8u);
    EXPECT_EQ(f.items[7].decimals, 3);

    f = parsed("i5, f8.2");  // the outer brackets may be left out
    EXPECT_EQ(f.data_items, 2);
}

TEST(EditFormatParse, RefusesBadFormatsWithAMessage) {
    EDIT_FORMAT_TYPE f;
    std::string message;
    for (const char* bad : {"", "()", "(i5", "i5)", "(f8)", "(e10.0)", "(i0)", "(q5)", "(i5,())", "(0(i5))",
                            "(i5) x", "(99999(99999(i1)))", "(f8.)", "(e12.4e0)",
                            // a record of gigabytes (the fuzzer's "(a4,55555555553x,a)"), wide skips or many wide fields
                            "(a4,55555555553x,a)", "(10000x,a)", "(200(9999a))", "(300(a1,9999x))"}) {
        EXPECT_FALSE(Parse_Edit_Format(bad, f, message)) << bad;
        EXPECT_FALSE(message.empty()) << bad;
        EXPECT_TRUE(f.items.empty()) << bad;
    }
}

TEST(EditFormatWrite, IntegersRealsAndTexts) {
    std::string out;
    const EDIT_FORMAT_TYPE f1 = parsed("(i5,2f14.5)");
    Edit_Writer(f1, out).Int(42).Real(3.14159265).Real(-0.5);
    EXPECT_EQ(out, "   42       3.14159      -0.50000\n");

    out.clear();
    const EDIT_FORMAT_TYPE f2 = parsed("(3x,a,a6,a2)");
    Edit_Writer(f2, out).Text("abc").Text("xy").Text("long");
    EXPECT_EQ(out, "   abc    xylo\n");

    out.clear();
    const EDIT_FORMAT_TYPE f3 = parsed("(i4.3,i4,f8.0,f6.3,f5.3)");
    Edit_Writer(f3, out).Int(7).Int(-12).Real(12.6).Real(0.5).Real(-0.25);
    EXPECT_EQ(out, " 007 -12     13. 0.500-.250\n");

    out.clear();  // a value that rounds to zero has no sign
    const EDIT_FORMAT_TYPE f4 = parsed("(f6.2)");
    Edit_Writer(f4, out).Real(-0.001);
    EXPECT_EQ(out, "  0.00\n");
}

TEST(EditFormatWrite, OverflowGivesStarsOfTheFieldWidth) {
    std::string out;
    const EDIT_FORMAT_TYPE f1 = parsed("(i3,f6.2,e7.3,a3)");
    Edit_Writer(f1, out).Int(1234).Real(1000.0).Real(1.0).Int(5);
    EXPECT_EQ(out, std::string(3 + 6 + 7 + 3, '*') + "\n");

    out.clear();
    const EDIT_FORMAT_TYPE f2 = parsed("(i3,i3)");
    Edit_Writer w(f2, out);
    w.Int(-99).Int(-100);
    w.End();
    EXPECT_EQ(out, "-99***\n");

    out.clear();  // text in a number field, a real in an integer field
    const EDIT_FORMAT_TYPE f3 = parsed("(f5.1,i4)");
    Edit_Writer w2(f3, out);
    w2.Text("x").Real(2.5);
    w2.End();
    EXPECT_EQ(out, "*********\n");
    EXPECT_TRUE(w2.Failed());
    EXPECT_NE(w2.Message().find("text"), std::string::npos);
}

TEST(EditFormatWrite, ExponentForms) {
    std::string out;
    const EDIT_FORMAT_TYPE f = parsed("(e12.4,e12.4,d12.4,e10.4,e12.3e3,e11.4)");
    Edit_Writer(f, out)
        .Real(12.34)
        .Real(-0.0001234)
        .Real(0.0)
        .Real(99999.0)
        .Real(1.5e-20)
        .Real(2.5e120);
    EXPECT_EQ(out, std::string("  0.1234E+02") + " -0.1234E-03" + "  0.0000D+00" + "0.1000E+06" + "  0.150E-019" +
                       " 0.2500+121\n");
}

TEST(EditFormatWrite, GeneralAndNonFinite) {
    std::string out;
    const EDIT_FORMAT_TYPE f = parsed("(g12.4,g12.4,f10.2,f4.1,e12.4)");
    Edit_Writer(f, out)
        .Real(3.14159)
        .Real(1.0e7)
        .Real(std::numeric_limits<double>::infinity())
        .Real(-std::numeric_limits<double>::infinity())
        .Real(std::nan(""));
    EXPECT_EQ(out, "   3.142      0.1000E+08  Infinity-Inf         NaN\n");
}

TEST(EditFormatWrite, FormatIsReusedOverLines) {
    std::string out;
    const EDIT_FORMAT_TYPE f1 = parsed("(10(i2,f8.0))");
    {
        Edit_Writer w(f1, out);
        for (int i = 1; i <= 12; ++i) w.Int(i).Real(i * 100.0);
    }
    std::string first;
    for (int i = 1; i <= 10; ++i) {
        char buf[16];
        std::snprintf(buf, sizeof buf, "%2d%7d.", i, i * 100);
        first += buf;
    }
    EXPECT_EQ(out, first + "\n11   1100.12   1200.\n");

    out.clear();  // a new pass starts at the last outer group, on a new line
    const EDIT_FORMAT_TYPE f2 = parsed("(i3,2(f5.1))");
    Edit_Writer(f2, out)
        .Int(1)
        .Real(1.0)
        .Real(2.0)
        .Real(3.0)
        .Real(4.0)
        .Real(5.0);
    EXPECT_EQ(out, "  1  1.0  2.0\n  3.0  4.0\n  5.0\n");
}

TEST(EditFormatWrite, SlashesAndEmptyWrites) {
    std::string out;
    const EDIT_FORMAT_TYPE f1 = parsed("(i3/2x,i3)");
    Edit_Writer(f1, out).Int(1).Int(2);
    EXPECT_EQ(out, "  1\n    2\n");

    out.clear();  // the line breaks up to the next field still belong to the write
    const EDIT_FORMAT_TYPE f2 = parsed("(i3/)");
    Edit_Writer(f2, out).Int(7);
    EXPECT_EQ(out, "  7\n\n");

    out.clear();
    const EDIT_FORMAT_TYPE f3 = parsed("(i5)");
    { Edit_Writer w(f3, out); }
    EXPECT_EQ(out, "\n");

    out.clear();  // values beyond a format that cannot be reused are refused
    const EDIT_FORMAT_TYPE f4 = parsed("(i2,(3x))");
    Edit_Writer w(f4, out);
    w.Int(1).Int(2);
    w.End();
    EXPECT_TRUE(w.Failed());
    EXPECT_EQ(out, " 1\n");
}

TEST(EditFormatWrite, ArrayHelpers) {
    std::string out;
    const float v[] = {1.5f, 2.25f, -3.0f};
    Edit_Write(parsed("(2f7.2)"), v, 3, out);
    EXPECT_EQ(out, "   1.50   2.25\n  -3.00\n");
    out.clear();
    const int k[] = {1, 22, 333, 4444};
    Edit_Write(parsed("(3i4)"), k, 4, out);
    EXPECT_EQ(out, "   1  22 333\n4444\n");
}
