// The time-of-flight model at single points: the Lorentzian switch, the
// cut-off, a negative sigma^2, and the analytic derivatives of every kind of
// parameter against central differences; the job file of a TOF fit.
#include <gtest/gtest.h>

#include <cmath>

#include "peaks/timefit_model.h"
#include "peaks/timefit_pik.h"

namespace hxl {
namespace {

// Two peaks, two background points; dtt 5000 (T = 5000 d).
struct SMALL_MODEL {
    TOF_MODEL_TYPE m;
    Array1<float> pv;
    Array1<std::int16_t> code;
    SMALL_MODEL() {
        m.nb = 2;
        m.npk = 2;
        m.xb = Array1<float>(2);
        m.xb(1) = 9000, m.xb(2) = 11000;
        m.dtt = 5000;
        pv = Array1<float>(Tof_Parameter_Count(2, 2));
        code = Array1<std::int16_t>(pv.size());
        const float g[6] = {0.08f, 0.03f, 2.0f, 15.0f, 4.0f, 0.0f};
        for (int i = 1; i <= 6; ++i) pv(i) = g[i - 1];
        pv(7) = 100, pv(8) = 140;
        const float p1[6] = {9800, 20000, 3, 0.01f, 0.002f, 0}, p2[6] = {10150, 9000, -2, 0, 0.004f, 0};
        for (int q = 0; q < 6; ++q) pv(Tof_Peak_Base(2, 1) + q) = p1[q], pv(Tof_Peak_Base(2, 2) + q) = p2[q];
    }
    float At(float x) {
        std::vector<TOF_DERIV_TYPE> d;
        Tof_Prepare(m, pv, code);
        return Tof_Point(m, pv, x, d);
    }
};

TEST(TofModel, LorentzianSwitchCutOffAndNegativeSigma) {
    SMALL_MODEL s;
    s.At(9800);
    EXPECT_FALSE(s.m.lorentz_on);  // eta 0, shifts of eta 0 and fixed
    s.code(Tof_Peak_Base(2, 2) + 5) = 1;
    s.At(9800);
    EXPECT_TRUE(s.m.lorentz_on);
    s.code(Tof_Peak_Base(2, 2) + 5) = 0;
    s.pv(6) = 2e-5f;
    s.At(9800);
    EXPECT_TRUE(s.m.lorentz_on);
    s.pv(6) = 0;

    // A very small alpha: the peak reaches 1.3862944/alpha + 15 H to its left.
    s.pv(1) = 0.002f;
    s.pv(Tof_Peak_Base(2, 1) + 3) = 0;
    s.At(9800);
    const TOF_PEAK_TYPE& p = s.m.peaks[0];
    ASSERT_EQ(p.k, 1);
    const double h = 2.35482 * std::sqrt((2.0 * std::pow(9800.0 / 5000, 2) + 15.0) * std::pow(9800.0 / 5000, 2) + 4.0 + 3.0);
    EXPECT_NEAR(p.h, h, 1e-4 * h);
    EXPECT_NEAR(p.left, 1.3862944 / 0.002 + 15 * h, 1e-3);
    s.pv(Tof_Peak_Base(2, 2) + 1) = 0;  // the second peak out of the way
    const float inside = s.At(static_cast<float>(9800 - p.left + 2)), outside = s.At(static_cast<float>(9800 - p.left - 2));
    const float bg_in = 100 + 40 * static_cast<float>((9800 - p.left + 2 - 9000) / 2000);
    EXPECT_GT(inside - bg_in, 1e-3f);  // the tail is still there
    const float bg_out = 100 + 40 * static_cast<float>((9800 - p.left - 2 - 9000) / 2000);
    EXPECT_NEAR(outside, bg_out, 1e-3f);  // and then cut

    // sig2 of peak 2 is -2 + ...; a whole negative sigma^2 gives the width of its size.
    SMALL_MODEL a, b;
    for (int i = 3; i <= 5; ++i) a.pv(i) = 0, b.pv(i) = 0;
    a.pv(Tof_Peak_Base(2, 1) + 2) = 40, b.pv(Tof_Peak_Base(2, 1) + 2) = -40;
    EXPECT_EQ(a.At(9810), b.At(9810));
}

TEST(TofModel, AnalyticDerivativesMatchCentralDifferences) {
    SMALL_MODEL s;
    s.pv(6) = 0.3f;  // both parts
    s.pv(Tof_Peak_Base(2, 2) + 5) = 0.1f;
    std::vector<TOF_DERIV_TYPE> d;
    for (float x : {9700.f, 9790.f, 9805.f, 9830.f, 10100.f, 10160.f, 10400.f}) {
        Tof_Prepare(s.m, s.pv, s.code);
        const double y = Tof_Point(s.m, s.pv, x, d);
        for (std::size_t q = 1; q < d.size(); ++q) ASSERT_LT(d[q - 1].index, d[q].index);
        for (const TOF_DERIV_TYPE& e : d) {
            const float keep = s.pv(e.index);
            // a hundredth of a width for a position, else a hundredth of the value
            const bool position = (e.index - 9) % 6 == 0 && e.index >= 9;
            const float step = position ? 0.2f : std::max(std::fabs(keep) * 1e-2f, 1e-3f);
            s.pv(e.index) = keep + step;
            const double up = s.At(x);
            s.pv(e.index) = keep - step;
            const double down = s.At(x);
            s.pv(e.index) = keep;
            const double num = (up - down) / (2.0 * ((keep + step) - keep));
            // the model's float result limits the difference quotient
            const double noise = 2.4e-7 * std::fabs(y) / (2.0 * step);
            EXPECT_NEAR(e.value, num, 1e-2 * std::fabs(num) + noise) << "parameter " << e.index << " at " << x;
        }
    }
}

TEST(TofPik, WrittenJobReadsBackAndTheHeadWordDecides) {
    TOF_JOB_TYPE j;
    j.title = "Nickel-silicon bank 1";
    j.tof_init = 4000.5f, j.tof_fin = 6000.25f;
    j.nbac = 2, j.npeak = 2, j.ncyc = 30;
    j.dtt = 4958.1234f;
    j.glob = {0, 0.0812f, 0.0251f, 1.5f, 12.25f, 3.5f, 0};
    j.gflag = {0, 1, 1, 0, 1, 0, 0};
    j.bx = Array1<float>(2), j.bv = Array1<float>(2), j.bf = Array1<int>(2);
    j.bx(1) = 4000.5f, j.bx(2) = 6000.25f, j.bv(1) = 120, j.bv(2) = 80.5f, j.bf(1) = 1, j.bf(2) = 0;
    Size_Tof_Peaks(j);
    j.pk(1) = {4500.125f, 12345.5f, 2.5f, 0.01f, -0.002f, 0.05f};
    j.pk(2) = {5500.75f, 678.25f, 0, 0, 0, 0};
    j.pf(1) = {1, 1, 1, 0, 0, 1};
    j.pf(2) = {1, 1, 0, 0, 0, 0};
    j.has_chi2 = true, j.chi2 = 1.234567f;
    const std::string text = Tof_Pik_Text(j);
    // the layout line by line
    EXPECT_NE(text.find("!    TOF_init       TOF_fin      Nbac Npeak"), std::string::npos);
    EXPECT_NE(text.find("      4000.5000      6000.2500     2     2    30"), std::string::npos);
    EXPECT_NE(text.find("   4958.123535  <=  d to T.O.F. coefficient"), std::string::npos);
    EXPECT_NE(text.find("        0.0812     1      <= Global-Alpha &  Flag "), std::string::npos);
    EXPECT_NE(text.find("     4500.1250    12345.5000        2.5000        0.0100       -0.0020        0.0500   1 1 1 0 0 1"),
              std::string::npos);
    EXPECT_TRUE(Pik_Text_Is_Tof(text));

    TOF_JOB_TYPE back;
    std::string message;
    ASSERT_TRUE(Read_Tof_Pik_Text(text, back, message)) << message;
    EXPECT_EQ(back.title, j.title);
    EXPECT_FLOAT_EQ(back.dtt, 4958.1235f);
    EXPECT_EQ(back.nbac, 2);
    EXPECT_EQ(back.gflag[4], 1);
    EXPECT_FLOAT_EQ(back.glob[4], 12.25f);
    EXPECT_FLOAT_EQ(back.pk(1)[4], -0.002f);
    EXPECT_EQ(back.pf(1)[5], 1);
    EXPECT_FLOAT_EQ(back.pk(2)[1], 678.25f);
    EXPECT_TRUE(back.has_chi2);

    // A constant-wavelength job is not a TOF one; a TOF job does not read as CW.
    PIK_JOB_TYPE cw;
    EXPECT_FALSE(Pik_Text_Is_Tof(Pik_Text(cw)));
    EXPECT_FALSE(Read_Pik_Text(text, cw, message));

    // Broken lines: each refusal leaves the job as it was.
    TOF_JOB_TYPE keep = back;
    std::string bad = text;
    bad.replace(bad.find("   4958.123535"), 14, "     not-a-num");
    EXPECT_FALSE(Read_Tof_Pik_Text(bad, back, message));
    EXPECT_EQ(message, " => Error at reading: Lambda1,Lambda2 or d2tof ! ");
    bad = text;
    bad.replace(bad.find("   1 1 1 0 0 1"), 14, "   1 1 1 0 0 7");
    EXPECT_FALSE(Read_Tof_Pik_Text(bad, back, message));
    EXPECT_EQ(message, " => Error at reading peak parameter: 1");
    bad = text.substr(0, text.find("     5500.7500"));
    EXPECT_FALSE(Read_Tof_Pik_Text(bad, back, message));
    EXPECT_EQ(message, " => Error at reading peak parameter: 2");
    EXPECT_EQ(back.title, keep.title);
    EXPECT_FLOAT_EQ(back.pk(2)[0], keep.pk(2)[0]);
}

}  // namespace
}  // namespace hxl
