#include <gtest/gtest.h>

#include <limits>

#include "patterns/diffraction_pattern.h"
#include "patterns/format_table.h"

using namespace hxl;

TEST(PatternRecord, NewRecordAndAllocation) {
    DIFFRACTION_PATTERN_TYPE p;
    EXPECT_TRUE(p.sig_var);
    EXPECT_FALSE(p.ct_step || p.gy || p.al_x);

    Allocate_Pattern(p);
    EXPECT_TRUE(ERR_Pattern);
    EXPECT_EQ(ERR_Pattern_Mess, " Attempt to allocate Diffraction_Pattern with 0-dimension ");
    EXPECT_EQ(p.x.size(), 0);

    Clear_Pattern_Error();
    Allocate_Pattern(p, 5);
    EXPECT_FALSE(ERR_Pattern);
    EXPECT_EQ(p.npts, 5);
    EXPECT_EQ(p.istat(5), 1);
    EXPECT_EQ(p.aux(1), 0.0f);
    EXPECT_TRUE(p.gy && p.gycalc && p.gbgr && p.gsigma && p.al_istat && p.al_sigma);

    // A second allocation replaces every array.
    p.y(1) = 7;
    Allocate_Pattern(p, 3);
    EXPECT_EQ(p.y.size(), 3);
    EXPECT_EQ(p.y(1), 0.0f);
}

TEST(PatternRecord, YLimitsOfEmptyPatternAreTheExtremeFloats) {
    DIFFRACTION_PATTERN_TYPE p;
    Pattern_Y_Limits(p);
    EXPECT_EQ(p.ymin, std::numeric_limits<float>::max());
    EXPECT_EQ(p.ymax, -std::numeric_limits<float>::max());
    Allocate_Pattern(p, 3);
    p.y(1) = -2;
    p.y(2) = 9;
    p.y(3) = 4;
    Pattern_Y_Limits(p);
    EXPECT_EQ(p.ymin, -2.0f);
    EXPECT_EQ(p.ymax, 9.0f);
}

TEST(FormatTable, ExtensionsChooseRowsAsWholeWords) {
    EXPECT_EQ(Format_Row_From_Extension(".csv"), 12);
    EXPECT_EQ(Format_Row_From_Extension(".XRDML"), 12);
    EXPECT_EQ(Format_Row_From_Extension(".xye"), 9);
    EXPECT_EQ(Format_Row_From_Extension(".uxd"), 8);
    EXPECT_EQ(Format_Row_From_Extension(".mdi"), 1);
    EXPECT_EQ(Format_Row_From_Extension(".gss"), 14);  // the multi-pattern reader, not GSAS
    EXPECT_EQ(Format_Row_From_Extension(".cif"), 15);
    EXPECT_EQ(Format_Row_From_Extension(".x"), 0);      // no substring matches
    EXPECT_EQ(Format_Row_From_Extension(".xyz"), 0);
    EXPECT_EQ(Format_Row_From_Extension(".dat"), 0);
    EXPECT_EQ(Format_Row_From_Extension(""), 0);
    EXPECT_EQ(Upper_Extension("dir.v2/name.tar.xye"), ".XYE");
    EXPECT_EQ(Upper_Extension("noext"), "");
    EXPECT_EQ(Upper_Extension("a.verylongextension"), ".VERYLONGE");
    EXPECT_EQ(Format_Row(11).mode, "GSASTOF");
    EXPECT_EQ(Format_Row(7).label, "DMC, HRPT PSI (Inst.8)");
    EXPECT_EQ(Format_Row_From_Mode("gsastof"), 11);
    EXPECT_EQ(Format_Row_From_Mode("nonsense"), 0);
}
