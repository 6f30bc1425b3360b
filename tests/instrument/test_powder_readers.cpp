// The five powder readers and their dispatcher, on numors built in the
// instruments' block layouts and on a cut of a real run.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "instrument/adding_numors.h"
#include "instrument/nrf_blocks.h"
#include "instrument/powder_numor.h"
#include "instrument/sxtal_numor.h"
#include "powder_builders.h"
#include "temp_dir.h"

using namespace hxl;
using namespace ztest;

namespace {

std::vector<Frame> frames3() { return {{1000, 10.0f, 20.0f}, {2000, 20.0f, 20.1f}, {1000, 10.0f, 20.2f}}; }

std::string read_file(const std::string& path) {
    std::ifstream f(path, std::ios::binary);
    std::stringstream s;
    s << f.rdbuf();
    return s.str();
}

}  // namespace

TEST(PowderReaders, KV7FramesWithTheFixedStride) {
    Scratch_Dir d;
    std::string p = d.Write("012345", KV7_Numor(12345, frames3(), [](int k, int j) { return 100 * j + k; }));
    POWDER_NUMOR_TYPE n;
    Read_Powder_Numor(p, "kv7", n);
    ASSERT_FALSE(ERR_Nrf) << ERR_Nrf_Mess;
    EXPECT_EQ(n.numor, 12345);
    EXPECT_EQ(n.instrument, "KV7 ");
    EXPECT_EQ(n.header, "lambert      21-Nov-26 10:00:00");
    EXPECT_EQ(n.title, "Nickel powder at room temperatur");  // 32 characters
    EXPECT_EQ(n.scan_type, "2theta  ");
    EXPECT_EQ(n.principal_angle, 1);
    EXPECT_EQ(n.n_angles, 2);
    EXPECT_EQ(n.n_frames, 3);
    EXPECT_EQ(n.n_pixels, 25);
    EXPECT_FLOAT_EQ(n.wavelength, 2.52f);
    EXPECT_FLOAT_EQ(n.sample_env[2], 299.5f);
    EXPECT_FLOAT_EQ(n.sample_env[4], 0.25f);
    ASSERT_EQ(n.counts.rows(), 25);
    ASSERT_EQ(n.counts.cols(), 3);
    EXPECT_FLOAT_EQ(n.counts(1, 1), 101.0f);
    EXPECT_FLOAT_EQ(n.counts(25, 3), 325.0f);
    EXPECT_FLOAT_EQ(n.frame_params(1, 2), 20.0f);   // time
    EXPECT_FLOAT_EQ(n.frame_params(2, 2), 2000.0f);  // monitor
    EXPECT_FLOAT_EQ(n.frame_params(3, 3), 20.2f);   // angle
    EXPECT_FLOAT_EQ(n.time, 40.0f);
    EXPECT_FLOAT_EQ(n.monitor, 4000.0f / 3.0f);

    // Header only: the head without the counts.
    Read_Powder_Numor(p, "KV7", n, true);
    EXPECT_FALSE(ERR_Nrf);
    EXPECT_EQ(n.n_frames, 3);
    EXPECT_TRUE(n.counts.empty());
    EXPECT_FALSE(nrf_header_only);
}

TEST(PowderReaders, KV7Refusals) {
    Scratch_Dir d;
    POWDER_NUMOR_TYPE n;
    // Another instrument's name in the first A block.
    Read_Powder_Numor(d.Write("a", KV7_Numor(1, frames3(), [](int, int) { return 1; }, 2.5f, "KV9")), "KV7", n);
    EXPECT_EQ(ERR_Nrf_Mess, "This numor does not correspond with KV7 Format");
    // A block pattern of another layout.
    std::string text = KV7_Numor(1, frames3(), [](int, int) { return 1; }) + Numor_Builder().F({1}).Text();
    Read_Powder_Numor(d.Write("b", text), "KV7", n);
    EXPECT_EQ(ERR_Nrf_Mess, "This numor does not correspond with KV7 Format");
    // Counts that disagree with the header.
    text = KV7_Numor(1, frames3(), [](int, int) { return 1; }, 2.5f, "KV7", 4);
    Read_Powder_Numor(d.Write("c", text), "KV7", n);
    EXPECT_EQ(ERR_Nrf_Mess, "Counts problems in Numor format for KV7 Instrument");
    // An empty file.
    std::string empty = d.Write("d", "");
    Read_Powder_Numor(empty, "KV7", n);
    EXPECT_EQ(ERR_Nrf_Mess, " Problems trying to read the Numor for KV7 Instrument in file " + empty);
}

