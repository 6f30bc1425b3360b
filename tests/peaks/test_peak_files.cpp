// Every line of each peak file for a small list, byte for byte. The
// expected lines are written out by hand from the record layouts.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "peaks/peak_files.h"

using namespace hxl;
namespace fs = std::filesystem;

namespace {

const std::vector<PEAK_POINT_TYPE> kList = {{10.5f, 1234.5f, 100.25f}, {20.0f, 50.0f, -1.0f}};

DIFFRACTION_PATTERN_TYPE Profile(const std::string& title, const std::string& scat_var) {
    DIFFRACTION_PATTERN_TYPE p;
    p.title = title;
    p.scat_var = scat_var;
    p.lambda1 = p.lambda2 = 1.5406f;
    return p;
}

std::string Blanks(int n) { return std::string(static_cast<std::size_t>(n), ' '); }

}  // namespace

TEST(PeakFiles, DateStampAndFreeFormat) {
    std::tm t{};
    t.tm_mday = 5, t.tm_mon = 2, t.tm_year = 124, t.tm_hour = 14, t.tm_min = 7, t.tm_sec = 9;
    EXPECT_EQ(Date_Stamp(t), " 5/ 3/2024 at 14: 7: 9 ");
    EXPECT_EQ(Free_Peaks_Text("ceo2.xy", "XYDATA", kList),
              "! Data file : ceo2.xy\n"
              "! Format    : XYDATA\n"
              "! peak_position   peak_intensity    peak_background\n"
              "       10.50000     1234.50000      100.25000\n"
              "       20.00000       50.00000       -1.00000\n");
    const float x[] = {3.5f, 120.0f}, y[] = {12.25f, 7.0f};
    EXPECT_EQ(Background_Text("a.dat", "D1A", x, y, 2),
              "! Data file : a.dat\n! Format    : D1A\n! Position      Background_value\n"
              "        3.50000       12.25000\n      120.00000        7.00000\n");
}

TEST(PeakFiles, DicvolLinesAndFewerLinesUsed) {
    auto d = Dicvol_Defaults(Profile("CeO2 standard pattern measured at the beamline", "2theta"), 2, 2);
    EXPECT_EQ(d.title, "CeO2 standard pattern measured");  // 30 kept
    EXPECT_EQ(d.itype, 2);
    EXPECT_FLOAT_EQ(d.wave, 1.54059f);
    EXPECT_EQ(Dicvol_Defaults(Profile("t", "TOF"), 1, 2).itype, 4);
    EXPECT_EQ(Dicvol_Defaults(Profile("t", "d-space"), 1, 2).itype, 0);
    EXPECT_FLOAT_EQ(Dicvol_Defaults(Profile("t", "2theta"), 1, 2).wave, 1.5406f);
    d.title = "CeO2 test";
    d.n = 1;  // below the count: N drops, both peaks are written
    const std::string text = Dicvol_Text(d, "ceo2.xy", "XRD", Peak_Type_Wavelengths(2, 1.5406f),
                                         " 5/ 3/2024 at 14: 7: 9 ", kList);
    EXPECT_EQ(text, "# Input file for WDICVOL06/14\n"
                    "# created by Zendrite-2006: 5/ 3/2024 at 14: 7: 9 \n"
                    "! DATA FILE: ceo2.xy\n"
                    "! INSTRM: XRD\n"
                    "! WAVE:   1.54059  1.54439  0.50000\n"
                    " CeO2 test\n"
                    "   1   2   1   1   1   1   0   0" +
                        Blanks(22) +
                        "! N,ITYPE,JC,JT,JH,JO,JM,JTR\n"
                        "  25.0  25.0  25.0      0.0   2500.0  90.0 125.0" +
                        Blanks(6) +
                        "! AMAX,BMAX,CMAX,VOLMIN,VOLMAX,BEMIN,BEMAX\n"
                        "  1.54059    0.000    0.000    0.000" +
                        Blanks(18) +
                        "! WAVE,POIMOL,DENS,DELDEN\n"
                        "    0.030   10.000   0   0   1   0   2" +
                        Blanks(16) +
                        "! EPS,FOM, N_IMP, ZERO_search, ZERO_refinement, DICVOL_OPTION, ISUP\n"
                        "      10.50000        1234.500         100.250\n"
                        "      20.00000          50.000          -1.000\n");
    d.n = 40;  // above the count: the count
    EXPECT_NE(Dicvol_Text(d, "", "", {}, "", kList).find("\n   2   2   1"), std::string::npos);
}

