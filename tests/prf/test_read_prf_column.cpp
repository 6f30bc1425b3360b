// The column variant of the profile-file reader on the files of tests/data/prf.
#include <gtest/gtest.h>

#include "prf_test_files.h"

using ztest::Read_Data_Prf;

TEST(ReadPrfColumn, TwoPhasesWithExcludedRegionsAndZeroShift) {
    auto r = Read_Data_Prf("two_phase_46.prf");
    ASSERT_FALSE(r.error) << r.message;
    const auto& p = r.pattern;
    const auto& i = r.info;
    EXPECT_EQ(i.prf_type, "PRF");
    EXPECT_EQ(i.prf_name, "two_phase_46.prf");
    EXPECT_EQ(p.filename, "two_phase_46.prf");
    EXPECT_EQ(i.header, "Title: Two phase test  TEMP: 295.5 Chi2: 3.25");
    EXPECT_EQ(hxl::Trim(p.title), "Two phase test  TEMP: 295.5");
    EXPECT_FLOAT_EQ(i.chi2, 3.25f);
    EXPECT_FLOAT_EQ(p.tsamp, 295.5f);
    EXPECT_EQ(p.scat_var, "2theta");
    EXPECT_FLOAT_EQ(p.lambda1, 1.54056f);
    EXPECT_FLOAT_EQ(p.lambda2, 1.54439f);
    EXPECT_EQ(i.nphases, 2);
    ASSERT_EQ(p.npts, 200);
    ASSERT_EQ(i.nrefl, 5);
    EXPECT_EQ(i.refl_count(1), 3);
    EXPECT_EQ(i.refl_count(2), 2);
    // zero + c1 cos(x/2) + c2 sin(x/2) is taken off every X, position and limit
    EXPECT_NEAR(p.x(1), 9.938295f, 2e-4);
    EXPECT_NEAR(p.xmin, 9.938295f, 2e-4);
    EXPECT_NEAR(p.xmax, 109.427896f, 2e-4);
    EXPECT_NEAR(i.refl_pos(1), 29.935164f, 2e-4);
    ASSERT_EQ(i.nexcl, 2);
    EXPECT_NEAR(i.excl_low(1), 9.938295f, 2e-4);
    EXPECT_NEAR(i.excl_high(2), 101.928164f, 2e-4);
    EXPECT_NEAR(p.step, (p.xmax - p.xmin) / 199.0f, 1e-5);
    // the strongest peak lies in an excluded region and does not set ymax
    EXPECT_FLOAT_EQ(p.ymin, 95.0f);
    EXPECT_FLOAT_EQ(p.ymax, 1100.0f);
    EXPECT_FLOAT_EQ(p.y(41), 1095.0f);
    EXPECT_FLOAT_EQ(p.ycalc(41), 1100.0f);
    EXPECT_FLOAT_EQ(p.bgr(41), 100.0f);
    EXPECT_EQ(i.refl_label(1), " (  1  0  0) ph: 1  Lambda:  1");
    EXPECT_EQ(i.refl_label(3), " (  1  1  1) ph: 1  Lambda:  2");
    EXPECT_EQ(i.refl_label(4), " (  2  0  0) ph: 2  Lambda:  1");
    EXPECT_EQ(i.refl_phase(3), 1);
    EXPECT_EQ(i.refl_phase(5), 2);
    EXPECT_EQ(i.refl_code(5), 2);
    EXPECT_EQ(i.refl_kind(5), 0);
}

TEST(ReadPrfColumn, ListEndingEarlyIsCutNotRefused) {
    auto r = Read_Data_Prf("short_list_46.prf");
    ASSERT_FALSE(r.error) << r.message;
    EXPECT_EQ(r.info.nrefl, 1);
    EXPECT_EQ(r.info.refl_label.size(), 1);
    EXPECT_EQ(r.pattern.npts, 20);
}

TEST(ReadPrfColumn, JoinedLayoutWithKindNames) {
    auto r = Read_Data_Prf("joined_52.prf");
    ASSERT_FALSE(r.error) << r.message;
    ASSERT_EQ(r.pattern.npts, 30);
    ASSERT_EQ(r.info.nrefl, 3);
    EXPECT_FLOAT_EQ(r.pattern.x(30), 34.0f);
    EXPECT_FLOAT_EQ(r.info.refl_pos(2), 20.0f);
    EXPECT_EQ(r.info.refl_label(1), " (  1  0  0) ph: 1 -> Mag.");
    EXPECT_EQ(r.info.refl_label(2), " (  0  0  2) ph: 1 -> Nuc.+Mag.");
    EXPECT_EQ(r.info.refl_label(3), " (  1  0  2) ph: 1 -> Nuc.");
    EXPECT_EQ(r.info.refl_kind(2), 3);
}

