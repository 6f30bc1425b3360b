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

// The calculated pattern follows the profile into d and Q: the same points, so the same scale;
// the widths can come from a resolution file; a TOF profile is refused.
TEST_F(StructureOverlay, FollowsTheXSpaceAndTakesTheWidthsOfAResolutionFile) {
    fs::copy_file(std::string(ZD_TEST_DATA) + "/patterns/CeO2_Pilatus1M.xy", home / "ceo2.xy");
    const std::string wave = "dialog \"Change wavelength\" set 11 0.4066\ndialog \"Change wavelength\" press 12\n"
                             "dialog \"Change wavelength\" press 1\n";
    const std::string irf = "files " + kStruct + "CeO2.cif\ndialog 1986 set 12 0.4066\ndialog 1986 press 26\nfiles " +
                            std::string(ZD_TEST_DATA) + "/prf/old_ireso1.irf\ndialog 1986 press 1\nmenu 40231\n";
    const std::string s = "files " + at("ceo2.xy") + "\nmenu 40014\n" + phase_lines("CeO2.cif", "0.4066") + "phases " +
                          at("t.txt") + "\n" + wave + "menu 40017\nphases " + at("d.txt") + "\ndump " + at("dd.txt") +
                          "\nmenu 40019\nfiles " + at("ceo2.xy") + "\nmenu 40014\n" + wave + "menu 40089\n" +
                          phase_lines("CeO2.cif", "0.4066") + "phases " + at("q.txt") + "\npicture 0 " + at("q.png") +
                          "\nmenu 40019\nfiles " + at("ceo2.xy") + "\nmenu 40014\n" + irf + "phases " + at("irf.txt") +
                          "\n";
    run(s);
    ASSERT_EQ(status, 0) << out << err;
    EXPECT_EQ(out.find("UNANSWERED"), std::string::npos) << out;
    auto scale = [this](const std::string& name) {
        std::istringstream in(file(name));
        std::string w;
        double v = 0;
        while (in >> w)
            if (w == "scale") in >> v;
        return v;
    };
    ASSERT_GT(scale("t.txt"), 0);
    EXPECT_EQ(file("d.txt"), file("t.txt"));  // converted after: the phase is kept and redrawn in d
    EXPECT_NE(file("dd.txt").find("xspace d-space"), std::string::npos);
    // Opened over the profile in Q, the points are the same: the scale within the float rounding of the conversion.
    EXPECT_NEAR(scale("q.txt"), scale("t.txt"), 1e-4 * scale("t.txt"));
    EXPECT_NE(file("q.txt").find("lines 19 "), std::string::npos) << file("q.txt");
    EXPECT_GT(fs::file_size(home / "q.png"), 10000u);
    // The U V W X Y of the resolution file, joined by Thompson-Cox-Hastings.
    EXPECT_NE(file("irf.txt").find("widths tch 0.01 -0.02 0.03 0 0.5 0 0.001 0.05\n"), std::string::npos)
        << file("irf.txt");
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
