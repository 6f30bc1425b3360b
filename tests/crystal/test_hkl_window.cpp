// The HKL generator's window rules (limits in s, the refusals, the size estimate), the trial
// cell's refusals, the list of ceria against gemmi, and the anode table against xraylib.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>

#include "crystal/reflections.h"
#include "crystal/space_group.h"
#include "crystal/spectral_lines.h"

namespace {

using hxl::HKL_XSPACE;

TEST(HklWindow, LimitsInSAndTheirRefusals) {
    float smin = 0, smax = 0;
    std::string msg;
    // 2theta: s = sin(x/2)/lambda, by hand: sin(2.5 deg) = 0.0436194, sin(15 deg) = 0.2588190
    ASSERT_TRUE(hxl::Hkl_S_Limits(HKL_XSPACE::TWOTHETA, 5, 30, 0.4066f, 0, 0, smin, smax, msg)) << msg;
    EXPECT_NEAR(smin, 0.0436194 / 0.4066, 1e-5);
    EXPECT_NEAR(smax, 0.2588190 / 0.4066 + 0.2, 1e-5);  // the margin of 0.2 at the top
    // d runs the other way: 1/(2d)
    ASSERT_TRUE(hxl::Hkl_S_Limits(HKL_XSPACE::D, 1, 4, 0, 0, 0, smin, smax, msg));
    EXPECT_NEAR(smin, 0.125, 1e-6);
    EXPECT_NEAR(smax, 0.7, 1e-6);
    // Q/(4 pi); TOF with t = 5000 d gives d = t/5000
    ASSERT_TRUE(hxl::Hkl_S_Limits(HKL_XSPACE::Q, 2, 8, 0, 0, 0, smin, smax, msg));
    EXPECT_NEAR(smin, 2 / (4 * M_PI), 1e-6);
    ASSERT_TRUE(hxl::Hkl_S_Limits(HKL_XSPACE::TOF, 5000, 20000, 0, 5000, 0, smin, smax, msg));
    EXPECT_NEAR(smin, 0.5 / 4.0, 1e-6);
    EXPECT_NEAR(smax, 0.5 + 0.2, 1e-6);
    // a window that starts at 0, and one just above the product's floor
    EXPECT_FALSE(hxl::Hkl_S_Limits(HKL_XSPACE::TWOTHETA, 0, 30, 1.54f, 0, 0, smin, smax, msg));
    EXPECT_EQ(msg, "Error liminf*limsup < 0.0001");
    EXPECT_FALSE(hxl::Hkl_S_Limits(HKL_XSPACE::S, 0.001f, 0.05f, 0, 0, 0, smin, smax, msg));
    EXPECT_EQ(msg, "Error liminf*limsup < 0.0001");  // 0.0005 * 0.025
    EXPECT_TRUE(hxl::Hkl_S_Limits(HKL_XSPACE::S, 0.02f, 0.05f, 0, 0, 0, smin, smax, msg));  // 0.01*0.025
    EXPECT_FALSE(hxl::Hkl_S_Limits(HKL_XSPACE::TWOTHETA, 30, 5, 1.54f, 0, 0, smin, smax, msg));
    EXPECT_EQ(msg, "Bad window limits");
    EXPECT_FALSE(hxl::Hkl_S_Limits(HKL_XSPACE::TWOTHETA, 5, 30, 0, 0, 0, smin, smax, msg));
    EXPECT_EQ(msg, "Bad wavelength");
}

TEST(HklWindow, SizeEstimateByHand) {
    // 8 * 1 * 1.05 * 4.18879 * 100 = 3518.58 -> 3518, doubled 7036, over 48 -> 146
    EXPECT_EQ(hxl::Hkl_Size_Estimate(1.0f, 100.0f, 48), 146);
    // a count below 1 counts as 1; smax 0.5: 8 * 0.125 * 1.05 * 4.18879 * 157.3 = 691.8 -> 1382
    EXPECT_EQ(hxl::Hkl_Size_Estimate(0.5f, 157.3f, 0), 1382);
}

TEST(HklWindow, TrialCellRefusals) {
    hxl::Cell_Record rec;
    std::string msg;
    const float good[6] = {5.411f, 5.411f, 5.411f, 90, 90, 90};
    ASSERT_TRUE(hxl::Hkl_Trial_Cell(good, rec, msg));
    EXPECT_NEAR(rec.volume, 5.411 * 5.411 * 5.411, 0.01);
    const float bad[][6] = {{0, 5, 5, 90, 90, 90},        {-5, 5, 5, 90, 90, 90},     {5, 5, 5, 120, 120, 120},
                            {5, 5, 5, 10, 10, 90},        {5, 5, 5, 90, 90, 179.99f}, {5, 5, NAN, 90, 90, 90}};
    for (const auto& c : bad) {
        hxl::Cell_Record r = rec;
        EXPECT_FALSE(hxl::Hkl_Trial_Cell(c, r, msg)) << c[0] << " " << c[5];
        EXPECT_EQ(msg, "Wrong cell parameters");
        EXPECT_EQ(r.volume, rec.volume);  // the record is left as it was
    }
    EXPECT_FALSE(hxl::ERR_Crys);
}

// Ceria against the table that gemmi computed (tests/data/peaks/ceo2_reflections.txt).
TEST(HklWindow, CeriaPositionsHeightsAndAFailedWindow) {
    hxl::Cell_Record rec;
    std::string msg;
    const float cell[6] = {5.411f, 5.411f, 5.411f, 90, 90, 90};
    ASSERT_TRUE(hxl::Hkl_Trial_Cell(cell, rec, msg));
    hxl::SPACE_GROUP_TYPE sg;
    hxl::Set_SpaceGroup("F m -3 m", sg);
    ASSERT_FALSE(hxl::ERR_Symm);
    const float px[4] = {7.0f, 7.46f, 7.47f, 9.0f}, py[4] = {10, 20, 30, 40};
    std::vector<hxl::HKL_GEN_TYPE> list;
    ASSERT_TRUE(hxl::Hkl_Generate_Window(rec, sg, HKL_XSPACE::TWOTHETA, 0.4066f, 0, 0, 7.0f, 30.5f, px, py, 4, list, msg))
        << msg;
    std::ifstream in(std::string(ZD_TEST_DATA) + "/peaks/ceo2_reflections.txt");
    std::string line;
    int matched = 0;
    while (std::getline(in, line)) {
        if (line.empty() || line[0] == '#') continue;
        double tth = 0, d = 0;
        std::istringstream(line) >> tth >> d;
        bool hit = false;
        for (const auto& r : list) hit = hit || (std::fabs(r.pos - tth) < 0.001 && std::fabs(0.5 / r.s - d) < 1e-4);
        EXPECT_TRUE(hit) << line;
        matched += hit;
    }
    EXPECT_EQ(matched, 17);
    ASSERT_FALSE(list.empty());
    EXPECT_EQ(list[0].h + list[0].k + list[0].l, 3);  // 111 first, multiplicity 8
    EXPECT_EQ(list[0].mult, 8);
    EXPECT_EQ(list[0].y, 20);  // 7.4624 lies nearer 7.46 than 7.47
    for (std::size_t i = 1; i < list.size(); ++i) EXPECT_LE(list[i - 1].pos, list[i].pos);
    // the margin of 0.2 in s reaches past the window's top: 2theta of s = 0.839 is 39.9 deg
    EXPECT_GT(list.back().pos, 35.0f);
    // a window at 0 leaves the list as it was
    const std::vector<hxl::HKL_GEN_TYPE> kept = list;
    EXPECT_FALSE(hxl::Hkl_Generate_Window(rec, sg, HKL_XSPACE::TWOTHETA, 0.4066f, 0, 0, 0.0f, 30.5f, px, py, 4, list, msg));
    EXPECT_EQ(msg, "Error liminf*limsup < 0.0001");
    EXPECT_EQ(list.size(), kept.size());
    // in d the list still rises in position
    ASSERT_TRUE(hxl::Hkl_Generate_Window(rec, sg, HKL_XSPACE::D, 0, 0, 0, 0.8f, 3.2f, nullptr, nullptr, 0, list, msg));
    EXPECT_NEAR(list.back().pos, 3.12404, 1e-4);
    EXPECT_LT(list.front().pos, list.back().pos);
}

TEST(SpectralLines, TableAgreesWithXraylibAndNamesTheAnode) {
    std::ifstream in(std::string(ZD_TEST_DATA) + "/crystal/spectral_lines_xraylib.txt");
    std::string line;
    std::size_t row = 0;
    const auto& t = hxl::Spectral_Elements();
    while (std::getline(in, line)) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream s(line);
        std::string el;
        double v[4];
        s >> el >> v[0] >> v[1] >> v[2] >> v[3];
        ASSERT_LT(row, t.size());
        EXPECT_EQ(t[row].symbol, el);
        EXPECT_NEAR(t[row].kalpha1, v[0], 5e-6) << el;
        EXPECT_NEAR(t[row].kalpha2, v[1], 5e-6) << el;
        EXPECT_NEAR(t[row].kbeta, v[2], 5e-6) << el;
        EXPECT_NEAR(t[row].lalpha1, v[3], 5e-5) << el;
        ++row;
    }
    EXPECT_EQ(row, 8u);
    EXPECT_EQ(hxl::Spectral_Element_Of(1.5406), 5);   // Cu
    EXPECT_EQ(hxl::Spectral_Element_Of(0.7093), 6);   // Mo
    EXPECT_EQ(hxl::Spectral_Element_Of(0.4066), 0);   // a synchrotron wavelength names none
    // Bragg by hand: Cu K-alpha1 at 30 deg is d = 2.97620; K-beta: 2 asin(1.392252 / (2 d)) = 27.0533 deg
    double out = 0;
    ASSERT_TRUE(hxl::Same_D_Two_Theta(30.0, 1.540597, 1.392252, out));
    EXPECT_NEAR(out, 27.0533, 2e-4);
    EXPECT_FALSE(hxl::Same_D_Two_Theta(150.0, 1.540597, 2.289770, out));  // no angle for Cr there
}

}  // namespace
