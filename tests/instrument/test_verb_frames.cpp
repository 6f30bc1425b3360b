// zendrite-batch frames and integrate, run as the program runs them.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "app/batch/batch_verbs.h"
#include "frame_builders.h"
#include "temp_dir.h"

using namespace ztest;

namespace {
std::string slurp(const std::string& path) {
    std::ifstream f(path, std::ios::binary);
    std::stringstream s;
    s << f.rdbuf();
    return s.str();
}
int run(std::vector<std::string> args, std::string& err) {
    std::ostringstream o, e;
    int rc = zendrite::Batch_Main(args, o, e);
    err = e.str();
    return rc;
}
}  // namespace

TEST(VerbFrames, PictureAndPatternOfANumor) {
    Scratch_Dir d;
    Tube_Run r;
    r.steps = 6;
    std::string numor = d.Write("121459", Tube_Numor(r));
    std::string err;
    ASSERT_EQ(run({"frames", numor, "--frame", "all", "--scale", "sqrt", "--out", d.Path() + "all.png"}, err), 0) << err;
    std::string png = slurp(d.Path() + "all.png");
    ASSERT_GT(png.size(), 24u);
    EXPECT_EQ(png.substr(1, 3), "PNG");
    // Five frames a row, two rows: width 5 x (5 x 51) + 4 gaps of 4 pixels, from the PNG head.
    auto be32 = [&](std::size_t at) {
        return (static_cast<unsigned char>(png[at]) << 24) | (static_cast<unsigned char>(png[at + 1]) << 16) |
               (static_cast<unsigned char>(png[at + 2]) << 8) | static_cast<unsigned char>(png[at + 3]);
    };
    EXPECT_EQ(be32(16), 5 * 255 + 4 * 4);
    EXPECT_EQ(be32(20), 2 * 255 + 4);

    ASSERT_EQ(run({"frames", numor, "--pattern", "--out", d.Path() + "run.xye"}, err), 0) << err;
    std::istringstream xye(slurp(d.Path() + "run.xye"));
    std::string line;
    int points = 0;
    double first = 0;
    while (std::getline(xye, line)) {
        if (line.empty() || line[0] == '#') continue;
        double x, y, s;
        ASSERT_TRUE(std::istringstream(line) >> x >> y >> s) << line;
        if (points++ == 0) first = x;
    }
    EXPECT_EQ(points, 26);            // 15 .. 21.25 by 0.25
    EXPECT_NEAR(first, 15.0, 1e-4);   // tube 1 at 20 - 4 x 1.25

    // Refusals: status 1 with the reason; a frame that is not there; a bad file.
    EXPECT_EQ(run({"frames", numor, "--frame", "7", "--out", d.Path() + "x.png"}, err), 1);
    EXPECT_NE(err.find("not among the 6 frames"), std::string::npos) << err;
    EXPECT_EQ(run({"frames", d.Write("bad.edf", "{ Dim_1 = 2 ;"), "--out", d.Path() + "x.png"}, err), 1);
    EXPECT_NE(err.find("does not end"), std::string::npos) << err;
    EXPECT_FALSE(std::filesystem::exists(d.Path() + "x.png"));
    EXPECT_EQ(run({"frames", numor, "--scale", "cubic", "--out", "x.png"}, err), 2);
}

TEST(VerbIntegrate, RingsImageAndItsRefusals) {
    Scratch_Dir d;
    const std::string data = ZD_TEST_DATA "/frames/";
    std::string err;
    ASSERT_EQ(run({"integrate", data + "rings.edf", "--geometry", data + "rings_geometry.json", "--out",
                   d.Path() + "rings.xye"},
                  err),
              0)
        << err;
    std::istringstream xye(slurp(d.Path() + "rings.xye"));
    std::string line;
    double best_x = 0, best_y = 0;
    while (std::getline(xye, line)) {
        if (line[0] == '#') continue;
        double x, y, s;
        std::istringstream(line) >> x >> y >> s;
        if (y > best_y) best_x = x, best_y = y;
    }
    EXPECT_NEAR(best_x, 9.0, 0.02);  // the strongest ring of the script
    std::string far = d.Write("far.json", R"({"distance_mm": 45, "beam_x_px": 90000, "beam_y_px": 10,
        "pixel_mm": 0.2, "wavelength": 1})");
    EXPECT_EQ(run({"integrate", data + "rings.edf", "--geometry", far, "--out", d.Path() + "far.xye"}, err), 1);
    EXPECT_NE(err.find("far off the detector"), std::string::npos) << err;
    std::string small_mask = d.Write("mask.edf", "{\nDim_1 = 2 ;\nDim_2 = 2 ;\nDataType = UnsignedByte ;\n}\n" + std::string(4, '\0'));
    EXPECT_EQ(run({"integrate", data + "rings.edf", "--geometry", data + "rings_geometry.json", "--mask", small_mask,
                   "--out", d.Path() + "m.xye"},
                  err),
              1);
    EXPECT_NE(err.find("not the size of the image"), std::string::npos) << err;
    EXPECT_FALSE(std::filesystem::exists(d.Path() + "m.xye"));
}
