// GSAS raw banks (STD, ESD, ALT, FXYE) and the multi-bank set reader.
#include <gtest/gtest.h>

#include <vector>

#include "patterns/read_pattern.h"
#include "read_text.h"
#include "support/fixed_text.h"

using namespace hxl;
using zdtest::Read_Text;
using zdtest::Scratch_File;

namespace {

const std::string kTwoBanks =
    "Two banks\n"
    "BANK 1 3 1 CONST 1000.0 5.0 0 0 ESD\n"
    "   100.0    10.0   200.0    20.0   300.0    30.0\n"
    "BANK 2 4 1 RALF 32000 64 32000 0.001 ALT\n"
    // Fixed columns (f8.0, f7.4, f5.4): values touch as in real files.
    "   3200010.00001.000   3206420.00002.000   3212830.00003.000   3219240.00004.000\n";

}  // namespace

TEST(Gsas, EsdAndAltBanksByModeAndNumber) {
    DIFFRACTION_PATTERN_TYPE cw = Read_Text("two.gsa", kTwoBanks, "GSAS");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    ASSERT_EQ(cw.npts, 3);
    EXPECT_FLOAT_EQ(cw.xmin, 10.0f);  // centidegrees
    EXPECT_FLOAT_EQ(cw.step, 0.05f);
    EXPECT_FLOAT_EQ(cw.sigma(2), 400.0f);
    EXPECT_EQ(Trim(cw.diff_kind), "constant_wavelength");

    DIFFRACTION_PATTERN_TYPE tof = Read_Text("two.gsa", kTwoBanks, "gsastof2");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    ASSERT_EQ(tof.npts, 4);
    EXPECT_FLOAT_EQ(tof.x(1), 1000.0f);  // 1/32 microsecond
    EXPECT_FLOAT_EQ(tof.x(4), 1006.0f);
    EXPECT_FLOAT_EQ(tof.y(3), 30.0f);
    EXPECT_FLOAT_EQ(tof.sigma(4), 16.0f);
    EXPECT_EQ(Trim(tof.scat_var), "TOF");
    EXPECT_EQ(Trim_Right(tof.instr), " 12  - GSASTOF");

    Read_Text("two.gsa", kTwoBanks, "GSASTOF7");
    EXPECT_EQ(ERR_Pattern_Mess, " Error in Intensity file, BANK number:7 not found!");
    Read_Text("none.gsa", "title\nno bank\n", "GSAS");
    EXPECT_EQ(ERR_Pattern_Mess, " => Error in the input GSAS-file: BANK not found!");
}

TEST(Gsas, BinTypesThatTheRecordKindRefuses) {
    Read_Text("r.gsa", "t\nBANK 1 3 1 RALF 1 1 1 1 ESD\n 1 2 3\n", "GSAS");
    EXPECT_EQ(ERR_Pattern_Mess, " => Only BINTYP=CONST is allowed for ESD data");
    Read_Text("s.gsa", "t\nBANK 1 3 1 SLOG 1 1 1 1 STD\n 1 2 3\n", "GSAS");
    EXPECT_EQ(ERR_Pattern_Mess, " => Only BINTYP=CONST is allowed for ESD data");
    Read_Text("a.gsa", "t\nBANK 1 3 1 SLOG 1 1 1 1 ALT\n 1 2 3\n", "GSAS");
    EXPECT_EQ(ERR_Pattern_Mess, " =>  Only BINTYP=RALF or CONST is allowed for ALT data");
    // Time-of-flight bins read as centidegrees would be a hundred times too small.
    Read_Text("t.gsa", "t\nBANK 1 2 2 RALF 32000 64 32000 0.001 ALT\n 1 2 3\n", "GSAS");
    EXPECT_EQ(ERR_Pattern_Mess, " BANK 1 has time-of-flight bins (RALF): read it as GSAS (TOF)");
    Read_Text("t.gsa", "t\nBANK 1 2 2 SLOG 5000 60000 0.001 0 FXYE\n 5000 1 1\n 5005 2 1\n", "GSAS");
    EXPECT_EQ(ERR_Pattern_Mess, " BANK 1 has time-of-flight bins (SLOG): read it as GSAS (TOF)");
    Read_Text("b.gsa", "t\nBANK 1 30 3 CONST 1000 5 0 0 STD\n 1 2 3\n", "GSAS");
    EXPECT_EQ(ERR_Pattern_Mess, " Error in Intensity file, check your instr parameter!");
    // FXYE rows carry their own X, in centidegrees for constant wavelength.
    DIFFRACTION_PATTERN_TYPE f =
        Read_Text("f.gsa", "t\nBANK 1 2 2 CONS 50 0.2 0 0 FXYE\n 50.0 65.2 11.5\n 50.2 91.1 13.6\n", "GSAS");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_FLOAT_EQ(f.x(2), 0.502f);
    EXPECT_NEAR(f.sigma(2), 13.6f * 13.6f, 1e-3);
}

