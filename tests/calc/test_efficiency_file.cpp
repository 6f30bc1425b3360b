// The efficiency file: writing, reading back, and every kind of bad line.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "calc/efficiency_file.h"

namespace {

std::string write_temp(const std::string& name, const std::string& text) {
    const auto p = std::filesystem::temp_directory_path() / (std::to_string(::getpid()) + "_" + name);
    std::ofstream(p) << text;
    return p.string();
}

}  // namespace

TEST(EfficiencyFile, LinesInTheRecordLayout) {
    const std::string s = hxl::Efficiency_Lines({2.0f, -0.125f}, {0.5f, 1.0f});
    EXPECT_EQ(s, "    1       2.00000       0.50000\n"
                 "    2      -0.12500       1.00000\n");
    // raw / smoothed, and a smoothed 0 repeats the last quotient
    hxl::Array1<float> raw(3), sm(3);
    raw(1) = 10, raw(2) = 4, raw(3) = 6;
    sm(1) = 5, sm(2) = 0, sm(3) = 3;
    EXPECT_EQ(hxl::Smoothing_Efficiency_Text(raw, sm, 3), "    1      10.00000       2.00000\n"
                                                          "    2       4.00000       2.00000\n"
                                                          "    3       6.00000       2.00000\n");
}

TEST(EfficiencyFile, BadValuesEndTheListOrBecomeOne) {
    hxl::Array1<float> e;
    int read = 0;
    std::string m;
    // zero and negative become 1; the line of text ends the list; 4 and 5 keep 1
    const std::string f = write_temp("a.eff", "1 0 2.0\n2 0 0\n3 0 -4\nfour five six\n5 0 3\n");
    ASSERT_TRUE(hxl::Read_Efficiency_File(f, 5, e, read, m));
    EXPECT_EQ(read, 3);
    EXPECT_EQ(e.vec(), (std::vector<float>{2, 1, 1, 1, 1}));
    // NaN and a short line end the list too; nothing is read past them
    const std::string g = write_temp("b.eff", "1 0 0.5\n2 0 nan\n3 0 0.25\n");
    ASSERT_TRUE(hxl::Read_Efficiency_File(g, 3, e, read, m));
    EXPECT_EQ(e.vec(), (std::vector<float>{0.5f, 1, 1}));
    const std::string h = write_temp("c.eff", "1 0.5\n2 0 0.25\n");
    ASSERT_TRUE(hxl::Read_Efficiency_File(h, 2, e, read, m));
    EXPECT_EQ(read, 0);
    EXPECT_EQ(e.vec(), (std::vector<float>{1, 1}));
    // more lines than points: only n are taken
    const std::string k = write_temp("d.eff", "1 0 2\n2 0 4\n3 0 8\n");
    ASSERT_TRUE(hxl::Read_Efficiency_File(k, 2, e, read, m));
    EXPECT_EQ(e.vec(), (std::vector<float>{2, 4}));
    EXPECT_FALSE(hxl::Read_Efficiency_File("/nonexistent/zendrite.eff", 2, e, read, m));
    EXPECT_EQ(m, "ERROR opening the file /nonexistent/zendrite.eff");
    for (const auto& p : {f, g, h, k}) std::filesystem::remove(p);
}

TEST(EfficiencyFile, AppliedByPointNumberWithVariances) {
    hxl::DIFFRACTION_PATTERN_TYPE p;
    hxl::Allocate_Pattern(p, 3);
    p.y(1) = 10, p.y(2) = 20, p.y(3) = 30;
    p.sigma(1) = 10, p.sigma(2) = 20, p.sigma(3) = 30;
    hxl::Array1<float> e(2, 1.0f);
    e(1) = 2;
    hxl::Apply_Efficiency_Pattern(p, e);  // shorter than the pattern: point 3 unchanged
    EXPECT_EQ(p.y.vec(), (std::vector<float>{5, 20, 30}));
    EXPECT_EQ(p.sigma.vec(), (std::vector<float>{2.5f, 20, 30}));
}
