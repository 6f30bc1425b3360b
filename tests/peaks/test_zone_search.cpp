// The plain detector of a zone dragged with the mouse.
#include <gtest/gtest.h>

#include "peaks/search_points.h"
#include "search_fixture.h"

using namespace hxl;

TEST(ZoneSearch, RangeCountLimitAndMaxima) {
    const auto p = Gauss_Pattern(10, 40, 0.02, {{15, 4000, 0.06}, {15.6, 2500, 0.06}, {30, 3000, 0.06}}, 50.0);
    PKB_TYPE r;
    std::string message;
    EXPECT_FALSE(Search_Peaks_In_Zone(p, 41.0f, 50.0f, 400, r, message));
    EXPECT_EQ(message, "Zone of peak detection out of range");
    EXPECT_FALSE(Search_Peaks_In_Zone(p, 0.0f, 9.0f, 400, r, message));
    EXPECT_EQ(message, "Zone of peak detection out of range");
    EXPECT_FALSE(Search_Peaks_In_Zone(p, 20.0f, 20.17f, 400, r, message));  // nine points
    EXPECT_EQ(message, "Number of points < 10");
    EXPECT_TRUE(Search_Peaks_In_Zone(p, 20.0f, 20.18f, 400, r, message));  // ten points, no peak
    EXPECT_EQ(r.np, 0);
    // The zone may be dragged either way; each peak at its raw maximum.
    ASSERT_TRUE(Search_Peaks_In_Zone(p, 20.0f, 12.0f, 400, r, message)) << message;
    ASSERT_EQ(r.np, 2);
    EXPECT_FLOAT_EQ(r.x(1), 15.0f);
    EXPECT_FLOAT_EQ(r.x(2), 15.6f);
    EXPECT_NEAR(r.y(1), 4050.0f, 1.0f);
    ASSERT_TRUE(Search_Peaks_In_Zone(p, 10.0f, 40.0f, 400, r, message));
    EXPECT_EQ(r.np, 3);
    // One peak over the limit stops it; the peaks before stay.
    EXPECT_FALSE(Search_Peaks_In_Zone(p, 10.0f, 40.0f, 2, r, message));
    EXPECT_EQ(message, "Max num. peaks");
    EXPECT_EQ(r.np, 2);
}

TEST(ZoneSearch, WeakBumpsFailTheCountingTest) {
    // A bump of 3 counts on 10000: below the square root of the sum.
    const auto weak = Gauss_Pattern(10, 20, 0.02, {{15, 3, 0.06}}, 10000.0);
    PKB_TYPE r;
    std::string message;
    ASSERT_TRUE(Search_Peaks_In_Zone(weak, 10.0f, 20.0f, 400, r, message));
    EXPECT_EQ(r.np, 0);
    const auto strong = Gauss_Pattern(10, 20, 0.02, {{15, 3000, 0.06}}, 10000.0);
    ASSERT_TRUE(Search_Peaks_In_Zone(strong, 10.0f, 20.0f, 400, r, message));
    EXPECT_EQ(r.np, 1);
}
