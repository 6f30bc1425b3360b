// Figures of merit and cell refinement against independent numbers: the table
// tests/data/peaks/figures_of_merit_reference.txt made by
// tests/tools/figures_of_merit_reference.py (gemmi reflections, scipy least
// squares, the published definitions), and d spacings worked by hand.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <map>
#include <sstream>

#include "crystal/cell_refine.h"
#include "crystal/figures_of_merit.h"

namespace {

using namespace hxl;

constexpr double pi = 3.14159265358979323846;

// The "key=value" words of the reference line that starts with `tag` (and holds `with`).
std::map<std::string, std::string> reference(const std::string& tag, const std::string& with = "") {
    std::ifstream in(std::string(ZD_TEST_DATA) + "/peaks/figures_of_merit_reference.txt");
    std::string line;
    std::map<std::string, std::string> out;
    while (std::getline(in, line)) {
        if (line.rfind(tag + " ", 0) != 0 || line.find(with) == std::string::npos) continue;
        std::istringstream w(line.substr(tag.size()));
        std::string word;
        int n = 0;
        while (w >> word) {
            const auto eq = word.find('=');
            out[eq == std::string::npos ? std::to_string(n++) : word.substr(0, eq)] =
                eq == std::string::npos ? word : word.substr(eq + 1);
        }
        break;
    }
    return out;
}
double num(const std::map<std::string, std::string>& m, const std::string& k) {
    const auto it = m.find(k);
    EXPECT_NE(it, m.end()) << k;
    return it == m.end() ? NAN : std::stod(it->second);
}

std::vector<double> peak_file(const char* name) {
    std::ifstream in(std::string(ZD_TEST_DATA) + "/peaks/" + name);
    std::vector<double> x;
    std::string line;
    while (std::getline(in, line))
        if (!line.empty() && line[0] != '!') x.push_back(std::stod(line));
    return x;
}
std::vector<double> ceo2_peaks() { return peak_file("ceo2_pilatus_peaks.aps"); }

SPACE_GROUP_TYPE group(const char* symbol) {
    SPACE_GROUP_TYPE sg;
    Set_SpaceGroup(symbol, sg);
    EXPECT_FALSE(ERR_Symm) << symbol << ERR_Symm_Mess;
    return sg;
}
Cell_Record record(const double c[6]) {
    const float e[3] = {float(c[0]), float(c[1]), float(c[2])}, a[3] = {float(c[3]), float(c[4]), float(c[5])};
    Cell_Record r;
    Fill_Cell_Record(e, a, r);
    return r;
}

TEST(FiguresOfMerit, MatchTheReferenceOnAnOrthorhombicTrialAndTheCeriaPeaks) {
    const auto pb = reference("pbso4_peaks");
    std::vector<double> x;
    for (int i = 0; pb.count(std::to_string(i)); ++i) x.push_back(std::stod(pb.at(std::to_string(i))));
    ASSERT_EQ(x.size(), 25u);
    std::reverse(x.begin(), x.end());  // the order given does not matter
    const double pbcell[6] = {8.482, 5.398, 6.958, 90, 90, 90};
    FOM_SETTINGS_TYPE s;
    s.x.lambda = 1.5406;
    FOM_RESULT_TYPE r;
    ASSERT_TRUE(Figures_Of_Merit(x, record(pbcell), group("P n m a"), s, r)) << r.message;
    const auto f = reference("pbso4_figures");
    ASSERT_TRUE(r.m20_valid);
    EXPECT_NEAR(r.m20, num(f, "M20"), 2e-4 * num(f, "M20"));  // float cell: a few 1e-6 in Q
    EXPECT_EQ(r.n20, num(f, "N20"));
    ASSERT_TRUE(r.fn_valid);
    EXPECT_EQ(r.fn_n, 25);
    EXPECT_NEAR(r.fn, num(f, "F"), 2e-3 * num(f, "F"));
    EXPECT_EQ(r.fn_poss, num(f, "N_poss"));
    EXPECT_EQ(r.unexplained, 0);
    EXPECT_EQ(r.text.rfind("M(20) = 90.", 0), 0u) << r.text;

    // Nineteen peaks: no M(20) but words; a stray peak is unexplained.
    x.erase(x.begin(), x.begin() + 7);
    x.push_back(31.0);
    ASSERT_TRUE(Figures_Of_Merit(x, record(pbcell), group("P n m a"), s, r));
    EXPECT_FALSE(r.m20_valid);
    EXPECT_EQ(r.m20_text, "M(20): fewer than 20 peaks (19)") << r.m20_text;
    x.pop_back();
    x.push_back(31.3);
    s.fn_lines = 30;
    ASSERT_TRUE(Figures_Of_Merit(x, record(pbcell), group("P n m a"), s, r));
    EXPECT_EQ(r.unexplained, 1);
    EXPECT_FALSE(r.fn_valid);
    EXPECT_EQ(r.fn_text, "F(30): fewer than 30 peaks (19)");

    const auto c = reference("ceo2_figures");
    const double ce[6] = {5.411, 5.411, 5.411, 90, 90, 90};
    FOM_SETTINGS_TYPE cs;
    cs.x.lambda = 0.4066;
    ASSERT_TRUE(Figures_Of_Merit(ceo2_peaks(), record(ce), group("F m -3 m"), cs, r)) << r.message;
    EXPECT_EQ(r.n_obs, num(c, "N"));
    EXPECT_NEAR(r.fn_mean_delta, num(c, "delta"), 2e-6);
    EXPECT_EQ(r.fn_poss, num(c, "N_poss"));
    EXPECT_NEAR(r.fn, num(c, "F"), 2e-3 * num(c, "F"));
    EXPECT_EQ(r.unexplained, 0);

    // A wrong cell edge by 1 %: the figures fall and peaks go unexplained.
    const double wrong[6] = {5.465, 5.465, 5.465, 90, 90, 90};
    ASSERT_TRUE(Figures_Of_Merit(ceo2_peaks(), record(wrong), group("F m -3 m"), cs, r));
    EXPECT_LT(r.fn, 50);
    EXPECT_GT(r.unexplained, 10);

    // Refusals: no peaks, a bad wavelength, peaks all beyond the space.
    EXPECT_FALSE(Figures_Of_Merit({}, record(ce), group("F m -3 m"), cs, r));
    EXPECT_EQ(r.message, "No peak to compare with");
    cs.x.lambda = 0;
    EXPECT_FALSE(Figures_Of_Merit(ceo2_peaks(), record(ce), group("F m -3 m"), cs, r));
    EXPECT_EQ(r.message, "Bad wavelength");
    cs.x.lambda = 0.4066;
    EXPECT_FALSE(Figures_Of_Merit({-3.0, 190.0, NAN}, record(ce), group("F m -3 m"), cs, r));
}

// A second check of both figures, worked by hand from their definitions, with no program in
// between. No published list with its printed M(20) and F(N) could be had here to the digit,
// so none is quoted.
//
// Cubic P, a = 1 A: Q = 1/d^2 = h^2 + k^2 + l^2, so the calculated lines are the integers that
// are sums of three squares: 1 2 3 4 5 6 8 9 10 11 12 13 14 16 17 18 19 20 21 22 24 ... (7, 15
// and 23 are 8n+7 and have none; 9 = 300 = 221 is one line).
//
// M(20), positions in d: the observed Q are the lines 1 2 3 5 6 8 9 10 11 12 13 14 16 17 18 19
// 20 21 22 24 (4 is calculated but not observed), the i-th moved by +0.01 for odd i and -0.03
// for even i. Then <eps> = (10*0.01 + 10*0.03)/20 = 0.02; Q20 = 24 - 0.03 = 23.97; the
// calculated lines up to 23.97 are 1..23 less 7, 15, 23: N20 = 20 (4 counts, 24 does not).
// M(20) = Q20 / (2 <eps> N20) = 23.97 / (2 * 0.02 * 20) = 23.97 / 0.8 = 29.9625.
// A 21st line, Q = 25.4, lies past Q20 and changes nothing.
//
// F(N), positions in 1/d (Q = x^2): the lines 1 2 3 5 6 8 9 10 11 12 at x = sqrt(Q) - 0.001 for
// odd i and + 0.002 for even i. <|dx|> = (5*0.001 + 5*0.002)/10 = 0.0015; the last observed Q is
// (sqrt(12) + 0.002)^2 = 12.0139, and the lines up to it are 1..12 less 7: N_poss = 11.
// F(10) = 10 / (0.0015 * 11) = 606.06.
TEST(FiguresOfMerit, HandWorkedCubicExample) {
    const double unit[6] = {1, 1, 1, 90, 90, 90};
    const int lines_m[20] = {1, 2, 3, 5, 6, 8, 9, 10, 11, 12, 13, 14, 16, 17, 18, 19, 20, 21, 22, 24};
    std::vector<double> d;
    for (int i = 1; i <= 20; ++i) d.push_back(1 / std::sqrt(lines_m[i - 1] + (i % 2 ? 0.01 : -0.03)));
    d.push_back(1 / std::sqrt(25.4));
    std::reverse(d.begin(), d.end());  // d falls as Q rises: the order given must not matter
    FOM_SETTINGS_TYPE s;
    s.x.space = HKL_XSPACE::D;
    FOM_RESULT_TYPE r;
    ASSERT_TRUE(Figures_Of_Merit(d, record(unit), group("P m -3 m"), s, r)) << r.message;
    ASSERT_TRUE(r.m20_valid);
    EXPECT_NEAR(r.m20_eps, 0.02, 1e-9);
    EXPECT_NEAR(r.q20, 23.97, 1e-9);
    EXPECT_EQ(r.n20, 20);
    EXPECT_NEAR(r.m20, 29.9625, 1e-6);
    EXPECT_EQ(r.m20_text, "M(20) = 30.0");

    const int lines_f[10] = {1, 2, 3, 5, 6, 8, 9, 10, 11, 12};
    std::vector<double> x;
    for (int i = 1; i <= 10; ++i) x.push_back(std::sqrt(double(lines_f[i - 1])) + (i % 2 ? -0.001 : 0.002));
    s.x.space = HKL_XSPACE::S;
    s.fn_lines = 10;
    ASSERT_TRUE(Figures_Of_Merit(x, record(unit), group("P m -3 m"), s, r)) << r.message;
    ASSERT_TRUE(r.fn_valid);
    EXPECT_EQ(r.fn_n, 10);
    EXPECT_NEAR(r.fn_mean_delta, 0.0015, 1e-6);  // reflection positions from a float s
    EXPECT_EQ(r.fn_poss, 11);
    EXPECT_NEAR(r.fn, 606.06, 0.5);
    EXPECT_EQ(r.m20_text, "M(20): fewer than 20 peaks (10)");
    EXPECT_EQ(r.fn_text.rfind("F(10) = 606.", 0), 0u) << r.fn_text;
    EXPECT_NE(r.fn_text.find(" in s"), std::string::npos) << r.fn_text;  // not in degrees: says so
}

// 1/d^2 by the textbook formulas of each system.
double inv_d2(const double c[6], int h, int k, int l) {
    const double be = c[4] * pi / 180;
    if (c[5] == 120) return 4.0 / 3.0 * (h * h + h * k + k * k) / (c[0] * c[0]) + l * l / (c[2] * c[2]);
    const double sb = std::sin(be), cb = std::cos(be);
    return (h * h / (c[0] * c[0]) + k * k * sb * sb / (c[1] * c[1]) + l * l / (c[2] * c[2]) -
            2 * h * l * cb / (c[0] * c[2])) /
           (sb * sb);
}

TEST(CellRefine, ExactPositionsGiveTheCellBackInEverySystemAndSpace) {
    struct CASE {
        const char* sg;
        double cell[6];
    };
    const CASE cases[] = {
        {"P m -3 m", {4.0123, 4.0123, 4.0123, 90, 90, 90}},
        {"P 6/m m m", {3.2094, 3.2094, 5.2108, 90, 90, 120}},
        {"P m m m", {3.91, 5.13, 6.37, 90, 90, 90}},
        {"P 1 2/m 1", {5.1034, 6.3178, 7.4217, 90, 103.47, 90}},
    };
    const int hkl[][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 1, 0}, {1, 0, 1}, {0, 1, 1}, {1, 0, -1},
                          {1, 1, 1}, {2, 0, 0}, {0, 0, 2}, {1, 1, -1}, {2, 1, 0}, {0, 2, 1}, {1, 2, 2}};
    for (const CASE& cs : cases) {
        for (HKL_XSPACE space : {HKL_XSPACE::TWOTHETA, HKL_XSPACE::D, HKL_XSPACE::TOF}) {
            CELL_REFINE_SETTINGS_TYPE st;
            st.x.space = space;
            st.x.lambda = 1.5406;
            st.x.dtt1 = 6500;
            const double zero = space == HKL_XSPACE::TWOTHETA ? 0.031 : 0.0;
            std::vector<double> x;
            for (const auto& m : hkl) {
                const double q = inv_d2(cs.cell, m[0], m[1], m[2]), d = 1 / std::sqrt(q);
                if (space == HKL_XSPACE::TWOTHETA) x.push_back(2 * std::asin(1.5406 / (2 * d)) * 180 / pi + zero);
                else if (space == HKL_XSPACE::D) x.push_back(d);
                else x.push_back(6500 * d);
            }
            st.refine_zero = zero != 0;
            st.x.zero = zero * 0.8;
            double start[6];
            for (int i = 0; i < 6; ++i) start[i] = cs.cell[i] * (i < 3 ? 1.0002 : 1.0);
            if (cs.cell[4] != 90) start[4] += 0.01;
            st.tolerance = space == HKL_XSPACE::TWOTHETA ? 0.05 : space == HKL_XSPACE::D ? 0.002 : 10;
            CELL_REFINE_RESULT_TYPE r;
            const SPACE_GROUP_TYPE sg = group(cs.sg);
            ASSERT_TRUE(Refine_Cell(x, start, sg, st, r)) << cs.sg << " " << r.message;
            for (int i = 0; i < 6; ++i) EXPECT_NEAR(r.cell[i], cs.cell[i], 1e-5 * cs.cell[i]) << cs.sg << " " << i;
            EXPECT_EQ(r.n_used, 14) << cs.sg;
            EXPECT_NEAR(r.zero, zero, 1e-6);
            EXPECT_LT(r.cell_std[0], 1e-6);  // exact data: no scatter
        }
    }
}