TEST(PowderReaders, KV7EmptyCountBlockEndsQuietly) {
    Scratch_Dir d;
    std::string text = KV7_Numor(9, {}, [](int, int) { return 0; });
    POWDER_NUMOR_TYPE n;
    Read_Powder_Numor(d.Write("e", text), "KV7", n);
    EXPECT_FALSE(ERR_Nrf) << ERR_Nrf_Mess;
    EXPECT_EQ(n.numor, 9);
    EXPECT_EQ(n.n_frames, 0);
}

TEST(PowderReaders, KV8ThreeLayoutsAndTheStepRule) {
    Scratch_Dir d;
    POWDER_NUMOR_TYPE n;
    Read_Powder_Numor(d.Write("l1", KV8_Layout1(102576, {5, 6, 7, 8}, 10.0f)), "KV8", n);
    ASSERT_FALSE(ERR_Nrf) << ERR_Nrf_Mess;
    EXPECT_EQ(n.principal_angle, 3);
    EXPECT_EQ(n.calc_angle_type, 2);
    EXPECT_EQ(n.int_desc[0], 11);
    EXPECT_EQ(n.int_desc[6], 17);
    EXPECT_EQ(n.n_frames, 1);
    EXPECT_EQ(n.n_pixels, 4);
    EXPECT_FLOAT_EQ(n.scan_values[0], 10.0f);
    EXPECT_FLOAT_EQ(n.scan_values[1], 0.2f);
    EXPECT_FLOAT_EQ(n.time, 60.0f);
    EXPECT_FLOAT_EQ(n.monitor, 10000.0f);
    EXPECT_FLOAT_EQ(n.frame_params(3, 1), 12345.0f);
    EXPECT_FLOAT_EQ(n.frame_params(4, 1), 10.0f);
    EXPECT_FLOAT_EQ(n.counts(4, 1), 8.0f);
    EXPECT_FLOAT_EQ(n.sample_env[4], 0.5f);
    Read_Powder_Numor(d.Write("l1b", KV8_Layout1(102577, {5, 6, 7, 8}, 10.0f)), "KV8", n);
    EXPECT_FLOAT_EQ(n.scan_values[1], 0.1f);

    // Second layout: one F block, the counts behind monitor, time and start in I block 2.
    Numor_Builder b2;
    b2.R(4711).A("KV8 x").A("t").S().I(Values<int>(31, {{8, 6}})).F(Values<float>(50, {{18, 1.3f}, {47, 7.0f}}))
        .I({500, 30000, 15500, 9, 8, 7});
    Read_Powder_Numor(d.Write("l2", b2.Text()), "KV8", n);
    ASSERT_FALSE(ERR_Nrf) << ERR_Nrf_Mess;
    EXPECT_EQ(n.int_desc[0], 6);
    EXPECT_EQ(n.n_pixels, 3);
    EXPECT_FLOAT_EQ(n.monitor, 500.0f);
    EXPECT_FLOAT_EQ(n.time, 30.0f);
    EXPECT_FLOAT_EQ(n.scan_values[0], 15.5f);
    EXPECT_FLOAT_EQ(n.sample_env[1], 7.0f);
    EXPECT_FLOAT_EQ(n.counts(3, 1), 7.0f);

    // Third layout: two F blocks, the counts in the second.
    Numor_Builder b3;
    b3.R(4712).A("KV8 x").A("t").S().I(Values<int>(31, {{8, 2}}))
        .F(Values<float>(50, {{1, 800.0f}, {2, 45.0f}, {3, 5.5f}, {15, 1.0f}, {17, 3.0f}, {18, 1.25f}}))
        .F({1.5f, 2.5f, 3.5f, 4.5f, 5.5f, 6.5f});
    Read_Powder_Numor(d.Write("l3", b3.Text()), "KV8", n);
    ASSERT_FALSE(ERR_Nrf) << ERR_Nrf_Mess;
    EXPECT_EQ(n.n_pixels, 6);
    EXPECT_FLOAT_EQ(n.monitor, 800.0f);
    EXPECT_FLOAT_EQ(n.time, 45.0f);
    EXPECT_FLOAT_EQ(n.scan_values[0], 5.5f);
    EXPECT_FLOAT_EQ(n.sample_env[2], 3.0f);
    EXPECT_FLOAT_EQ(n.wavelength, 1.25f);
    EXPECT_FLOAT_EQ(n.counts(6, 1), 6.5f);

    // No layout matches: refused.
    b3.F({1});
    Read_Powder_Numor(d.Write("l4", b3.Text()), "KV8", n);
    EXPECT_EQ(ERR_Nrf_Mess, "This numor does not correspond with KV8 Format");
}

