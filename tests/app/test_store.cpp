#include <gtest/gtest.h>

#include "../patterns/temp_files.h"
#include "app/store/add_profile.h"
#include "app/store/zendrite_param_global.h"
#include "patterns/format_table.h"

using namespace zendrite;

namespace {
std::string free_file(const ztest::Temp_Dir& d, const std::string& name) {
    return d.Write(name, "10 1 20 " + name + "\n" + ztest::Counts(11));
}
}  // namespace

TEST(Store, ProfileLimitAndReset) {
    ztest::Temp_Dir d;
    const std::string f = free_file(d, "one.dat");
    Reset_Store();
    auto& g = zendrite_param_global();
    for (int i = 1; i <= kMaxProfiles; ++i) {
        LOAD_RESULT r = Load_Data_File(f, hxl::kRowFree);
        ASSERT_EQ(r.slots.size(), 1u) << i;
        ASSERT_EQ(r.slots[0], i);
    }
    EXPECT_EQ(g.nperfiles, kMaxProfiles);
    LOAD_RESULT r = Load_Data_File(f, hxl::kRowFree);
    EXPECT_TRUE(r.limit_reached);
    ASSERT_EQ(r.messages.size(), 1u);
    EXPECT_EQ(r.messages[0], "The maximum number of profiles has been attained!");
    EXPECT_EQ(g.nperfiles, kMaxProfiles);

    g.show_profile[7] = false;
    g.show_profile[kMaxProfiles] = false;
    g.plot_calc[3] = true;
    g.show_ycalc = false;
    g.target_at_centre = true;
    g.Bgr_List.count = 12;
    Reset_Store();
    EXPECT_EQ(g.nperfiles, 0);
    EXPECT_EQ(g.pattern[kMaxProfiles].npts, 0);
    for (int i = 1; i <= kMaxProfiles; ++i) ASSERT_TRUE(g.show_profile[static_cast<std::size_t>(i)]) << i;
    EXPECT_FALSE(g.plot_calc[3]);
    EXPECT_TRUE(g.show_ycalc);
    EXPECT_FALSE(g.target_at_centre);
    EXPECT_EQ(g.Bgr_List.count, 0);
}

TEST(Store, LoadFillsInformationAndRefusalsLeaveNoSlot) {
    ztest::Temp_Dir d;
    Reset_Store();
    Enter_None_Mode();
    auto& g = zendrite_param_global();
    LOAD_RESULT r = Load_Data_File(free_file(d, "a.dat"), hxl::kRowFree);
    ASSERT_EQ(r.slots, std::vector<int>{1});
    const auto& info = g.info[1];
    EXPECT_EQ(info.prf_name, "a.dat");
    EXPECT_EQ(info.prf_dir, d.Path() + "/");
    EXPECT_EQ(info.prf_type, "DATA");
    EXPECT_EQ(info.prf_format, "FreeFormat");
    EXPECT_EQ(info.nrefl, 0);
    EXPECT_EQ(info.refl_pos.size(), 0);

    // A failed read reports the file and the reader's message and leaves the store as it was.
    const std::string bad = d.Write("bad.dat", "1 1 20\n1 2 3\n");
    r = Load_Data_File(bad, hxl::kRowFree);
    ASSERT_EQ(r.messages.size(), 1u);
    EXPECT_EQ(r.messages[0], "ERROR in file: " + bad + " Error in Intensity file, Number of intensities values is wrong!!");
    EXPECT_EQ(g.nperfiles, 1);
    EXPECT_EQ(g.pattern[2].npts, 0);
    EXPECT_EQ(g.pattern[1].npts, 11);

    // Thirty scans of a pole figure refused for one reason: one message, counted; none enters.
    r = Load_Data_File(std::string(ZD_TEST_DATA) + "/patterns/mtex_polefigure.xrdml", hxl::kRowPanalytical);
    ASSERT_EQ(r.messages.size(), 1u);
    EXPECT_NE(r.messages[0].find("not possible to merge different x-spaces"), std::string::npos) << r.messages[0];
    EXPECT_NE(r.messages[0].find(" (30 profiles of the file)"), std::string::npos) << r.messages[0];
    EXPECT_EQ(g.nperfiles, 1);
    std::vector<std::string> m = {"a", "b", "b", "a"};
    Merge_Repeated_Messages(m);
    EXPECT_EQ(m, (std::vector<std::string>{"a", "b (2 profiles of the file)", "a"}));
}

