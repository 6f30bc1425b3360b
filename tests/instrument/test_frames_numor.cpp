// Frames of a numor of a bank of tubes, and the powder pattern of the run.
#include <gtest/gtest.h>

#include <cmath>

#include "frame_builders.h"
#include "instrument/frame_contours.h"
#include "instrument/frame_image.h"
#include "instrument/nrf_frames.h"
#include "instrument/tube_pattern.h"
#include "temp_dir.h"

using namespace hxl;
using namespace ztest;

TEST(NrfFrames, TubesBecomeColumnsAndStepsFrames) {
    Scratch_Dir d;
    Tube_Run run;
    run.monitor = [](int k) { return 1000.0f + static_cast<float>(k); };
    FRAME_SET_TYPE f;
    std::string msg;
    ASSERT_TRUE(Read_Frames(d.Write("121459", Tube_Numor(run)), f, msg)) << msg;
    EXPECT_EQ(f.format, "NUMOR");
    EXPECT_EQ(f.numor, 121459);
    EXPECT_EQ(f.instrument, "D2B");
    EXPECT_EQ(f.scan_var, "2theta");
    EXPECT_EQ(f.title, "La0.75Ba0.25CoO2.92 test run");
    ASSERT_EQ(f.nx, 5);
    ASSERT_EQ(f.ny, 5);
    ASSERT_EQ(f.n_frames, 3);
    EXPECT_NEAR(f.wavelength, 1.594f, 1e-6);
    // Column = tube, row = pixel along it, frame = step.
    EXPECT_EQ(Frame_Value(f, 1, 1, 1), 1101.0f);
    EXPECT_EQ(Frame_Value(f, 2, 4, 2), 2402.0f);
    EXPECT_EQ(Frame_Value(f, 3, 5, 5), 3505.0f);
    EXPECT_EQ(Frame_Value(f, 3, 2, 5), 3205.0f);
    EXPECT_NEAR(f.angle[1], 20.25f, 1e-4);
    EXPECT_EQ(f.monitor[2], 1003.0f);
    EXPECT_EQ(f.time[0], 37000.0f);
    // A single-crystal run: its scan type after a title of 60 columns.
    run.sxtal_title = true;
    ASSERT_TRUE(Read_Frames(d.Write("sx", Tube_Numor(run)), f, msg)) << msg;
    EXPECT_EQ(f.scan_var, "omega");
    EXPECT_EQ(f.title, "La0.75Ba0.25CoO2.92 test run");
}

TEST(NrfFrames, DamagedRunsAreRefusedOrReadAsFarAsTheyGo) {
    Scratch_Dir d;
    Tube_Run run;
    FRAME_SET_TYPE f;
    std::string msg;
    // A run stopped after two of its three steps: the steps it holds.
    ASSERT_TRUE(Read_Frames(d.Write("a", Tube_Numor(run, 2)), f, msg)) << msg;
    EXPECT_EQ(f.n_frames, 2);
    // The last frame cut short: refused, not padded with zeros.
    EXPECT_FALSE(Read_Frames(d.Write("b", Tube_Numor(run, 3, 1)), f, msg));
    EXPECT_NE(msg.find("step 3"), std::string::npos) << msg;
    EXPECT_EQ(f.n_frames, 0);
    // A detector that is not square needs its number of tubes.
    Tube_Run odd;
    odd.tubes = 4;
    odd.pixels = 6;
    std::string path = d.Write("c", Tube_Numor(odd));
    EXPECT_FALSE(Read_Frames(path, f, msg));
    EXPECT_NE(msg.find("24 cells"), std::string::npos) << msg;
    ASSERT_TRUE(Read_Nrf_Frames(path, f, msg, 4)) << msg;
    EXPECT_EQ(f.ny, 6);
    EXPECT_EQ(Frame_Value(f, 2, 3, 6), 2306.0f);
    // Not a numor at all, and an empty file.
    EXPECT_FALSE(Read_Frames(d.Write("d", "hello\nworld\n"), f, msg));
    EXPECT_NE(msg.find("no image of a known kind"), std::string::npos) << msg;
    EXPECT_FALSE(Read_Frames(d.Write("e", ""), f, msg));
    EXPECT_FALSE(Read_Frames(d.Path() + "missing", f, msg));
    EXPECT_NE(msg.find("Error opening the file"), std::string::npos);
}

