// Every committed sample file read by its reader, checked against the
// independent reader xyconv (values in xyconv_reference.txt, see
// tests/tools/xyconv_reference.sh) or, where it has no reader for the
// format, against values taken by hand from the file.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>
#include <vector>

#include "patterns/read_pattern.h"
#include "support/fixed_text.h"
#include "test_files.h"

using namespace hxl;
using zdtest::Sample;

namespace {

double rel(double v) { return 1e-5 * std::fabs(v) + 1e-5; }

DIFFRACTION_PATTERN_TYPE read(const std::string& file, const std::string& mode) {
    DIFFRACTION_PATTERN_TYPE p;
    Read_Pattern(Sample(file), p, mode);
    EXPECT_FALSE(ERR_Pattern) << file << ERR_Pattern_Mess;
    return p;
}

}  // namespace

TEST(RealFiles, AgreeWithXyconv) {
    std::ifstream ref(Sample("xyconv_reference.txt"));
    ASSERT_TRUE(ref.good());
    std::string line;
    int checked = 0;
    while (std::getline(ref, line)) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream in(line);
        std::string file, mode, s[3];
        int n = 0;
        double x1, xn, y[3];
        in >> file >> mode >> n >> x1 >> xn >> y[0] >> y[1] >> y[2] >> s[0] >> s[1] >> s[2];
        if (mode == "LIBRARY") continue;  // one line per block: library_formats_test.cpp
        SCOPED_TRACE(file);
        DIFFRACTION_PATTERN_TYPE p = read(file, mode);
        if (ERR_Pattern) continue;
        ASSERT_EQ(p.npts, n);
        EXPECT_NEAR(p.x(1), x1, rel(x1));
        EXPECT_NEAR(p.x(n), xn, rel(xn));
        EXPECT_NEAR(p.xmin, x1, rel(x1));
        EXPECT_NEAR(p.xmax, xn, rel(xn));
        EXPECT_NEAR(p.step, (xn - x1) / (n - 1), 1e-3 * std::fabs((xn - x1) / (n - 1)));
        const int at[3] = {1, (n + 1) / 2, n};
        for (int k = 0; k < 3; ++k) {
            EXPECT_NEAR(p.y(at[k]), y[k], rel(y[k])) << "point " << at[k];
            if (s[k] != "-") {  // the record holds variances
                const double sd = std::stod(s[k]);
                EXPECT_NEAR(std::sqrt(p.sigma(at[k])), sd < 1e-3 ? 1.0 : sd, 1e-4 * sd + 1e-5) << "point " << at[k];
            }
        }
        ++checked;
    }
    EXPECT_EQ(checked, 14);
}

TEST(RealFiles, MessyVendorFilesReadAsAUserExpects) {
    // Same scan in three exports: plain XY, XRDML, and CSV with "key,value" lines.
    DIFFRACTION_PATTERN_TYPE csv = read("210520step1_30min.csv", "PANALYTICAL");
    DIFFRACTION_PATTERN_TYPE xy = read("210520step1_30min.xy", "XYSIGMA");
    ASSERT_EQ(csv.npts, 4489);
    ASSERT_EQ(xy.npts, 4489);
    EXPECT_FLOAT_EQ(csv.lambda1, 1.5405980f);
    EXPECT_FLOAT_EQ(csv.lambda2, 1.5444260f);
    EXPECT_NEAR(csv.step, 0.0167113f, 1e-7);
    for (int i : {1, 100, 2000, 4489}) {
        EXPECT_FLOAT_EQ(csv.x(i), xy.x(i));
        EXPECT_FLOAT_EQ(csv.y(i), xy.y(i));
    }
    // UTF-8 byte-order mark, CRLF and "<counts unit=...>".
    DIFFRACTION_PATTERN_TYPE bom = read("simpack_xrd_AlGaAs.xrdml", "PANALYTICAL");
    EXPECT_EQ(bom.npts, 2999);
    EXPECT_NEAR(bom.xmin, 65.46f, 1e-4);
    // The scan's start; the CSV and XY exports say nothing of it.
    DIFFRACTION_PATTERN_TYPE xml = read("210520step1_30min.xrdml", "PANALYTICAL");
    EXPECT_DOUBLE_EQ(xml.acq_time, 1621518951.0);  // 2021-05-20T15:55:51+02:00, Python datetime
    EXPECT_TRUE(std::isnan(csv.acq_time));
    EXPECT_TRUE(std::isnan(xy.acq_time));
    // Apostrophe head lines and comma-separated rows; negative intensities.
    DIFFRACTION_PATTERN_TYPE zrp = read("ZrP_1.csv", "XYSIGMA");
    EXPECT_EQ(zrp.npts, 2962);
    EXPECT_FLOAT_EQ(zrp.x(1), 5.0f);
    EXPECT_LT(zrp.ymin, 0.0f);
    EXPECT_GT(zrp.sigma(1), 0.0f);
    // Decimal commas between blanks.
    DIFFRACTION_PATTERN_TYPE commas = read("with_commas.txt", "XYSIGMA");
    EXPECT_EQ(commas.npts, 19);
    EXPECT_FLOAT_EQ(commas.y(1), 0.29f);
    // Five columns: the fourth is taken as the calculated profile.
    DIFFRACTION_PATTERN_TYPE pol = read("experiment_polarized.xye", "XYSIGMA");
    EXPECT_EQ(pol.npts, 388);
    EXPECT_FLOAT_EQ(pol.y(1), 626.97f);
    EXPECT_FLOAT_EQ(pol.sigma(1), 93.64f * 93.64f);
    EXPECT_FLOAT_EQ(pol.ycalc(1), 413.31f);
}