TEST(CellRefine, CeriaPeaksGiveTheScipyFitAndTheCertifiedEdge) {
    const double ce[6] = {5.411, 5.411, 5.411, 90, 90, 90};
    for (int zero = 0; zero <= 1; ++zero) {
        CELL_REFINE_SETTINGS_TYPE st;
        st.x.lambda = 0.4066;
        st.refine_zero = zero == 1;
        CELL_REFINE_RESULT_TYPE r;
        ASSERT_TRUE(Refine_Cell(ceo2_peaks(), ce, group("F m -3 m"), st, r)) << r.message;
        const auto ref = reference("ceo2_refine", "zero=" + std::to_string(zero));
        EXPECT_NEAR(r.cell[0], num(ref, "a"), 2e-6);
        EXPECT_NEAR(r.cell_std[0], num(ref, "a_std"), 1e-3 * num(ref, "a_std"));
        EXPECT_EQ(r.cell[1], r.cell[0]);
        EXPECT_EQ(r.cell_std[3], 0);
        EXPECT_EQ(r.n_used, 16);
        if (zero == 1) {
            EXPECT_NEAR(r.zero, num(ref, "zero"), 1e-6);
        }
        // NIST SRM 674b (CeO2) certifies a = 0.541165 nm. The pattern's wavelength is
        // given to 4 digits (0.4066 A, 1.2e-4 relative, 0.0007 A on a).
        EXPECT_NEAR(r.cell[0], 5.41165, 3 * r.cell_std[0] + 0.0007);
    }
}