TEST(PowderReaders, KV8CountProblemsNameTheNumor) {
    Scratch_Dir d;
    POWDER_NUMOR_TYPE n;
    // The header announces five cells, the I block holds four.
    Numor_Builder b;
    b.R(4711).A("KV8 x").A("t").S().I(Values<int>(31, {{24, 5}})).F(Values<float>(50, {})).F({1, 2}).I({1, 2, 3, 4});
    Read_Powder_Numor(d.Write("y", b.Text()), "KV8", n);
    EXPECT_EQ(ERR_Nrf_Mess, "Problem reading Counts in Numor: 4711");
    Numor_Builder c;
    c.R(123456).A("KV8 x").A("t").S().I(Values<int>(31, {{24, 1}})).F(Values<float>(50, {})).F({}).I({1});
    Read_Powder_Numor(d.Write("z", c.Text()), "KV8", n);
    // Six digits do not fit the five columns of the message's field.
    EXPECT_EQ(ERR_Nrf_Mess, "Problem reading Time, Monitor, Counts, Angles parameters in Numor:*****");
}

TEST(PowderReaders, KV9FramesEndingEarly) {
    Scratch_Dir d;
    std::vector<Frame> f = {{1000, 30.0f, 10.0f}, {3000, 31.0f, 10.05f}};
    std::string p = d.Write("kv9", KV9_Numor(777, 4, f, 6, [](int k, int j) { return 10 * j + k; }));
    POWDER_NUMOR_TYPE n;
    Read_Powder_Numor(p, "KV9", n);
    ASSERT_FALSE(ERR_Nrf) << ERR_Nrf_Mess;
    EXPECT_EQ(n.n_frames, 4);
    EXPECT_EQ(n.n_angles, 1);
    EXPECT_EQ(n.calc_angle_type, 4);
    EXPECT_EQ(n.int_desc[0], 7);
    EXPECT_FLOAT_EQ(n.scan_values[1], 0.05f);
    EXPECT_FLOAT_EQ(n.scan_values[2], 1.2f);
    EXPECT_FLOAT_EQ(n.wavelength, 1.594f);
    ASSERT_EQ(n.counts.cols(), 4);
    EXPECT_FLOAT_EQ(n.counts(6, 2), 26.0f);
    EXPECT_FLOAT_EQ(n.counts(1, 3), 0.0f);  // frames never reached stay zero
    EXPECT_FLOAT_EQ(n.frame_params(4, 2), 10.05f);
    EXPECT_FLOAT_EQ(n.time, 61.0f);
    EXPECT_FLOAT_EQ(n.monitor, 2000.0f);  // mean over the two frames reached

    // A frame F block with the wrong number of values stops the read.
    Numor_Builder b;
    b.R(5).A("KV9 x").A("t").I(Values<int>(31, {{5, 1}, {7, 2}, {24, 1}})).F(Values<float>(50, {}));
    b.S().F({1, 2, 3, 4}).I({9}).S().F({1, 2}).I({9});
    Read_Powder_Numor(d.Write("bad", b.Text()), "KV9", n);
    EXPECT_EQ(ERR_Nrf_Mess, "Problem reading Time, Monitor, Counts, Angles parameters in Frame: 2, Numor:5");
    EXPECT_FLOAT_EQ(n.counts(1, 1), 9.0f);
    Numor_Builder c;
    c.R(5).A("KV9 x").A("t").I(Values<int>(31, {{5, 1}, {7, 1}, {24, 2}})).F(Values<float>(50, {}));
    c.S().F({1, 2, 3, 4}).I({9});
    Read_Powder_Numor(d.Write("bad2", c.Text()), "KV9", n);
    EXPECT_EQ(ERR_Nrf_Mess, "Problem reading Counts in Frame: 1");
}

