// zendrite-batch hkl --peaks: figures of merit and the refined cell of a peak file.
#include <gtest/gtest.h>

#include <cmath>
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

// LaB6 in Cu K-alpha1, 24 peaks: M(20) and F(24) as tests/data/peaks/figures_of_merit_reference.txt
// gives them (lab6_figures M20=477.5142, F=201.7200; lab6_refine zero=0 a=4.1568495, a_std 0.0000260),
// within the 1e-3 that a float cell moves so close a fit.
std::vector<std::string> lab6(const std::string& sg, const std::string& lambda, std::vector<std::string> cell) {
    std::vector<std::string> a = {"hkl", "--cell"};
    a.insert(a.end(), cell.begin(), cell.end());
    for (const std::string& w : {std::string("--sg"), sg, std::string("--lambda"), lambda, std::string("--range"),
                                 std::string("15"), std::string("150"), std::string("--peaks"),
                                 std::string(ZD_TEST_DATA) + "/peaks/lab6_d500_peaks.aps"})
        a.push_back(w);
    return a;
}

double number_after(const std::string& text, const std::string& key) {
    const std::size_t p = text.find(key);
    return p == std::string::npos ? NAN : std::strtod(text.c_str() + p + key.size(), nullptr);
}

TEST(BatchHklPeaks, LanthanumHexaborideAndTheRefusalsOfTheTrialCell) {
    const std::vector<std::string> edge = {"4.1569", "4.1569", "4.1569", "90", "90", "90"};
    std::string out, err;
    ASSERT_EQ(zdtest::Run_Batch(lab6("P m -3 m", "1.540593", edge), out, err), 0) << err;
    EXPECT_NEAR(number_after(out, "\nM(20) = "), 477.5142, 0.5) << out;
    EXPECT_NEAR(number_after(out, "\nF(N) = "), 201.72, 0.2) << out;
    EXPECT_NE(out.find("(N = 24)\n"), std::string::npos) << out;
    EXPECT_NE(out.find("\nUnexplained peaks: 0 of 24 "), std::string::npos) << out;
    EXPECT_NE(out.find("\nRefined cell: 4.156850 4.156850 4.156850 90.000000 90.000000 90.000000\n"
                       "       sigma: 0.000026 "),
              std::string::npos)
        << out;
    // Each refusal prints its text alone and ends with status 1: a blank group, a zero
    // wavelength, a zero edge, and a flat cell (alpha = beta = 100 closes at gamma = 160; at
    // 159.99995 the volume is 7e-4 of a b c, worked by hand in the panel's test).
    struct BAD {
        std::string sg, lambda;
        std::vector<std::string> cell;
        const char* text;
    };
    const BAD bad[] = {{" ", "1.540593", edge, "Empty SPGR field\n"},
                       {"P m -3 m", "0", edge, "Bad wavelength\n"},
                       {"P m -3 m", "1.540593", {"0", "4.1569", "4.1569", "90", "90", "90"}, "Wrong cell parameters\n"},
                       {"P 1", "1.540593", {"5", "5", "5", "100", "100", "159.99995"}, "Wrong cell parameters\n"}};
    for (const BAD& b : bad) {
        EXPECT_EQ(zdtest::Run_Batch(lab6(b.sg, b.lambda, b.cell), out, err), 1) << b.text;
        EXPECT_EQ(err, b.text);
        EXPECT_EQ(out, "");
    }
    // a little less flat is a cell: its reflections are listed (the LaB6 peaks then match none)
    zdtest::Run_Batch(lab6("P 1", "1.540593", {"5", "5", "5", "100", "100", "159.9"}), out, err);
    EXPECT_EQ(out.rfind("    h    k    l  mult", 0), 0u) << out << err;
    EXPECT_EQ(err.find("Wrong cell parameters"), std::string::npos) << err;
}

}  // namespace
