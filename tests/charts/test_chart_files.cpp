// The chart files read as their writers meant them (hand-written files in tests/data/charts),
// and every failure text on its case.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "graphics/chart_files.h"

namespace {

std::string slurp(const std::string& name) {
    std::ifstream in(std::string(ZD_TEST_DATA) + "/charts/" + name);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

TEST(ChartFiles, GdfCurvesStylesErrorBarsAndPie) {
    hxl::CHART_TYPE c;
    std::string msg;
    ASSERT_TRUE(hxl::Read_Gdf_Text(slurp("three_curves.gdf"), c, msg)) << msg;
    EXPECT_EQ(c.title, "Cell volume and strain of a nickel ferrite series");
    EXPECT_EQ(c.legend_x, "Temperature (K)");
    EXPECT_EQ(c.legend_y, "Volume (A^3)");
    EXPECT_EQ(c.kind, "polyl");
    ASSERT_EQ(c.curves.size(), 3u);
    const hxl::CHART_CURVE_TYPE &a = c.curves[0], &b = c.curves[1], &s = c.curves[2];
    EXPECT_EQ(a.legend, "Volume, run A");
    EXPECT_TRUE(a.marker);
    EXPECT_FALSE(a.errbar);
    ASSERT_EQ(a.x.size(), 4u);  // two pairs on the first line
    EXPECT_FLOAT_EQ(a.x[1], 150.0f);
    EXPECT_FLOAT_EQ(a.y[3], 592.0f);
    EXPECT_TRUE(b.errbar);
    ASSERT_EQ(b.sigma.size(), 3u);
    EXPECT_FLOAT_EQ(b.sigma[2], 0.25f);
    EXPECT_TRUE(s.legend_on);  // "LEGEND" lower-cased
    EXPECT_FLOAT_EQ(s.y[1], 0.31f);

    ASSERT_TRUE(hxl::Read_Gdf_Text(slurp("pie.gdf"), c, msg)) << msg;
    EXPECT_EQ(c.kind, "piech");
    ASSERT_EQ(c.curves.size(), 1u);
    ASSERT_EQ(c.curves[0].labels.size(), 3u);
    EXPECT_EQ(c.curves[0].labels[0], "NiFe2O4 (spinel)");
    EXPECT_FLOAT_EQ(c.curves[0].y[2], 7.5f);
    // Slices take no error bars, whatever the style word says (the fuzzer found this one).
    ASSERT_TRUE(hxl::Read_Gdf_Text("N_PLOTS 1\nPLOT_TYPE piech\n{/p\nN_POINTS 1\nerrbar\n5 one\n", c, msg)) << msg;
    EXPECT_FALSE(c.curves[0].errbar);
    EXPECT_TRUE(c.curves[0].sigma.empty());
}

TEST(ChartFiles, GdfFailuresEachWithItsText) {
    const std::string head = "TITLE t\nN_PLOTS 1\n";
    const std::pair<std::string, std::string> cases[] = {
        {"", "No lines could be read"},
        {"TITLE t\n{/a\nN_POINTS 1\n1 2\n", "Error reading the number of Plots!"},
        {"N_PLOTS two\n", "Error reading the number of Plots!"},
        {"N_PLOTS 0\n", "Number of plots to draw is zero!"},
        {"N_PLOTS 2\n{/a\nN_POINTS 1\n1 2\n{/b\nN_POINTS 1\n1 2\n{/c\nN_POINTS 1\n1 2\n",
         "Plot information incompatible with the number of curves!"},
        {head + "{/a\nN_POINTS x\n1 2\n", "Error reading the maximum points for curves!"},
        {head + "{/a\n1 2\n", "Error reading the maximum points for curves!"},
        {head + "{/a\nN_POINTS 3\n1 2\n3 4\n", "Error reading data!"},  // fewer values than N_POINTS
        {head + "{/a\nN_POINTS 2\n1 2\n3 oops\n", "Error reading data!"},
        {head + "{/a\nN_POINTS 1\nerrbar\n1 2\n", "Error reading data!"},  // no sigma
        {head + "{/a\nN_POINTS 1\n1 nan\n", "Error reading data!"},
        {head + "{/a\nN_POINTS 1\n\x01\xff\xfe 2\n", "Error reading data!"},
    };
    for (const auto& [text, want] : cases) {
        hxl::CHART_TYPE c;
        c.title = "old";
        std::string msg;
        EXPECT_FALSE(hxl::Read_Gdf_Text(text, c, msg)) << text;
        EXPECT_EQ(msg, want) << text;
        EXPECT_TRUE(c.curves.empty() && c.title.empty()) << "a refused file leaves no chart";
    }
    std::string many = "N_PLOTS 51\n";
    for (int k = 0; k < 51; ++k) many += "{/c\nN_POINTS 1\n1 2\n";
    hxl::CHART_TYPE c;
    std::string msg;
    EXPECT_FALSE(hxl::Read_Gdf_Text(many, c, msg));
    EXPECT_EQ(msg, "Maximum number of curves attained!");
    // A line longer than 132 characters is cut there: the values beyond it are not read.
    const std::string longline = head + "{/a\nN_POINTS 2\n" + std::string(128, ' ') + "1 2 3 4\n";
    EXPECT_FALSE(hxl::Read_Gdf_Text(longline, c, msg));
    EXPECT_EQ(msg, "Error reading data!");
}

TEST(ChartFiles, SeqBlocksColumnsAndFailures) {
    std::vector<hxl::SEQ_BLOCK_TYPE> b;
    std::string msg;
    ASSERT_TRUE(hxl::Read_Seq_Text(slurp("twenty.seq"), b, msg)) << msg;
    ASSERT_EQ(b.size(), 20u);
    EXPECT_EQ(b[4].file, "nife_005.dat");
    EXPECT_EQ(b[4].numpar, 3);
    EXPECT_EQ(b[4].nphase, 2);
    EXPECT_DOUBLE_EQ(b[4].chi2, 1.24);
    // Lambda and Biso_O were not refined ("0.0000"): not offered.
    const std::vector<std::string> cols = hxl::Seq_Columns(b);
    const std::vector<std::string> want = {"Temperature/File Order", "Global Chi**2", "Zero",
                                           "Scale_factor", "Phase 1: a", "Phase 1: Fraction",
                                           "Phase 2: a", "Phase 2: Fraction"};
    EXPECT_EQ(cols, want);
    double v = 0, s = 0;
    ASSERT_TRUE(hxl::Seq_Value(b[10], 11, "Temperature/File Order", v, s));
    EXPECT_DOUBLE_EQ(v, 400);
    ASSERT_TRUE(hxl::Seq_Value(b[10], 11, "Phase 1: a", v, s));
    EXPECT_NEAR(v, 8.339 + 0.00009 * 100, 1e-9);
    EXPECT_DOUBLE_EQ(s, 0.0002);
    EXPECT_FALSE(hxl::Seq_Value(b[10], 11, "Phase 3: a", v, s));

    const std::string ok = "NEW_REFINEMENT x.dat\nNUMPAR 1 N_PATT 1 NPHASE 1 GLOBAL_CHI_2 2\nZero 0 0.1\nPHASE 1 p 1\na 5 0.1\n";
    const std::pair<std::string, std::string> cases[] = {
        {"", "No Sequential Blocks were found!"},
        {"NUMPAR 1\n", "No Sequential Blocks were found!"},
        {"NEW_REFINEMENT x\nN_PATT 1 NPHASE 0\n", "Error reading the number of Parameters!"},
        {"NEW_REFINEMENT x\nNUMPAR 0 NPHASE 0\n", "Error reading the number of Patterns!"},
        {"NEW_REFINEMENT x\nNUMPAR 0 N_PATT 1 NPHASE q\n", "Error reading the number of Phases!"},
        {"NEW_REFINEMENT x\nNUMPAR 2 N_PATT 1 NPHASE 0\nZero 0 0.1\n", "Error reading the Plot Parameters!"},
        {"NEW_REFINEMENT x\nNUMPAR 1 N_PATT 1 NPHASE 0\nZero zero 0.1\n", "Error reading the Plot Parameters!"},
        {"NEW_REFINEMENT x\nNUMPAR 0 N_PATT 1 NPHASE 1\nPHASE 2 p 0\n", "Error reading the Phase Parameters!"},
        {ok + ok.substr(0, ok.size() - 9), "Error reading the Phase Parameters!"},  // cut in the middle of a block
    };
    for (const auto& [text, want] : cases) {
        EXPECT_FALSE(hxl::Read_Seq_Text(text, b, msg)) << text;
        EXPECT_EQ(msg, want) << text;
        EXPECT_TRUE(b.empty());
    }
    ASSERT_TRUE(hxl::Read_Seq_Text(ok + ok, b, msg)) << msg;
    EXPECT_EQ(b.size(), 2u);
}

}  // namespace