TEST(ReadPrfColumn, SuperspacePhasesWithOneAndThreeExtraIndices) {
    auto r = Read_Data_Prf("superspace_53.prf");
    ASSERT_FALSE(r.error) << r.message;
    const auto& i = r.info;
    EXPECT_EQ(i.nphases, 3);
    ASSERT_EQ(i.nrefl, 5);
    ASSERT_EQ(i.kvec.size(), 3u);
    ASSERT_EQ(i.kvec[2].size(), 9);
    EXPECT_FLOAT_EQ(i.kvec[2](5), 0.3f);
    EXPECT_EQ(i.refl_label(1), " (  1  0  0) ph: 1, nvk[ 0.0000 0.0000 0.0000]  Lambda:  1");
    EXPECT_EQ(i.refl_label(2), " (  1  1  0  1) ph: 2,  Lambda:  1 -> Mag.");
    EXPECT_EQ(i.refl_label(3), " (  1  1  1 -1) ph: 2,  Lambda:  1 -> Nuc.");
    EXPECT_EQ(i.refl_label(4), " (  2  0  0  1 -1  1) ph: 3,  Lambda:  2 -> Nuc.+Mag.");
    EXPECT_EQ(i.refl_phase(5), 3);
    EXPECT_FLOAT_EQ(i.refl_pos(5), 24.0f);
}

TEST(ReadPrfColumn, NinePhasesTakeTwoReadsOfTheCounts) {
    auto r = Read_Data_Prf("nine_phases_46.prf");
    ASSERT_FALSE(r.error) << r.message;
    EXPECT_EQ(r.info.nphases, 9);
    ASSERT_EQ(r.info.nrefl, 9);
    EXPECT_EQ(r.info.nexcl, 0);
    EXPECT_EQ(r.info.refl_count(9), 1);
    EXPECT_EQ(r.info.refl_phase(9), 9);
    EXPECT_EQ(r.info.refl_label(9), " (  9  0  0) ph: 9  Lambda:  1");
}

TEST(ReadPrfColumn, TimeOfFlightEnergyAndTheLimitOfTen) {
    auto tof = Read_Data_Prf("tof_dtt.prf");
    ASSERT_FALSE(tof.error) << tof.message;
    EXPECT_EQ(tof.pattern.scat_var, "TOF");
    EXPECT_FLOAT_EQ(tof.pattern.lambda1, 6000.0f);  // Dtt1 and Dtt2
    EXPECT_FLOAT_EQ(tof.pattern.lambda2, -1.5f);
    EXPECT_FLOAT_EQ(tof.pattern.x(1), 4997.0f);      // zero alone
    EXPECT_FLOAT_EQ(tof.info.refl_pos(1), 5200.0f);
    EXPECT_FLOAT_EQ(tof.info.excl_low(1), 5097.0f);

    auto en = Read_Data_Prf("energy_iv2.prf");
    ASSERT_FALSE(en.error) << en.message;
    EXPECT_EQ(en.pattern.scat_var, "Energy");
    EXPECT_EQ(en.pattern.xax_text, "Energy (KeV)");
    EXPECT_FLOAT_EQ(en.pattern.lambda1, 12.0f);
    EXPECT_FLOAT_EQ(en.pattern.x(1), 9.5f);

    auto ten = Read_Data_Prf("c1_ten.prf");
    ASSERT_FALSE(ten.error) << ten.message;
    EXPECT_EQ(ten.pattern.scat_var, "2theta");
    EXPECT_FLOAT_EQ(ten.pattern.lambda1, 1.5f);
}

TEST(ReadPrfColumn, PropagationVectorsNameTheVectorOfEachReflection) {
    auto r = Read_Data_Prf("magnetic_k.prf");
    ASSERT_FALSE(r.error) << r.message;
    const auto& i = r.info;
    ASSERT_EQ(i.nrefl, 4);
    EXPECT_EQ(i.refl_label(1), " (  1  1  0) ph: 1, nvk[ 0.0000 0.0000 0.0000]  Lambda:  1");
    EXPECT_EQ(i.refl_label(2), " (  1  0  0) ph: 2, nvk[ 0.5000 0.0000 0.0000]  Lambda:  1");
    EXPECT_EQ(i.refl_label(4), " (  1  1  1) ph: 2, nvk[ 0.0000 0.5000 0.2500]  Lambda:  2");
    EXPECT_EQ(i.refl_phase(3), 2);
    EXPECT_EQ(i.refl_code(4), 2);  // the code keeps the phase
}

TEST(ReadPrfColumn, ReciprocalUnitsForceTheOldLayout) {
    auto r = Read_Data_Prf("rlu_log.prf");
    ASSERT_FALSE(r.error) << r.message;
    EXPECT_EQ(r.pattern.scat_var, "r.l.u.");
    EXPECT_EQ(r.pattern.xax_text, "Reciprocal Lattice Units (r.l.u.)");
    EXPECT_EQ(r.pattern.yax_text, "Log(Intensity)(arb. units)");
    EXPECT_EQ(r.pattern.npts, 20);
    EXPECT_EQ(r.info.nphases, 0);
    EXPECT_EQ(r.info.nrefl, 0);
}

TEST(ReadPrfColumn, SuperspacePhaseWithTwoExtraIndicesAndNoMarker) {
    auto r = Read_Data_Prf("superspace2_53.prf");
    ASSERT_FALSE(r.error) << r.message;
    ASSERT_EQ(r.info.nrefl, 1);
    EXPECT_EQ(r.info.refl_label(1), " (  1  0  0  1 -1) ph: 1,  Lambda:  1 -> Mag.");
    EXPECT_EQ(r.info.refl_kind(1), 2);
}
