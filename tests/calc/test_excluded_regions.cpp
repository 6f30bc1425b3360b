// Excluded regions appended, deleted and converted with X.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "calc/excluded_regions.h"

namespace {
hxl::PRF_INFO_ADD_TYPE regions(std::vector<std::pair<float, float>> r) {
    hxl::PRF_INFO_ADD_TYPE info;
    info.prf_name = "hrpt.xye";
    for (auto [l, h] : r) EXPECT_TRUE(hxl::Append_Excluded_Region(info, l, h));
    return info;
}
}  // namespace

TEST(ExcludedRegions, HundredPerProfileAndDeletionMovesTheLaterUp) {
    hxl::PRF_INFO_ADD_TYPE info;
    for (int k = 1; k <= 100; ++k) ASSERT_TRUE(hxl::Append_Excluded_Region(info, k, k + 0.5f));
    EXPECT_FALSE(hxl::Append_Excluded_Region(info, 200.0f, 201.0f));
    EXPECT_EQ(info.nexcl, 100);
    EXPECT_EQ(info.excl_low(100), 100.0f);

    hxl::PRF_INFO_ADD_TYPE three = regions({{1, 2}, {3, 4}, {5, 6}});
    hxl::Delete_Excluded_Region(three, 1);
    EXPECT_EQ(three.nexcl, 2);
    EXPECT_EQ(three.excl_low(1), 3.0f);
    EXPECT_EQ(three.excl_high(2), 6.0f);
    hxl::Delete_Excluded_Region(three, 5);  // no such region: nothing
    EXPECT_EQ(three.nexcl, 2);
}

TEST(ExcludedRegions, ConvertedSwappedOrDeletedWithTheirMessage) {
    const float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
    hxl::PRF_INFO_ADD_TYPE info =
        regions({{20, 30}, {0, 10}, {40, 50}, {nan, 60}, {70, inf}, {90, 80}, {100, 110}});
    std::vector<std::string> m;
    hxl::Convert_Excluded_Regions(info, {hxl::X_STEP::Theta_To_D}, 1.5, 0.0, "hrpt.xye", m);
    ASSERT_EQ(info.nexcl, 3);
    // 2theta 20..30 becomes d 2.898..4.319, kept low below high.
    EXPECT_NEAR(info.excl_low(1), 1.5 / (2 * std::sin(15 * M_PI / 180)), 1e-5);
    EXPECT_NEAR(info.excl_high(1), 1.5 / (2 * std::sin(10 * M_PI / 180)), 1e-5);
    EXPECT_LT(info.excl_low(2), info.excl_high(2));
    EXPECT_NEAR(info.excl_high(3), 1.5 / (2 * std::sin(50 * M_PI / 180)), 1e-5);
    ASSERT_EQ(m.size(), 4u);
    // The numbers are the places at the time: each deletion moves the later regions up.
    EXPECT_EQ(m[0], "The excluded region No. 2 of\nhrpt.xye contains an invalid value.This excluded region will be deleted");
    EXPECT_EQ(m[1].substr(0, 26), "The excluded region No. 3 ");
    EXPECT_EQ(m[2].substr(0, 26), "The excluded region No. 3 ");
    EXPECT_EQ(m[3].substr(0, 26), "The excluded region No. 3 ");
    for (int j = 1; j <= info.nexcl; ++j) EXPECT_TRUE(std::isfinite(info.excl_low(j)) && std::isfinite(info.excl_high(j)));

    // A region whose converted limit has no value is deleted too: d below lambda/2 has no angle.
    hxl::PRF_INFO_ADD_TYPE d = regions({{0.5f, 0.9f}, {2.0f, 3.0f}});
    m.clear();
    hxl::Convert_Excluded_Regions(d, {hxl::X_STEP::D_To_Theta}, 1.5, 0.0, "x", m);
    EXPECT_EQ(d.nexcl, 1);
    EXPECT_EQ(m.size(), 1u);
    EXPECT_NEAR(d.excl_high(1), 2 * std::asin(1.5 / 4.0) * 180 / M_PI, 1e-4);
}