TEST(PeakFiles, ItoControlLineAndZeroWavelength) {
    auto d = Ito_Defaults(Profile("", "2theta"), 3);
    EXPECT_EQ(d.title, "ITO input parameters");
    EXPECT_FLOAT_EQ(d.wave, 0.71354f);
    EXPECT_FLOAT_EQ(Ito_Defaults(Profile("x", "2theta"), 4).wave, 1.79278f);
    EXPECT_FLOAT_EQ(Ito_Defaults(Profile("x", "2theta"), 1).wave, 1.5406f);
    d = {"CeO2 test", 1.54059f, 0.0f};
    EXPECT_EQ(Ito_Text(d, kList), "CeO2 test\n"
                                  "00 4 0 0 0 3.00 4.50   1.54059 000 3 6 6 6 0\n"
                                  "   0.00000   4.00000  14.00000   0.00000\n"
                                  "  10.50000\n"
                                  "  20.00000\n"
                                  "0.0 \n"
                                  "END\n");
    d.wave = 0.0f;
    d.zero = -0.025f;
    EXPECT_EQ(Ito_Text(d, {kList[0]}), "CeO2 test\n9\n  -0.02500   4.00000  14.00000   0.00000\n  10.50000\n0.0 \nEND\n");
}

TEST(PeakFiles, TreorKeywordsOptionalLinesAndCellEdgeZero) {
    auto d = Treor_Defaults(Profile("  ", "2theta"), 2);
    EXPECT_EQ(d.title, "Treor input parameters");
    EXPECT_EQ(d.choice, 2);
    d.title = "CeO2 test";
    const std::string head = "! DATA FILE: ceo2.xy\n! INSTRM: XRD\n! WAVE:   1.54059  1.54439  0.50000\nCeO2 test\n"
                             "      10.50000    1234.50000     100.25000\n"
                             "      20.00000      50.00000      -1.00000\n"
                             "\n";
    const auto w = Treor_Wavelengths(2, 1.5406f);
    EXPECT_EQ(Treor_Text(d, "ceo2.xy", "XRD", w, kList), head +
                                                             "  CHOICE=2,\n"
                                                             "  WAVE= 1.54059,\n"
                                                             "  MONO=125.00,\n"
                                                             "  VOL=  1500.,\n"
                                                             "  CEM=  20.,\n"
                                                             "  MERIT=  10.,\n"
                                                             "  END*\n");
    d.beta = 0.0f;
    d.cem = 0.0f;
    d.merit = 0.0f;
    d.vol = 800.0f;
    EXPECT_EQ(Treor_Text(d, "ceo2.xy", "XRD", w, kList), head +
                                                             "  CHOICE=2,\n"
                                                             "  WAVE= 1.54059,\n"
                                                             "  VOL=   800.,\n"
                                                             "  CEM=  20.,\n"
                                                             "  END*\n");
}