TEST(RealFiles, GsasRawFilesBothLayouts) {
    // "BANK 1 2919 292 CONST 1000 5 0 0": no type word means STD, pairs (i2,f6).
    DIFFRACTION_PATTERN_TYPE cwn = read("PBSO4.CWN", "GSAS");
    EXPECT_EQ(cwn.npts, 2919);
    EXPECT_FLOAT_EQ(cwn.xmin, 10.0f);
    EXPECT_FLOAT_EQ(cwn.step, 0.05f);
    EXPECT_NEAR(cwn.xmax, 155.9f, 1e-3);
    EXPECT_FLOAT_EQ(cwn.y(1), 220.0f);
    EXPECT_FLOAT_EQ(cwn.y(11), 202.0f);
    EXPECT_FLOAT_EQ(cwn.sigma(1), 220.0f);
    EXPECT_EQ(Trim_Right(cwn.instr), " 12  - GSAS");
    // STD with ten counts of eight columns.
    DIFFRACTION_PATTERN_TYPE xra = read("PBSO4.XRA", "GSAS");
    EXPECT_EQ(xra.npts, 6001);
    EXPECT_FLOAT_EQ(xra.step, 0.025f);
    EXPECT_FLOAT_EQ(xra.y(1), 179.0f);
    EXPECT_FLOAT_EQ(xra.y(10), 146.0f);
    EXPECT_FLOAT_EQ(xra.y(11), 167.0f);
}

TEST(RealFiles, CifDialectsAndPsiFiles) {
    // Dotted item names and an uncertainty column.
    DIFFRACTION_PATTERN_TYPE d1a = read("d1a.cif", "CIF");
    EXPECT_EQ(d1a.npts, 2910);
    EXPECT_FLOAT_EQ(d1a.x(1), 10.0f);
    EXPECT_FLOAT_EQ(d1a.y(2), 214.0f);
    EXPECT_NEAR(d1a.sigma(1), 14.8324f * 14.8324f, 1e-2);
    EXPECT_EQ(Trim(d1a.scat_var), "2theta");
    // The profile of 1517474 has its X from the 2theta range.
    DIFFRACTION_PATTERN_TYPE cod = read("1517474.cif", "CIF");
    EXPECT_NE(cod.title.find("  Chi2(free) = "), std::string::npos);
    EXPECT_EQ(Trim(cod.diff_kind), "neutron");
    // Counts of ten or eleven digits, blank separated, with an error block.
    DIFFRACTION_PATTERN_TYPE dmc = read("DMC_n_Unknown_578.dat", "DMC");
    EXPECT_EQ(dmc.npts, 1056);
    EXPECT_FLOAT_EQ(dmc.y(1), 11365224231.0f);
    EXPECT_FLOAT_EQ(dmc.sigma(1), 871672907.5f);
    EXPECT_EQ(Trim_Right(dmc.instr), "  8  - DMC");
}

TEST(RealFiles, JcampPeakTableAndIllKg1) {
    // A converter's JCAMP-DX: UTF-8 units, "##$" lines of thousands of characters, X,Y pairs.
    DIFFRACTION_PATTERN_TYPE jdx = read("test.jdx", "PANALYTICAL");
    ASSERT_EQ(jdx.npts, 2443);
    EXPECT_FLOAT_EQ(jdx.x(1), 20.0f);
    EXPECT_FLOAT_EQ(jdx.xmax, 79.9968f);
    EXPECT_FLOAT_EQ(jdx.y(1), 1096.0f);
    EXPECT_FLOAT_EQ(jdx.x(1222), 49.9984f);
    EXPECT_FLOAT_EQ(jdx.y(1222), 3074.0f);
    EXPECT_FLOAT_EQ(jdx.y(2443), 3782.0f);
    EXPECT_NEAR(jdx.step, 59.9968f / 2442, 1e-6);
    // ILL D1A: the count line (1680 points, variance flag) behind a third text line.
    DIFFRACTION_PATTERN_TYPE d1a = read("D1A5.dat", "KG1");
    ASSERT_EQ(d1a.npts, 1680);
    EXPECT_FLOAT_EQ(d1a.x(1), -10.0f);
    EXPECT_NEAR(d1a.xmax, 157.9f, 1e-4);
    EXPECT_FLOAT_EQ(d1a.monitor, 100000.0f);
    EXPECT_FLOAT_EQ(d1a.y(2), 0.3f);
    EXPECT_FLOAT_EQ(d1a.sigma(1), 0.58f);  // first of the second block
    EXPECT_FLOAT_EQ(d1a.sigma(1680), 7.35f);
    EXPECT_EQ(Trim_Right(d1a.instr), "  5  - KG1");
}
