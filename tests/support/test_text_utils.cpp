#include <gtest/gtest.h>

#include <limits>

#include "support/text_utils.h"

using namespace hxl;

TEST(Cutst, TakesTheFirstWordAndLeftJustifiesTheRest) {
    std::string line = "   x";
    int n1 = -1, n2 = -1;
    std::string word;
    Cutst(line, &n1, &word, &n2);
    EXPECT_EQ(word, "x");
    EXPECT_EQ(line, "");
    EXPECT_EQ(n1, 0);
    EXPECT_EQ(n2, 1);

    line = "  alpha  beta gamma  ";
    Cutst(line, &n1, &word, &n2);
    EXPECT_EQ(word, "alpha");
    EXPECT_EQ(n2, 5);
    EXPECT_EQ(line, "beta gamma");
    EXPECT_EQ(n1, 10);
    Cutst(line);  // every output may be left out
    EXPECT_EQ(line, "gamma");

    line = "     ";
    word = "old";
    Cutst(line, &n1, &word, &n2);
    EXPECT_EQ(word, "");
    EXPECT_EQ(n1, 0);
    EXPECT_EQ(n2, 0);
    EXPECT_FALSE(err_string);
}

TEST(Getnum, ReadsNumbersUntilAWord) {
    Array1<float> vet(5, 9.0f);
    Array1<int> ivet(5, 9);
    int iv = -1;
    Getnum("  1.5  -2.7  abc 4", vet, ivet, iv);
    EXPECT_EQ(iv, 2);
    EXPECT_TRUE(err_string);
    EXPECT_EQ(err_string_mess, "The variable cannot be computed as a number in GETNUM ");
    EXPECT_FLOAT_EQ(vet(1), 1.5f);
    EXPECT_FLOAT_EQ(vet(2), -2.7f);
    EXPECT_EQ(ivet(1), 1);
    EXPECT_EQ(ivet(2), -2);  // the integer part
    EXPECT_FLOAT_EQ(vet(3), 0.0f);  // cleared first

    Getnum("1 2 3 4 5 6", vet, ivet, iv);
    EXPECT_EQ(iv, 5);
    EXPECT_TRUE(err_string);
    EXPECT_EQ(err_string_mess, "Limits of digit variable exceeded in GETNUM");

    Getnum(".5 -3 1.0D2", vet, ivet, iv);
    EXPECT_FALSE(err_string);
    EXPECT_EQ(err_string_mess, "");
    EXPECT_EQ(iv, 3);
    EXPECT_FLOAT_EQ(vet(3), 100.0f);

    Getnum("+5", vet, ivet, iv);  // a plus sign is not in the digit set
    EXPECT_TRUE(err_string);
    EXPECT_EQ(iv, 0);
    Getnum("", vet, ivet, iv);
    EXPECT_FALSE(err_string);
    EXPECT_EQ(iv, 0);
}

TEST(GetnumStd, ValuesWithUncertainties) {
    Array1<float> v(4), s(4);
    int ic = 0;
    Getnum_Std("1.234(5) 12.3(12) 1500(30) 2.5E-3(4) 7.5", v, s, ic);
    EXPECT_TRUE(err_string);  // five words, four places
    EXPECT_EQ(ic, 4);
    EXPECT_FLOAT_EQ(v(1), 1.234f);
    EXPECT_FLOAT_EQ(s(1), 0.005f);
    EXPECT_FLOAT_EQ(s(2), 1.2f);
    EXPECT_FLOAT_EQ(v(3), 1500.0f);
    EXPECT_FLOAT_EQ(s(3), 30.0f);
    EXPECT_FLOAT_EQ(v(4), 0.0025f);
    EXPECT_FLOAT_EQ(s(4), 0.0004f);

    Getnum_Std("3.5(2) 7", v, s, ic);
    EXPECT_FALSE(err_string);
    EXPECT_EQ(ic, 2);
    EXPECT_FLOAT_EQ(v(2), 7.0f);
    EXPECT_FLOAT_EQ(s(2), 0.0f);

    Getnum_Std("   ", v, s, ic);
    EXPECT_EQ(err_string_mess, "Blank line");
    for (const char* bad : {"1.2(3", "1.2(x)", "(3)", "abc", "1.2()", "1.2(3)4"}) {
        Getnum_Std(bad, v, s, ic);
        EXPECT_EQ(err_string_mess, "Bad format") << bad;
    }
    Getnum_Std("1.5 2.5", v, s, ic);
    EXPECT_TRUE(err_string);
    EXPECT_EQ(err_string_mess, "Wrong format using Standard values");
    EXPECT_EQ(ic, 2);
    EXPECT_FLOAT_EQ(v(2), 2.5f);
}