TEST(PowderReaders, RealRunCutAsKV9) {
    const std::string real = std::string(ZD_TEST_DATA) + "/instrument/numor_121459_2frames.txt";
    POWDER_NUMOR_TYPE n;
    // The run names its own instrument, so the KV9 test refuses it ...
    Read_Powder_Numor(real, "KV9", n);
    EXPECT_EQ(ERR_Nrf_Mess, "This numor does not correspond to KV9 Format");
    // ... and with the name changed the layout reads as KV9: 25 frames declared, 2 present.
    std::string text = read_file(real);
    ASSERT_EQ(text.substr(405, 4), "D2B ");
    text.replace(405, 3, "KV9");
    Scratch_Dir d;
    Read_Powder_Numor(d.Write("121459", text), "KV9", n);
    ASSERT_FALSE(ERR_Nrf) << ERR_Nrf_Mess;
    EXPECT_EQ(n.numor, 121459);
    EXPECT_EQ(n.header, "suard nass   26-Jun-13 21:19:49");
    EXPECT_EQ(n.title, "La0.75Ba0.25CoO2.92 full flux sl");
    EXPECT_EQ(n.n_frames, 25);
    EXPECT_EQ(n.n_pixels, 16384);
    EXPECT_EQ(n.n_angles, 3);
    EXPECT_FLOAT_EQ(n.wavelength, 1.59f);
    EXPECT_FLOAT_EQ(n.scan_values[0], 152.5f);
    EXPECT_FLOAT_EQ(n.scan_values[1], 0.05f);
    EXPECT_FLOAT_EQ(n.sample_env[0], 152.49f);
    EXPECT_FLOAT_EQ(n.frame_params(4, 1), 152.503f);
    EXPECT_FLOAT_EQ(n.frame_params(4, 2), 152.553f);
    EXPECT_FLOAT_EQ(n.frame_params(3, 1), 28204.0f);
    EXPECT_NEAR(n.time, 37.144 + 37.032, 1e-3);
    EXPECT_FLOAT_EQ(n.monitor, 100000.0f);
    EXPECT_FLOAT_EQ(n.counts(27, 1), 3.0f);
    EXPECT_FLOAT_EQ(n.counts(1, 3), 0.0f);
    // The run's own total of each frame is the sum of the cells read.
    for (int j = 1; j <= 2; ++j) {
        double sum = 0;
        for (int k = 1; k <= n.n_pixels; ++k) sum += n.counts(k, j);
        EXPECT_DOUBLE_EQ(sum, n.frame_params(3, j)) << j;
    }
    // All cells at the frame angle: two points, each the mean cell count.
    DIFFRACTION_PATTERN_TYPE p;
    Adding_Numors({n}, {true}, p);
    ASSERT_FALSE(ERR_Nrf) << ERR_Nrf_Mess;
    ASSERT_EQ(p.npts, 2);
    EXPECT_FLOAT_EQ(p.x(1), 152.503f);
    EXPECT_NEAR(p.step, 0.05f, 1e-5);
    EXPECT_NEAR(p.y(1), 28204.0 / 16384.0, 1e-5);
    EXPECT_NEAR(p.y(2), 28697.0 / 16384.0, 1e-5);
    EXPECT_EQ(p.istat(1), 16384);
}

