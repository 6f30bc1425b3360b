// The fixed-layout instrument readers on small hand-written files.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>

#include "read_text.h"
#include "support/fixed_text.h"

using namespace hxl;
using zdtest::Read_Text;

namespace {

std::string fmt(const char* f, double a, double b = 0, double c = 0, double d = 0, double e = 0, double g = 0) {
    char buf[256];
    std::snprintf(buf, sizeof buf, f, a, b, c, d, e, g);
    return buf;
}

std::string reals(int n, double base, int per = 10) {
    std::string s;
    for (int i = 1; i <= n; ++i) {
        s += fmt("%8.1f", base + i);
        if (i % per == 0 || i == n) s += "\n";
    }
    return s;
}

}  // namespace

// n pairs (cells of 2 columns, count of rw columns), ten to a line; 2 cells
// everywhere but at point 3.
static std::string kv_pairs(int n, int rw, int cells_at_3) {
    std::string s;
    char buf[32];
    for (int i = 1; i <= n; ++i) {
        std::snprintf(buf, sizeof buf, "%2d%*.0f", i == 3 ? cells_at_3 : 2, rw, 100.0 * i);
        s += buf;
        if (i % 10 == 0 || i == n) s += "\n";
    }
    return s;
}

TEST(InstrumentReaders, KV8HeadColumnsAndCellCounts) {
    std::string l5 = fmt("%13.0f", 50000.0) + std::string(10, ' ') + fmt("%8.3f", 5.0) + std::string(45, ' ') +
                     fmt("%9.3f%9.3f%9.3f%9.3f", 0.1, 300.0, 7.0, 295.0);
    std::string text = "h1\nh2\n  Title three  \nfour\n" + l5 + "\n  15\n" + kv_pairs(15, 8, 0) + "end\n";
    DIFFRACTION_PATTERN_TYPE p = Read_Text("kv8.dat", text, "KV8");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(Trim(p.title), "Title three four");
    EXPECT_FLOAT_EQ(p.monitor, 50000.0f);
    EXPECT_FLOAT_EQ(p.xmin, 5.0f);
    EXPECT_FLOAT_EQ(p.step, 0.1f);
    EXPECT_FLOAT_EQ(p.tset, 300.0f);
    EXPECT_FLOAT_EQ(p.tsamp, 295.0f);
    ASSERT_EQ(p.npts, 15);
    EXPECT_NEAR(p.xmax, 6.4f, 1e-5);
    EXPECT_FLOAT_EQ(p.y(12), 1200.0f);
    EXPECT_FLOAT_EQ(p.sigma(1), 50.0f);   // 100 over 2 cells
    EXPECT_FLOAT_EQ(p.sigma(3), 300.0f);  // 0 cells count as 1
    EXPECT_EQ(Trim_Right(p.instr), "  3  - KV8");
    EXPECT_EQ(Trim(p.scat_var), "2theta");

    Read_Text("kv8b.dat", "h1\nh2\nh3\nh4\n" + l5 + "\n   0\n", "KV8");
    EXPECT_EQ(ERR_Pattern_Mess, " Error in Intensity file, Number of points negative or zero!");
    Read_Text("kv8c.dat", "h1\nh2\n", "KV8");
    EXPECT_EQ(ERR_Pattern_Mess, " Error in Intensity file, check your instr parameter!");
    Read_Text("kv8d.dat", "h1\nh2\nh3\nh4\n" + l5 + "\n  15\n" + kv_pairs(15, 8, 0), "KV8");  // no closing line
    EXPECT_EQ(ERR_Pattern_Mess, " Error in  Intensity file, check your instr parameter!");
}

TEST(InstrumentReaders, KG1MonitorScaleAndVarianceBlock) {
    const std::string head = "KG1 title\nskipped\n! comment\n  ! another\n";
    DIFFRACTION_PATTERN_TYPE p =
        Read_Text("kg1.dat", head + "4 10.0 12.0 0 2000 1000\n1.0 0.5 2.5\n10 20\n30 40\n", "KG1");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(Trim(p.title), "KG1 title");
    EXPECT_FLOAT_EQ(p.monitor, 2000.0f);
    EXPECT_FLOAT_EQ(p.tsamp, 10.0f);
    ASSERT_EQ(p.npts, 4);
    EXPECT_FLOAT_EQ(p.x(4), 2.5f);
    EXPECT_FLOAT_EQ(p.sigma(2), 40.0f);  // 2000/1000 times y
    DIFFRACTION_PATTERN_TYPE q = Read_Text("kg1v.dat", head + "3 0 0 1 1 1\n1 1 3\n5 6 7\n0.5 0.6 0.7\n", "KG1");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_FLOAT_EQ(q.sigma(3), 0.7f);
    Read_Text("kg1e.dat", head + "3 0 0 1 1 1\n1 1 3\n5 6 7\n", "KG1");
    EXPECT_EQ(ERR_Pattern_Mess, " Error in Intensity file, check your instr parameter!");
    Read_Text("kg1z.dat", head + "0 0 0 0 1 1\n", "KG1");
    EXPECT_EQ(ERR_Pattern_Mess, " Error in Intensity file, Number of points negative or zero!");
}

