// Instrumental resolution files.
#include <gtest/gtest.h>

#include "prf/read_irf.h"
#include "prf_test_files.h"

TEST(ReadIrf, KeywordLayout) {
    hxl::IRF_TYPE irf;
    bool ok = false;
    std::string text;
    hxl::Read_Irf(ztest::Prf_Data("tof_keywords.irf"), irf, ok, text);
    ASSERT_TRUE(ok) << text;
    EXPECT_EQ(irf.ireso, 5);
    EXPECT_TRUE(irf.has_jobt);
    EXPECT_EQ(irf.jobt, "neutrons");
    EXPECT_FLOAT_EQ(irf.twoth, 145.0f);
    EXPECT_TRUE(irf.has_d2tof);  // lower case accepted
    EXPECT_FLOAT_EQ(irf.d2tof[0], 6000.5f);
    EXPECT_FLOAT_EQ(irf.d2tof[1], -1.25f);
    EXPECT_FLOAT_EQ(irf.sigma[1], 20.5f);
    EXPECT_FLOAT_EQ(irf.gamma[1], 2.5f);
    EXPECT_FLOAT_EQ(irf.alfbe[2], 0.9f);
    EXPECT_EQ(irf.geom, 6);  // after an unknown keyword
    EXPECT_FLOAT_EQ(irf.wave[2], 0.5f);
    EXPECT_FLOAT_EQ(irf.tofrg[2], 20000.0f);
    EXPECT_FALSE(irf.has_asym);
    EXPECT_FALSE(irf.has_uvwxy);
}

TEST(ReadIrf, OlderOneRecordLayout) {
    hxl::IRF_TYPE irf;
    bool ok = false;
    std::string text;
    // no extension given: ".irf" is added
    std::string name = ztest::Prf_Data("old_ireso1");
    hxl::Read_Irf(name, irf, ok, text);
    ASSERT_TRUE(ok) << text;
    EXPECT_EQ(irf.ireso, 1);
    ASSERT_TRUE(irf.has_uvwxy);
    EXPECT_FLOAT_EQ(irf.uvwxy[1], -0.02f);
    EXPECT_FLOAT_EQ(irf.uvwxy[4], 0.05f);
}

TEST(ReadIrf, Messages) {
    hxl::IRF_TYPE irf;
    bool ok = true;
    std::string text;
    hxl::Read_Irf("/nonexistent/inst", irf, ok, text);
    EXPECT_FALSE(ok);
    EXPECT_EQ(text, "Error when openning the IRF File: /nonexistent/inst.irf");
    hxl::Read_Irf_Text("bank", "! ireso = 4\nSIGMA 1.0 x 2\n", irf, ok, text);
    EXPECT_FALSE(ok);
    EXPECT_EQ(text, "Error reading IRF File: bank.irf");
    hxl::Read_Irf_Text("bank", "! ireso = 1\n! nothing follows\n", irf, ok, text);
    EXPECT_FALSE(ok);
    hxl::Read_Irf_Text("bank", "GEOM brag\nCTHM 0.8\nRKK 0.1\nASYM 0.02 0.01\nPROF 7 0.5\n", irf, ok, text);
    ASSERT_TRUE(ok) << text;
    EXPECT_EQ(irf.ireso, 0);
    EXPECT_EQ(irf.geom, 1);
    EXPECT_FLOAT_EQ(irf.cthm, 0.8f);
    EXPECT_EQ(irf.prof, 7);
    EXPECT_FLOAT_EQ(irf.prof_par[0], 0.5f);
    EXPECT_FLOAT_EQ(irf.asym[1], 0.01f);
}
