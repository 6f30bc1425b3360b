// The front door: symbol forms, modes, messages, descriptors and listings.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "crystal/reflections.h"
#include "crystal/sg_names.h"
#include "crystal/space_group.h"

namespace {

using namespace hxl;

SPACE_GROUP_TYPE group(const std::string& s, const std::vector<std::string>& gens = {}, const std::string& mode = "") {
    SPACE_GROUP_TYPE sg;
    Set_SpaceGroup(s, sg, gens, mode);
    return sg;
}

std::vector<SEITZ_TYPE> sorted(const SPACE_GROUP_TYPE& sg) {
    std::vector<SEITZ_TYPE> v(sg.seitz.begin(), sg.seitz.end());
    std::sort(v.begin(), v.end(), Seitz_Less);
    return v;
}

TEST(SpaceGroup, SymbolsWithAndWithoutBlanksNumbersAndChoices) {
    const SPACE_GROUP_TYPE pbmn = group("P b m n");
    ASSERT_FALSE(ERR_Symm) << ERR_Symm_Mess;
    EXPECT_EQ(pbmn.number, 53);
    EXPECT_TRUE(sorted(group("Pbmn")) == sorted(pbmn));
    EXPECT_TRUE(sorted(group("pbmn")) == sorted(pbmn));
    const SPACE_GROUP_TYPE p21c = group("P 21/c");
    EXPECT_EQ(p21c.number, 14);
    EXPECT_EQ(p21c.hm_symbol, "P 1 21/c 1");
    EXPECT_TRUE(sorted(group("P121/c1")) == sorted(p21c));
    EXPECT_TRUE(sorted(group("14")) == sorted(p21c));
    EXPECT_EQ(group("P 1 1 21/b").number, 14);  // another unique axis
    EXPECT_TRUE(sorted(group("P 1")) == sorted(group("1")));
    EXPECT_EQ(group("1").multiplicity, 1);
    // Origin choice 2 and hexagonal axes unless a choice is named.
    EXPECT_EQ(group("F d -3 m").setting_choice, "2");
    EXPECT_EQ(group("227").setting_choice, "2");
    EXPECT_EQ(group("Fd-3m:1").setting_choice, "1");
    EXPECT_EQ(group("R -3 c").setting_choice, "H");
    EXPECT_EQ(group("R -3 c").multiplicity, 36);
    EXPECT_EQ(group("R -3 c:R").multiplicity, 12);
    EXPECT_EQ(group("R -3 c:R").lattice_symbol, "R");
    EXPECT_EQ(group("R -3 c:R").bravais_lattice, "hR");
    // A Hall symbol is understood without a mode too.
    const SPACE_GROUP_TYPE hall = group("-P 2ybc");
    EXPECT_FALSE(ERR_Symm);
    EXPECT_EQ(hall.number, 14);
    EXPECT_EQ(hall.setting_type, "Generated from Hall symbol");
    EXPECT_EQ(group("P 21/c", {}, "itc").setting_type, "Generated from explicit IT generators");
    EXPECT_EQ(p21c.setting_type, "IT (Generated from Hermann-Mauguin symbol)");
}

TEST(SpaceGroup, RefusalsCarryTheSystemsMessages) {
    SPACE_GROUP_TYPE sg = group("P 21/c");
    const struct {
        const char* sym;
        const char* mess;
    } cases[] = {{"231", " Number of Space Group out of limits"},
                 {"0", " Number of Space Group out of limits"},
                 {"P 5", " The fivefold axis is not allowed"},
                 {"P 6 5 2", " The fivefold axis is not allowed"},
                 {"P m m m m", " Wrong space-group symbol: P m m m m is not allowed"},
                 {"P 2/mm 2 2", " The symbol: M has been repeated within the same symmetry direction"},
                 {"P 22 2 2", " The symbol: 2 has been repeated within the same symmetry direction"},
                 {"P cm 2", " There is more than one plane within the same symmetry direction"},
                 {"P m2 2", " A mirror plane cannot be immediately followed by a rotation axis"},
                 {"P 2m 2", " A rotation axis cannot be immediately followed by a plane"},
                 {"P 24 2 2", " Screw axis: 24 not allowed"},
                 {"Q 2 2 2", " Wrong Lattice Symbol "},
                 {"P 2 2 2:7", " Wrong space-group symbol: P 2 2 2:7 is not allowed"},
                 {"", " => the HM symbol or the number is incorrect"}};
    for (const auto& c : cases) {
        Set_SpaceGroup(c.sym, sg);
        EXPECT_TRUE(ERR_Symm) << c.sym;
        EXPECT_EQ(ERR_Symm_Mess, c.mess) << c.sym;
    }
    Set_SpaceGroup("231", sg);
    EXPECT_EQ(ERR_Symm_Info, "The number of the space group should be in the interval [1,230]");
    Set_SpaceGroup("P 5", sg);
    EXPECT_EQ(ERR_Symm_Info, "Error in the provided symbol/number of the space group");
    Set_SpaceGroup("P1", sg, {}, "FIX");
    EXPECT_EQ(ERR_Symm_Mess, " Generators should be provided if FIX option is Used");
    Set_SpaceGroup("P1", sg, {}, "GEN");
    EXPECT_EQ(ERR_Symm_Mess, " Generators should be provided in GEN calling Set_SpaceGroup");
    Set_SpaceGroup("", sg, {"x+1/5,y,z"}, "GEN");
    EXPECT_EQ(ERR_Symm_Mess, " Error in generators");
    Set_SpaceGroup("", sg, {"2x,y,z"}, "GEN");
    EXPECT_TRUE(ERR_Symm);
    // A rotation of infinite order gives no group.
    Set_SpaceGroup("", sg, {"-z,y+x,y+z"}, "GEN");
    EXPECT_EQ(ERR_Symm_Mess, " Error in generators");
    Set_SpaceGroup("", sg, {"x,y"}, "GEN");
    EXPECT_EQ(ERR_Symm_Mess, " The above operator is wrong: x,y");
    // A failed call leaves the record as it was.
    EXPECT_EQ(sg.number, 14);
}

TEST(SpaceGroup, GeneratorModes) {
    const SPACE_GROUP_TYPE gen = group("", {"-x,y+1/2,-z+1/2", "-x,-y,-z"}, "GEN");
    ASSERT_FALSE(ERR_Symm) << ERR_Symm_Mess;
    EXPECT_EQ(gen.number, 14);
    EXPECT_EQ(gen.multiplicity, 4);
    EXPECT_EQ(gen.setting_type, "Non-Conventional (user-given operators)");
    EXPECT_EQ(gen.setting_choice, "Tabulated Setting");
    // The same group with its origin moved is in no table.
    const SPACE_GROUP_TYPE moved = group("", {"-x+1/2,y+1/2,-z+1/2", "-x+1/2,-y,-z"}, "GEN");
    ASSERT_FALSE(ERR_Symm);
    EXPECT_EQ(moved.setting_choice, "Non-standard Setting");
    EXPECT_EQ(moved.multiplicity, 4);
    EXPECT_EQ(moved.laue_class, "2/m");
    EXPECT_EQ(moved.centrosymmetry, "Centric (-1 not at origin)");
    EXPECT_FLOAT_EQ(moved.centre_at[0], 0.25f);
    // FIX keeps the list as given.
    const SPACE_GROUP_TYPE fix = group("my group", {"x,y,z", "-x,-y,z+1/2"}, "FIX");
    ASSERT_FALSE(ERR_Symm);
    EXPECT_EQ(fix.multiplicity, 2);
    EXPECT_EQ(fix.setting_type, "Fixed symmetry operators (no info)");
    EXPECT_EQ(fix.operator_texts(2), "-x,-y,z+1/2");
}

TEST(SpaceGroup, DescriptorsOfKnownGroups) {
    const struct {
        const char* sym;
        const char* sys;
        const char* laue;
        const char* pg;
        const char* bravais;
        const char* centro;
        int mult;
    } cases[] = {{"P 1", "Triclinic", "-1", "1", "aP", "Acentric", 1},
                 {"C 1 2/c 1", "Monoclinic", "2/m", "2/m", "mC", "Centric (-1 at origin)", 8},
                 {"P n m a", "Orthorhombic", "mmm", "mmm", "oP", "Centric (-1 at origin)", 8},
                 {"P m c 21", "Orthorhombic", "mmm", "mm2", "oP", "Acentric", 4},
                 {"I 41/a m d:1", "Tetragonal", "4/mmm", "4/mmm", "tI", "Centric (-1 not at origin)", 32},
                 {"P -4 m 2", "Tetragonal", "4/mmm", "-4m2", "tP", "Acentric", 8},
                 {"P -4 2 m", "Tetragonal", "4/mmm", "-42m", "tP", "Acentric", 8},
                 {"P 3 1 2", "Trigonal", "-31m", "312", "hP", "Acentric", 6},
                 {"P 3 2 1", "Trigonal", "-3m1", "32", "hP", "Acentric", 6},
                 {"R -3 m", "Trigonal", "-3m R", "-3m", "hR", "Centric (-1 at origin)", 36},
                 {"P -6 2 m", "Hexagonal", "6/mmm", "-62m", "hP", "Acentric", 12},
                 {"P 63/m m c", "Hexagonal", "6/mmm", "6/mmm", "hP", "Centric (-1 at origin)", 24},
                 {"F d -3 m:1", "Cubic", "m-3m", "m-3m", "cF", "Centric (-1 not at origin)", 192},
                 {"I a -3", "Cubic", "m-3", "m-3", "cI", "Centric (-1 at origin)", 48}};
    for (const auto& c : cases) {
        const SPACE_GROUP_TYPE sg = group(c.sym);
        ASSERT_FALSE(ERR_Symm) << c.sym << ERR_Symm_Mess;
        EXPECT_EQ(sg.crystal_system, c.sys) << c.sym;
        EXPECT_EQ(sg.laue_class, c.laue) << c.sym;
        EXPECT_EQ(sg.point_group, c.pg) << c.sym;
        EXPECT_EQ(sg.bravais_lattice, c.bravais) << c.sym;
        EXPECT_EQ(sg.centrosymmetry, c.centro) << c.sym;
        EXPECT_EQ(sg.multiplicity, c.mult) << c.sym;
    }
    // Every class and point group found above stands in the numbered tables.
    for (const auto& c : cases) {
        EXPECT_GT(Laue_Class_Index(c.laue), 0) << c.laue;
        EXPECT_EQ(Point_Group_Name(Point_Group_Index(c.pg)), c.pg);
    }
    EXPECT_EQ(Laue_Class_Name(14), "m-3m");
    EXPECT_EQ(Laue_Class_Name(17), "");
    EXPECT_EQ(ERR_Symm_Mess, "Laue Number Incorrect");
    EXPECT_EQ(Point_Group_Name(0), "");
    EXPECT_EQ(ERR_Symm_Mess, "Point Group Number Incorrect");
    const SPACE_GROUP_TYPE fd = group("F d -3 m:1");
    for (float c : fd.centre_at) EXPECT_FLOAT_EQ(c, 0.125f);
}

TEST(SpaceGroup, SettingChangeAndOperatorsFromSymbols) {
    const SPACE_GROUP_TYPE a = group("P b a n:1");
    SPACE_GROUP_TYPE b;
    Setting_Change(a, "2", b);
    ASSERT_FALSE(ERR_Symm) << ERR_Symm_Mess;
    EXPECT_EQ(b.setting_choice, "2");
    EXPECT_EQ(b.setting_type, "Changed from P b a n:1 to P b a n:2");
    EXPECT_EQ(b.number, 50);
    Setting_Change(a, "  ", b);
    EXPECT_EQ(ERR_Symm_Mess, " Blank Option");
    SPACE_GROUP_TYPE none;
    Setting_Change(none, "2", b);
    EXPECT_EQ(ERR_Symm_Mess, " Space Group Not Defined...");
    Setting_Change(a, "Q", b);
    EXPECT_TRUE(ERR_Symm);

    std::vector<SEITZ_TYPE> ops;
    ASSERT_TRUE(Get_SO_from_HMS("P 42/n m c", ops));
    EXPECT_EQ(ops.size(), 16u);
    EXPECT_FALSE(Get_SO_from_HMS("P 4/q", ops));
    EXPECT_TRUE(ERR_Symm);
    EXPECT_TRUE(ops.empty());
}

TEST(SpaceGroup, ListingAndReflectionConditions) {
    const SPACE_GROUP_TYPE sg = group("P 21/c");
    std::ostringstream o;
    List_Space_Group(sg, o);
    Write_Reflection_Conditions(sg, o);
    const std::string s = o.str();
    for (const char* label :
         {"Information on Space Group:", "=>   Number of Space group: 14", "=>  Hermann-Mauguin Symbol: P 1 21/c 1",
          "=>             Hall Symbol: -P 2ybc", "=>          Crystal System: Monoclinic", "=>              Laue Class: 2/m",
          "=>             Point Group: 2/m", "=>    General multiplicity: 4", "=>          Centrosymmetry: Centric (-1 at origin)",
          "-x,y+1/2,-z+1/2", "=====>>> no general reflection condition", "(h 0 l)     l=2n", "(0 k 0)     k=2n"})
        EXPECT_NE(s.find(label), std::string::npos) << label;

    std::ostringstream p;
    Write_Reflection_Conditions(group("P 1"), p);
    for (const char* none : {"     =====>>> no general reflection condition", "     =====>>> no zonal reflection condition",
                             "     =====>>> no serial reflection condition"})
        EXPECT_NE(p.str().find(none), std::string::npos) << none;
    std::ostringstream f;
    Write_Reflection_Conditions(group("F d -3 m"), f);
    for (const char* c : {"h+k=2n", "(0 k l)     k+l=4n", "(h 0 0)     h=4n"}) EXPECT_NE(f.str().find(c), std::string::npos) << c;
    std::ostringstream r;
    Write_Reflection_Conditions(group("R -3 c"), r);
    EXPECT_NE(r.str().find("-h+k+l=3n"), std::string::npos);
    EXPECT_NE(r.str().find("(h -h l)    l=2n"), std::string::npos);
    EXPECT_EQ(Laue_Region_Text(group("F m -3 m")), "hkl: h >=0, k >=0, l >=0 with h >=k  and k >=l");
    EXPECT_EQ(Laue_Region_Text(group("P 1 1 2/m")), "hkl: k >=0, l >=0   hk0: h >=0");
    EXPECT_EQ(Laue_Region_Text(group("P -1")), "hkl: l >=0    hk0: h >=0    0k0: k >=0");
}

}  // namespace
