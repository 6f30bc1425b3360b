// The other variants: the older fixed layout, single-crystal lists, pair
// distributions and the output of the peak fit.
#include <gtest/gtest.h>

#include "prf_test_files.h"

using ztest::Read_Data_Prf;

TEST(ReadPrfVariants, OldLayoutWithNinePhasesAndExcludedPeak) {
    auto r = Read_Data_Prf("old_3111.prf");
    ASSERT_FALSE(r.error) << r.message;
    const auto& p = r.pattern;
    const auto& i = r.info;
    EXPECT_EQ(i.nphases, 9);
    ASSERT_EQ(p.npts, 16);
    ASSERT_EQ(i.nrefl, 9);
    EXPECT_FLOAT_EQ(p.x(1), 9.9f);
    EXPECT_FLOAT_EQ(p.x(16), 17.4f);
    EXPECT_FLOAT_EQ(p.step, 0.5f);
    EXPECT_EQ(p.scat_var, "2theta");
    EXPECT_EQ(i.refl_phase(1), 1);
    EXPECT_EQ(i.refl_phase(8), 8);
    EXPECT_EQ(i.refl_phase(9), 9);  // code -134217728
    EXPECT_FLOAT_EQ(i.refl_pos(1), 9.9f);
    ASSERT_EQ(i.nexcl, 1);
    EXPECT_FLOAT_EQ(i.excl_low(1), 15.75f);
    EXPECT_FLOAT_EQ(i.excl_high(1), 16.25f);
    EXPECT_FLOAT_EQ(p.y(13), 9000.0f);
    EXPECT_FLOAT_EQ(p.ymax, 250.0f);  // the 9000 sits in the excluded region
    EXPECT_FLOAT_EQ(p.ymin, 99.0f);
}

TEST(ReadPrfVariants, SingleCrystalListsAreMono) {
    auto r = Read_Data_Prf("sin_list.prf");
    ASSERT_FALSE(r.error) << r.message;
    EXPECT_EQ(r.info.prf_type, "MONO");
    EXPECT_EQ(r.pattern.scat_var, "mono");
    ASSERT_EQ(r.pattern.npts, 8);
    EXPECT_EQ(r.info.nrefl, 8);
    EXPECT_FLOAT_EQ(r.pattern.sigma(1), 2.0f);
    EXPECT_FLOAT_EQ(r.pattern.xmin, 0.1f);
    EXPECT_FLOAT_EQ(r.pattern.xmax, 0.45f);
    EXPECT_FLOAT_EQ(r.info.refl_pos(3), r.pattern.x(3));
    EXPECT_EQ(r.info.refl_label(3), " (   2   1   0)");

    // " Sin" on line 3 wins over what line 2 says
    auto s = Read_Data_Prf("sin_superspace.prf");
    ASSERT_FALSE(s.error) << s.message;
    EXPECT_EQ(hxl::Trim(s.pattern.title), "Modulated");
    ASSERT_EQ(s.pattern.npts, 7);
    EXPECT_EQ(s.info.refl_label(1), " (   0   0   1   1) Nuc.");
    EXPECT_EQ(s.info.refl_label(2), " (   1   0   1   1) Mag.");

    auto x = Read_Data_Prf("sin_sx.prf");
    ASSERT_FALSE(x.error) << x.message;
    ASSERT_EQ(x.pattern.npts, 7);
    EXPECT_FLOAT_EQ(x.pattern.ycalc(2), 22.0f);
    EXPECT_EQ(hxl::Trim(x.info.refl_label(2)), "( 1 0 0) twin 1");
}

TEST(ReadPrfVariants, FewSingleCrystalLinesHaveNoReflections) {
    auto r = ztest::Read_Text_Prf("t\n Sin head\n0.1 5 6 1 1 1 0 0\n0.2 5 6 1 1 2 0 0\n");
    ASSERT_FALSE(r.error) << r.message;
    EXPECT_EQ(r.pattern.npts, 2);
    EXPECT_EQ(r.info.nrefl, 0);
}

TEST(ReadPrfVariants, PairDistributionWithCompanionFile) {
    auto r = Read_Data_Prf("pairs.prf");
    ASSERT_FALSE(r.error) << r.message;
    EXPECT_EQ(r.pattern.scat_var, "Distance");
    ASSERT_EQ(r.pattern.npts, 6);
    EXPECT_FLOAT_EQ(r.pattern.ycalc(6), 1.05f);
    EXPECT_EQ(r.info.nphases, 2);
    ASSERT_EQ(r.info.nrefl, 3);
    EXPECT_EQ(r.info.refl_count(1), 2);
    EXPECT_EQ(r.info.refl_label(1), "Fe - O d=  1.9850 mult=   6");
    EXPECT_EQ(r.info.refl_label(3), "Si - O d=  1.6100 mult=   4");
    EXPECT_EQ(r.info.refl_phase(3), 2);
    EXPECT_FLOAT_EQ(r.info.refl_pos(2), 2.95f);
}

TEST(ReadPrfVariants, PairFileWithoutCountIsRefusedSilently) {
    auto r = ztest::Read_Text_Prf("t\n# R pairs\n Number of Pairs 5\n");
    EXPECT_TRUE(r.error);
    EXPECT_EQ(r.message, "");
}

