// End-to-end: a real pattern of CeO2, its structure opened over it, the
// calculated pattern scaled to the data; a second phase; the refusals.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/gui/scripted_home.h"

namespace fs = std::filesystem;

namespace {

const std::string kStruct = std::string(ZD_TEST_DATA) + "/crystal/structures/";

std::string phase_lines(const std::string& cif, const char* lambda) {
    return "files " + kStruct + cif + "\ndialog 1986 set 12 " + lambda + "\ndialog 1986 set 13 0.05\n" +
           "dialog 1986 press 1\nmenu 40231\n";
}

}  // namespace

struct StructureOverlay : SCRIPTED_HOME {};

TEST_F(StructureOverlay, CalculatedPatternIsScaledToTheData) {
    fs::copy_file(std::string(ZD_TEST_DATA) + "/patterns/CeO2_Pilatus1M.xy", home / "ceo2.xy");
    // The pattern was measured at 0.4066 A (tests/data/peaks/ceo2_reflections.txt).
    const std::string s = "files " + at("ceo2.xy") + "\nmenu 40014\n" + phase_lines("CeO2.cif", "0.4066") +
                          "phases " + at("p1.txt") + "\n" + phase_lines("Si.cif", "0.4066") + "phases " + at("p2.txt") +
                          "\npicture 0 " + at("overlay.png") + "\nmenu 40019\nphases " + at("p3.txt") + "\n";
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    EXPECT_NE(out.find("Space group: F m -3 m (225) / Ce1    Ce4+   0.00000  0.00000  0.00000  B 0.280  occ 1.000  4a / "
                       "O1     O2-    0.25000  0.25000  0.25000  B 0.520  occ 1.000  8c"),
              std::string::npos)
        << out;
    EXPECT_EQ(out.find("f0 of neutral"), std::string::npos) << out;
    std::istringstream p1(file("p1.txt"));
    std::string word, block;
    int lines = 0;
    double scale = 0, top = 0;
    p1 >> word >> block >> word >> lines >> word >> scale >> word >> top;
    EXPECT_EQ(block, "CeO2");
    // CeO2 reflections up to the pattern's end (31 degrees at 0.4066 A): 19 positions.
    EXPECT_EQ(lines, 19);
    EXPECT_GT(scale, 0);
    // The strongest measured peak (111) is near 5700 counts over a background of about 100:
    // the scaled curve lands on it within a third.
    EXPECT_GT(top, 3800);
    EXPECT_LT(top, 7600);
    EXPECT_EQ(count(file("p2.txt"), "phase "), 2);
    EXPECT_EQ(file("p3.txt"), "");  // Reset drops the phases with the profiles
    EXPECT_GT(fs::file_size(home / "overlay.png"), 10000u);
}

TEST_F(StructureOverlay, RefusalsLeaveThePlotAsItWas) {
    fs::copy_file(std::string(ZD_TEST_DATA) + "/patterns/CeO2_Pilatus1M.xy", home / "ceo2.xy");
    std::ofstream(home / "bad.cif") << "data_bad\n_cell_length_a 5\n";
    const std::string s = std::string("menu 40231\n") +  // no pattern yet: refused before the selector
                          "files " + at("ceo2.xy") + "\nmenu 40014\nfiles " + at("bad.cif") + "\nmenu 40231\n" +
                          "files " + kStruct + "Si.cif\ndialog 1986 set 12 0\ndialog 1986 press 1\nmenu 40231\n" +
                          "files\nmenu 40231\nphases " + at("p.txt") + "\n";
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | Open a pattern first"), std::string::npos) << out;
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | No data block of the CIF file holds a cell and atom sites"),
              std::string::npos)
        << out;
    EXPECT_NE(out.find("MESSAGE Zendrite-2006 | Bad wavelength"), std::string::npos) << out;
    EXPECT_EQ(file("p.txt"), "");
}
