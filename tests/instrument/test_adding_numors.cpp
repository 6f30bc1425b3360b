// Adding numors into one pattern: the sum of KV8 runs and the interpolation
// of KV7 frames onto a common grid, with their normalisations.
#include <gtest/gtest.h>

#include "instrument/adding_numors.h"
#include "instrument/nrf_blocks.h"
#include "instrument/powder_numor.h"

using namespace hxl;

namespace {

// A one-frame run of `cells` cells, as the KV8 reader leaves it.
POWDER_NUMOR_TYPE kv8(int numor, float wavelength, float start, std::vector<float> counts, float monitor = 1000,
                      float time = 60) {
    POWDER_NUMOR_TYPE n;
    n.numor = numor;
    n.instrument = "KV8 ";
    n.title = "Silicon";
    n.header = "martin";
    n.wavelength = wavelength;
    n.scan_values = {start, 0.1f, 0};
    n.monitor = monitor;
    n.time = time;
    n.n_frames = 1;
    n.n_pixels = static_cast<int>(counts.size());
    n.sample_env = {10, 11, 12, 0, 0};
    n.counts.resize(n.n_pixels, 1);
    for (int i = 1; i <= n.n_pixels; ++i) n.counts(i, 1) = counts[static_cast<std::size_t>(i - 1)];
    return n;
}

// A KV7 run: frames at `angles`, each with its monitor, cells counting count(k, j).
POWDER_NUMOR_TYPE kv7(int numor, const std::vector<float>& angles, const std::vector<float>& monitors, int cells,
                      float (*count)(int, int)) {
    POWDER_NUMOR_TYPE n;
    n.numor = numor;
    n.instrument = "KV7 ";
    n.title = "Nickel";
    n.wavelength = 2.52f;
    n.n_angles = 2;
    n.n_frames = static_cast<int>(angles.size());
    n.n_pixels = cells;
    n.counts.resize(cells, n.n_frames);
    n.frame_params.resize(4, n.n_frames);
    for (int j = 1; j <= n.n_frames; ++j) {
        n.frame_params(1, j) = 10.0f;
        n.frame_params(2, j) = monitors[static_cast<std::size_t>(j - 1)];
        n.frame_params(3, j) = angles[static_cast<std::size_t>(j - 1)];
        for (int k = 1; k <= cells; ++k) n.counts(k, j) = count(k, j);
        n.time += 10.0f;
    }
    return n;
}

}  // namespace

TEST(AddingNumors, ListChecks) {
    DIFFRACTION_PATTERN_TYPE p;
    Adding_Numors({}, {}, p);
    EXPECT_EQ(ERR_Nrf_Mess, " Number of Numors in the List was zero!");
    Adding_Numors({kv8(1, 1.28f, 10, {1, 2})}, {false}, p);
    EXPECT_EQ(ERR_Nrf_Mess, " Number of active Numors in the List was zero!");
    POWDER_NUMOR_TYPE blank = kv8(1, 1.28f, 10, {1, 2});
    blank.instrument = "    ";
    Adding_Numors({blank}, {true}, p);
    EXPECT_EQ(ERR_Nrf_Mess, " The Instrument name for the first active numor was empty!");
}

