// Files that used to load without a word and give wrong numbers: each is now
// read right or refused with its reason.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <vector>

#include "patterns/read_pattern.h"
#include "read_text.h"
#include "support/fixed_text.h"

using namespace hxl;
using zdtest::Read_Text;
using zdtest::Sample;
using zdtest::Scratch_File;
using zdtest::Slurp;

namespace {

std::vector<DIFFRACTION_PATTERN_TYPE> Blocks(const std::string& file, const std::string& mode, int& left_out) {
    std::vector<DIFFRACTION_PATTERN_TYPE> set;
    Read_Pattern_Blocks(file, mode, set, 2000, left_out);
    return set;
}

// The real hrpt.xye with the value of one line replaced.
std::string Hrpt_With(int line_no, const std::string& row) {
    std::istringstream in(Slurp(Sample("hrpt.xye")));
    std::string line, out;
    for (int n = 1; std::getline(in, line); ++n) out += (n == line_no ? row : line) + "\n";
    return out;
}

}  // namespace

TEST(WrongNumbers, ValuesThatAreNoFiniteFloatAreRefusedWithTheirLine) {
    // Line 1 is the column head; line 41 a data row.
    for (const char* bad : {"nan", "NaN", "inf", "-Infinity", "1e39", "-3.5e38"}) {
        Read_Text("bad.xye", Hrpt_With(41, std::string("12.00 ") + bad + " 3.1"), "XYSIGMA");
        ASSERT_TRUE(ERR_Pattern) << bad;
        EXPECT_EQ(ERR_Pattern_Mess, std::string(" Error in Intensity file, line 41: the value \"") + bad +
                                        "\" is not a finite number of the 32-bit range");
    }
    // The largest float still reads; in sigma a value whose square overflows is refused by its point.
    DIFFRACTION_PATTERN_TYPE ok = Read_Text("ok.xye", Hrpt_With(41, "12.00 3.4e38 3.1"), "XYSIGMA");
    EXPECT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_FLOAT_EQ(ok.y(40), 3.4e38f);
    Read_Text("sq.xye", Hrpt_With(41, "12.00 5 1e20"), "XYSIGMA");
    EXPECT_EQ(ERR_Pattern_Mess,
              " Error in Intensity file, point 40: the sigma value is not a finite number of the 32-bit range");
    // Free format and the counts of an XRDML file go through the same check.
    Read_Text("f.dat", "10 1 30\n1 2 3 4 5 6 7 8 9 10\n11 12 nan 14 15 16 17 18 19 20\n21\n", "FreeFormat");
    EXPECT_EQ(ERR_Pattern_Mess, " Error in Intensity file, line 3: the value \"nan\" is not a finite number of the "
                                "32-bit range");
    std::string x = Slurp(Sample("empyrean.xrdml"));
    x.replace(x.find("<intensities unit=\"counts\">") + 27, 0, "1e40 ");
    Read_Text("n.xrdml", x, "PANALYTICAL");
    EXPECT_NE(ERR_Pattern_Mess.find("the value \"1e40\" is not a finite number"), std::string::npos) << ERR_Pattern_Mess;
}

TEST(WrongNumbers, XrdmlCutInsideItsCountsIsRefused) {
    const std::string text = Slurp(Sample("210520step1_30min.xrdml"));
    const std::size_t at = text.find("<intensities unit=\"counts\">");
    ASSERT_NE(at, std::string::npos);
    Read_Text("cut.xrdml", text.substr(0, at + 2000), "PANALYTICAL");
    EXPECT_EQ(ERR_Pattern_Mess,
              " Error reading a profile XRDML-DATA file: end of file while trying to read </intensities>");
    // The whole file reads its 4489 counts over 5.008..80.009 (the same scan as the .xy export).
    DIFFRACTION_PATTERN_TYPE p = Read_Text("whole.xrdml", text, "PANALYTICAL");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(p.npts, 4489);
}

