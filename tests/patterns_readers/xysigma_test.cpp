// The XY reader: heads, keywords, INTER, the trailing zero row, distance files.
#include <gtest/gtest.h>

#include <cmath>

#include "read_text.h"
#include "support/fixed_text.h"

using namespace hxl;
using zdtest::Read_Text;
using zdtest::Rows;

TEST(XYSigma, PlainFileWithCommentsKeywordsAndMessyLineEnds) {
    const std::string text = "\xEF\xBB\xBFMy sample\r\n# Legend_X 2theta (deg)\r\n! Scattering variable: 2theta\r\n"
                             "1.0\t10\t2\r\n2.0\t20\t0\r\n3.0\t30\t3   \r\n\r\n\r\n";
    DIFFRACTION_PATTERN_TYPE p = Read_Text("a.xye", text, "XYSIGMA");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(Trim(p.title), "My sample");
    EXPECT_EQ(Trim(p.xax_text), "2theta (deg)");
    EXPECT_EQ(Trim(p.scat_var), "2theta");
    ASSERT_EQ(p.npts, 3);
    EXPECT_EQ(p.x.size(), 3);
    EXPECT_FLOAT_EQ(p.sigma(1), 4.0f);
    EXPECT_FLOAT_EQ(p.sigma(2), 1.0f);  // a zero sigma among given ones
    EXPECT_FLOAT_EQ(p.sigma(3), 9.0f);
    EXPECT_FLOAT_EQ(p.step, 1.0f);
    EXPECT_FLOAT_EQ(p.ymin, 10.0f);
    EXPECT_FLOAT_EQ(p.ymax, 30.0f);
    EXPECT_EQ(Trim_Right(p.instr), " 10  - XYSIGMA");
    EXPECT_EQ(Trim(p.diff_kind), "unknown");
}

TEST(XYSigma, TwoColumnsGiveSigmaOfAbsoluteY) {
    DIFFRACTION_PATTERN_TYPE p = Read_Text("b.xy", "1 -5\n2 7\n3 0\n", "XYSIGMA");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_FLOAT_EQ(p.sigma(1), 5.0f);
    EXPECT_FLOAT_EQ(p.sigma(2), 7.0f);
    EXPECT_FLOAT_EQ(p.sigma(3), 0.0f);
    // TOF when the last X lies above 180 and the file names no variable.
    DIFFRACTION_PATTERN_TYPE t = Read_Text("t.xy", "1000 5\n2000 7\n", "XYSIGMA");
    EXPECT_EQ(Trim(t.scat_var), "TOF");
}

TEST(XYSigma, TrailingZeroRowEndsDataOnlyAfterEleventhPoint) {
    DIFFRACTION_PATTERN_TYPE p = Read_Text("z.xy", Rows(11) + "0 0 0\n" + Rows(3, 20), "XYSIGMA");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(p.npts, 11);
    EXPECT_FLOAT_EQ(p.xmax, 11.0f);
    DIFFRACTION_PATTERN_TYPE q = Read_Text("z2.xy", Rows(5) + "0 0 0\n" + Rows(3, 20), "XYSIGMA");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(q.npts, 9);
    EXPECT_FLOAT_EQ(q.x(6), 0.0f);
    EXPECT_FLOAT_EQ(q.sigma(6), 1.0f);
}

TEST(XYSigma, XydataHeadWithInterAndTemp) {
    const std::string head = "XYDATA\nTITLE demo\nTEMP 295.5\n";
    // fac_x 0 reads as 1, fac_y 2 doubles y and sigma, interpol 2: no resampling but constant step.
    DIFFRACTION_PATTERN_TYPE p =
        Read_Text("i2.xys", head + "INTER 0.0 2.0 2 0.5\n! x y s\n! more\n" + Rows(12), "XYSIGMA");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(Trim(p.title), "demo");
    EXPECT_FLOAT_EQ(p.tsamp, 295.5f);
    EXPECT_FLOAT_EQ(p.tset, 295.5f);
    EXPECT_TRUE(p.ct_step);
    ASSERT_EQ(p.npts, 12);
    EXPECT_FLOAT_EQ(p.x(3), 3.0f);
    EXPECT_FLOAT_EQ(p.y(3), 60.0f);
    EXPECT_FLOAT_EQ(p.sigma(3), 16.0f);

    // interpol 1: onto the step 0.5 by a spline; a straight line stays straight.
    DIFFRACTION_PATTERN_TYPE q = Read_Text("i1.xys", head + "INTER 1 1 1 0.5\n! a\n! b\n" + Rows(12), "XYSIGMA");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    ASSERT_EQ(q.npts, 12);  // 23 points of 0.5 would exceed the 12 read: the mean step is kept
    EXPECT_FLOAT_EQ(q.step, 1.0f);
    DIFFRACTION_PATTERN_TYPE r = Read_Text("i3.xys", head + "INTER 1 1 1 2.0\n! a\n! b\n" + Rows(13), "XYSIGMA");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    ASSERT_EQ(r.npts, 7);
    EXPECT_FLOAT_EQ(r.step, 2.0f);
    EXPECT_FLOAT_EQ(r.xmax, 13.0f);
    EXPECT_NEAR(r.y(2), 30.0f, 1e-3);
    EXPECT_NEAR(r.y(7), 130.0f, 1e-3);
    EXPECT_FLOAT_EQ(r.ycalc(2), 0.0f);

    DIFFRACTION_PATTERN_TYPE bad = Read_Text("i4.xys", "XYDATA\nINTER a b c\n" + Rows(3), "XYSIGMA");
    EXPECT_TRUE(ERR_Pattern);
    EXPECT_EQ(ERR_Pattern_Mess, " Error reading");
    DIFFRACTION_PATTERN_TYPE plain = Read_Text("i5.xys", "XYDATA\n" + Rows(12), "XYSIGMA");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_FALSE(plain.ct_step);
    EXPECT_EQ(plain.npts, 12);
}

