// Reading back the free-format peak file, and its refusals.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "peaks/peak_file_read.h"

namespace {

using namespace hxl;

TEST(PeakFileRead, ReadsWhatTheWriterWritesAndLooserLines) {
    const std::vector<PEAK_POINT_TYPE> written = {{7.46266f, 5869.6499f, 128.49451f}, {28.86119f, 315.61148f, 66.15941f}};
    std::vector<PEAK_POINT_TYPE> back;
    std::string message;
    ASSERT_TRUE(Parse_Free_Peaks(Free_Peaks_Text("a.xy", "XYSIGMA", written), "peak.aps", back, message)) << message;
    ASSERT_EQ(back.size(), 2u);
    EXPECT_FLOAT_EQ(back[1].x, 28.86119f);
    EXPECT_FLOAT_EQ(back[1].y, 315.61148f);
    EXPECT_FLOAT_EQ(back[1].bgr, 66.15941f);
    // Commas, tabs, CR LF, a position alone, blank lines.
    ASSERT_TRUE(Parse_Free_Peaks("! head\r\n\r\n 12.5, 100,\t3\r\n  14.25\r\n", "p", back, message)) << message;
    ASSERT_EQ(back.size(), 2u);
    EXPECT_FLOAT_EQ(back[0].bgr, 3);
    EXPECT_FLOAT_EQ(back[1].x, 14.25f);
    EXPECT_EQ(back[1].y, 0);
}

TEST(PeakFileRead, RefusesAndKeepsTheList) {
    std::vector<PEAK_POINT_TYPE> list = {{1, 2, 3}};
    std::string message;
    EXPECT_FALSE(Parse_Free_Peaks("! only a head\n\n", "p.aps", list, message));
    EXPECT_EQ(message, "p.aps: no peak in the file");
    EXPECT_FALSE(Parse_Free_Peaks("! h\n 12.5 100 3\n 13.0 abc 2\n", "p.aps", list, message));
    EXPECT_EQ(message, "p.aps, line 3: \"abc\" is not a number");
    EXPECT_FALSE(Parse_Free_Peaks(" 12.5 1e39 3\n", "p.aps", list, message));
    EXPECT_EQ(message, "p.aps, line 1: a value out of range");
    ASSERT_EQ(list.size(), 1u);
    EXPECT_EQ(list[0].x, 1);

    const auto dir = std::filesystem::temp_directory_path() / "zd_peak_read";
    std::filesystem::create_directories(dir);
    EXPECT_FALSE(Read_Free_Peaks((dir / "missing.aps").string(), list, message));
    EXPECT_FALSE(message.empty());
    {
        std::ofstream f(dir / "binary.aps", std::ios::binary);
        f << "12.5 1 2\n" << std::string(3, '\0');
    }
    EXPECT_FALSE(Read_Free_Peaks((dir / "binary.aps").string(), list, message));
    EXPECT_EQ(list.size(), 1u);
    std::filesystem::remove_all(dir);
}

}  // namespace