TEST(InstrumentReaders, KG1TextLinesBeforeTheCountLine) {
    // A wavelength and sample line before the count line, as ILL files write it.
    const std::string body = "3 -1.0 100.0 1 100000.0 0.0\n 1.0 0.5 2.0\n 5 6 7\n 0.5 0.6 0.7\n";
    DIFFRACTION_PATTERN_TYPE p =
        Read_Text("d1a.dat", "D1A5 Title: run\n Ident: 1 to 2\n1.9114 A  sample 13.9.01   2theta\n" + body, "KG1");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(Trim(p.title), "D1A5 Title: run");
    ASSERT_EQ(p.npts, 3);
    EXPECT_FLOAT_EQ(p.tset, 100.0f);
    EXPECT_FLOAT_EQ(p.x(3), 2.0f);
    EXPECT_FLOAT_EQ(p.sigma(2), 0.6f);
    // Two such lines among comments pass; a third is no KG1 head.
    EXPECT_EQ(Read_Text("two.dat", "t\ns\ntext one\n! c\ntext two\n" + body, "KG1").npts, 3);
    EXPECT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    Read_Text("three.dat", "t\ns\ntext one\ntext two\ntext three\n" + body, "KG1");
    EXPECT_EQ(ERR_Pattern_Mess, " Error in Intensity file, check your instr parameter!");
}

TEST(InstrumentReaders, KV7CountFromEighteenDegrees) {
    const std::string head = "KV7 run\n" + std::string(16, ' ') + "   0.050\n  10.000\n  1000.0  2000.0     1.0\n";
    DIFFRACTION_PATTERN_TYPE p = Read_Text("kv7.dat", head + kv_pairs(3600, 6, 4), "KV7");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(p.npts, 3600);
    EXPECT_FLOAT_EQ(p.xmin, 10.0f);
    EXPECT_NEAR(p.xmax, 10.0f + 3599 * 0.05f, 1e-3);
    EXPECT_FLOAT_EQ(p.sigma(1), 100.0f);  // 100 * (2000/1000) / 2
    EXPECT_FLOAT_EQ(p.sigma(3), 150.0f);  // 300 * 2 / 4
    EXPECT_EQ(Trim_Right(Read_Text("kv9.dat", head + kv_pairs(3600, 6, 4), "kv9").instr), "  6  - KV9");
    Read_Text("kv7e.dat", "t\n" + std::string(16, ' ') + "   0.000\n  10.000\n     1.0     1.0\n", "KV7");
    EXPECT_EQ(ERR_Pattern_Mess, " Error in Intensity file, Number of points negative or zero!");
    // a step so small that ten times its count would overflow an int
    Read_Text("kv7t.dat", "t\n" + std::string(16, ' ') + "1.804-8\n  10.000\n     1.0     1.0\n", "KV7");
    EXPECT_EQ(ERR_Pattern_Mess, " Error in Intensity file, Number of points negative or zero!");
}

TEST(InstrumentReaders, KV7OldWithAndWithoutTitle) {
    DIFFRACTION_PATTERN_TYPE p = Read_Text("old.dat", "0.5 1.0 3.0\n" + kv_pairs(5, 6, 1), "OLDKV7");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(p.title, " No title: data format -> old KV7");
    EXPECT_EQ(p.npts, 5);
    EXPECT_FLOAT_EQ(p.x(5), 3.0f);
    EXPECT_EQ(Trim_Right(p.instr), "  1  - OLDKV7");
    DIFFRACTION_PATTERN_TYPE q = Read_Text("old2.dat", "Old run\n0.5 1.0 3.0\n" + kv_pairs(5, 6, 1), "KV7OLD");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(Trim(q.title), "Old run");
    EXPECT_FLOAT_EQ(q.sigma(2), 100.0f);
    // Short lines pad with blanks, as a formatted read does; a missing line is an error.
    Read_Text("old3.dat", "Old run\n0.5 1.0 6.0\n" + kv_pairs(10, 6, 1), "KV7OLD");
    EXPECT_EQ(ERR_Pattern_Mess, " Error in Intensity file, check your instr parameter!");
}