// A real standard with more than 20 lines: the 24 peaks of LaB6 in Cu K-alpha1.
TEST(CellRefine, LanthanumHexaboridePeaksGiveMTwentyAndTheCertifiedEdge) {
    const double lab6[6] = {4.1569, 4.1569, 4.1569, 90, 90, 90};
    FOM_SETTINGS_TYPE s;
    s.x.lambda = 1.540593;
    FOM_RESULT_TYPE f;
    ASSERT_TRUE(Figures_Of_Merit(peak_file("lab6_d500_peaks.aps"), record(lab6), group("P m -3 m"), s, f)) << f.message;
    const auto ref = reference("lab6_figures");
    ASSERT_TRUE(f.m20_valid);
    EXPECT_EQ(f.n_obs, 24);
    EXPECT_EQ(f.n20, num(ref, "N20"));
    // the cell is held in float: Q moves by some 5e-8, 1e-3 of the mean |dQ| of so close a fit
    EXPECT_NEAR(f.m20, num(ref, "M20"), 2e-3 * num(ref, "M20"));
    EXPECT_GT(f.m20, 50);
    EXPECT_NEAR(f.fn, num(ref, "F"), 2e-3 * num(ref, "F"));
    EXPECT_EQ(f.fn_poss, num(ref, "N_poss"));
    EXPECT_EQ(f.unexplained, 0);
    for (int zero = 0; zero <= 1; ++zero) {
        CELL_REFINE_SETTINGS_TYPE st;
        st.x.lambda = 1.540593;
        st.refine_zero = zero == 1;
        CELL_REFINE_RESULT_TYPE r;
        ASSERT_TRUE(Refine_Cell(peak_file("lab6_d500_peaks.aps"), lab6, group("P m -3 m"), st, r)) << r.message;
        const auto fit = reference("lab6_refine", "zero=" + std::to_string(zero));
        EXPECT_NEAR(r.cell[0], num(fit, "a"), 2e-6);
        EXPECT_NEAR(r.cell_std[0], num(fit, "a_std"), 1e-3 * num(fit, "a_std"));
        EXPECT_EQ(r.n_used, 24);
        // NIST SRM 660a (LaB6) certifies a = 0.41569 nm
        EXPECT_NEAR(r.cell[0], 4.1569, 0.001);
    }
}