TEST(AddingNumors, SumOfEqualWavelengthsAndRefusalOfUnequal) {
    DIFFRACTION_PATTERN_TYPE p;
    // Wavelengths 0.1 apart are still the same; the inactive one is left out.
    std::vector<POWDER_NUMOR_TYPE> list = {kv8(101, 1.5f, 10, {1, 2, 3}, 1000, 60),
                                           kv8(102, 9.0f, 10, {100, 100, 100}),
                                           kv8(103, 1.6f, 10.1f, {4, 5, 6}, 500, 30)};
    Adding_Numors(list, {true, false, true}, p);
    ASSERT_FALSE(ERR_Nrf) << ERR_Nrf_Mess;
    ASSERT_EQ(p.npts, 3);
    EXPECT_FLOAT_EQ(p.y(1), 5.0f);
    EXPECT_FLOAT_EQ(p.y(3), 9.0f);
    EXPECT_FLOAT_EQ(p.sigma(3), 9.0f);
    EXPECT_EQ(p.istat(2), 1);
    EXPECT_FLOAT_EQ(p.x(1), 10.0f);
    EXPECT_FLOAT_EQ(p.x(3), 10.2f);
    EXPECT_FLOAT_EQ(p.monitor, 1500.0f);
    EXPECT_EQ(p.title, " Numors added from 101 to 103 Silicon, Instr: KV8, Header: martin");
    EXPECT_EQ(p.diff_kind, "neutrons_cw");
    EXPECT_EQ(p.scat_var, "2theta");
    EXPECT_FLOAT_EQ(p.lambda1, 1.5f);
    EXPECT_FLOAT_EQ(p.tset, 10.0f);
    EXPECT_FLOAT_EQ(p.tsamp, 12.0f);
    EXPECT_FLOAT_EQ(p.ymax, 9.0f);

    list[2].wavelength = 1.7f;
    Adding_Numors(list, {true, false, true}, p);
    EXPECT_EQ(ERR_Nrf_Mess, "Impossible to add the numors selected. Not all Numors have the same Wavelength!");
    list[2].wavelength = 1.5f;
    list[2].scan_values[0] = 10.5f;
    Adding_Numors(list, {true, false, true}, p);
    EXPECT_EQ(ERR_Nrf_Mess, "Impossible to add the numors selected. Not all Numors have the same initial Angle!");
}

TEST(AddingNumors, MonitorAndTimeNormalisation) {
    DIFFRACTION_PATTERN_TYPE p;
    std::vector<POWDER_NUMOR_TYPE> one = {kv8(7, 1.28f, 5, {10, 20}, 500, 40)};
    Adding_Numors(one, {true}, p, 1000.0f);
    ASSERT_FALSE(ERR_Nrf);
    EXPECT_FLOAT_EQ(p.monitor, 1000.0f);
    EXPECT_FLOAT_EQ(p.y(2), 40.0f);      // twice the monitor, twice the counts
    EXPECT_FLOAT_EQ(p.sigma(2), 80.0f);  // and four times the variance
    Adding_Numors(one, {true}, p, -10.0f);  // counts per 10 seconds
    EXPECT_FLOAT_EQ(p.y(1), 2.5f);
    EXPECT_FLOAT_EQ(p.sigma(1), 0.625f);
    EXPECT_FLOAT_EQ(p.monitor, 125.0f);
    one[0].monitor = 0;
    Adding_Numors(one, {true}, p, 1000.0f);
    EXPECT_TRUE(ERR_Nrf);  // no division by a zero monitor
}

TEST(AddingNumors, InterpolationKeepsAConstantConstant) {
    // Two runs whose frame monitors differ; counts follow the monitor, so the
    // normalised count is the same everywhere.
    std::vector<POWDER_NUMOR_TYPE> list = {
        kv7(1, {10.0f, 10.1f, 10.2f}, {1000, 2000, 1000}, 4, [](int, int j) { return j == 2 ? 200.0f : 100.0f; }),
        kv7(2, {10.05f, 10.15f, 10.28f}, {500, 500, 500}, 4, [](int, int) { return 50.0f; })};
    DIFFRACTION_PATTERN_TYPE p;
    Adding_Numors(list, {true, true}, p);
    ASSERT_FALSE(ERR_Nrf) << ERR_Nrf_Mess;
    // Grid from 10.0 to 10.28 in steps of 0.1: 10.0, 10.1, 10.2, 10.3.
    ASSERT_EQ(p.npts, 4);
    EXPECT_NEAR(p.step, 0.1f, 1e-5);
    EXPECT_NEAR(p.x(2), 10.1f, 1e-5);
    for (int i = 1; i <= 3; ++i) EXPECT_NEAR(p.y(i), 100.0f, 1e-3) << i;
    // Each point inside both runs gets both runs' four cells.
    EXPECT_EQ(p.istat(2), 8);
    EXPECT_EQ(p.istat(1), 4);
    // 10.3 lies beyond every cell: zero, variance 1, no contribution.
    EXPECT_FLOAT_EQ(p.y(4), 0.0f);
    EXPECT_FLOAT_EQ(p.sigma(4), 1.0f);
    EXPECT_EQ(p.istat(4), 0);
    EXPECT_FLOAT_EQ(p.monitor, 1000.0f);  // the monitor of the first frame
    EXPECT_EQ(p.title.substr(0, 28), " Numors added from 1 to 2 Ni");

    // To a monitor of 250 every count is a quarter.
    Adding_Numors(list, {true, true}, p, 250.0f);
    EXPECT_NEAR(p.y(2), 25.0f, 1e-4);
    EXPECT_FLOAT_EQ(p.monitor, 250.0f);
}