TEST(PowderReaders, KW1BanksAndRunOnRows) {
    std::vector<float> f1(40);
    for (int i = 1; i <= 40; ++i) f1[static_cast<std::size_t>(i - 1)] = static_cast<float>(i);
    Numor_Builder b;
    b.R(321).A("KW1 smith     03-Mar-21 09:00:00").A("Title       : Liquid argon     Subtitle : 90 K");
    b.F(f1).F({4.0f, 5.0f, 6.0f});
    for (int j = 1; j <= 9; ++j) {
        std::vector<int> c(64);
        for (int k = 1; k <= 64; ++k) c[static_cast<std::size_t>(k - 1)] = 1000 * j + k;
        b.I(c);
    }
    Scratch_Dir d;
    POWDER_NUMOR_TYPE n;
    Read_Powder_Numor(d.Write("kw1", b.Text()), "KW1", n);
    ASSERT_FALSE(ERR_Nrf) << ERR_Nrf_Mess;
    EXPECT_EQ(n.title, "Liquid argon");
    EXPECT_EQ(n.scan_type, "2Theta  ");
    EXPECT_EQ(n.n_frames, 9);
    EXPECT_EQ(n.n_pixels, 64);
    EXPECT_FLOAT_EQ(n.wavelength, 5.0f);
    EXPECT_FLOAT_EQ(n.monitor, 1.0f);
    EXPECT_FLOAT_EQ(n.time, 2.0f);
    EXPECT_FLOAT_EQ(n.scan_values[0], 12.0f);
    EXPECT_FLOAT_EQ(n.sample_env[0], 6.0f);
    EXPECT_FLOAT_EQ(n.sample_env[2], 4.0f);
    EXPECT_FLOAT_EQ(n.frame_params(3, 1), 11.0f);
    EXPECT_FLOAT_EQ(n.frame_params(9, 1), 37.0f);
    EXPECT_FLOAT_EQ(n.frame_params(1, 2), 38.0f);  // rows 10 and 11 ran on into the second column
    EXPECT_FLOAT_EQ(n.frame_params(3, 2), 40.0f);
    EXPECT_FLOAT_EQ(n.counts(64, 9), 9064.0f);

    // Eight banks only.
    std::string text = b.Text();
    text = text.substr(0, text.rfind("IIIIIIIIII"));
    Read_Powder_Numor(d.Write("kw1b", text), "KW1", n);
    EXPECT_EQ(ERR_Nrf_Mess, "Problem reading Counts for Detector 9 for KW1 Instrument");
}

TEST(PowderReaders, KW2TitleAndJBlock) {
    Numor_Builder b;
    b.R(9000).A("KW2 jones     04-Apr-22 11:11:11").A_Lines(
        {"Title : Silicon calib  Local contact: Y", "SAMPLE             : Si640c Experimentalist: Z"});
    b.S();
    b.F(Values<float>(4, {{4, 1.594f}})).F({0}).F({0}).F({0});
    b.F(Values<float>(52, {{51, 2e6f}, {52, 600.0f}}));
    b.F(Values<float>(5, {{2, 1.5f}, {3, 2.5f}, {4, 3.5f}, {5, 0.05f}}));
    std::vector<int> c(1600);
    for (int k = 1; k <= 1600; ++k) c[static_cast<std::size_t>(k - 1)] = k * 1000;
    b.J(c);
    Scratch_Dir d;
    POWDER_NUMOR_TYPE n;
    std::string path = d.Write("kw2", b.Text());
    Read_Powder_Numor(path, "KW2", n);
    ASSERT_FALSE(ERR_Nrf) << ERR_Nrf_Mess;
    EXPECT_EQ(n.title, "Si640c--Silicon calib");
    EXPECT_FLOAT_EQ(n.wavelength, 1.594f);
    EXPECT_FLOAT_EQ(n.monitor, 2e6f);
    EXPECT_FLOAT_EQ(n.time, 600.0f);
    EXPECT_FLOAT_EQ(n.sample_env[0], 1.5f);
    EXPECT_FLOAT_EQ(n.sample_env[2], 3.5f);
    EXPECT_FLOAT_EQ(n.scan_values[0], 0.05f);
    EXPECT_EQ(n.n_pixels, 1600);
    EXPECT_FLOAT_EQ(n.scan_values[1], 0.1f);
    EXPECT_FLOAT_EQ(n.counts(1600, 1), 1.6e6f);

    // An empty J block: no cells, and no step.
    Numor_Builder e;
    e.R(9001).A("KW2 x").A("t").S().F({0}).F({0}).F({0}).F({0}).F({0}).F({0}).J({});
    Read_Powder_Numor(d.Write("kw2e", e.Text()), "KW2", n);
    EXPECT_FALSE(ERR_Nrf) << ERR_Nrf_Mess;
    EXPECT_EQ(n.n_pixels, 0);
    EXPECT_FLOAT_EQ(n.scan_values[1], 0.0f);

    // A KV8 file read as KW2 names the file in the refusal.
    std::string kv8 = d.Write("kv8", KV8_Layout1(1, {1}, 1.0f));
    Read_Powder_Numor(kv8, "KW2", n);
    EXPECT_EQ(ERR_Nrf_Mess, "This numor: " + kv8 + " does not correspond with KW2 Format");
}