TEST(WrongNumbers, EveryScanOfAPoleFigureIsAProfileOfItsOwnAxis) {
    // 30 Phi scans of 120 points, 1.5 to 358.5 degrees; 2Theta stays at 43.249.
    int left_out = -1;
    const auto set = Blocks(Sample("mtex_polefigure.xrdml"), "PANALYTICAL", left_out);
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    ASSERT_EQ(set.size(), 30u);
    EXPECT_EQ(left_out, 0);
    for (const auto& p : set) {
        EXPECT_EQ(p.npts, 120);
        EXPECT_FLOAT_EQ(p.xmin, 1.5f);
        EXPECT_FLOAT_EQ(p.xmax, 358.5f);
        EXPECT_EQ(Trim(p.scat_var), "Phi");  // never labelled 2theta
        EXPECT_EQ(Trim(p.xax_text), "Phi(deg)");
    }
    // First and last counts of scans 1 and 30, from the file's text.
    EXPECT_FLOAT_EQ(set[0].y(1), 160142.0f);
    EXPECT_FLOAT_EQ(set[0].y(120), 160407.0f);
    EXPECT_FLOAT_EQ(set[29].y(1), 3943.0f);
    EXPECT_FLOAT_EQ(set[29].y(120), 3969.0f);
    // At most as many as asked for: the rest is counted, not dropped silently.
    std::vector<DIFFRACTION_PATTERN_TYPE> few;
    Read_Pattern_Blocks(Sample("mtex_polefigure.xrdml"), "PANALYTICAL", few, 4, left_out);
    EXPECT_EQ(few.size(), 4u);
    EXPECT_EQ(left_out, 26);
}

TEST(WrongNumbers, PowderCifBlocksAndWavelength) {
    // Three diffractograms among six blocks; the table was written by gemmi.
    std::ifstream table(Sample("multi_one_blocks.txt"));
    int left_out = -1;
    const auto set = Blocks(Sample("multi_one.cif"), "CIF", left_out);
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    ASSERT_EQ(set.size(), 3u);
    for (const auto& p : set) {
        std::string name;
        int n = 0;
        float x0 = 0, x1 = 0, y0 = 0, y1 = 0;
        ASSERT_TRUE(table >> name >> n >> x0 >> x1 >> y0 >> y1);
        EXPECT_EQ(p.npts, n) << name;
        EXPECT_FLOAT_EQ(p.xmin, x0) << name;
        EXPECT_FLOAT_EQ(p.xmax, x1) << name;
        EXPECT_FLOAT_EQ(p.y(1), y0) << name;
        EXPECT_FLOAT_EQ(p.y(p.npts), y1) << name;
        EXPECT_FLOAT_EQ(p.lambda1, 1.540596f) << name;
    }
    DIFFRACTION_PATTERN_TYPE one;
    Read_Pattern(Sample("1517474.cif"), one, std::string("CIF"));
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_FLOAT_EQ(one.lambda1, 2.0785f);  // "_diffrn_radiation_wavelength     2.0785"
}

TEST(WrongNumbers, PsiHeadsGiveWavelengthAndMonitorInBothReaders) {
    // "lambda=  1.49400, T=   0.000" and "2.948 0.050 162.898 18000000., sample=..."
    for (const char* mode : {"FreeFormat", "DMC"}) {
        DIFFRACTION_PATTERN_TYPE p;
        Read_Pattern(Sample("PSI_DMC.dat"), p, std::string(mode));
        ASSERT_FALSE(ERR_Pattern) << mode << ERR_Pattern_Mess;
        EXPECT_FLOAT_EQ(p.lambda1, 1.494f) << mode;
        EXPECT_FLOAT_EQ(p.monitor, 18000000.0f) << mode;
        EXPECT_EQ(p.tsamp, 0.0f) << mode;  // T= 0.000: none given
    }
    DIFFRACTION_PATTERN_TYPE d;
    Read_Pattern(Sample("DMC_n_Unknown_578.dat"), d, std::string("DMC"));
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_FLOAT_EQ(d.lambda1, 2.4501f);
    EXPECT_FLOAT_EQ(d.monitor, 1.0e8f);
}