TEST(TubePattern, PlacesTubesByTheirAngleAndAveragesOverlaps) {
    Scratch_Dir d;
    Tube_Run run;
    run.steps = 6;  // 0 to 1.25 degrees: the last step of a tube meets the first of the next
    run.first_angle = 30.0f;
    // One sharp line at 2theta = 27.75 in whichever tube sees it; 10 counts a pixel elsewhere.
    run.counts = [](int t, int, int k) {
        double tth = 30.0 + (k - 1) * 0.25 - (5 - t) * 1.25;
        return std::fabs(tth - 27.75) < 1e-6 ? 110 : 10;
    };
    run.monitor = [](int k) { return k == 6 ? 3000.0f : 1000.0f; };
    FRAME_SET_TYPE f;
    std::string msg;
    ASSERT_TRUE(Read_Frames(d.Write("r", Tube_Numor(run)), f, msg)) << msg;
    DIFFRACTION_PATTERN_TYPE p;
    ASSERT_TRUE(Tube_Bank_Pattern(f, TUBE_BANK_TYPE{}, p, msg)) << msg;
    // Tube 1 at 25.0 at the first step, tube 5 at 31.25 at the last: 26 points 0.25 apart.
    ASSERT_EQ(p.npts, 26);
    EXPECT_NEAR(p.x(1), 25.0f, 1e-4);
    EXPECT_NEAR(p.x(26), 31.25f, 1e-4);
    EXPECT_TRUE(p.ct_step);
    EXPECT_NEAR(p.lambda1, 1.594f, 1e-6);
    // The central half of 5 pixels is pixels 2 to 4: 3 pixels summed.
    // The mean monitor is (5 x 1000 + 3000) / 6; a step of monitor 1000 counts 30.
    double mean = 8000.0 / 6.0;
    int line = 1;
    for (int i = 2; i <= p.npts; ++i)
        if (p.y(i) > p.y(line)) line = i;
    EXPECT_NEAR(p.x(line), 27.75f, 1e-4);
    EXPECT_NEAR(p.y(line), 330.0 * mean / 1000.0, 1e-2);
    EXPECT_NEAR(p.sigma(line), 330.0 * std::pow(mean / 1000.0, 2), 1e-2);
    // 26.25: tube 2 at its last step (monitor 3000) with tube 3 at its first (1000):
    // counts 30 + 30 over monitors 4000.
    int overlap = 0;
    for (int i = 1; i <= p.npts; ++i)
        if (std::fabs(p.x(i) - 26.25f) < 1e-4) overlap = i;
    ASSERT_GT(overlap, 0);
    EXPECT_NEAR(p.y(overlap), 60.0 / 4000.0 * mean, 1e-3);
    // Plain points: 30 counts for 1000 monitor.
    EXPECT_NEAR(p.y(2), 30.0 * mean / 1000.0, 1e-3);

    // A band outside the tubes, a reference beyond them, a zero monitor: refused.
    TUBE_BANK_TYPE bad;
    bad.band_first = 4;
    bad.band_last = 9;
    EXPECT_FALSE(Tube_Bank_Pattern(f, bad, p, msg));
    EXPECT_NE(msg.find("1 to 5"), std::string::npos) << msg;
    bad = TUBE_BANK_TYPE{};
    bad.reference_tube = 6;
    EXPECT_FALSE(Tube_Bank_Pattern(f, bad, p, msg));
    f.monitor[3] = 0;
    EXPECT_FALSE(Tube_Bank_Pattern(f, TUBE_BANK_TYPE{}, p, msg));
    EXPECT_NE(msg.find("Step 4"), std::string::npos) << msg;
}

TEST(FrameImage, PercentilesAndScales) {
    FRAME_SET_TYPE f;
    Allocate_Frames(f, 10, 10, 1);
    for (int i = 0; i < 100; ++i) f.counts[static_cast<std::size_t>(i)] = static_cast<float>(i);
    EXPECT_EQ(Frame_Percentile(f, 1, 0), 0.0f);
    EXPECT_EQ(Frame_Percentile(f, 1, 100), 99.0f);
    EXPECT_EQ(Frame_Percentile(f, 1, 50), 50.0f);  // index round(49.5) = 50
    EXPECT_NEAR(Scale_Position(25, 0, 100, Frame_Scale::Sqrt), 0.5f, 1e-6);
    EXPECT_NEAR(Scale_Position(10, 0, 1000, Frame_Scale::Log), std::log1p(10.0) / std::log1p(1000.0), 1e-6);
    EXPECT_EQ(Scale_Position(-5, 0, 100, Frame_Scale::Linear), 0.0f);
    EXPECT_EQ(Scale_Position(500, 0, 100, Frame_Scale::Linear), 1.0f);
    // A flat frame: no division by zero, the low colour.
    EXPECT_EQ(Scale_Position(3, 3, 3, Frame_Scale::Log), 0.0f);
    std::uint8_t lo[3], hi[3];
    Ramp_Colour(0, lo);
    Ramp_Colour(1, hi);
    EXPECT_EQ(lo[0] + lo[1] + lo[2], 0);
    EXPECT_EQ(hi[0] + hi[1] + hi[2], 765);
}

TEST(FrameImage, IsoLinesCrossWhereTheCountsDo) {
    FRAME_SET_TYPE f;
    Allocate_Frames(f, 6, 5, 1);
    // A ramp along x: counts = 10 i; the level 35 lies half-way between pixels 3 and 4,
    // whose centres are at 2.5 and 3.5: a vertical line at x = 3.0 from row 1 to row 5.
    for (int j = 1; j <= 5; ++j)
        for (int i = 1; i <= 6; ++i) f.counts[static_cast<std::size_t>((j - 1) * 6 + i - 1)] = 10.0f * i;
    auto s = Iso_Segments(f, 1, 35, 1, 6, 1, 5);
    ASSERT_EQ(s.size(), 4u);  // one a row of cells
    for (const auto& seg : s) {
        EXPECT_FLOAT_EQ(seg[0], 3.0f);
        EXPECT_FLOAT_EQ(seg[2], 3.0f);
        EXPECT_FLOAT_EQ(std::fabs(seg[3] - seg[1]), 1.0f);
    }
    EXPECT_TRUE(Iso_Segments(f, 1, 500, 1, 6, 1, 5).empty());
    // The zoom limits the cells looked at.
    EXPECT_TRUE(Iso_Segments(f, 1, 35, 4, 6, 1, 5).empty());
    // The level of a scale position inverts the position.
    for (Frame_Scale sc : {Frame_Scale::Linear, Frame_Scale::Log, Frame_Scale::Sqrt})
        EXPECT_NEAR(Scale_Position(Scale_Level(0.3f, 2, 500, sc), 2, 500, sc), 0.3f, 1e-5);
}