TEST(PeakFiles, OmbraMarksOutputsAndListHeads) {
    auto d = Ombra_Defaults(Profile("CeO2 SPGR: F m -3 m CELL: 5.411 5.411 5.411 90 90 90", "2theta"));
    EXPECT_EQ(d.title, "CeO2");
    EXPECT_EQ(d.lattice, " F m -3 m");
    EXPECT_EQ(d.cell, "   5.41100   5.41100   5.41100   90.0000   90.0000   90.0000");
    EXPECT_EQ(d.wave, "       1.54060");
    const std::string text = Ombra_Text(d, "/data/ceo2.xy", "2theta", " 5/ 3/2024 at 14: 7: 9 ", kList);
    EXPECT_EQ(text, "! Input file for Ombra\n"
                    "! created by Zendrite-2006: 5/ 3/2024 at 14: 7: 9 \n"
                    "! Data file : /data/ceo2.xy\n"
                    "TITLE CeO2\n"
                    "SPGR     F m -3 m\n"
                    "CELL       5.41100   5.41100   5.41100   90.0000   90.0000   90.0000\n"
                    "SHORT-OUTPUT\n"
                    "CWTOL        1.54060    0.300 \n"
                    "K_RANGE    0.0  0.5    0.0  0.5    0.0  0.5 \n"
                    "K_DIV         100         100         100 \n"
                    "! peak_position  peak_intensity  peak_background\n"
                    "2THETA_LIST      2\n"
                    "       10.50000     1234.50000      100.25000\n"
                    "       20.00000       50.00000       -1.00000\n");
    // No marks: the defaults; a TOF profile: its tolerance and keyword.
    auto t = Ombra_Defaults(Profile("plain title", "TOF"));
    EXPECT_EQ(t.title, "plain title");
    EXPECT_EQ(t.lattice, " P");
    EXPECT_EQ(t.cell, "   5.5000  5.5000  6.0000   90.0   90.0   90.0");
    EXPECT_EQ(t.tolerance, " 2000.00 ");
    t.output = 2;
    t.commensurate = true;
    const std::string tof = Ombra_Text(t, "f", "TOF", "", kList);
    EXPECT_NE(tof.find("LONG-OUTPUT\nK_COMMENSURATE\nTOFTOL        1.54060   2000.00 \n"), std::string::npos);
    EXPECT_NE(tof.find("\nTOF_LIST      2\n"), std::string::npos);
    EXPECT_NE(Ombra_Text(t, "f", "d-spacing", "", kList).find("\nD_LIST      2\n"), std::string::npos);
    EXPECT_NE(Ombra_Text(t, "f", "q-space", "", kList).find("\nQ_LIST      2\n"), std::string::npos);
    EXPECT_NE(Ombra_Text(t, "f", "s-space", "", kList).find("\nD*_LIST      2\n"), std::string::npos);
    EXPECT_NE(Ombra_Text(t, "f", "----", "", kList).find("\n2THETA_LIST      2\n"), std::string::npos);
    const std::string energy = Ombra_Text(t, "f", "Energy", "", kList);
    EXPECT_EQ(energy.find("_LIST"), std::string::npos);
    EXPECT_NE(energy.find("peak_background\n       10.50000"), std::string::npos);
}

TEST(PeakFiles, FormatWordsAndAtomicWrites) {
    PEAK_FORMAT_TYPE f;
    ASSERT_TRUE(Peak_Format_Of("DicvolFormat", f));
    EXPECT_STREQ(f.extension, ".dic");
    ASSERT_TRUE(Peak_Format_Of("ombraFormat", f));
    EXPECT_STREQ(f.failure, "Unable to write Satellites data file!");
    EXPECT_FALSE(Peak_Format_Of("dicvolformat", f));
    EXPECT_FALSE(Peak_Format_Of("Dicvol", f));
    const fs::path dir = fs::temp_directory_path() / ("zd_peak_files_" + std::to_string(::getpid()));
    fs::remove_all(dir);
    fs::create_directories(dir);
    std::string message;
    const std::string path = (dir / "p.aps").string();
    ASSERT_TRUE(Write_Free_Peaks(path, "a", "b", kList, message));
    EXPECT_FALSE(Write_Free_Peaks((dir / "none" / "p.aps").string(), "a", "b", kList, message));
    EXPECT_EQ(message, "Unable to write peaks data file!");
    const float x[] = {1.0f}, y[] = {2.0f};
    EXPECT_FALSE(Write_Background((dir / "none" / "b.bgr").string(), "a", "b", x, y, 1, message));
    EXPECT_EQ(message, "Unable to write background points data file!");
    std::ifstream in(path);
    std::stringstream s;
    s << in.rdbuf();
    EXPECT_EQ(s.str(), Free_Peaks_Text("a", "b", kList));
    // Only the file itself is left in the folder: no temporary beside it.
    EXPECT_EQ(std::distance(fs::directory_iterator(dir), fs::directory_iterator()), 1);
    fs::remove_all(dir);
}
