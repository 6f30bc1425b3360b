// The filters after the maxima (background under each peak, doublets), the
// satellites mode, the wavelength table and the files the search leaves.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "peaks/peak_files.h"
#include "peaks/search_points.h"
#include "search_fixture.h"

using namespace hxl;
namespace fs = std::filesystem;

namespace {

const SEARCH_FILE_TYPE kNoFile{"", "", "", false};

// The 2theta whose sin(theta) is `ratio` times that of `p` (degrees).
double Partner(double p, double ratio) {
    const double d = 180.0 / M_PI;
    return 2.0 * d * std::asin(ratio * std::sin(p / 2.0 / d));
}

std::string Slurp(const fs::path& f) {
    std::ifstream in(f);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

}  // namespace

TEST(DoubletFilter, CopperPartnerMergedAtHalfKeptAtPointSevenOne) {
    const float p2 = static_cast<float>(Partner(60.0, 1.0025));
    // Heights above background: 1000 then 500 (ratio 0.5) or 710 (0.71).
    Array1<float> x(3), y(3), b(3);
    auto load = [&](float second) {
        x(1) = 60.0f, y(1) = 1100.0f, b(1) = 100.0f;
        x(2) = p2, y(2) = 100.0f + second, b(2) = 100.0f;
        x(3) = 80.0f, y(3) = 900.0f, b(3) = 100.0f;
    };
    load(500.0f);
    ASSERT_EQ(Doublet_Filter(2, x, y, b, 3), 2);
    EXPECT_FLOAT_EQ(x(1), 60.0f);
    EXPECT_FLOAT_EQ(x(2), 80.0f);
    load(710.0f);
    EXPECT_EQ(Doublet_Filter(2, x, y, b, 3), 3);
    load(500.0f);
    EXPECT_EQ(Doublet_Filter(1, x, y, b, 3), 3);
    EXPECT_EQ(Doublet_Filter(9, x, y, b, 3), 3);
    // The ratio belongs to the type: at 1.0085 Cu (1.0025) keeps the pair, Mo (1.006) merges it.
    x(2) = static_cast<float>(Partner(60.0, 1.0085));
    EXPECT_EQ(Doublet_Filter(2, x, y, b, 3), 3);
    EXPECT_EQ(Doublet_Filter(3, x, y, b, 3), 2);
}

TEST(DoubletFilter, ThroughTheSearchOnACopperPattern) {
    const double p2 = Partner(40.0, 1.0025);
    const auto p = Gauss_Pattern(30, 50, 0.005, {{40.0, 2000, 0.02}, {p2, 1000, 0.02}}, 100.0);
    PKB_TYPE r;
    SEARCH_CONDITIONS_TYPE c;
    ASSERT_EQ(Search_Points(p, 30.0f, 50.0f, " ", c, kNoFile, r), 2) << ERR_Search_Mess;
    EXPECT_NEAR(r.x(2), p2, 0.005);
    c.peak_type = 2;
    ASSERT_EQ(Search_Points(p, 30.0f, 50.0f, " ", c, kNoFile, r), 1);
    EXPECT_NEAR(r.x(1), 40.0, 0.005);
}

TEST(WavelengthTable, TypesAndUnknown) {
    const auto w1 = Peak_Type_Wavelengths(1, 0.4066f);
    EXPECT_FLOAT_EQ(w1.lambda1, 0.4066f);
    EXPECT_FLOAT_EQ(w1.lambda2, 0.4066f);
    EXPECT_FLOAT_EQ(w1.ratio, 1.0f);
    const auto cu = Peak_Type_Wavelengths(2, 0.4f), mo = Peak_Type_Wavelengths(3, 0.4f),
               co = Peak_Type_Wavelengths(4, 0.4f), other = Peak_Type_Wavelengths(7, 0.4f);
    EXPECT_FLOAT_EQ(cu.lambda2, 1.54439f);
    EXPECT_FLOAT_EQ(mo.lambda1, 0.70926f);
    EXPECT_FLOAT_EQ(co.lambda2, 1.79285f);
    EXPECT_FLOAT_EQ(cu.ratio, 0.5f);
    EXPECT_FLOAT_EQ(other.lambda1, 1.54059f);
    EXPECT_FLOAT_EQ(other.lambda2, 1.54059f);
    EXPECT_FLOAT_EQ(other.ratio, 1.0f);
    EXPECT_FLOAT_EQ(Treor_Wavelengths(7, 0.4f).ratio, 0.0f);
    EXPECT_FLOAT_EQ(Treor_Wavelengths(2, 0.4f).ratio, 0.5f);
}

TEST(PeakFilter, APeakBeforeTheFirstBackgroundPointIsDropped) {
    // A falling background puts each zone's lowest point at its right end, so
    // the first background point lies after a peak close to the window start.
    const auto p = Gauss_Pattern(0, 100, 0.01, {{1.5, 3000, 0.1}, {50, 3000, 0.1}}, 500.0, -2.0);
    PKB_TYPE r;
    SEARCH_CONDITIONS_TYPE c;
    ASSERT_EQ(Search_Points(p, 1.0f, 100.0f, " ", c, kNoFile, r), 1) << ERR_Search_Mess;
    EXPECT_NEAR(r.x(1), 50.0, 0.01);
    // From X = 0 the first zone ends before the peak, which then has a background.
    ASSERT_EQ(Search_Points(p, 0.0f, 100.0f, " ", c, kNoFile, r), 2);
    EXPECT_NEAR(r.x(1), 1.5, 0.01);
    EXPECT_NEAR(r.bgr(1), 500.0 - 3.0, 3.0);
}

TEST(PeakFilter, BackgroundAboveAllSignalLeavesNothingAndChangesNothing) {
    // Negative counts are searched like any others; a negative background
    // under every peak removes them all, which is no error and leaves the result.
    const auto p = Gauss_Pattern(10, 40, 0.01, {{20, 50, 0.05}, {30, 50, 0.05}}, -1000.0);
    PKB_TYPE r;
    r.np = 5;
    EXPECT_EQ(Search_Points(p, 10.0f, 40.0f, " ", {}, kNoFile, r), 0);
    EXPECT_FALSE(ERR_Search);
    EXPECT_EQ(r.np, 5);
}

TEST(Satellites, WithoutCalculatedArraysTheObservedAreSearched) {
    auto p = Gauss_Pattern(10, 40, 0.01, {{15, 2000, 0.04}, {25, 900, 0.05}}, 150.0);
    PKB_TYPE peaks, sat;
    ASSERT_EQ(Search_Points(p, 10.0f, 40.0f, " ", {}, kNoFile, peaks), 2);
    p.ycalc.clear();
    p.bgr.clear();
    ASSERT_EQ(Search_Points(p, 10.0f, 40.0f, "satellites", {}, kNoFile, sat), 2);
    EXPECT_EQ(sat.x, peaks.x);
    EXPECT_EQ(sat.y, peaks.y);
    // With a calculated profile that explains the first peak only the second is left.
    p = Gauss_Pattern(10, 40, 0.01, {{15, 2000, 0.04}, {25, 900, 0.05}}, 150.0);
    const auto model = Gauss_Pattern(10, 40, 0.01, {{15, 2000, 0.04}}, 150.0);
    for (int i = 1; i <= p.npts; ++i) {
        p.ycalc(i) = model.y(i);
        p.bgr(i) = 150.0f;
    }
    ASSERT_EQ(Search_Points(p, 10.0f, 40.0f, "satellites", {}, kNoFile, sat), 1);
    EXPECT_NEAR(sat.x(1), 25.0, 0.005);
}

TEST(SearchFiles, PeakAndBackgroundFilesAndAnUnwritableFolder) {
    const fs::path dir = fs::temp_directory_path() / ("zd_search_files_" + std::to_string(::getpid()));
    fs::remove_all(dir);
    fs::create_directories(dir);
    const auto p = Gauss_Pattern(10, 40, 0.01, {{20, 1000, 0.05}}, 100.0);
    const SEARCH_FILE_TYPE file{dir.string(), "x.xy", "XYDATA", true};
    PKB_TYPE r;
    ASSERT_EQ(Search_Points(p, 10.0f, 40.0f, " ", {}, file, r), 1);
    const std::string aps = Slurp(dir / "peak.aps");
    EXPECT_EQ(aps.substr(0, 73), "! Data file : x.xy\n! Format    : XYDATA\n! peak_position   peak_intensity ");
    EXPECT_EQ(std::count(aps.begin(), aps.end(), '\n'), 4);
    const int nb = Search_Points(p, 10.0f, 40.0f, "background", {}, file, r);
    const std::string xy = Slurp(dir / "background.xy");
    EXPECT_EQ(std::count(xy.begin(), xy.end(), '\n'), 3 + nb);
    EXPECT_NE(xy.find("! Position      Background_value\n"), std::string::npos);
    // A folder that does not exist: the text, and the result as it was.
    const SEARCH_FILE_TYPE gone{(dir / "no" / "such").string(), "x.xy", "XYDATA", true};
    r.np = 9;
    EXPECT_EQ(Search_Points(p, 10.0f, 40.0f, " ", {}, gone, r), 0);
    EXPECT_EQ(ERR_Search_Mess, kMsgPeakOpen);
    EXPECT_EQ(Search_Points(p, 10.0f, 40.0f, "background", {}, gone, r), 0);
    EXPECT_EQ(ERR_Search_Mess, kMsgBgrOpen);
    EXPECT_EQ(r.np, 9);
    EXPECT_EQ(Slurp(dir / "peak.aps"), aps);
    fs::remove_all(dir);
}
