#include <gtest/gtest.h>

#include "patterns/read_pattern.h"
#include "temp_files.h"

using namespace hxl;
using ztest::Counts;

namespace {

DIFFRACTION_PATTERN_TYPE read(const std::string& file, const char* mode = "FreeFormat") {
    DIFFRACTION_PATTERN_TYPE p;
    Read_Pattern(file, p, std::string(mode));
    return p;
}

}  // namespace

TEST(FreeFormat, HeaderTitleAndCounts) {
    ztest::Temp_Dir d;
    // A header line of three numbers with a title behind them keeps that title.
    auto p = read(d.Write("a.dat", "  10.0  0.5  15.0  My sample at 5K\n" + Counts(11)));
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(p.title, "My sample at 5K");
    EXPECT_EQ(p.npts, 11);
    EXPECT_FLOAT_EQ(p.x(1), 10.0f);
    EXPECT_FLOAT_EQ(p.x(11), 15.0f);
    EXPECT_EQ(p.y(11), 11.0f);
    EXPECT_EQ(p.sigma(4), 4.0f);  // a variance: the count itself
    EXPECT_TRUE(p.sig_var);
    EXPECT_EQ(p.ymin, 1.0f);
    EXPECT_EQ(p.ymax, 11.0f);
    EXPECT_EQ(p.scat_var, "2theta");
    EXPECT_EQ(p.xax_text, "2theta(degrees)");
    EXPECT_EQ(p.yax_text, "Intensity (arb. units)");
    EXPECT_EQ(p.instr, "  0  - Free format");
    EXPECT_EQ(p.diff_kind, "unknown");
    EXPECT_TRUE(p.ct_step);
    EXPECT_EQ(p.filename, "a.dat");
    EXPECT_EQ(p.filepath, d.Path() + "/");

    // A title comment before it wins; comment keywords fill their fields.
    p = read(d.Write("b.dat",
                     "# TITLE  Comment title\n! Legend_X  Q(1/A)\n# Legend_Y counts/mon\n# TSAMP 4.5\n"
                     "10 0.5 15 ignored title\n" + Counts(11)));
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(p.title, "Comment title");
    EXPECT_EQ(p.xax_text, "Q(1/A)");
    EXPECT_EQ(p.yax_text, "counts/mon");
    EXPECT_FLOAT_EQ(p.tsamp, 4.5f);
    EXPECT_EQ(p.scat_var, "2theta");  // legend named, variable kept

    // A plain header line becomes the title when none is set.
    p = read(d.Write("c.dat", "First header line\nsecond one\n10 0.5 15 late\n" + Counts(11)));
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(p.title, "First header line");
}

TEST(FreeFormat, ZeroCountsAndFreeLayout) {
    ztest::Temp_Dir d;
    // Counts in any layout, commas, repeat counts and D exponents; zero counts give zero variance.
    auto p = read(d.Write("z.dat", "1 1 11\n0 0, 2*5\n1.0D1 3*0 1e1\n2 3\n"));
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    ASSERT_EQ(p.npts, 11);
    const float want[] = {0, 0, 5, 5, 10, 0, 0, 0, 10, 2, 3};
    for (int i = 1; i <= 11; ++i) {
        EXPECT_EQ(p.y(i), want[i - 1]) << i;
        EXPECT_EQ(p.sigma(i), p.y(i)) << i;
    }
    // CRLF line ends and a byte-order mark are not part of the data.
    p = read(d.Write("crlf.dat", "\xEF\xBB\xBFtitle line\r\n1 1 11\r\n" + std::string("1 2 3 4 5 6\r\n7 8 9 10 11\r\n")));
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(p.title, "title line");
    EXPECT_EQ(p.y(11), 11.0f);
}

