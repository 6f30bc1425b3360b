// Magnetic space groups: the listing against spglib's own tables.
#include <gtest/gtest.h>

#include <spglib.h>

#include <sstream>

#include "crystal/magnetic_group.h"

namespace {

TEST(MagneticGroups, OperatorsAndTimeReversalAsTheDatabaseHoldsThem) {
    static int rot[384][3][3];
    static double trans[384][3];
    static int tr[384];
    for (int uni : {1, 2, 3, 100, 1000, 1651}) {
        hxl::MAGNETIC_GROUP_TYPE mg;
        std::string msg;
        ASSERT_TRUE(hxl::Get_Magnetic_Group(std::to_string(uni), mg, msg)) << msg;
        const int n = spg_get_magnetic_symmetry_from_database(rot, trans, tr, uni, 0);
        ASSERT_EQ(static_cast<int>(mg.operators.size()), n) << uni;
        int primed = 0, ours = 0;
        for (int i = 0; i < n; ++i) {
            primed += tr[i] != 0;
            ours += mg.time_reversal[static_cast<std::size_t>(i)] < 0;
            for (int r = 0; r < 3; ++r)
                for (int c = 0; c < 3; ++c) EXPECT_EQ(mg.operators[static_cast<std::size_t>(i)].rotation[r][c], rot[i][r][c]);
        }
        EXPECT_EQ(ours, primed) << uni;
        // Type I has no primed operator; types II to IV prime half of them.
        if (mg.type == 1) EXPECT_EQ(ours, 0) << uni;
        else EXPECT_EQ(2 * ours, n) << uni;
    }
    // Pnma with time reversal on the 2-fold along a (BNS 62.448): a type III group of 8 operators.
    hxl::MAGNETIC_GROUP_TYPE mg;
    std::string msg;
    ASSERT_TRUE(hxl::Get_Magnetic_Group("62.448", mg, msg)) << msg;
    EXPECT_EQ(mg.sg_number, 62);
    EXPECT_EQ(mg.type, 3);
    EXPECT_EQ(mg.operators.size(), 8u);
    hxl::MAGNETIC_GROUP_TYPE og;
    ASSERT_TRUE(hxl::Get_Magnetic_Group(mg.og_number, og, msg)) << msg;
    EXPECT_EQ(og.uni, mg.uni);
    // The grey group of P1: the identity twice, once with time reversal.
    ASSERT_TRUE(hxl::Get_Magnetic_Group("1.2", mg, msg)) << msg;
    EXPECT_EQ(mg.type, 2);
    std::ostringstream out;
    hxl::List_Magnetic_Group(mg, out);
    EXPECT_NE(out.str().find("x,y,z,+1\n"), std::string::npos) << out.str();
    EXPECT_NE(out.str().find("x,y,z,-1\n"), std::string::npos) << out.str();
    EXPECT_NE(out.str().find("=>            BNS number: 1.2"), std::string::npos) << out.str();
    for (const char* bad : {"0", "1652", "62.9999", "abc", "", "-3"}) EXPECT_FALSE(hxl::Get_Magnetic_Group(bad, mg, msg)) << bad;
}

}  // namespace
