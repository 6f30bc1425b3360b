// The VAMAS head check that stands before the format library.
#include <gtest/gtest.h>

#include "patterns/read_pattern_library.h"
#include "patterns/vamas_head.h"
#include "test_files.h"

using namespace hxl;

TEST(VamasHead, RealHeadPassesAbsurdOrCutHeadsAreRefused) {
    const std::string real = zdtest::Slurp(zdtest::Sample("mjr9_59c.vms"));
    std::string why;
    EXPECT_TRUE(Vamas_Head_Plausible(real, why)) << why;

    // Line 10 counts the analysis positions of a MAP experiment; the library's
    // reader overflowed the stack on a count of 79 digits.
    std::string huge = real;
    const std::size_t at = huge.find("\r\n1\r\n32768");
    ASSERT_NE(at, std::string::npos);
    huge.replace(at + 2, 1, std::string(79, '9'));
    EXPECT_FALSE(Vamas_Head_Plausible(huge, why));
    EXPECT_EQ(why, "line 10 should hold a count");
    std::vector<DIFFRACTION_PATTERN_TYPE> set;
    int left_out = 0;
    Read_Library_Bytes(huge, "huge.vms", set, 4, left_out);
    EXPECT_EQ(ERR_Pattern_Mess, " The VAMAS file is damaged: line 10 should hold a count");
    EXPECT_TRUE(set.empty());

    std::string many = real;
    many.replace(at + 2, 1, "99999999");
    EXPECT_FALSE(Vamas_Head_Plausible(many, why));
    EXPECT_EQ(why, "the count 99999999 of line 10 is out of reason");

    EXPECT_FALSE(Vamas_Head_Plausible(real.substr(0, 60), why));
    EXPECT_NE(why.find("the head ends at line"), std::string::npos) << why;
}