TEST(ReadPrfVariants, PeakFitOutputChosenByExtension) {
    auto r = Read_Data_Prf("peaks_fit.xrf");
    ASSERT_FALSE(r.error) << r.message;
    EXPECT_EQ(r.pattern.scat_var, "2theta");
    EXPECT_EQ(r.pattern.yax_text, "Intensity (arb.units)");
    EXPECT_FLOAT_EQ(r.pattern.lambda2, 1.54439f);
    ASSERT_EQ(r.pattern.npts, 12);
    EXPECT_FLOAT_EQ(r.pattern.xmax, 25.5f);
    ASSERT_EQ(r.info.nrefl, 2);
    EXPECT_FLOAT_EQ(r.info.refl_pos(2), 22.0f);
    EXPECT_EQ(r.info.refl_label(1), "   1   ( 1 0 0) Int.:     1500.00 Fwhm:  0.12000 Eta: 0.4000");
    EXPECT_FLOAT_EQ(r.pattern.bgr(12), 10.0f);

    // the same text under another extension is a column file and fails there
    auto c = ztest::Read_Text_Prf(ztest::Slurp(ztest::Prf_Data("peaks_fit.xrf")), "peaks_fit.prf");
    EXPECT_TRUE(c.error);
    EXPECT_EQ(c.message, "Error in number of columns");
}

TEST(ReadPrfVariants, PeakFitHeadMessages) {
    auto msg = [](const std::string& text) { return ztest::Read_Text_Prf(text, "a.xrf").message; };
    EXPECT_EQ(msg("t\nx\n"), "ERROR: Reading line 3 in XRF file");
    EXPECT_EQ(msg("t\nx\ns\n"), "ERROR: Reading line 4 in XRF file containing Lambdas");
    EXPECT_EQ(msg("t\nx\ns\nno colon\n"), "ERROR: Reading lambdas in XRF file, ':' is missing!");
    EXPECT_EQ(msg("t\nx\ns\nL: a b\n"), "ERROR: Reading lambdas in XRF file");
    EXPECT_EQ(msg("t\nx\ns\nNumb.of.points: a\n"), "ERROR: Reading line5 in XRF file containing npts");
    EXPECT_EQ(msg("t\nx\ns\nL: 1 1\nn 5\n"), "ERROR: Reading npts in XRF file, ':' is missing!");
    EXPECT_EQ(msg("t\nx\ns\nL: 1 1\nn: x\n"), "ERROR: Reading npts in XRF file");
    EXPECT_EQ(msg("t\nx\ns\nL: 1 1\nn: 2\np 1\n"), "ERROR: Reading npeaks in XRF file, ':' is missing!");
    EXPECT_EQ(msg("t\nx\ns\nL: 1 1\nn: 2\np: z\n"), "ERROR: Reading npeaks in XRF file");
    EXPECT_EQ(msg("t\nx\ns\nL: 1 1\nn: 2\np: 0\nh\n1 2 3 4 5\n"), "ERROR: Reading line #2 in XRF file");
    EXPECT_EQ(msg("t\nx\ns\nL: 1 1\nn: 2\np: 1\nh\n1 2 3 4 5\n"), "ERROR: Reading numeric line #1 in XRF file");
    auto tof = ztest::Read_Text_Prf("t\nx\n Scattering Variable: Energy\nDtt1: 0 0\nn: 2\np: 0\nh\n1 2 3 4 5\n2 2 3 4 5\n",
                                    "b.xrf");
    ASSERT_FALSE(tof.error) << tof.message;
    EXPECT_EQ(tof.pattern.scat_var, "Energy");
    EXPECT_EQ(tof.pattern.xax_text, "TOF(usec)");
    EXPECT_FLOAT_EQ(tof.pattern.lambda1, 0.0f);
}

TEST(ReadPrfVariants, HeadLineKeywordsThatDoNotRead) {
    const std::string rest =
        "  0     20     1.50000     1.50000     0.00000     0.00000     0.00000\n0\n"
        " 2Theta\tYobs\tYcal\tYobs-Ycal\tBackg\tPosr\tcode\th_\n";
    std::string points;
    for (int i = 0; i < 20; ++i) points += "     " + std::to_string(10 + i) + ".0000\t    95.0\t   100.0\t    -5.0\t   100.0\n";
    auto r = ztest::Read_Text_Prf("  Title:Run 7 TEMP: warm Chi2: high\n" + rest + points);
    ASSERT_FALSE(r.error) << r.message;
    EXPECT_FLOAT_EQ(r.info.chi2, 0.0f);
    EXPECT_FLOAT_EQ(r.pattern.tsamp, 0.0f);
    EXPECT_EQ(hxl::Trim(r.pattern.title), "Run 7 TEMP: warm");
    EXPECT_EQ(r.info.header, "Title:Run 7 TEMP: warm Chi2: high");
}

TEST(ReadPrfVariants, PairFileWithMissingCompanion) {
    auto r = ztest::Read_Text_Prf("t\n# R \n Phases: /nonexistent/c.lst\n Pairs: 1\ns\ns\n1 2 3 4\n");
    EXPECT_TRUE(r.error);
    EXPECT_EQ(r.message, "Error open file: /nonexistent/c.lst");
}
