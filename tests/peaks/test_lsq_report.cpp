// The report of a least-squares run, line by line on a case worked by hand.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "peaks/lsq_report.h"

using namespace hxl;

namespace {

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> out;
    std::istringstream in(text);
    for (std::string l; std::getline(in, l);) out.push_back(l);
    return out;
}

bool Has(const std::vector<std::string>& lines, const std::string& l) {
    return std::find(lines.begin(), lines.end(), l) != lines.end();
}

struct CASE {
    Array1<float> x{3}, y{3}, yc{3}, w{3};
    LSQ_STATE_VECTOR_TYPE vs;
    LSQ_OUTCOME_TYPE out;
    LSQ_CONDITIONS_TYPE c;
    CASE() {
        // y = 10, 20, 40 against 11, 18, 40 with sigmas 1, 2, 4:
        // Rfact = 100 (1 + 2 + 0)/70 = 4.2857, sum w y^2 = 300, sum w d^2 = 2,
        // Rwfact = 100 sqrt(2/300) = 8.1650, Rex (n = 2) = 100 sqrt(1/300) = 5.7735
        const float xs[3] = {1.5f, 2.5f, 3.5f}, ys[3] = {10, 20, 40}, ycs[3] = {11, 18, 40}, ws[3] = {1, 0.25f, 0.0625f};
        for (int i = 1; i <= 3; ++i) {
            x(i) = xs[i - 1];
            y(i) = ys[i - 1];
            yc(i) = ycs[i - 1];
            w(i) = ws[i - 1];
        }
        Allocate_State_Vector(vs, 3);
        const char* names[3] = {"Scale", "Fixed", "Shift"};
        for (int k = 1; k <= 3; ++k) {
            vs.nampar(k) = names[k - 1];
            vs.pv(k) = 1.25f * k;
            vs.spv(k) = 0.5f * k;
            vs.code(k) = k == 2 ? 0 : 1;
        }
        // covariance of the two free ones: variances 4 and 9, covariance -5.1 (correlation -85 %)
        out.n = 2;
        out.covar = {4.0f, -5.1f, -5.1f, 9.0f};
        out.lambda = 0.00125;
    }
};

}  // namespace

TEST(LsqReport, LinesOfASmallCase) {
    CASE k;
    std::ostringstream os;
    std::string message;
    const auto dir = std::filesystem::temp_directory_path() / "zd_lsq_report";
    std::filesystem::remove_all(dir);
    std::filesystem::create_directories(dir);
    const std::string file = (dir / kLmFitFile).string();
    ASSERT_TRUE(Info_LSQ_LM(1.5f, os, 3, k.x, k.y, k.yc, k.w, k.c, k.vs, k.out, file, true, message)) << message;
    const auto l = Lines(os.str());
    EXPECT_TRUE(Has(l, "  Rfact=     4.2857   Rwfact=     8.1650   Rex=     5.7735")) << os.str();
    EXPECT_TRUE(Has(l, "  Final value of Marquardt F-Lambda = 0.00125"));
    EXPECT_TRUE(Has(l, " => Correlation Matrix: "));
    EXPECT_TRUE(Has(l, " 100 -85"));
    EXPECT_TRUE(Has(l, "    Correlation: > 70% for parameters:   "));
    EXPECT_TRUE(Has(l, "      Scale & Shift   -85"));
    EXPECT_TRUE(Has(l, " => There are 1 values of Correlation > 70"));
    EXPECT_TRUE(Has(l, "      FINAL LIST OF REFINED PARAMETERS AND STANDARD DEVIATIONS"));
    EXPECT_TRUE(Has(l, "    #   Parameter name                       No.(Model)         Final-Value   Standard Deviation"));
    // running number, name, place in the vector, value, deviation; the fixed one left out
    EXPECT_TRUE(Has(l, "    1   Scale                                         1            1.250000             0.500000"));
    EXPECT_TRUE(Has(l, "    2   Shift                                         3            3.750000             1.500000"));
    for (const auto& s : l) EXPECT_EQ(s.find("Fixed"), std::string::npos);
    EXPECT_TRUE(Has(l, " => Final value of Chi2: 1.50000"));

    std::ifstream in(file);
    std::stringstream ss;
    ss << in.rdbuf();
    EXPECT_EQ(ss.str(),
              "!        X             Y-obs          Y-calc           Sigma\n"
              "       1.50000        10.00000        11.00000         1.00000\n"
              "       2.50000        20.00000        18.00000         2.00000\n"
              "       3.50000        40.00000        40.00000         4.00000\n");

    // Above the threshold nothing: the other text; no matrix when not asked.
    k.c.corrmax = 85;
    std::ostringstream os2;
    ASSERT_TRUE(Info_LSQ_LM(1.5f, os2, 3, k.x, k.y, k.yc, k.w, k.c, k.vs, k.out, "", false, message));
    const auto l2 = Lines(os2.str());
    EXPECT_TRUE(Has(l2, " => There is no correlations greater than 85"));
    EXPECT_FALSE(Has(l2, " => Correlation Matrix: "));

    // A file that cannot be written: said, and the old one stays.
    std::ostringstream os3;
    const std::string bad = (dir / "missing" / kLmFitFile).string();
    EXPECT_FALSE(Info_LSQ_LM(1.5f, os3, 3, k.x, k.y, k.yc, k.w, k.c, k.vs, k.out, bad, false, message));
    EXPECT_FALSE(message.empty());
    EXPECT_NE(os3.str().find(" => Final value of Chi2: "), std::string::npos);
    std::filesystem::remove_all(dir);
}
