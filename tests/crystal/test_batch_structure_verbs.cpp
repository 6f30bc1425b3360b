// zendrite-batch structure, simulate and msg, run as the program runs them.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/app/batch_run.h"

namespace {

using zdtest::Run_Batch;

const std::string kDir = std::string(ZD_TEST_DATA) + "/crystal/structures/";

TEST(BatchStructureVerbs, StructurePrintsEachBlockAndRefusesBadFiles) {
    std::string out, err;
    ASSERT_EQ(Run_Batch({"structure", kDir + "ALUMINA.cif"}, out, err), 0) << err;
    for (const char* s : {"Block: ALUMINA_publ", "Cell: 4.760773 4.760773 12.997190 90.0000 90.0000 120.0000",
                          "Space group: R -3 c", "  Al1      AL       0.000000   0.000000   0.352000"})
        EXPECT_NE(out.find(s), std::string::npos) << s << "\n" << out;
    const auto tmp = std::filesystem::temp_directory_path();
    const std::string bad = (tmp / "zd_batch_bad.cif").string(), copy = (tmp / "zd_batch_copy.cif").string();
    std::ofstream(bad) << "data_broken\n_cell_length_a 5\n_cell_length_b 5\n_cell_length_c 5\n"
                          "_symmetry_space_group_name_H-M 'P 1'\nloop_\n_atom_site_label\n_atom_site_fract_x\n"
                          "_atom_site_fract_y\n_atom_site_fract_z\nXx1 0 0 0\n";
    EXPECT_EQ(Run_Batch({"structure", bad}, out, err), 1);
    EXPECT_NE(err.find("CIF block broken, item _atom_site_label, atom Xx1: unknown element"), std::string::npos) << err;
    // --cif writes a file that reads back to the same listing.
    ASSERT_EQ(Run_Batch({"structure", kDir + "PbSO4.cif", "--cif", copy}, out, err), 0) << err;
    std::string again;
    ASSERT_EQ(Run_Batch({"structure", copy}, again, err), 0) << err;
    EXPECT_EQ(again, out);
    for (const auto& f : {bad, copy}) std::filesystem::remove(f);
    EXPECT_EQ(Run_Batch({"structure"}, out, err), 2);
}

TEST(BatchStructureVerbs, SimulateListsLinesAndWritesTheProfile) {
    std::string out, err;
    ASSERT_EQ(Run_Batch({"simulate", kDir + "Si.cif", "--lambda", "1.540593", "--range", "20", "100", "--list"}, out, err), 0)
        << err;
    // 111 is the strongest line; 333 and 511 fall together.
    EXPECT_NE(out.find("  28.4419    100.0000     1   1   1    8\n"), std::string::npos) << out;
    EXPECT_NE(out.find("   3   3   3    8 /   5   1   1   24\n"), std::string::npos) << out;
    EXPECT_EQ(out.find("   2   2   2    8"), std::string::npos) << "222 is extinct by the positions";
    const std::string xy = (std::filesystem::temp_directory_path() / "zd_sim.xy").string();
    ASSERT_EQ(Run_Batch({"simulate", kDir + "PbSO4.cif", "--lambda", "1.909", "--range", "10", "150", "--neutron", "--out", xy,
                   "--fwhm", "0.2"},
                  out, err),
              0)
        << err;
    std::ifstream in(xy);
    std::string head;
    std::getline(in, head);
    EXPECT_NE(head.find("neutrons"), std::string::npos);
    int n = 0;
    double x = 0, y = 0, ymax = 0;
    while (in >> x >> y) {
        ++n;
        ymax = std::max(ymax, y);
    }
    EXPECT_EQ(n, 14001);
    EXPECT_GT(ymax, 0);
    std::filesystem::remove(xy);
    EXPECT_EQ(Run_Batch({"simulate", kDir + "Si.cif", "--lambda", "0", "--range", "20", "100", "--list"}, out, err), 1);
    EXPECT_EQ(err, "Bad wavelength\n");
    EXPECT_EQ(Run_Batch({"simulate", kDir + "Si.cif", "--block", "nope", "--lambda", "1.5", "--range", "20", "100", "--list"},
                  out, err),
              1);
    EXPECT_EQ(Run_Batch({"simulate", kDir + "Si.cif", "--list"}, out, err), 2);
    // Ce4+ and O2- have their own form factors: nothing to note.
    ASSERT_EQ(Run_Batch({"simulate", kDir + "CeO2.cif", "--lambda", "1.54", "--range", "20", "60", "--list"}, out, err), 0);
    EXPECT_EQ(err.find("Note:"), std::string::npos) << err;
}

// Widths from a resolution file: Si 111 (28.44 deg at 1.5406 A) with U V W X Y = 0.01 -0.02 0.03
// 0.001 0.05 has HG 0.15992 and HL 0.05183, so by Thompson-Cox-Hastings an FWHM of 0.18865 deg
// (worked with the formula in Python); measured on the written profile at half height.
TEST(BatchStructureVerbs, SimulateTakesTheWidthsOfAResolutionFile) {
    std::string out, err;
    const std::string xy = (std::filesystem::temp_directory_path() / "zd_sim_irf.xy").string();
    const std::string irf = std::string(ZD_TEST_DATA) + "/prf/old_ireso1.irf";
    ASSERT_EQ(Run_Batch({"simulate", kDir + "Si.cif", "--lambda", "1.5406", "--range", "27", "30", "--step", "0.0005",
                         "--irf", irf, "--out", xy},
                        out, err),
              0)
        << err;
    std::ifstream in(xy);
    std::string head;
    std::getline(in, head);
    std::vector<double> xs, ys;
    for (double x = 0, y = 0; in >> x >> y;) xs.push_back(x), ys.push_back(y);
    std::filesystem::remove(xy);
    ASSERT_GT(xs.size(), 1000u);
    const std::size_t top = static_cast<std::size_t>(std::max_element(ys.begin(), ys.end()) - ys.begin());
    EXPECT_NEAR(xs[top], 28.442, 0.001);
    const double half = ys[top] / 2;
    std::size_t lo = top, hi = top;
    while (lo > 0 && ys[lo] > half) --lo;
    while (hi + 1 < ys.size() && ys[hi] > half) ++hi;
    const double left = xs[lo] + (half - ys[lo]) / (ys[lo + 1] - ys[lo]) * (xs[lo + 1] - xs[lo]);
    const double right = xs[hi - 1] + (half - ys[hi - 1]) / (ys[hi] - ys[hi - 1]) * (xs[hi] - xs[hi - 1]);
    EXPECT_NEAR(right - left, 0.18865, 0.002);
    // A resolution file without U V W, and one that is not there, are refused.
    EXPECT_EQ(Run_Batch({"simulate", kDir + "Si.cif", "--lambda", "1.5406", "--range", "27", "30", "--irf",
                         std::string(ZD_TEST_DATA) + "/prf/tof_keywords.irf", "--out", xy},
                        out, err),
              1);
    EXPECT_NE(err.find("gives no U, V, W"), std::string::npos) << err;
    EXPECT_EQ(Run_Batch({"simulate", kDir + "Si.cif", "--lambda", "1.5406", "--range", "27", "30", "--irf",
                         "/nonexistent/x.irf", "--out", xy},
                        out, err),
              1);
    EXPECT_FALSE(std::filesystem::exists(xy));
}

TEST(BatchStructureVerbs, MsgListsAMagneticGroup) {
    std::string out, err;
    ASSERT_EQ(Run_Batch({"msg", "62.448"}, out, err), 0) << err;
    EXPECT_NE(out.find("=>            BNS number: 62.448"), std::string::npos) << out;
    EXPECT_NE(out.find("=>   Number of operators: 8 (4 with time reversal)"), std::string::npos) << out;
    EXPECT_NE(out.find(" => SYMM(  1): x,y,z,+1\n"), std::string::npos) << out;
    EXPECT_EQ(Run_Batch({"msg", "99.999"}, out, err), 1);
    EXPECT_EQ(err, "No magnetic space group has the BNS number 99.999\n");
}

}  // namespace