TEST(FreeFormat, PointAndCommentLimits) {
    ztest::Temp_Dir d;
    // Ten points fail, eleven read.
    auto p = read(d.Write("ten.dat", "1 1 10\n" + Counts(10)));
    EXPECT_TRUE(ERR_Pattern);
    EXPECT_EQ(ERR_Pattern_Mess, " Error in Intensity file, Problems reading 2Theta_ini, Step, 2Theta_end !");
    p = read(d.Write("eleven.dat", "1 1 11\n" + Counts(11)));
    EXPECT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;

    // Seven header lines pass, eight fail.
    std::string seven;
    for (int i = 0; i < 7; ++i) seven += "header " + std::to_string(i) + "\n";
    p = read(d.Write("seven.dat", seven + "1 1 11\n" + Counts(11)));
    EXPECT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    p = read(d.Write("eight.dat", seven + "header 8\n1 1 11\n" + Counts(11)));
    EXPECT_TRUE(ERR_Pattern);
    EXPECT_EQ(ERR_Pattern_Mess, " Error on Intensity file, Number of Comment lines was exceeded ( > 7) !");
    // Comments do not count as header lines.
    p = read(d.Write("comments.dat", "# a\n# b\n# c\n# d\n# e\n# f\n# g\n# h\n# i\n1 1 11\n" + Counts(11)));
    EXPECT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;

    p = read(d.Write("step0.dat", "1 0 11\n" + Counts(11)));
    EXPECT_EQ(ERR_Pattern_Mess, " Error in Intensity file, Step value was zero!");
    p = read(d.Write("neg.dat", "20 -1 5\n" + Counts(16)));
    EXPECT_EQ(ERR_Pattern_Mess, " Error in Intensity file, Step value was zero!");
    p = read(d.Write("inverted.dat", "20 1 5\n" + Counts(16)));
    EXPECT_EQ(ERR_Pattern_Mess, " Error in Intensity file, Problems reading 2Theta_ini, Step, 2Theta_end !");
    p = read(d.Write("short.dat", "1 1 20\n" + Counts(19)));
    EXPECT_EQ(ERR_Pattern_Mess, " Error in Intensity file, Number of intensities values is wrong!!");
    p = read(d.Write("bad.dat", "1 1 11\n1 2 3 x 5 6 7 8 9 10 11\n"));
    EXPECT_EQ(ERR_Pattern_Mess, " Error in Intensity file, Number of intensities values is wrong!!");
    // A head asking for far more counts than the file holds fails before allocating them.
    p = read(d.Write("huge.dat", "1 1e-5 1e6\n1 2 3 4 5 6 7 8 9 10 11 12\n"));
    EXPECT_EQ(ERR_Pattern_Mess, " Error in Intensity file, Number of intensities values is wrong!!");
    p = read(d.Write("nan.dat", "1 1 1e39\n1 2 3 4 5 6 7 8 9 10 11 12\n"));
    EXPECT_TRUE(ERR_Pattern);
    // Repeat counts may legitimately give many values from a short text.
    p = read(d.Write("repeat.dat", "1 1 100000\n100000*3\n"));
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(p.npts, 100000);
    EXPECT_EQ(p.y(100000), 3.0f);
    p = read(d.Write("empty.dat", ""));
    EXPECT_EQ(ERR_Pattern_Mess, " End of file *.dat");
    p = read(d.Write("onlyhead.dat", "title\n# comment\n"));
    EXPECT_EQ(ERR_Pattern_Mess, " End of file *.dat");
}

TEST(FreeFormat, TimeOfFlightRecognisedAbove180) {
    ztest::Temp_Dir d;
    auto p = read(d.Write("tof.dat", "1000 10 1100\n" + Counts(11)));
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(p.scat_var, "TOF");
    EXPECT_EQ(p.xax_text, "TOF(micro-seconds)");
    // A named axis keeps its legend; the variable still follows the range.
    p = read(d.Write("tofx.dat", "# Legend_X d-spacing\n1000 10 1100\n" + Counts(11)));
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(p.xax_text, "d-spacing");
    EXPECT_EQ(p.scat_var, "TOF");
    // A declared variable stays.
    p = read(d.Write("sv.dat", "# Scattering variable: Energy\n# Legend_X E(keV)\n1 1 11\n" + Counts(11)));
    EXPECT_EQ(p.scat_var, "Energy");
}

TEST(FreeFormat, BankLineAndMdiHead) {
    ztest::Temp_Dir d;
    // A BANK line is taken at once: bank and npts from column 5, xmin and step from column 47.
    std::string bank = "BANK 1 12 12 CONST";
    bank.resize(46, ' ');
    bank += "100.0 2.5";
    auto p = read(d.Write("bank.dat", "some title\n" + bank + "\n" + Counts(12)));
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(p.npts, 12);
    EXPECT_FLOAT_EQ(p.xmin, 100.0f);
    EXPECT_FLOAT_EQ(p.step, 2.5f);
    EXPECT_FLOAT_EQ(p.xmax, 127.5f);
    EXPECT_EQ(p.title, "some title");  // the header line before it

    // MDI: the first line is the title, the second the head (words 1, 2 and 6).
    p = read(d.Write("scan.mdi", "MDI title\n 10.0 0.5 CU 1.54 2 15.0 ignored\n" + Counts(11)));
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(p.title, "MDI title");
    EXPECT_EQ(p.npts, 11);
    EXPECT_FLOAT_EQ(p.xmax, 15.0f);
}

TEST(FreeFormat, RealFilesFromPsi) {
    // HRPT: title line, a parameter line, then "start step end monitor, sample=...".
    auto p = read(std::string(ZD_TEST_DATA) + "/patterns/PSI_DMC.dat");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(p.title, "HRPT, NdNi4MgDx_V_HI,a4=3.0,N18");
    EXPECT_EQ(p.npts, 3200);
    EXPECT_FLOAT_EQ(p.xmin, 2.948f);
    EXPECT_FLOAT_EQ(p.xmax, 162.898f);
    EXPECT_FLOAT_EQ(p.step, 0.05f);
    EXPECT_EQ(p.y(1), 7444.0f);
    EXPECT_EQ(p.y(10), 8090.0f);
    EXPECT_EQ(p.y(3200), 8561.0f);
    EXPECT_EQ(p.ymax, 45712.0f);
    EXPECT_EQ(p.ymin, 0.0f);
    EXPECT_NEAR(p.x(3200), 162.898f, 1e-3f);

    // DMC 2021: counts of eleven digits.
    p = read(std::string(ZD_TEST_DATA) + "/patterns/DMC_n_Unknown_578.dat");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(p.npts, 1056);
    EXPECT_FLOAT_EQ(p.y(1), 11365224231.0f);
    EXPECT_FLOAT_EQ(p.x(1056), 131.875f);
}
