// zendrite-batch hkl --peaks: figures of merit and the refined cell of a peak file.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/app/batch_run.h"

namespace {

const std::string ceo2 = std::string(ZD_TEST_DATA) + "/peaks/ceo2_pilatus_peaks.aps";

std::vector<std::string> ceria(std::vector<std::string> more) {
    std::vector<std::string> a = {"hkl", "--cell", "5.411", "5.411", "5.411", "90", "90", "90", "--sg", "F", "m", "-3", "m",
                                  "--lambda", "0.4066", "--range", "5", "30"};
    a.insert(a.end(), more.begin(), more.end());
    return a;
}

TEST(BatchHklPeaks, CeriaPeaksGiveTheFiguresAndTheCell) {
    std::string out, err;
    ASSERT_EQ(zdtest::Run_Batch(ceria({"--peaks", ceo2}), out, err), 0) << err;
    // The numbers of tests/data/peaks/figures_of_merit_reference.txt (scipy, gemmi).
    for (const char* s : {"\nM(20): fewer than 20 peaks (16)\n", "\nF(N) = 860.1 (N = 16)\n", "F(16) = 860.1 (0.0012, 15)",
                          "\nUnexplained peaks: 0 of 16 (tolerance 0.0500 deg)\n",
                          "\nRefined cell: 5.411073 5.411073 5.411073 90.000000 90.000000 90.000000\n"
                          "       sigma: 0.000096 0.000096 0.000096 0.000000 0.000000 0.000000\n"})
        EXPECT_NE(out.find(s), std::string::npos) << s << "\n" << out;
    ASSERT_EQ(zdtest::Run_Batch(ceria({"--peaks", ceo2, "--refine-zero"}), out, err), 0) << err;
    EXPECT_NE(out.find("Refined cell: 5.411650 "), std::string::npos) << out;
    EXPECT_NE(out.find("Zero shift: 0.00240 (0.00103) deg"), std::string::npos) << out;
}

TEST(BatchHklPeaks, TwentyPeaksGiveMAndBadFilesAreRefused) {
    const auto dir = std::filesystem::temp_directory_path() / "zd_hkl_peaks";
    std::filesystem::create_directories(dir);
    // The orthorhombic trial of the reference table.
    {
        std::ofstream f(dir / "pbso4.aps");
        f << "! Data file : made by hand\n! Format    : none\n! peak_position   peak_intensity    peak_background\n";
        for (const char* x : {"16.47694", "20.80741", "20.91852", "23.33209", "24.57217", "25.57582", "26.70261", "27.70256",
                              "29.68752", "32.34552", "33.16397", "33.29488", "34.20359", "37.23055", "37.32598", "38.16898",
                              "39.53919", "40.27110", "41.11514", "41.70971", "42.33913", "42.37875", "42.61332", "43.73525",
                              "43.75422"})
            f << "   " << x << "   100.0   10.0\n";
        std::ofstream g(dir / "bad.aps");
        g << "! head\n 12.0 1 1\n twelve 1 1\n";
    }
    std::string out, err;
    ASSERT_EQ(zdtest::Run_Batch({"hkl", "--cell", "8.482", "5.398", "6.958", "90", "90", "90", "--sg", "P", "n", "m", "a",
                                 "--lambda", "1.5406", "--range", "10", "45", "--peaks", (dir / "pbso4.aps").string()},
                                out, err),
              0)
        << err;
    EXPECT_NE(out.find("\nM(20) = 90.8\n"), std::string::npos) << out;
    EXPECT_NE(out.find("\nF(N) = 133.0 (N = 25)\n"), std::string::npos) << out;
    // Errors of up to 0.012 degree on the lines: the cell comes back within a few 0.001 A.
    const auto at = out.find("\nRefined cell: ");
    ASSERT_NE(at, std::string::npos) << out;
    std::istringstream cell(out.substr(at + 15));
    double a, b, c;
    cell >> a >> b >> c;
    EXPECT_NEAR(a, 8.482, 0.004);
    EXPECT_NEAR(b, 5.398, 0.003);
    EXPECT_NEAR(c, 6.958, 0.003);

    EXPECT_EQ(zdtest::Run_Batch(ceria({"--peaks", (dir / "bad.aps").string()}), out, err), 1);
    EXPECT_NE(err.find("line 3: \"twelve\" is not a number"), std::string::npos) << err;
    EXPECT_EQ(out, "");
    EXPECT_EQ(zdtest::Run_Batch(ceria({"--peaks", (dir / "none.aps").string()}), out, err), 1);
    EXPECT_EQ(out, "");
    EXPECT_EQ(zdtest::Run_Batch(ceria({"--peaks"}), out, err), 2);
    EXPECT_EQ(zdtest::Run_Batch(ceria({"--peaks", ceo2, "--tolerance", "0"}), out, err), 2);
    // A cell 1 % off: the peaks are not matched and the refinement says why.
    std::vector<std::string> off = ceria({"--peaks", ceo2});
    off[2] = off[3] = off[4] = "5.47";
    EXPECT_EQ(zdtest::Run_Batch(off, out, err), 1);
    EXPECT_NE(err.find("Too few peaks matched to reflections"), std::string::npos) << err;
    std::filesystem::remove_all(dir);
}

}  // namespace