TEST(Gsas, SetReaderGivesOneProfilePerBank) {
    std::vector<DIFFRACTION_PATTERN_TYPE> set(10);
    int count = 0;
    Read_Pattern_Set(Scratch_File("two.gss", kTwoBanks), set, count, "ISIS");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    ASSERT_EQ(count, 2);
    EXPECT_EQ(set[0].npts, 3);
    // A CONST bank holds centidegrees: read in 2theta, so that the pattern is
    // plotted and converted right; the RALF bank stays time of flight.
    EXPECT_FLOAT_EQ(set[0].xmin, 10.0f);
    EXPECT_FLOAT_EQ(set[0].xmax, 10.1f);
    EXPECT_EQ(Trim(set[0].scat_var), "2theta");
    EXPECT_EQ(Trim(set[0].xax_text), "2theta(degrees)");
    EXPECT_EQ(set[1].npts, 4);
    EXPECT_FLOAT_EQ(set[1].xmin, 1000.0f);  // 32000 / 32 microseconds
    EXPECT_EQ(Trim(set[1].scat_var), "TOF");
    EXPECT_EQ(Trim_Right(set[1].instr), " 14  - ISIS");
    EXPECT_EQ(Trim(set[1].xax_text), "TOF (micro-seconds)");
    EXPECT_EQ(Trim(set[1].filename), "two.gss");
    Read_Pattern_Set(Scratch_File("bad.gss", "t\nBANK 1 9 1 CONST 1 1 0 0 ESD\n 1 2\n"), set, count, "ISIS");
    EXPECT_TRUE(ERR_Pattern);
    EXPECT_EQ(ERR_Pattern_Mess.rfind(" Error reading an ISIS profile DATA file", 0), 0u);
    Read_Pattern_Set(Scratch_File("two.gss", kTwoBanks), set, count, "XY");
    EXPECT_EQ(ERR_Pattern_Mess, " Invalid Mode");
    std::vector<DIFFRACTION_PATTERN_TYPE> empty;
    Read_Pattern_Set(Scratch_File("two.gss", kTwoBanks), empty, count, "ISIS");
    EXPECT_EQ(ERR_Pattern_Mess, " Error in Intensity file, wrong number of patterns !");
}

TEST(Gsas, SetReaderScalesIntensitiesByTheHeadFactor) {
    // Facility files end their title line with "scale= f".
    const std::string banks = kTwoBanks.substr(kTwoBanks.find('\n'));
    std::vector<DIFFRACTION_PATTERN_TYPE> set(4);
    int count = 0;
    Read_Pattern_Set(Scratch_File("s.gss", "GT sample (5K) 25-NOV-2000    scale=      2.50000" + banks), set, count, "ISIS");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    ASSERT_EQ(count, 2);
    EXPECT_FLOAT_EQ(set[0].y(2), 500.0f);
    EXPECT_FLOAT_EQ(set[0].sigma(2), 400.0f * 6.25f);  // variance: the square of the factor
    EXPECT_FLOAT_EQ(set[0].ymax, 750.0f);
    EXPECT_FLOAT_EQ(set[1].y(4), 100.0f);
    EXPECT_FLOAT_EQ(set[1].x(4), 1006.0f);  // X untouched
    // On a head line of its own too; a factor of zero or none at all leaves the counts.
    Read_Pattern_Set(Scratch_File("h.gss", "title\nscale= 0.5" + banks), set, count, "ISIS");
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_FLOAT_EQ(set[1].y(4), 20.0f);
    for (const char* head : {"t scale= 0", "t scale= x", "t"}) {
        Read_Pattern_Set(Scratch_File("z.gss", head + banks), set, count, "ISIS");
        ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
        EXPECT_FLOAT_EQ(set[0].y(3), 300.0f) << head;
    }
    // A "scale=" behind the first bank belongs to no head.
    Read_Pattern_Set(Scratch_File("late.gss", "t" + banks + "scale= 3\n"), set, count, "ISIS");
    EXPECT_FLOAT_EQ(set[1].y(1), 10.0f);
}