TEST(Store, CalculatedColumnMakesRietveldOnlyInTheFirstTwentySlots) {
    Reset_Store();
    auto& g = zendrite_param_global();
    for (int slot : {20, 21}) {
        g.nperfiles = slot;
        auto& p = g.pattern[static_cast<std::size_t>(slot)];
        hxl::Allocate_Pattern(p, 12);
        for (int i = 1; i <= 12; ++i) p.x(i) = static_cast<float>(i);
        p.scat_var = "2theta";
        p.ycalc(5) = 0.001f;
        LOAD_RESULT r;
        ASSERT_TRUE(Enter_Read_Profile(slot, hxl::kRowCif, r));
        EXPECT_EQ(g.info[static_cast<std::size_t>(slot)].prf_type, slot == 20 ? "RIETV" : "DATA");
        EXPECT_EQ(g.plot_calc[static_cast<std::size_t>(slot)], slot == 20);
        EXPECT_EQ(g.plot_bgr[static_cast<std::size_t>(slot)], slot == 20);  // the CIF row draws the background too
    }
    // ycalc(1) alone does not count: the sum runs from point 2 to 10.
    auto& p = g.pattern[1];
    hxl::Allocate_Pattern(p, 12);
    p.ycalc(1) = 50.0f;
    p.ycalc(11) = 50.0f;
    p.scat_var = "2theta";
    LOAD_RESULT r;
    ASSERT_TRUE(Enter_Read_Profile(1, hxl::kRowXYSigma, r));
    EXPECT_EQ(g.info[1].prf_type, "DATA");
    Reset_Store();
}

TEST(Store, CopiesAreDeepAndClearsFreeArrays) {
    DIFFRACTION_PATTERN_TYPE a, b;
    hxl::Allocate_Pattern(a, 4);
    a.title = "source";
    a.y(2) = 3.0f;
    Copy_Pattern_Record(a, b);
    b.y(2) = 9.0f;
    EXPECT_EQ(a.y(2), 3.0f);
    EXPECT_EQ(b.title, "source");
    EXPECT_EQ(b.npts, 4);
    Clear_Pattern_Record(b);
    EXPECT_EQ(b.y.size(), 0);
    EXPECT_TRUE(b.title.empty());
    EXPECT_TRUE(b.sig_var);

    PRF_INFO_ADD_TYPE i, j;
    i.nrefl = 2;
    i.refl_label.resize(2, "(1 1 1)");
    i.nexcl = 1;
    i.excl_high(1) = 5.0f;
    Copy_Prf_Info(i, j);
    j.refl_label(1) = "x";
    EXPECT_EQ(i.refl_label(1), "(1 1 1)");
    EXPECT_EQ(j.excl_high(1), 5.0f);
    Clear_Prf_Info(j);
    EXPECT_EQ(j.nexcl, 0);
    EXPECT_EQ(j.excl_high(1), 0.0f);
    EXPECT_EQ(j.excl_high.size(), hxl::kMaxExcluded);
}

TEST(Store, RecentFilesAndModes) {
    auto& g = zendrite_param_global();
    g.recent = {"", "-", "-", "-", "-", "-"};
    for (const char* f : {"a", "b", "c", "d", "e", "f"}) Add_Recent_File(f);
    EXPECT_EQ(g.recent[1], "f");
    EXPECT_EQ(g.recent[5], "b");  // "a" fell out
    Add_Recent_File("d");         // a listed name moves to the top
    EXPECT_EQ(g.recent[1], "d");
    EXPECT_EQ(g.recent[2], "f");
    EXPECT_EQ(g.recent[3], "e");
    EXPECT_EQ(g.recent[4], "c");
    EXPECT_EQ(g.recent[5], "b");

    Enter_Calculation_Mode(2);
    EXPECT_EQ(g.graph_mode, "calculation");
    EXPECT_EQ(g.calc_mode, 2);
    Enter_Multi_Mode(true);
    EXPECT_EQ(g.graph_mode, "multi_log");
    g.MoveMode = 3;
    Enter_None_Mode();
    EXPECT_EQ(g.graph_mode, "none");
    EXPECT_EQ(g.calc_mode, 0);
    EXPECT_EQ(g.MoveMode, 0);
    EXPECT_EQ(g.xspace, "----");

    Reset_Store();
    g.nperfiles = 1;
    g.info[1].nexcl = 99;
    EXPECT_EQ(Excluded_Region_Refusal(1), "");
    g.info[1].nexcl = 100;
    EXPECT_EQ(Excluded_Region_Refusal(1), "Profile No 1 has too many Excluded Regions");
    Reset_Store();
}
