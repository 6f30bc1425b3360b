#include <gtest/gtest.h>

#include <cmath>

#include "patterns/read_pattern.h"
#include "temp_files.h"

using namespace hxl;

TEST(ReaderFrame, MissingFileAndNameSplit) {
    DIFFRACTION_PATTERN_TYPE p;
    Read_Pattern("/no/such/dir/x.dat", p);
    EXPECT_TRUE(ERR_Pattern);
    EXPECT_EQ(ERR_Pattern_Mess, " The file /no/such/dir/x.dat doesn't exist");

    std::string path, name;
    Split_File_Name("plain.dat", path, name);
    EXPECT_EQ(name, "plain.dat");
    EXPECT_EQ(path, "./");
    Split_File_Name("/a/b.c/d.xy", path, name);
    EXPECT_EQ(name, "d.xy");
    EXPECT_EQ(path, "/a/b.c/");
}

TEST(ReaderFrame, ModesAreUpperCasedAndUnknownModesReadFreeFormat) {
    ztest::Temp_Dir d;
    const std::string f = d.Write("m.dat", "10 1 20\n" + ztest::Counts(11));
    for (const char* mode : {"freeformat", "FreeFormat", "default", "whatever"}) {
        DIFFRACTION_PATTERN_TYPE p;
        Read_Pattern(f, p, std::string(mode));
        EXPECT_FALSE(ERR_Pattern) << mode << ERR_Pattern_Mess;
        EXPECT_EQ(p.instr, "  0  - Free format") << mode;
    }
    DIFFRACTION_PATTERN_TYPE p;
    Read_Pattern(f, p);  // mode absent
    EXPECT_FALSE(ERR_Pattern);
    EXPECT_EQ(p.npts, 11);
}

TEST(ReaderFrame, SigmaBecomesStandardDeviationOnRequest) {
    ztest::Temp_Dir d;
    const std::string f = d.Write("s.dat", "10 1 20\n0 1 4 9 16 25 36 49 64 81 100\n");
    DIFFRACTION_PATTERN_TYPE p;
    Read_Pattern(f, p, std::nullopt, true);
    ASSERT_FALSE(ERR_Pattern) << ERR_Pattern_Mess;
    EXPECT_FALSE(p.sig_var);
    for (int i = 1; i <= 11; ++i) EXPECT_FLOAT_EQ(p.sigma(i), static_cast<float>(i - 1));
    Read_Pattern(f, p, std::nullopt, false);
    EXPECT_TRUE(p.sig_var);
    EXPECT_EQ(p.sigma(11), 100.0f);
}

TEST(ReaderFrame, SetReaderRefusesOtherModes) {
    ztest::Temp_Dir d;
    const std::string f = d.Write("set.gss", "anything\n");
    std::vector<DIFFRACTION_PATTERN_TYPE> set(3);
    int count = -1;
    Read_Pattern_Set(f, set, count, "KV8");
    EXPECT_TRUE(ERR_Pattern);
    EXPECT_EQ(ERR_Pattern_Mess, " Invalid Mode");
    EXPECT_EQ(count, 0);
    Read_Pattern_Set(d.Path() + "/none.gss", set, count, "ISIS");
    EXPECT_EQ(ERR_Pattern_Mess, " The file " + d.Path() + "/none.gss doesn't exist");
}