TEST(AddingNumors, InterpolationBetweenFramesAndCellOffsets) {
    // Counts grow linearly with the angle; the second cell is shifted by a quarter step.
    std::vector<POWDER_NUMOR_TYPE> list = {
        kv7(5, {20.0f, 20.2f, 20.4f}, {1000, 1000, 1000}, 2, [](int, int j) { return 100.0f * j; })};
    CALIBRATION_DETECTOR_TYPE cal;
    cal.pos_offset.resize(2);
    cal.pos_offset(2) = 0.05f;
    DIFFRACTION_PATTERN_TYPE p;
    Adding_Numors(list, {true}, p, std::nullopt, &cal);
    ASSERT_FALSE(ERR_Nrf) << ERR_Nrf_Mess;
    // Grid 20.0 .. 20.45, step 0.2: 20.0, 20.2, 20.4.
    ASSERT_EQ(p.npts, 3);
    // At 20.2 cell 1 sits on frame 2 (200) and cell 2 three quarters of the way from 100 to 200.
    EXPECT_NEAR(p.y(2), (200.0f + 175.0f) / 2.0f, 1e-3);
    EXPECT_EQ(p.istat(2), 2);
    EXPECT_NEAR(p.y(1), 100.0f, 1e-3);  // only cell 1 reaches 20.0
    EXPECT_EQ(p.istat(1), 1);
    EXPECT_NEAR(p.y(3), (300.0f + 275.0f) / 2.0f, 1e-3);
    // Variance: the interpolated variances over n^2.
    EXPECT_NEAR(p.sigma(2), (200.0f + 175.0f) / 4.0f, 1e-3);

    // A cell left out by the calibration contributes nothing.
    cal.active.resize(2, 1);
    cal.active(2) = 0;
    Adding_Numors(list, {true}, p, std::nullopt, &cal);
    EXPECT_EQ(p.istat(2), 1);
    EXPECT_NEAR(p.y(2), 200.0f, 1e-3);
}

TEST(AddingNumors, InterpolationNeedsTwoFrames) {
    std::vector<POWDER_NUMOR_TYPE> list = {kv7(6, {20.0f}, {1000}, 2, [](int, int) { return 1.0f; })};
    DIFFRACTION_PATTERN_TYPE p;
    Adding_Numors(list, {true}, p);
    EXPECT_TRUE(ERR_Nrf);
    EXPECT_EQ(p.npts, 0);
    list = {kv7(6, {20.0f, 20.0f}, {1000, 1000}, 2, [](int, int) { return 1.0f; })};
    Adding_Numors(list, {true}, p);
    EXPECT_TRUE(ERR_Nrf);
}

TEST(AddingNumors, KV9FramesUseTheirFourthRow) {
    POWDER_NUMOR_TYPE n = kv7(8, {0, 0}, {100, 100}, 1, [](int, int j) { return 10.0f * j; });
    n.instrument = "KV9 ";
    n.frame_params(4, 1) = 30.0f;
    n.frame_params(4, 2) = 30.5f;
    DIFFRACTION_PATTERN_TYPE p;
    Adding_Numors({n}, {true}, p);
    ASSERT_FALSE(ERR_Nrf) << ERR_Nrf_Mess;
    ASSERT_EQ(p.npts, 2);
    EXPECT_FLOAT_EQ(p.x(1), 30.0f);
    EXPECT_FLOAT_EQ(p.x(2), 30.5f);
    EXPECT_FLOAT_EQ(p.y(2), 20.0f);
}
