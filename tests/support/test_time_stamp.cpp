// Instrument time stamps against Python's datetime (fromisoformat(...).timestamp()).
#include <gtest/gtest.h>

#include "support/time_stamp.h"

namespace {

TEST(TimeStamp, IsoAndSlashFormsAndTheirRefusals) {
    double s = 0;
    const std::pair<const char*, double> iso[] = {{"2021-05-20T15:55:51+02:00", 1621518951.0},
                                                  {"2016-11-03T11:08:45+01:00", 1478167725.0},
                                                  {"2000-02-29T23:59:59.5Z", 951868799.5},
                                                  {"1969-12-31T23:00:00-05:30", 16200.0},
                                                  {"  2021-05-20 13:55:51 ", 1621518951.0}};
    for (const auto& [text, want] : iso) {
        ASSERT_TRUE(hxl::Iso_Time_Seconds(text, s)) << text;
        EXPECT_DOUBLE_EQ(s, want) << text;
    }
    // Rigaku heads: month/day/year, two 2015 scans across midnight.
    ASSERT_TRUE(hxl::Slash_Time_Seconds("12/05/15 22:01:01", s));
    EXPECT_DOUBLE_EQ(s, 1449352861.0);
    ASSERT_TRUE(hxl::Slash_Time_Seconds("12/06/2015 00:32:20", s));
    EXPECT_DOUBLE_EQ(s, 1449361940.0);
    for (const char* bad : {"", "2021-02-29T00:00:00", "2021-13-01T00:00:00", "2021-05-20T24:00:00", "2021-05-20",
                            "2021-05-20T15:55:51+02", "2021-05-20T15:55:51 junk", "20210520T155551", "2021-05-20T15:55:51."})
        EXPECT_FALSE(hxl::Iso_Time_Seconds(bad, s)) << bad;
    for (const char* bad : {"", "12/32/15 00:00:00", "13/01/15 00:00:00", "12/05/15", "12-05-15 22:01:01", "12/05/15 22:01"})
        EXPECT_FALSE(hxl::Slash_Time_Seconds(bad, s)) << bad;
}

}  // namespace