TEST(XYSigma, DistanceFilesOnlyWithLowerCaseExtension) {
    const std::string text = "# title= Ni G(r)\n#L r(A) G(r) dr dG\n0.5 1.0 0.0 0.1\n1.0 2.0 0.0 0.2\n";
    DIFFRACTION_PATTERN_TYPE p = Read_Text("ni.gr", text, "XYSIGMA");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(Trim(p.title), "Ni G(r)");
    EXPECT_EQ(Trim(p.scat_var), "Distance");
    EXPECT_EQ(Trim(p.yax_text), "G(R)x1000");
    ASSERT_EQ(p.npts, 2);
    EXPECT_NEAR(p.sigma(2), 0.04f, 1e-6);  // the fourth column
    EXPECT_TRUE(Is_Blank(p.instr));
    DIFFRACTION_PATTERN_TYPE q = Read_Text("NI.GR", "0.5 1.0 0.3\n1.0 2.0 0.2\n", "XYSIGMA");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(Trim(q.scat_var), "2theta");
    EXPECT_NEAR(q.sigma(1), 0.09f, 1e-6);
}

TEST(XYSigma, BadFilesGiveMessages) {
    Read_Text("e.xy", "", "XYSIGMA");
    EXPECT_EQ(ERR_Pattern_Mess, " Error in Intensity/Profile file, Number of points negative or zero!");
    Read_Text("h.xy", "title\n# only comments\n", "XYSIGMA");
    EXPECT_EQ(ERR_Pattern_Mess, " Error reading a profile DATA file of XYSigma format");
    Read_Text("r.xy", "1 2 3\n2 x 4\n", "XYSIGMA");
    EXPECT_EQ(ERR_Pattern_Mess, " Error in Intensity file, check your instr parameter!");
    Read_Text("s.xy", "1 2 3\n7\n", "XYSIGMA");
    EXPECT_EQ(ERR_Pattern_Mess, " Error reading X,Y, Sigma Ycalc in profile DATA file");
}

TEST(XYSigma, EveryLineEndAndRowKindGivesTheSameRows) {
    // Plain rows are read in place; anything else takes the general row reader.
    const std::string rows[] = {"5.0 100.5 10", "  5.5\t-2.25e1  3  ", "6,0 7,5 1,5", "6.5 1D2 2", "7 8 9 10 11"};
    const std::string ends[] = {"\n", "\r\n", "\r"};
    for (const std::string& end : ends) {
        std::string text = "title" + end;
        for (const std::string& r : rows) text += r + end + "  \t" + end + "# note" + end;
        for (const bool closed : {true, false}) {
            SCOPED_TRACE(testing::Message() << "end " << int(end.back()) << (closed ? " closed" : " open"));
            const std::string body = closed ? text : text.substr(0, text.size() - end.size());
            DIFFRACTION_PATTERN_TYPE p = Read_Text("e.xye", body, "XYSIGMA");
            ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
            ASSERT_EQ(p.npts, 5);
            EXPECT_FLOAT_EQ(p.y(1), 100.5f);
            EXPECT_FLOAT_EQ(p.y(2), -22.5f);
            EXPECT_FLOAT_EQ(p.x(3), 6.0f);  // decimal commas
            EXPECT_FLOAT_EQ(p.sigma(3), 2.25f);
            EXPECT_FLOAT_EQ(p.y(4), 100.0f);  // a Fortran exponent
            EXPECT_FLOAT_EQ(p.ycalc(5), 10.0f);
            EXPECT_FLOAT_EQ(p.xmax, 7.0f);
        }
    }
    // A word inside the data is refused whichever way the row was read.
    Read_Text("w.xye", "t\n1 2 3\n2 x 3\n", "XYSIGMA");
    EXPECT_EQ(ERR_Pattern_Mess, " Error in Intensity file, check your instr parameter!");
    Read_Text("n.xye", std::string("t\n1 2 3\n2 3\0 4\n", 16), "XYSIGMA");
    EXPECT_TRUE(ERR_Pattern);
}

TEST(XYSigma, InterStepBeyondAnyFloatKeepsThePoints) {
    // Found by fuzzing: an INTER step that overflows to infinity.
    DIFFRACTION_PATTERN_TYPE p =
        Read_Text("inf.xys", "XYDATA\nINTER 1 1 1 " + std::string(120, '5') + "\n" + Rows(4), "XYSIGMA");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(p.npts, 4);
    EXPECT_FLOAT_EQ(p.step, 1.0f);
    EXPECT_FLOAT_EQ(p.xmax, 4.0f);
}