TEST(SetNumStd, OneOrTwoDigitsOfUncertainty) {
    std::string t;
    SetNum_Std(1.23456f, 0.0032f, t);
    EXPECT_EQ(t, "1.235(3)");
    SetNum_Std(1.23456f, 0.0012f, t);
    EXPECT_EQ(t, "1.2346(12)");
    SetNum_Std(-12.345f, 0.5f, t);
    EXPECT_EQ(t, "-12.3(5)");
    SetNum_Std(12345.0f, 123.0f, t);
    EXPECT_EQ(t, "12350(120)");
    SetNum_Std(2.0e21f, 3.0e20f, t);  // an uncertainty beyond any integer type
    EXPECT_EQ(t, "2000000000000000000000(300000000000000000000)");
    SetNum_Std(2.0f, 0.0996f, t);  // 0.0996 rounds to 0.10: still one digit
    EXPECT_EQ(t, "2.0(1)");
    EXPECT_FALSE(err_string);
    SetNum_Std(2.5f, 0.0f, t);
    EXPECT_EQ(t, "2.5");
    SetNum_Std(2.5f, -1.0f, t);
    EXPECT_TRUE(err_string);
    EXPECT_EQ(err_string_mess, "A negative standard deviation was passed on SetNum_Std procedure!");
    SetNum_Std(std::numeric_limits<float>::quiet_NaN(), 1.0f, t);
    EXPECT_EQ(t, "NaN");
    EXPECT_FALSE(err_string);
    SetNum_Std(std::numeric_limits<float>::infinity(), 1.0f, t);
    EXPECT_EQ(t, "INF");
}

TEST(GetWords, QuotedPartsAreOneWord) {
    std::vector<std::string> w;
    int n = 0;
    Get_Words("  plot 'my file.dat' \"a b\"  x", w, n);
    ASSERT_EQ(n, 4);
    ASSERT_EQ(w.size(), 4u);
    EXPECT_EQ(w[1], "my file.dat");
    EXPECT_EQ(w[2], "a b");
    EXPECT_EQ(w[3], "x");
    EXPECT_FALSE(err_string);
    Get_Words("one 'two three", w, n);
    EXPECT_TRUE(err_string);
    EXPECT_EQ(err_string_mess, "Non balanced quotes!");
    Get_Words("", w, n);
    EXPECT_EQ(n, 0);
    EXPECT_FALSE(err_string);
}

TEST(NumColFromNumFmt, CountsTheValuesOfOnePass) {
    int n = -1;
    NumCol_from_NumFmt("(i5,2f14.5)", n);
    EXPECT_EQ(n, 3);
    NumCol_from_NumFmt("(f13.0,10x,f8.3,45x,4f9.3)", n);
    EXPECT_EQ(n, 6);
    NumCol_from_NumFmt("(7(f8.0,1x),f8.0)", n);
    EXPECT_EQ(n, 8);
    EXPECT_FALSE(err_string);
    NumCol_from_NumFmt("(7(f8.0,1x),f8)", n);
    EXPECT_TRUE(err_string);
    EXPECT_EQ(err_string_mess, "Illegal format string passed to subroutine:  NumCol_from_NumFmt");
    EXPECT_EQ(n, 0);
}
