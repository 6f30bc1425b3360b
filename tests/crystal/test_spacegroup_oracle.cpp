// Every setting of the reference table: symbol lookup, operators, descriptors,
// absences and multiplicities against the independent oracle.
#include <gtest/gtest.h>

#include <algorithm>

#include "crystal/reflections.h"
#include "crystal/space_group.h"
#include "oracle_data.h"

namespace {

using namespace hxl;

// The oracle does not tell the orientation of a point group or a Laue class.
std::string plain_laue(const std::string& l) {
    if (l == "-3 R") return "-3";
    if (l == "-3m R" || l == "-3m1" || l == "-31m") return "-3m";
    return l;
}

std::string plain_point_group(const std::string& p) {
    if (p == "312") return "32";
    if (p == "31m") return "3m";
    if (p == "-31m") return "-3m";
    if (p == "m2m" || p == "2mm") return "mm2";
    if (p == "-4m2") return "-42m";
    if (p == "-6m2") return "-62m";
    return p;
}

std::vector<SEITZ_TYPE> parsed(const std::vector<std::string>& texts) {
    std::vector<SEITZ_TYPE> v;
    for (const auto& t : texts) {
        SYM_OPER_TYPE op;
        std::string msg;
        EXPECT_TRUE(Parse_Operator(t, op, msg)) << t << msg;
        SEITZ_TYPE s;
        EXPECT_TRUE(Oper_To_Seitz(op, s)) << t;
        v.push_back(s);
    }
    std::sort(v.begin(), v.end(), Seitz_Less);
    return v;
}

const std::vector<ORACLE_SETTING>& oracle() {
    static const auto o = Read_Oracle_Settings(std::string(ZD_TEST_DATA) + "/crystal/spacegroups.txt");
    return o;
}

TEST(SpaceGroupOracle, EverySettingHasTheOraclesOperatorsAndDescriptors) {
    ASSERT_GT(oracle().size(), 500u);
    for (const ORACLE_SETTING& o : oracle()) {
        SCOPED_TRACE(o.xhm);
        SPACE_GROUP_TYPE sg;
        Set_SpaceGroup(o.xhm, sg);
        ASSERT_FALSE(ERR_Symm) << ERR_Symm_Mess;
        EXPECT_EQ(sg.number, o.number);
        EXPECT_EQ(sg.hall_symbol, o.hall);
        std::vector<SEITZ_TYPE> mine(sg.seitz.begin(), sg.seitz.end());
        std::sort(mine.begin(), mine.end(), Seitz_Less);
        EXPECT_TRUE(mine == parsed(o.ops)) << "operators differ";
        EXPECT_EQ(sg.multiplicity, static_cast<int>(o.ops.size()));
        EXPECT_EQ(std::string(1, sg.centring.letter), o.centring);
        EXPECT_EQ(plain_laue(sg.laue_class), o.laue);
        EXPECT_EQ(plain_point_group(sg.point_group), o.point_group);
        EXPECT_EQ(sg.centrosymmetry != "Acentric", o.centric);
    }
}

TEST(SpaceGroupOracle, HallSymbolsAloneGiveTheSameGroups) {
    for (const ORACLE_SETTING& o : oracle()) {
        SCOPED_TRACE(o.hall);
        SPACE_GROUP_TYPE sg;
        Set_SpaceGroup(o.hall, sg, {}, "HAL");
        ASSERT_FALSE(ERR_Symm) << ERR_Symm_Mess;
        std::vector<SEITZ_TYPE> mine(sg.seitz.begin(), sg.seitz.end());
        std::sort(mine.begin(), mine.end(), Seitz_Less);
        EXPECT_TRUE(mine == parsed(o.ops));
        EXPECT_EQ(sg.number, o.number);
    }
}

TEST(SpaceGroupOracle, EveryAbsenceAndMultiplicityUpToSix) {
    long checked = 0;
    for (const ORACLE_SETTING& o : oracle()) {
        SCOPED_TRACE(o.xhm);
        SPACE_GROUP_TYPE sg;
        Set_SpaceGroup(o.xhm, sg);
        ASSERT_FALSE(ERR_Symm);
        ASSERT_EQ(o.refl.size(), 13u * 13u * 13u);
        int bad = 0;
        std::size_t i = 0;
        for (int h = -6; h <= 6; ++h)
            for (int k = -6; k <= 6; ++k)
                for (int l = -6; l <= 6; ++l, ++i) {
                    if (h == 0 && k == 0 && l == 0) continue;
                    const char want = o.refl[i];
                    const bool absent = Hkl_Absent(sg, h, k, l);
                    const char got = absent ? '.' : static_cast<char>('0' + Hkl_Mult(sg, h, k, l));
                    if (got != want && ++bad <= 3)
                        ADD_FAILURE() << h << " " << k << " " << l << " want " << want << " got " << got;
                    ++checked;
                }
    }
    EXPECT_GT(checked, 1000000);
}

}  // namespace
