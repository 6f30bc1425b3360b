// Generated reflection lists against the oracle's absences and multiplicities,
// the limits of the window, and the positions in each X space.
#include <gtest/gtest.h>

#include <cmath>

#include "crystal/reflections.h"
#include "oracle_data.h"

namespace {

using namespace hxl;

// A cell with the metric the group's crystal system asks for.
void cell_for(const SPACE_GROUP_TYPE& sg, float cell[3], float ang[3]) {
    const std::string& s = sg.crystal_system;
    const float c[3] = {5.0f, 6.0f, 7.0f};
    for (int i = 0; i < 3; ++i) {
        cell[i] = c[i];
        ang[i] = 90;
    }
    if (s == "Triclinic") {
        ang[0] = 80;
        ang[1] = 95;
        ang[2] = 105;
    } else if (s == "Monoclinic") {
        for (const SEITZ_TYPE& o : sg.seitz)
            if (o.r[0][0] + o.r[1][1] + o.r[2][2] == -1)
                for (int i = 0; i < 3; ++i)
                    if (o.r[i][i] == 1 || o.r[i][i] == -1) {
                        bool axis = true;
                        for (int j = 0; j < 3; ++j)
                            if (j != i && o.r[j][j] == o.r[i][i]) axis = false;
                        if (axis) ang[i] = 100;
                    }
    } else if (s == "Tetragonal") {
        cell[1] = cell[0];
    } else if ((s == "Trigonal" || s == "Hexagonal") && !sg.centring.translations.empty()) {
        cell[1] = cell[0];
        ang[2] = 120;
    } else if (s == "Trigonal" || s == "Hexagonal") {
        if (sg.lattice_symbol == "R") {
            cell[1] = cell[2] = cell[0];
            ang[0] = ang[1] = ang[2] = 70;
        } else {
            cell[1] = cell[0];
            ang[2] = 120;
        }
    } else if (s == "Cubic") {
        cell[1] = cell[2] = cell[0];
    }
}

// Every setting: the list holds one member of each set of allowed
// equivalents inside the sphere, with the oracle's multiplicity.
TEST(Reflections, GeneratedListsMatchTheOracleInEverySetting) {
    const auto settings = Read_Oracle_Settings(std::string(ZD_TEST_DATA) + "/crystal/spacegroups.txt");
    ASSERT_GT(settings.size(), 500u);
    for (const ORACLE_SETTING& o : settings) {
        SCOPED_TRACE(o.xhm);
        SPACE_GROUP_TYPE sg;
        Set_SpaceGroup(o.xhm, sg);
        ASSERT_FALSE(ERR_Symm);
        float cell[3], ang[3];
        cell_for(sg, cell, ang);
        Cell_Record rec;
        Fill_Cell_Record(cell, ang, rec);
        // |h| <= 2 s a, so the sphere of this radius lies inside the oracle's box.
        const float smax = 3.0f / 7.0f;
        std::vector<HKL_GEN_TYPE> list;
        std::string msg;
        ASSERT_TRUE(Hkl_Generate(rec, sg, 0.0f, smax, list, msg)) << msg;
        long want = 0;
        std::size_t i = 0;
        for (int h = -6; h <= 6; ++h)
            for (int k = -6; k <= 6; ++k)
                for (int l = -6; l <= 6; ++l, ++i)
                    if (o.refl[i] != '.' && Hkl_S(rec, h, k, l) <= smax) ++want;
        long got = 0;
        float last = 0;
        for (const HKL_GEN_TYPE& r : list) {
            const std::size_t at = static_cast<std::size_t>(((r.h + 6) * 13 + (r.k + 6)) * 13 + (r.l + 6));
            ASSERT_LT(at, o.refl.size());
            EXPECT_EQ(o.refl[at], static_cast<char>('0' + r.mult)) << r.h << " " << r.k << " " << r.l;
            EXPECT_GE(r.s, last);
            last = r.s;
            got += r.mult;
        }
        EXPECT_EQ(got, want);
    }
}

TEST(Reflections, WindowLimitsAndTheirMessages) {
    float smin = -1, smax = -1;
    std::string msg;
    EXPECT_FALSE(Hkl_S_Limits(HKL_XSPACE::TWOTHETA, 0, 100, 1.54f, 0, 0, smin, smax, msg));
    EXPECT_EQ(msg, "Error liminf*limsup < 0.0001");
    EXPECT_EQ(smin, -1.0f);
    EXPECT_FALSE(Hkl_S_Limits(HKL_XSPACE::TWOTHETA, 0.01f, 0.02f, 1.54f, 0, 0, smin, smax, msg));
    EXPECT_EQ(msg, "Error liminf*limsup < 0.0001");
    EXPECT_FALSE(Hkl_S_Limits(HKL_XSPACE::TWOTHETA, 90, 30, 1.54f, 0, 0, smin, smax, msg));
    EXPECT_EQ(msg, "Bad window limits");
    EXPECT_FALSE(Hkl_S_Limits(HKL_XSPACE::TWOTHETA, 10, 30, 0, 0, 0, smin, smax, msg));
    EXPECT_EQ(msg, "Bad wavelength");
    ASSERT_TRUE(Hkl_S_Limits(HKL_XSPACE::TWOTHETA, 20, 60, 1.5f, 0, 0, smin, smax, msg));
    EXPECT_NEAR(smin, std::sin(10 * M_PI / 180) / 1.5, 1e-6);
    EXPECT_NEAR(smax, std::sin(30 * M_PI / 180) / 1.5 + 0.2, 1e-6);  // the margin at the edge
    ASSERT_TRUE(Hkl_S_Limits(HKL_XSPACE::D, 1.0f, 4.0f, 0, 0, 0, smin, smax, msg));
    EXPECT_NEAR(smin, 0.125f, 1e-6);
    EXPECT_NEAR(smax, 0.7f, 1e-6);
    ASSERT_TRUE(Hkl_S_Limits(HKL_XSPACE::Q, 1.0f, 6.0f, 0, 0, 0, smin, smax, msg));
    EXPECT_NEAR(smin, 1 / (4 * M_PI), 1e-6);
    ASSERT_TRUE(Hkl_S_Limits(HKL_XSPACE::TOF, 5000, 20000, 0, 10000, 0, smin, smax, msg));
    EXPECT_NEAR(smin, 0.25f, 1e-6);
    EXPECT_NEAR(smax, 1.2f, 1e-6);
}

TEST(Reflections, XSpaceOfAProfileAndTheSetupChecks) {
    HKL_XSPACE sp = HKL_XSPACE::S;
    std::string msg;
    const struct {
        const char* name;
        HKL_XSPACE want;
    } ok[] = {{"2theta", HKL_XSPACE::TWOTHETA}, {"Omega", HKL_XSPACE::TWOTHETA}, {"TOF", HKL_XSPACE::TOF},
              {"d-space", HKL_XSPACE::D},       {"d-spacing", HKL_XSPACE::D},    {"q-space", HKL_XSPACE::Q},
              {"s-space ", HKL_XSPACE::S}};
    for (const auto& c : ok) {
        EXPECT_TRUE(Hkl_XSpace_From_Name(c.name, sp, msg)) << c.name;
        EXPECT_EQ(sp, c.want) << c.name;
    }
    for (const char* bad : {"Energy", "", "2th"}) {
        EXPECT_FALSE(Hkl_XSpace_From_Name(bad, sp, msg)) << bad;
        EXPECT_EQ(msg, "xspace not permited");
    }
    EXPECT_FALSE(Hkl_Check_Setup("   ", HKL_XSPACE::TWOTHETA, 1.5f, msg));
    EXPECT_EQ(msg, "Empty SPGR field");
    EXPECT_FALSE(Hkl_Check_Setup("P b m n", HKL_XSPACE::TWOTHETA, 0.0f, msg));
    EXPECT_EQ(msg, "Bad wavelength");
    EXPECT_TRUE(Hkl_Check_Setup("P b m n", HKL_XSPACE::TOF, 0.0f, msg));
    EXPECT_TRUE(Hkl_Check_Setup("P b m n", HKL_XSPACE::TWOTHETA, 1.5f, msg));
}

TEST(Reflections, PositionsInEveryXSpaceAndAKnownPattern) {
    float p = 0;
    const float s = 0.2f;
    ASSERT_TRUE(Hkl_Position(HKL_XSPACE::TWOTHETA, s, 1.5f, 0, 0, p));
    EXPECT_NEAR(p, 2 * std::asin(0.3) * 180 / M_PI, 1e-4);
    EXPECT_FALSE(Hkl_Position(HKL_XSPACE::TWOTHETA, 1.0f, 1.5f, 0, 0, p));  // beyond backscattering
    ASSERT_TRUE(Hkl_Position(HKL_XSPACE::D, s, 0, 0, 0, p));
    EXPECT_NEAR(p, 2.5f, 1e-6);
    ASSERT_TRUE(Hkl_Position(HKL_XSPACE::Q, s, 0, 0, 0, p));
    EXPECT_NEAR(p, 0.8 * M_PI, 1e-5);
    ASSERT_TRUE(Hkl_Position(HKL_XSPACE::S, s, 0, 0, 0, p));
    EXPECT_NEAR(p, 0.4f, 1e-6);
    ASSERT_TRUE(Hkl_Position(HKL_XSPACE::TOF, s, 0, 1000, 10, p));
    EXPECT_NEAR(p, 2562.5f, 1e-2);

    // Silicon with Cu K-alpha1: the first lines of the pattern.
    const float cell[3] = {5.4309f, 5.4309f, 5.4309f}, ang[3] = {90, 90, 90};
    Cell_Record rec;
    Fill_Cell_Record(cell, ang, rec);
    SPACE_GROUP_TYPE sg;
    Set_SpaceGroup("F d -3 m", sg);
    std::vector<HKL_GEN_TYPE> list;
    std::string msg;
    ASSERT_TRUE(Hkl_Generate(rec, sg, 0.01f, 0.45f, list, msg));
    const int want[][4] = {{1, 1, 1, 8}, {2, 2, 0, 12}, {3, 1, 1, 24}, {2, 2, 2, 8}, {4, 0, 0, 6}, {3, 3, 1, 24}};
    ASSERT_GE(list.size(), 6u);
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(list[i].h, want[i][0]);
        EXPECT_EQ(list[i].k, want[i][1]);
        EXPECT_EQ(list[i].l, want[i][2]);
        EXPECT_EQ(list[i].mult, want[i][3]);
    }
    ASSERT_TRUE(Hkl_Position(HKL_XSPACE::TWOTHETA, list[0].s, 1.5406f, 0, 0, p));
    EXPECT_NEAR(p, 28.44f, 0.01);

    // A cell that failed keeps the old list.
    Cell_Record bad;
    EXPECT_FALSE(Hkl_Generate(bad, sg, 0.01f, 0.45f, list, msg));
    EXPECT_EQ(msg, "Wrong cell parameters");
    EXPECT_GE(list.size(), 6u);
    EXPECT_FALSE(Hkl_Generate(rec, sg, 0.5f, 0.45f, list, msg));
    EXPECT_EQ(msg, "Bad window limits");
    EXPECT_FALSE(Hkl_Generate(rec, sg, 0.01f, 500.0f, list, msg));
    EXPECT_EQ(msg, "Too many reflections in the window: reduce the range or the cell");
    const float huge[3] = {1e12f, 1e12f, 1e12f};
    Cell_Record big;
    Fill_Cell_Record(huge, ang, big);
    EXPECT_FALSE(Hkl_Generate(big, sg, 0.01f, 0.45f, list, msg));
    EXPECT_FALSE(msg.empty());
    EXPECT_GE(list.size(), 6u);
}

}  // namespace