TEST(InstrumentReaders, DmcMinimumPointsAndSigmaBlock) {
    const std::string head = "DMC run\nlambda=2.45\n";
    Read_Text("d19.dat", head + "1.0 0.1 2.8\n" + reals(19, 100), "DMC");
    EXPECT_EQ(ERR_Pattern_Mess, " Number of points too low! check your instr parameter!");
    DIFFRACTION_PATTERN_TYPE p = Read_Text("d20.dat", head + "1.0 0.1 2.9\n" + reals(20, 100), "HRPT");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_EQ(p.npts, 20);
    EXPECT_NEAR(p.sigma(1), std::sqrt(101.0f), 1e-4);
    EXPECT_EQ(Trim_Right(p.instr), "  8  - HRPT");
    DIFFRACTION_PATTERN_TYPE q = Read_Text("d20s.dat", head + "1.0 0.1 2.9\n" + reals(20, 100) + reals(20, 0) + "time=1\n", "DMC");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_FLOAT_EQ(q.sigma(20), 20.0f);
    Read_Text("d1.dat", "only\n", "DMC");
    EXPECT_EQ(ERR_Pattern_Mess, " Error in Intensity file (second line), check your instr parameter!");
    Read_Text("d2.dat", head + "a b c\n", "DMC");
    EXPECT_EQ(ERR_Pattern_Mess, " Error reading 2theta_min,step,2theta_max (third line), check your instr parameter!");
    Read_Text("d3.dat", head + "1.0 0.1 2.9\n" + reals(9, 100), "DMC");
    EXPECT_EQ(ERR_Pattern_Mess, " Error in Intensity file (intensities), check your instr parameter!");
}

TEST(InstrumentReaders, NlsAlternatingBlocks) {
    std::string text = "NLS title\n! c\n1.0 0.5 7.0\n" + reals(10, 0) + reals(10, 100) + reals(3, 10) + reals(3, 200);
    DIFFRACTION_PATTERN_TYPE p = Read_Text("nls.dat", text, "NLS");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    ASSERT_EQ(p.npts, 13);
    EXPECT_FLOAT_EQ(p.y(11), 11.0f);
    EXPECT_FLOAT_EQ(p.sigma(11), 201.0f);
    EXPECT_FLOAT_EQ(p.sigma(10), 110.0f);
    Read_Text("nls2.dat", "NLS title\n1.0 0.5 7.0\n" + reals(10, 0), "NLS");
    EXPECT_EQ(ERR_Pattern_Mess, " Error in (NLS) Intensity file, check your instr parameter!2");
    Read_Text("nls3.dat", "NLS title\n1.0 0.5 7.0\n", "NLS");
    EXPECT_EQ(ERR_Pattern_Mess, " Error in (NLS) Intensity file, check your instr parameter!1");
}

TEST(InstrumentReaders, TimeVariableBringsCountsToTheMeanTime) {
    std::string rows = fmt("%6.0f%10.0f%6.0f%10.0f%6.0f%10.0f", 1, 100, 3, 300, 2, 50) + "\n";
    DIFFRACTION_PATTERN_TYPE p = Read_Text("tv.dat", "Title\nh2\nh3\n10 1 12\n" + rows, "TIMEVARIABLE");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    ASSERT_EQ(p.npts, 3);
    EXPECT_FLOAT_EQ(p.y(1), 200.0f);   // mean time 2
    EXPECT_FLOAT_EQ(p.y(3), 50.0f);
    EXPECT_FLOAT_EQ(p.sigma(1), 400.0f);  // 100 counts times (2/1)^2
    EXPECT_EQ(Trim_Right(p.instr), " 11  - TIMEVARIABLE");
    std::string zero = fmt("%6.0f%10.0f%6.0f%10.0f", 0, 100, 3, 300) + "\n";
    Read_Text("tv0.dat", "Title\nh2\nh3\n10 1 11\n" + zero, "TIMEVARIABLE");
    EXPECT_EQ(ERR_Pattern_Mess, " Zero time in *.DAT");
}
