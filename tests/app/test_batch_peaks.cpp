// zendrite-batch peaks on real patterns: the CeO2 standard against its
// reflections computed independently (tests/tools/ceo2_reflections.py), the
// laboratory Cu K-alpha scan, the peak files and the refusals.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "batch_run.h"

namespace fs = std::filesystem;
using zdtest::Run_Batch;

namespace {

const std::string kData = ZD_TEST_DATA;

std::vector<std::vector<double>> Rows(const std::string& text) {
    std::vector<std::vector<double>> rows;
    std::istringstream in(text);
    std::string line;
    while (std::getline(in, line)) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream l(line);
        std::vector<double> v;
        double x;
        while (l >> x) v.push_back(x);
        rows.push_back(v);
    }
    return rows;
}

std::string Slurp(const fs::path& f) {
    std::ifstream in(f);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

struct TEMP_DIR {
    fs::path dir = fs::temp_directory_path() / ("zd_batch_peaks_" + std::to_string(::getpid()));
    TEMP_DIR() {
        fs::remove_all(dir);
        fs::create_directories(dir);
    }
    ~TEMP_DIR() { fs::remove_all(dir); }
};

}  // namespace

TEST(BatchPeaks, CeriaStandardReflectionsFoundAtTheirPositions) {
    std::string out, err;
    ASSERT_EQ(Run_Batch({"peaks", kData + "/patterns/CeO2_Pilatus1M.xy"}, out, err), 0) << err;
    const auto found = Rows(out);
    const auto expected = Rows(Slurp(kData + "/peaks/ceo2_reflections.txt"));
    ASSERT_EQ(expected.size(), 17u);
    // Every reflection inside the pattern but the last (444, 0.65 degree from
    // the end of the scan) is found within 0.005 degree (a quarter of the step).
    int matched = 0;
    for (std::size_t k = 0; k + 1 < expected.size(); ++k) {
        const double t = expected[k][0];
        bool hit = false;
        for (const auto& f : found) hit = hit || std::fabs(f[0] - t) < 0.005;
        EXPECT_TRUE(hit) << "reflection at " << t;
        matched += hit;
    }
    EXPECT_EQ(matched, 16);
    // No false peak: each peak found is within 0.005 degree of a reflection.
    for (const auto& f : found) {
        bool near = false;
        for (const auto& e : expected) near = near || std::fabs(f[0] - e[0]) < 0.005;
        EXPECT_TRUE(near) << "peak at " << f[0];
        EXPECT_GT(f[1], f[2]);  // above its background
    }
    // A range keeps only its peaks: 220, 311 and 222.
    ASSERT_EQ(Run_Batch({"peaks", kData + "/patterns/CeO2_Pilatus1M.xy", "--range", "11", "16"}, out, err), 0);
    EXPECT_EQ(Rows(out).size(), 3u);
}

TEST(BatchPeaks, LaboratoryCopperScanAndBackground) {
    std::string out, err;
    const std::string f = kData + "/patterns/210520step1_30min.xy";
    ASSERT_EQ(Run_Batch({"peaks", f}, out, err), 0) << err;
    const auto peaks = Rows(out);
    EXPECT_GE(peaks.size(), 20u);
    EXPECT_LE(peaks.size(), 60u);
    for (std::size_t i = 1; i < peaks.size(); ++i) {
        EXPECT_GT(peaks[i][0] - peaks[i - 1][0], 3 * 0.0167);  // the 3-step spacing rule
        EXPECT_GT(peaks[i][1], peaks[i][2]);
    }
    ASSERT_EQ(Run_Batch({"peaks", f, "--background"}, out, err), 0) << err;
    const auto bgr = Rows(out);
    ASSERT_GE(bgr.size(), 10u);
    EXPECT_EQ(bgr[0].size(), 2u);
    EXPECT_LE(bgr.size(), 66u);  // one per zone at most: int(sqrt(4489)) zones
}

TEST(BatchPeaks, SavesEveryFormatAndRefusesBadInput) {
    TEMP_DIR t;
    std::string out, err;
    const std::string f = kData + "/patterns/CeO2_Pilatus1M.xy";
    const char* words[] = {"FreeFormat", "DicvolFormat", "ItoFormat", "TreorFormat", "ombraFormat"};
    const char* marks[] = {"! peak_position   peak_intensity    peak_background", "! N,ITYPE,JC,JT,JH,JO,JM,JTR",
                           "END", "  END*", "2THETA_LIST     16"};
    for (int k = 0; k < 5; ++k) {
        const std::string o = (t.dir / (std::string("out_") + words[k])).string();
        ASSERT_EQ(Run_Batch({"peaks", f, "--save", words[k], o}, out, err), 0) << err;
        EXPECT_NE(Slurp(o).find(marks[k]), std::string::npos) << words[k];
    }
    // The XY file holds no wavelength: Ito's control line is the single "9".
    EXPECT_NE(Slurp(t.dir / "out_ItoFormat").find("\n9\n   0.00000   4.00000"), std::string::npos);
    ASSERT_EQ(Run_Batch({"peaks", f, "--type", "cu", "--save", "ItoFormat", (t.dir / "cu.ito").string()}, out, err), 0);
    EXPECT_NE(Slurp(t.dir / "cu.ito").find("\n00 4 0 0 0 3.00 4.50   1.54059 000 3 6 6 6 0\n"), std::string::npos);
    // A word that is not the system's, an unwritable folder, options without values.
    EXPECT_EQ(Run_Batch({"peaks", f, "--save", "dicvolformat", "x"}, out, err), 1);
    EXPECT_EQ(err, "File format unknow!\n");
    EXPECT_EQ(Run_Batch({"peaks", f, "--save", "FreeFormat", (t.dir / "no" / "p.aps").string()}, out, err), 1);
    EXPECT_EQ(err, "Unable to write peaks data file!\n");
    EXPECT_EQ(Run_Batch({"peaks", f, "--type", "fe"}, out, err), 2);
    EXPECT_EQ(Run_Batch({"peaks", f, "--range", "3"}, out, err), 2);
    EXPECT_EQ(Run_Batch({"peaks", (t.dir / "missing.xy").string()}, out, err), 1);
    // A window of one point and a flat file: the system's text, status 1.
    EXPECT_EQ(Run_Batch({"peaks", f, "--range", "10", "10.01"}, out, err), 1);
    EXPECT_EQ(err, " The number of determined background points is too low, peak search impossible!\n");
    const std::string flat = (t.dir / "flat.xy").string();
    {
        std::ofstream o(flat);
        for (int i = 0; i < 200; ++i) o << 10 + 0.02 * i << " 100\n";
    }
    EXPECT_EQ(Run_Batch({"peaks", flat}, out, err), 1);
    EXPECT_NE(err.find("too low"), std::string::npos);
    EXPECT_TRUE(out.empty());
}
