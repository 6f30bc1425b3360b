// Operator texts in both directions, and the Hall symbol parser's refusals.
#include <gtest/gtest.h>

#include "crystal/hall_symbol.h"
#include "crystal/sg_setting_table.h"
#include "crystal/space_group.h"
#include "crystal/sym_oper.h"

namespace {

using namespace hxl;

TEST(SymOper, ParseAcceptsTheUsualWritings) {
    SYM_OPER_TYPE op;
    std::string msg;
    ASSERT_TRUE(Parse_Operator(" -x+1/2, y , Z+0.25", op, msg)) << msg;
    EXPECT_EQ(op.rotation[0][0], -1);
    EXPECT_EQ(op.rotation[1][1], 1);
    EXPECT_EQ(op.rotation[2][2], 1);
    EXPECT_FLOAT_EQ(op.translation[0], 0.5f);
    EXPECT_FLOAT_EQ(op.translation[2], 0.25f);
    ASSERT_TRUE(Parse_Operator("x-y,x,z+1/6", op, msg));
    EXPECT_EQ(op.rotation[0][1], -1);
    EXPECT_EQ(op.rotation[1][0], 1);
    EXPECT_NEAR(op.translation[2], 1.0f / 6, 1e-7);
    ASSERT_TRUE(Parse_Operator("1/2+x,-y,3/4-z", op, msg));
    EXPECT_FLOAT_EQ(op.translation[0], 0.5f);
    EXPECT_FLOAT_EQ(op.translation[2], 0.75f);
    EXPECT_EQ(op.rotation[2][2], -1);
}

TEST(SymOper, ParseRefusesWithTheSystemsMessages) {
    SYM_OPER_TYPE op;
    op.translation[0] = 0.125f;
    std::string msg;
    EXPECT_FALSE(Parse_Operator("x,,z", op, msg));
    EXPECT_EQ(msg, " Blank operator field in operator string x,,z");
    EXPECT_FALSE(Parse_Operator("x,y,q", op, msg));
    EXPECT_EQ(msg, " Invalid character... x,y,q");
    EXPECT_FALSE(Parse_Operator("x,y", op, msg));
    EXPECT_EQ(msg, " The above operator is wrong: x,y");
    EXPECT_FALSE(Parse_Operator("x,y,z,x", op, msg));
    EXPECT_FALSE(Parse_Operator("x,x,z", op, msg));  // determinant 0
    EXPECT_EQ(msg, " The above operator is wrong: x,x,z");
    EXPECT_FALSE(Parse_Operator("x+,y,z", op, msg));
    EXPECT_FALSE(Parse_Operator("x1/2,y,z", op, msg));
    EXPECT_FALSE(Parse_Operator("x,y,z/0", op, msg));
    EXPECT_FALSE(Parse_Operator("-x,55555555555555555555y,z", op, msg));
    EXPECT_FLOAT_EQ(op.translation[0], 0.125f);  // untouched on failure
}

TEST(SymOper, FormatAndParseAgreeOnEveryTabulatedOperator) {
    int n = 0;
    for (int row = 0; row < sg_setting_count; ++row)
        for (const SEITZ_TYPE& s : Tabulated_Operators(row)) {
            const SYM_OPER_TYPE op = Seitz_To_Oper(s);
            const std::string text = Format_Operator(op);
            SYM_OPER_TYPE back;
            std::string msg;
            ASSERT_TRUE(Parse_Operator(text, back, msg)) << text << msg;
            SEITZ_TYPE sb;
            ASSERT_TRUE(Oper_To_Seitz(back, sb));
            EXPECT_TRUE(sb == s) << text;
            ++n;
        }
    EXPECT_GT(n, 7000);
    SYM_OPER_TYPE op;
    op.rotation[0][0] = -1;
    op.translation[0] = 0.5f;
    op.translation[2] = 0.75f;
    EXPECT_EQ(Format_Operator(op), "-x+1/2,y,z+3/4");
}

TEST(HallSymbol, DefaultsShiftsAndRefusals) {
    std::vector<SEITZ_TYPE> g, grp;
    std::string msg;
    // P 61 2 (0 0 5) and P 65 2 (0 0 1) are enantiomorphs: equal but for the screw sense.
    ASSERT_TRUE(Hall_Generators("P 61 2 (0 0 5)", g, msg)) << msg;
    ASSERT_TRUE(Close_Group(g, grp));
    EXPECT_EQ(grp.size(), 12u);
    ASSERT_TRUE(Hall_Generators("-F 4vw 2vw 3", g, msg));
    ASSERT_TRUE(Close_Group(g, grp));
    EXPECT_EQ(grp.size(), 192u);
    ASSERT_TRUE(Hall_Generators("P 3*", g, msg));
    EXPECT_EQ(g.back().r[0][2], 1);  // x -> z: the body-diagonal threefold
    for (const char* bad : {"", "Q 2", "P 5", "P 2q", "P 2 2 (0 0", "P 3 2 2 2 2 2", "P 2 3 3"}) {
        EXPECT_FALSE(Hall_Generators(bad, g, msg)) << bad;
        EXPECT_FALSE(msg.empty()) << bad;
    }
    // A translation of 1/5 has no place in a crystallographic group.
    SEITZ_TYPE s;
    SYM_OPER_TYPE op;
    op.translation[0] = 0.2f;
    EXPECT_FALSE(Oper_To_Seitz(op, s));
}

}  // namespace