TEST(WrongNumbers, GsasBanksThroughEveryRoute) {
    // A head as reduction programs write it, two RALF banks of FXYE rows.
    const std::string two =
        "Sample Run: 1 Wavelength: 2.665 Angstrom\n"
        "Monitor: 12345\n"
        "# Total flight path 63.18m, tth 90deg, DIFC 22585.8\n"
        "BANK 1 3 3 RALF 160000 320 160000 0.0005 FXYE\n"
        " 5000.0 10.0 2.0\n 5010.0 20.0 3.0\n 5020.0 30.0 4.0\n"
        "# Total flight path 63.18m, tth 150deg, DIFC 31000.5\n"
        "BANK 2 2 2 RALF 160000 320 160000 0.0005 FXYE\n"
        " 6000.0 1.0 1.0\n 6010.0 2.0 1.0\n";
    const std::string file = Scratch_File("two.gsa", two);
    for (const char* mode : {"GSASTOF", "ISIS"}) {
        int left_out = -1;
        const auto set = Blocks(file, mode, left_out);
        ASSERT_FALSE(ERR_Pattern) << mode << ERR_Pattern_Mess;
        ASSERT_EQ(set.size(), 2u) << mode;
        EXPECT_FLOAT_EQ(set[0].xmin, 5000.0f) << mode;  // FXYE rows hold microseconds
        EXPECT_FLOAT_EQ(set[1].xmax, 6010.0f) << mode;
        EXPECT_FLOAT_EQ(set[0].sigma(3), 16.0f) << mode;
        EXPECT_EQ(Trim(set[1].scat_var), "TOF") << mode;
        EXPECT_FLOAT_EQ(set[0].monitor, 12345.0f) << mode;
        EXPECT_FLOAT_EQ(set[0].lambda1, 22585.8f) << mode;  // Dtt1 = DIFC of its own bank
        EXPECT_FLOAT_EQ(set[1].lambda1, 31000.5f) << mode;
    }
    // The constant-wavelength row refuses time-of-flight bins instead of dividing them by 100.
    Read_Text("two.gsa", two, "GSAS");
    EXPECT_EQ(ERR_Pattern_Mess, " BANK 1 has time-of-flight bins (RALF): read it as GSAS (TOF)");
    // A constant-wavelength file: wavelength and temperature from its comments.
    DIFFRACTION_PATTERN_TYPE cw = Read_Text(
        "cw.fxye", "/raw/path\n# Temp (K) =              6.778\n# Calibrated wavelength = 0.413263\n"
                   "BANK 1 2 2 CONS 50.0 0.2 0 0 FXYE\n 50.0 65.2 11.5\n 50.2 91.1 13.6\n",
        "GSAS");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_FLOAT_EQ(cw.lambda1, 0.413263f);
    EXPECT_FLOAT_EQ(cw.tsamp, 6.778f);
    EXPECT_FLOAT_EQ(cw.xmax, 0.502f);
}

TEST(WrongNumbers, DescendingScansAreTurnedRoundAndNamesThatAreNoFiles) {
    std::string rows;
    for (int i = 20; i >= 1; --i) rows += std::to_string(10.0 + 0.5 * i) + " " + std::to_string(100 * i) + " 5\n";
    DIFFRACTION_PATTERN_TYPE p = Read_Text("down.xye", rows, "XYSIGMA");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    ASSERT_EQ(p.npts, 20);
    EXPECT_FLOAT_EQ(p.x(1), 10.5f);
    EXPECT_FLOAT_EQ(p.y(1), 100.0f);
    EXPECT_FLOAT_EQ(p.x(20), 20.0f);
    EXPECT_FLOAT_EQ(p.y(20), 2000.0f);
    EXPECT_FLOAT_EQ(p.xmin, 10.5f);
    EXPECT_FLOAT_EQ(p.xmax, 20.0f);
    EXPECT_GT(p.step, 0.0f);
    // A scan that goes down and up again is not a reversed scan: left as read.
    DIFFRACTION_PATTERN_TYPE zig = Read_Text("zig.xye", "3 1 1\n1 2 1\n2 3 1\n" + rows, "XYSIGMA");
    EXPECT_FLOAT_EQ(zig.x(1), 3.0f);

    const std::string dir = zdtest::Scratch_Path("");
    Read_Pattern(dir, p, std::string("XYSIGMA"));
    EXPECT_EQ(ERR_Pattern_Mess, " " + Trim(dir) + " is a folder, not a file: open it as a folder of patterns");
    Read_Pattern("/dev/null", p, std::string("XYSIGMA"));
    EXPECT_EQ(ERR_Pattern_Mess, " /dev/null is a device or a pipe, not a pattern file");
}