TEST(CellRefine, RefusesWhatCannotBeRefined) {
    CELL_REFINE_SETTINGS_TYPE st;
    st.x.lambda = 0.4066;
    CELL_REFINE_RESULT_TYPE r;
    const double cub[6] = {5.411, 5.42, 5.411, 90, 90, 90};
    EXPECT_FALSE(Refine_Cell(ceo2_peaks(), cub, group("F m -3 m"), st, r));
    EXPECT_EQ(r.message, "The cell does not keep its crystal system: a cubic cell needs a = b = c");
    const double hex[6] = {3.2, 3.2, 5.2, 90, 90, 90};
    EXPECT_FALSE(Refine_Cell({30, 40, 50}, hex, group("P 63/m m c"), st, r));
    EXPECT_NE(r.message.find("gamma = 120"), std::string::npos) << r.message;
    const double bad[6] = {5, 5, 5, 10, 10, 170};
    EXPECT_FALSE(Refine_Cell({30, 40, 50}, bad, group("P 1"), st, r));
    EXPECT_EQ(r.message, "Wrong cell parameters");
    // One matched peak for one parameter: nothing left to estimate the scatter.
    const double ce[6] = {5.411, 5.411, 5.411, 90, 90, 90};
    EXPECT_FALSE(Refine_Cell({7.4627, 3.0}, ce, group("F m -3 m"), st, r));
    EXPECT_EQ(r.message, "Too few peaks matched to reflections for the refinement: 1 for 1 parameters");
    // Only h00 and 0k0 lines: c of an orthorhombic cell is not fixed.
    const double orth[6] = {4, 5, 7.3, 90, 90, 90};
    std::vector<double> x;
    st.x.lambda = 1.5406;
    for (int h = 1; h <= 4; ++h)
        for (double e : {4.0, 5.0}) x.push_back(2 * std::asin(1.5406 * h / (2 * e)) * 180 / pi);
    EXPECT_FALSE(Refine_Cell(x, orth, group("P m m m"), st, r));
    EXPECT_EQ(r.message, "The matched peaks do not fix the cell: the normal matrix is singular");
    st.x.lambda = -1;
    EXPECT_FALSE(Refine_Cell(x, orth, group("P m m m"), st, r));
    EXPECT_EQ(r.message, "Bad wavelength");
}

}  // namespace
