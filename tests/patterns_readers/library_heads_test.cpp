// The head checks that stand before the format library.
#include <gtest/gtest.h>

#include "patterns/read_pattern_library.h"
#include "patterns/library_heads.h"
#include "test_files.h"

using namespace hxl;

TEST(LibraryHeads, ChiplotPointCountMustFitTheFile) {
    const std::string head = "title\n2-Theta Angle (Degrees)\nIntensity\n";
    std::string why;
    EXPECT_TRUE(Chiplot_Head_Plausible(head + "       2\n 1.0 5\n 1.1 6\n", why)) << why;
    EXPECT_FALSE(Chiplot_Head_Plausible(head + "       9\n 1.0 5\n 1.1 6\n", why));
    EXPECT_EQ(why, "line 4 counts more than the file holds");
    EXPECT_FALSE(Chiplot_Head_Plausible(head + " 2 95555555555555\n 1.0 5\n 1.1 6\n", why));
    EXPECT_FALSE(Chiplot_Head_Plausible(head + " 15+0000000000000000000000022288322 5\n", why));
    EXPECT_EQ(why, "line 4 should hold the number of points");
    EXPECT_FALSE(Chiplot_Head_Plausible("title\n", why));
}
