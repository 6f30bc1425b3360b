// The job file of the constant-wavelength fit and the fit's result files:
// byte-for-byte round trip, every reader failure with its text, and the
// layouts of `_pf.irf`, `arcfit_obscalc.xyy` and the head of `_pf.out`.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "peaks/arcfit_files.h"
#include "peaks/pik_file.h"
#include "support/fixed_text.h"
#include "prf/read_irf.h"

namespace hxl {
namespace {

const std::string kJob =
    "Corundum test, doublet\n"
    "! Ang_init   Ang_fin  Nbac Npeak  Ncyc   Inte  Inst  Jobt  Cont Weight Corr Constr   Percent\n"
    "   20.0000   45.5000     3     2    15     0     0     0     1    70     0     0    50\n"
    "    1.540600    1.544400  <=  Lambda1 & Lambda2\n"
    "!  Global Profile Parameters:\n"
    "      0.500000     0      <= Kalph2/Kalph1 ratio  &  Flag \n"
    "      0.020000     1      <= Asymmetry-1(S_L)     &    '  \n"
    "      0.030000     1      <= Asymmetry-2(D_L)     &    '  \n"
    "      0.020000     0      <= Parameter  U         &    '  \n"
    "     -0.010000     0      <= Parameter  V         &    '  \n"
    "      0.010000     1      <= Parameter  W         &    '  \n"
    "      0.000000     0      <= Parameter  Z         &    '  \n"
    "      0.300000     1      <= Parameter Eta0       &    '  \n"
    "      0.004000     0      <= Parameter  X         &    '  \n"
    "!  Background Parameters:\n"
    "!     2Theta        Background   Flag \n"
    "       20.0000      120.5000     1\n"
    "       30.0000      110.2500     1\n"
    "       45.5000       90.0000     0\n"
    "!  Reflection Parameters:\n"
    "!       2Theta     Intensity    Shift-FWHM     Shift-Eta    Flags \n"
    "     25.250000       900.000      0.010000      0.050000  1  1  0  1\n"
    "     32.125000      1500.500     -0.005000      0.100000  1  1  1  0\n"
    "!  Chi2 =       1.234567\n";

std::string Replace_Line(const std::string& text, int number, const std::string& by) {
    std::istringstream in(text);
    std::string line, out;
    for (int i = 1; std::getline(in, line); ++i) out += (i == number ? by : line) + "\n";
    return out;
}

TEST(PikFile, RoundTripIsByteForByteAndTheWriterZeroesInteInstJobt) {
    PIK_JOB_TYPE j;
    std::string message;
    ASSERT_TRUE(Read_Pik_Text(kJob, j, message)) << message;
    EXPECT_EQ(j.title, "Corundum test, doublet");
    EXPECT_TRUE(j.constant_wavelength);
    EXPECT_EQ(j.nbac, 3);
    EXPECT_EQ(j.npeak, 2);
    EXPECT_EQ(j.ncyc, 15);
    EXPECT_EQ(j.cont, 1);
    EXPECT_EQ(j.weight, 70);
    EXPECT_EQ(j.percent, 50);
    EXPECT_FLOAT_EQ(j.lambda2, 1.5444f);
    EXPECT_FLOAT_EQ(j.glob[5], -0.01f);
    EXPECT_EQ(j.gflag[8], 1);
    EXPECT_FLOAT_EQ(j.bv(2), 110.25f);
    EXPECT_EQ(j.bf(3), 0);
    EXPECT_FLOAT_EQ(j.inten(2), 1500.5f);
    EXPECT_EQ(j.pf(1)[2], 0);
    EXPECT_EQ(j.pf(2)[3], 0);
    EXPECT_TRUE(j.has_chi2);
    EXPECT_FLOAT_EQ(j.chi2, 1.234567f);
    EXPECT_EQ(Pik_Text(j), kJob);

    // A job asking for the second line reads so, and is written back without it.
    const std::string with_inst =
        Replace_Line(kJob, 3, "   20.0000   45.5000     3     2    15     2     1     4     1    70     0     0    50");
    ASSERT_TRUE(Read_Pik_Text(with_inst, j, message));
    EXPECT_EQ(j.inst, 1);
    EXPECT_EQ(j.inte, 2);
    EXPECT_EQ(j.jobt, 4);
    EXPECT_EQ(Pik_Text(j), kJob);

    // Free reading of the range line: commas and other spacing.
    ASSERT_TRUE(Read_Pik_Text(Replace_Line(kJob, 3, "20,45.5, 3 2 15 0 0 0 1 70 0 0 50"), j, message)) << message;
    EXPECT_EQ(Pik_Text(j), kJob);

    // Through a file, and at most 120 background points written.
    const std::filesystem::path dir = std::filesystem::temp_directory_path() / "zd_pik_test";
    std::filesystem::create_directories(dir);
    const std::string file = (dir / "job.pik").string();
    ASSERT_TRUE(Write_Pik(file, j, message));
    PIK_JOB_TYPE back;
    ASSERT_TRUE(Read_Pik(file, back, message));
    EXPECT_EQ(Pik_Text(back), kJob);
    j.nbac = 130;
    j.bx.resize(130, 1.0f);
    j.bv.resize(130, 2.0f);
    j.bf.resize(130, 0);
    const std::string many = Pik_Text(j);
    ASSERT_TRUE(Read_Pik_Text(many, back, message)) << message;
    EXPECT_EQ(back.nbac, 120);
    EXPECT_FALSE(Read_Pik((dir / "none.pik").string(), back, message));
    EXPECT_EQ(message, "ERROR opening the file: " + (dir / "none.pik").string());
    std::filesystem::remove_all(dir);
}

// Byte-order marks before the title (one per editor that saved the file) are
// not kept in it, so a job read and written reads back the same.
TEST(PikFile, ByteOrderMarksAreNoPartOfTheTitle) {
    PIK_JOB_TYPE j, again;
    std::string message;
    ASSERT_TRUE(Read_Pik_Text("\xEF\xBB\xBF\xEF\xBB\xBF" + kJob, j, message)) << message;
    EXPECT_FALSE(Starts_With(j.title, "\xEF\xBB\xBF"));
    const std::string once = Pik_Text(j);
    ASSERT_TRUE(Read_Pik_Text(once, again, message)) << message;
    EXPECT_EQ(Pik_Text(again), once);
    EXPECT_EQ(again.title, j.title);
}

TEST(PikFile, EachFailureGivesItsTextAndLeavesTheJob) {
    const std::string count_line =
        "   20.0000   45.5000     3     2    15     0     0     0     1    70     0     0    50";
    const struct {
        std::string text, message;
    } cases[] = {
        {"", " => End of pik-file at reading, title in file: "},
        {std::string("title\0x\n", 8), "  => Error in pik input file at reading TITLE !"},
        {"title only\n", " => Error at reading: tof/2theta_ini, tof/2theta_fin, n_ba, etc ! "},
        {Replace_Line(kJob, 3, "   20.0000   45.5000     x     2"),
         " => Error at reading: tof/2theta_ini, tof/2theta_fin, n_ba, etc ! "},
        {Replace_Line(kJob, 3, "   20.0000   45.5000     3     2    15"),
         " => Error at reading: tof/2theta_ini, tof/2theta_fin, n_ba, etc ! "},
        {Replace_Line(kJob, 3, "   20.0000   45.5000   121     2    15     0     0     0     1    70     0     0    50"),
         " => Error: too many background parameters ! "},
        // A value that would fill its whole field when the job is written back (i6, f10.4).
        {Replace_Line(kJob, 3, "   20.0000   45.5000     3     2    15     0     0     0     1    70     0     0 100000"),
         " => Error at reading: tof/2theta_ini, tof/2theta_fin, n_ba, etc ! "},
        {Replace_Line(kJob, 3, "   20.0000  -1000.0     3     2    15     0     0     0     1    70     0     0    50"),
         " => Error at reading: tof/2theta_ini, tof/2theta_fin, n_ba, etc ! "},
        {Replace_Line(kJob, 4, "    1.54060a    1.544400  <=  Lambda1 & Lambda2"),
         " => Error at reading: Lambda1,Lambda2 or d2tof ! "},
        {Replace_Line(kJob, 6, "      bad           0"), " => Error at reading Ka2/Ka1 ratio:       bad           0"},
        {Replace_Line(kJob, 8, "      0.030000     7"), " => Error at reading asymmetry parameter:       0.030000     7"},
        {Replace_Line(kJob, 11, "           NaN     1"), " => Error at reading global parameter:            NaN     1"},
        {Replace_Line(kJob, 18, "       30.0000      11x.2500     1"), " => Error at reading background parameter: 2"},
        {Replace_Line(kJob, 23, "     32.125000      1500.500     -0.005000      0.100000  1  1  1  2"),
         " => Error at reading peak parameter: 2"},
        {kJob.substr(0, kJob.find("     32.125000")), " => Error at reading peak parameter: 2"},
    };
    for (const auto& c : cases) {
        PIK_JOB_TYPE j;
        j.title = "kept";
        j.npeak = 7;
        std::string message;
        EXPECT_FALSE(Read_Pik_Text(c.text, j, message)) << c.message;
        EXPECT_EQ(message, c.message);
        EXPECT_EQ(j.title, "kept");
        EXPECT_EQ(j.npeak, 7);
    }
}

TEST(ArcfitFiles, ResolutionFileIsMadeThenAppendedAndReadsBack) {
    const std::filesystem::path dir = std::filesystem::temp_directory_path() / "zd_arcfit_irf";
    std::filesystem::remove_all(dir);
    std::filesystem::create_directories(dir);
    const std::string file = (dir / "run_pf.irf").string();
    std::string message;
    ASSERT_TRUE(Write_Arc_Irf(file, {{30.5f, 0.1f, 0.05f, true}, {60.25f, 0, 0, false}}, 0.02f, 0.03f, message));
    ASSERT_TRUE(Write_Arc_Irf(file, {{45.0f, 0.2f, 0.0f, true}}, 0.02f, 0.03f, message));
    std::ifstream in(file);
    std::stringstream all;
    all << in.rdbuf();
    EXPECT_EQ(all.str(),
              "! Resolution function (IRESO=8) : 2theta(deg.)   HG(deg.)   HL(deg.)   S_L   D_L\n"
              "       2    <<<< Include number of points in the following list\n"
              "    30.500000     0.100000    0.050000    0.020000    0.030000\n"
              "    60.250000     ******    ******    0.020000    0.030000\n"
              "       1    <<<< Include number of points in the following list\n"
              "    45.000000     0.200000    0.000000    0.020000    0.030000\n");
    IRF_TYPE irf;
    bool ok = false;
    Read_Irf_Text(file, all.str(), irf, ok, message);
    EXPECT_TRUE(ok) << message;
    EXPECT_EQ(irf.ireso, 8);
    std::filesystem::remove_all(dir);
}

TEST(ArcfitFiles, ObscalcAndListingHeadLayouts) {
    Array1<float> x(2), yo(2), yc(2), bg(2);
    x(1) = 10.5f;
    yo(1) = 100.25f;
    yc(1) = 99.5f;
    bg(1) = 50;
    x(2) = 10.52f;
    std::vector<Array1<float>> single(20, Array1<float>(2, 1.0f));
    const std::string text = Arc_Obscalc_Text(x, yo, yc, bg, single);
    const std::string first = text.substr(0, text.find('\n'));
    EXPECT_EQ(first.size(), 18u * 12u);  // 4 columns and 14 peaks fill the line
    EXPECT_EQ(first.substr(0, 48), "     10.5000      100.25       99.50       50.00");
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 2);

    PIK_JOB_TYPE j;
    std::string message;
    ASSERT_TRUE(Read_Pik_Text(kJob, j, message));
    const std::string head = Arc_Out_Head(j, 9);
    for (const char* line : {"            ------------------------------------ \n"
                             "     --- PROGRAM: ARCFIT (Embedded in Zendrite-2006 ---\n",
                             "\n => TITLE: Corundum test, doublet\n",
                             " => 2Theta(init)    :    20.000000\n",
                             " => Number of background points :     3\n",
                             " => Wave (A)               :      1.540600      1.544400\n",
                             " => Parameter  V           :     -0.010000  0\n",
                             "       20.0000          120.5000   1\n",
                             "     25.250000        900.00      0.010000      0.050000       1  1  0  1\n",
                             "\n => Total number of refined parameters:    9\n\n"})
        EXPECT_NE(head.find(line), std::string::npos) << line;
}

}  // namespace
}  // namespace hxl
