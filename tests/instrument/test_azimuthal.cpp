// Azimuthal integration against the independent sub-pixel integration of
// tests/data/frames/make_rings.py, and the geometries it refuses.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>

#include "instrument/azimuthal.h"
#include "instrument/frame_set.h"
#include "temp_dir.h"

using namespace hxl;

namespace {
const std::string kData = ZD_TEST_DATA "/frames/";
}

TEST(Azimuthal, SyntheticRingsAgreeWithTheNumpyIntegration) {
    FRAME_SET_TYPE img;
    std::string msg, mask;
    ASSERT_TRUE(Read_Frames(kData + "rings.edf", img, msg)) << msg;
    ASSERT_EQ(img.nx, 200);
    ASSERT_EQ(img.ny, 180);
    DETECTOR_GEOMETRY_TYPE g;
    ASSERT_TRUE(Read_Geometry_File(kData + "rings_geometry.json", g, mask, msg)) << msg;
    INTEGRATION_TABLE_TYPE t;
    ASSERT_TRUE(Build_Integration_Table(g, img.nx, img.ny, t, msg)) << msg;
    DIFFRACTION_PATTERN_TYPE p;
    ASSERT_TRUE(Integrate_Image(t, Frame_Data(img, 1), nullptr, g, p, msg)) << msg;
    EXPECT_NEAR(p.step, 0.02f, 1e-7);
    EXPECT_TRUE(p.ct_step);

    std::ifstream ref(kData + "rings_reference.txt");
    std::string line;
    std::getline(ref, line);
    int rings = 0;
    while (std::getline(ref, line)) {
        std::istringstream s(line);
        int k;
        double truth, centroid, area;
        ASSERT_TRUE(s >> k >> truth >> centroid >> area);
        double sw = 0, swx = 0;
        for (int i = 1; i <= p.npts; ++i)
            if (std::fabs(p.x(i) - truth) < 0.6) {
                double y = p.y(i) - 20.0;  // the script's flat background
                sw += y;
                swx += y * p.x(i);
            }
        EXPECT_NEAR(swx / sw, centroid, 0.01) << "ring " << k;
        EXPECT_NEAR(sw * 0.02, area, 0.01 * area) << "ring " << k;
        ++rings;
    }
    EXPECT_EQ(rings, 4);
    // Counting statistics: far from the rings sigma^2 ~ counts over the pixels' share.
    for (int i = 1; i <= p.npts; ++i) EXPECT_GT(p.sigma(i), 0.0f);
}

TEST(Azimuthal, MaskKeepsTheLevelAndBadGeometriesAreRefused) {
    DETECTOR_GEOMETRY_TYPE g;
    g.distance = 100;
    g.beam_x = 32;
    g.beam_y = 20;
    g.pixel_x = g.pixel_y = 0.5f;
    g.wavelength = 1;
    g.bin = 0.1f;
    g.solid_angle = false;
    INTEGRATION_TABLE_TYPE t;
    std::string msg;
    ASSERT_TRUE(Build_Integration_Table(g, 64, 40, t, msg)) << msg;
    // Every pixel's area is shared out whole.
    for (std::size_t p = 0; p + 1 < t.first.size(); ++p) {
        double sum = 0;
        for (long long e = t.first[p]; e < t.first[p + 1]; ++e) sum += t.weight[static_cast<std::size_t>(e)];
        ASSERT_NEAR(sum, 1.0, 1e-5) << p;
    }
    std::vector<float> flat(64 * 40, 50.0f);
    std::vector<unsigned char> mask(flat.size(), 0);
    for (std::size_t i = 0; i < mask.size(); i += 3) mask[i] = 1;
    flat[100] = -1;  // a gap of a counting detector
    DIFFRACTION_PATTERN_TYPE p;
    ASSERT_TRUE(Integrate_Image(t, flat.data(), &mask, g, p, msg)) << msg;
    for (int i = 1; i <= p.npts; ++i) ASSERT_NEAR(p.y(i), 50.0f, 1e-3) << p.x(i);
    std::fill(mask.begin(), mask.end(), 1);
    EXPECT_FALSE(Integrate_Image(t, flat.data(), &mask, g, p, msg));
    EXPECT_NE(msg.find("No pixel"), std::string::npos);

    // 2theta at a corner worked by hand: (32 px, 20 px) * 0.5 mm from the beam at 100 mm.
    double tth, az;
    Pixel_Angles(g, 0, 0, tth, az);
    EXPECT_NEAR(tth, std::atan(std::hypot(16.0, 10.0) / 100.0) * 180 / M_PI, 1e-9);
    EXPECT_NEAR(az, std::atan2(-10.0, -16.0) * 180 / M_PI, 1e-9);

    DETECTOR_GEOMETRY_TYPE far = g;
    far.beam_x = 5000;
    EXPECT_FALSE(Build_Integration_Table(far, 64, 40, t, msg));
    EXPECT_NE(msg.find("far off the detector"), std::string::npos) << msg;
    DETECTOR_GEOMETRY_TYPE zero = g;
    zero.distance = 0;
    EXPECT_FALSE(Build_Integration_Table(zero, 64, 40, t, msg));
    EXPECT_FALSE(Build_Integration_Table(g, 0, 0, t, msg));
    EXPECT_FALSE(Build_Integration_Table(g, 20000, 20000, t, msg));
    EXPECT_NE(msg.find("larger than"), std::string::npos) << msg;
}

TEST(Azimuthal, GeometryFilesAreCheckedKeyByKey) {
    ztest::Scratch_Dir d;
    DETECTOR_GEOMETRY_TYPE g;
    std::string mask, msg;
    std::string good = R"({"distance_mm": 150, "beam_x_px": 10.5, "beam_y_px": 11, "pixel_mm": 0.172,
        "wavelength": 0.7, "polarisation": 0.95, "solid_angle": false, "mask": "m.edf"})";
    ASSERT_TRUE(Read_Geometry_File(d.Write("g.json", good), g, mask, msg)) << msg;
    EXPECT_EQ(g.distance, 150.0f);
    EXPECT_EQ(g.pixel_y, 0.172f);
    EXPECT_TRUE(g.correct_polarisation);
    EXPECT_FALSE(g.solid_angle);
    EXPECT_EQ(mask, d.Path() + "m.edf");
    for (const auto& [text, words] : std::vector<std::pair<std::string, std::string>>{
             {R"({"distance_mm": 150})", "lacks"},
             {R"({"distance_mm": "far", "beam_x_px": 1, "beam_y_px": 1, "pixel_mm": 1, "wavelength": 1})", "bad value"},
             {R"({"distance_mm": 1, "distance_mm": 2})", "twice"},
             {R"({"distanse_mm": 150})", "unknown key"},
             {R"({"a": {"b": 1}})", "must be a number"},
             {R"([1, 2])", "'{'"},
             {R"({"distance_mm": 150 "beam_x_px": 1})", "',' or '}'"}}) {
        EXPECT_FALSE(Read_Geometry_File(d.Write("b.json", text), g, mask, msg)) << text;
        EXPECT_NE(msg.find(words), std::string::npos) << msg;
    }
    EXPECT_EQ(g.distance, 150.0f);  // untouched by the refusals
}