TEST(PowderReaders, DispatchMessages) {
    POWDER_NUMOR_TYPE n;
    n.numor = 5;
    Read_Powder_Numor("/data/012345.Z", "KV8", n);
    EXPECT_EQ(ERR_Nrf_Mess, " Numor file is compressed. Please uncompress the numor before to use this routine");
    EXPECT_EQ(n.numor, 0);
    Read_Powder_Numor("/data/012345", "D1Z", n);
    EXPECT_EQ(ERR_Nrf_Mess, " Not Implemented for the Powder Instrument name: D1Z");
    Read_Powder_Numor("", "KV8", n);
    EXPECT_FALSE(ERR_Nrf);
    Read_Powder_Numor("/nonexistent/dir/000001", "kw2", n);
    EXPECT_EQ(ERR_Nrf_Mess, " Problems trying to read the numor for KW2 Instrument in file /nonexistent/dir/000001");

    SXTAL_NUMOR_TYPE s;
    Read_Sxtal_Numor("/x/1.Z", "KS1", s);
    EXPECT_EQ(ERR_Nrf_Mess, " Numor file is compressed. Please uncompress the numor before to use this routine");
    Read_Sxtal_Numor("/x/1", "KX9", s);
    EXPECT_EQ(ERR_Nrf_Mess, " Not Implemented for the SXTAL Instrument name: KX9");
}

TEST(PowderReaders, SingleCrystalHead) {
    std::string a2 = "Mn3Si2Te6 at 2 K";
    a2.resize(60, ' ');
    Numor_Builder b;
    b.R(42).A("KS2 lee       05-May-23 05:05:05").A(a2 + "omega   ");
    b.I(Values<int>(31, {{5, 4}, {7, 31}, {24, 65536}}));
    b.F(Values<float>(50, {{1, -1.0f}, {5, 45.0f}, {9, 0.1f}, {18, 0.84f}, {36, 5.0f}, {39, 3000.0f}}));
    Scratch_Dir d;
    std::string p = d.Write("ks2", b.Text());
    SXTAL_NUMOR_TYPE s;
    Read_Sxtal_Numor(p, "KS2", s);
    ASSERT_FALSE(ERR_Nrf) << ERR_Nrf_Mess;
    EXPECT_EQ(s.numor, 42);
    EXPECT_EQ(s.title.substr(0, 16), "Mn3Si2Te6 at 2 K");
    EXPECT_EQ(s.scan_type, "omega   ");
    EXPECT_EQ(s.n_frames, 31);
    EXPECT_EQ(s.n_pixels, 65536);
    EXPECT_FLOAT_EQ(s.hmin[0], -1.0f);
    EXPECT_FLOAT_EQ(s.angles[1], 45.0f);
    EXPECT_FLOAT_EQ(s.ub[0], 0.1f);
    EXPECT_FLOAT_EQ(s.wavelength, 0.84f);
    EXPECT_FLOAT_EQ(s.preset, 3000.0f);
    Read_Sxtal_Numor(p, "KS5", s);
    EXPECT_EQ(ERR_Nrf_Mess, "This numor does not match with KS5 Format");
    Read_Sxtal_Numor(p, "KS4", s);
    EXPECT_EQ(ERR_Nrf_Mess, "This numor does not correspond with KS4 Format");
    // A blank scan type becomes the q-scan.
    Numor_Builder c;
    c.R(43).A("KS1 lee").A("short title");
    Read_Sxtal_Numor(d.Write("ks1", c.Text()), "KS1", s);
    EXPECT_EQ(s.scan_type, "q-scan  ");
}
