// The constant-wavelength model: peak function and asymmetry against an
// independent quadrature, every derivative against central differences, the
// edge cases of the model, and the width split.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "peaks/arcfit_model.h"
#include "peaks/arcfit_profile.h"
#include "peaks/arcfit_widths.h"

namespace hxl {
namespace {

TEST(ArcfitProfile, PseudoVoigtDerivativesMatchCentralDifferences) {
    const float h = 0.12f, eta = 0.4f;
    for (float d : {-0.5f, -0.13f, -0.02f, 0.0f, 0.03f, 0.2f, 0.7f}) {
        const ARC_PROFILE_TYPE f = Pseudo_Voigt(d, h, eta);
        const float e = 1e-3f * h;
        const float dp = (Pseudo_Voigt(d - e, h, eta).v - Pseudo_Voigt(d + e, h, eta).v) / (2 * e);
        const float dh = (Pseudo_Voigt(d, h + e, eta).v - Pseudo_Voigt(d, h - e, eta).v) / (2 * e);
        const float de = (Pseudo_Voigt(d, h, eta + 1e-3f).v - Pseudo_Voigt(d, h, eta - 1e-3f).v) / 2e-3f;
        const float scale = Pseudo_Voigt(0, h, eta).v / h;
        EXPECT_NEAR(f.dp, dp, 2e-3f * scale) << d;
        EXPECT_NEAR(f.dh, dh, 2e-3f * scale) << d;
        EXPECT_NEAR(f.deta, de, 2e-3f * scale) << d;
    }
    // Unit area, and the Lorentzian height 2/(pi H) at the centre, by hand.
    double area = 0;
    for (int i = -200000; i <= 200000; ++i) area += Pseudo_Voigt(static_cast<float>(i) * 1e-4f, h, 1).v * 1e-4;
    EXPECT_NEAR(area, 2 / M_PI * std::atan(40 / 0.12), 1e-4);  // Lorentzian over [-20, 20]
    EXPECT_NEAR(Pseudo_Voigt(0, h, 1).v, 2 / (M_PI * 0.12), 1e-5);
}

struct REF_ROW {
    float p, s, d, h, eta, x;
    double v;
};

std::vector<REF_ROW> Reference() {
    std::ifstream in(std::string(ZD_TEST_DATA) + "/peaks/axial_divergence.tsv");
    std::vector<REF_ROW> rows;
    std::string line;
    while (std::getline(in, line)) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream s(line);
        REF_ROW r{};
        s >> r.p >> r.s >> r.d >> r.h >> r.eta >> r.x >> r.v;
        rows.push_back(r);
    }
    return rows;
}

TEST(ArcfitProfile, AsymmetryAgreesWithAdaptiveQuadratureAndSwitchesOffNear90) {
    const std::vector<REF_ROW> rows = Reference();
    ASSERT_EQ(rows.size(), 27u);
    std::map<float, double> peak_max;
    for (const REF_ROW& r : rows) peak_max[r.p] = std::max(peak_max[r.p], r.v);
    for (const REF_ROW& r : rows) {
        ASYM_CACHE_TYPE c;
        Asym_Refresh(c, true, r.p, r.s, r.d);
        EXPECT_EQ(c.plain, std::fabs(r.p - 90) < 0.4f) << r.p;
        const ARC_PROFILE_TYPE f = Peak_Function(r.x, r.p, r.h, r.eta, c);
        // 1e-4 of the peak's maximum.
        EXPECT_NEAR(f.v, r.v, 1e-4 * peak_max[r.p]) << r.p << " " << r.x;
        if (c.plain) {
            EXPECT_EQ(f.ds, 0.0f);
            EXPECT_EQ(f.dd, 0.0f);
        }
    }
    // The folding moves weight to the low side below 90 and to the high side above.
    ASYM_CACHE_TYPE low, high;
    Asym_Refresh(low, true, 30, 0.02f, 0.03f);
    Asym_Refresh(high, true, 150, 0.02f, 0.03f);
    EXPECT_LT(low.p_min, 30.0f);
    EXPECT_GT(high.p_min, 150.0f);
    // 1000 times 0.124 degree of spread needs the 150-node rule.
    EXPECT_EQ(low.nodes, 150);
    EXPECT_EQ(Asym_Node_Count(0.0f), 6);
    EXPECT_EQ(Asym_Node_Count(0.0061f), 10);
    EXPECT_EQ(Asym_Node_Count(5.0f), 1000);
}

TEST(ArcfitProfile, AsymmetryCacheKeepsWeightsForMovesUpTo1e6) {
    ASYM_CACHE_TYPE c;
    EXPECT_TRUE(Asym_Refresh(c, true, 30, 0.02f, 0.03f));
    EXPECT_FALSE(Asym_Refresh(c, true, 30, 0.02f, 0.0300005f));
    EXPECT_TRUE(Asym_Refresh(c, true, 30, 0.02f, 0.0300015f));
    EXPECT_TRUE(Asym_Refresh(c, true, 30.00001f, 0.02f, 0.0300015f));
    EXPECT_TRUE(Asym_Refresh(c, false, 30.00001f, 0.02f, 0.0300015f));
    EXPECT_TRUE(c.plain);
}

TEST(ArcfitProfile, AsymmetryDerivativesMatchCentralDifferences) {
    for (float p : {30.0f, 150.0f}) {
        const float s = 0.02f, d = 0.035f, h = 0.1f, eta = 0.5f, e = 2e-4f;
        ASYM_CACHE_TYPE c, cs1, cs2, cd1, cd2;
        Asym_Refresh(c, true, p, s, d);
        Asym_Refresh(cs1, true, p, s + e, d);
        Asym_Refresh(cs2, true, p, s - e, d);
        Asym_Refresh(cd1, true, p, s, d + e);
        Asym_Refresh(cd2, true, p, s, d - e);
        for (float o : {-0.3f, -0.1f, -0.03f, 0.0f, 0.05f, 0.2f}) {
            const float x = p + (p > 90 ? -o : o);
            const ARC_PROFILE_TYPE f = Peak_Function(x, p, h, eta, c);
            const float ns = (Peak_Function(x, p, h, eta, cs1).v - Peak_Function(x, p, h, eta, cs2).v) / (2 * e);
            const float nd = (Peak_Function(x, p, h, eta, cd1).v - Peak_Function(x, p, h, eta, cd2).v) / (2 * e);
            EXPECT_NEAR(f.ds, ns, 0.02f * std::fabs(ns) + 0.05f) << p << " " << o;
            EXPECT_NEAR(f.dd, nd, 0.02f * std::fabs(nd) + 0.05f) << p << " " << o;
            EXPECT_GT(std::fabs(ns) + std::fabs(nd), 0.0f);
        }
    }
}

// Three peaks, a doublet, four background points, every global non-zero.
struct MODEL_CASE {
    ARC_MODEL_TYPE m;
    Array1<float> pv;
};

MODEL_CASE Make_Case(bool asym, int inst = 1, float lambda2 = 1.5444f) {
    MODEL_CASE c;
    c.m.nb = 4;
    c.m.npk = 3;
    c.m.xb = Array1<float>(4);
    const float xb[] = {20, 28, 36, 45};
    for (int i = 1; i <= 4; ++i) c.m.xb(i) = xb[i - 1];
    c.m.lambda1 = 1.5406f;
    c.m.lambda2 = lambda2;
    c.m.inst = inst;
    c.m.asymmetry = asym;
    c.pv = Array1<float>(Arc_Parameter_Count(4, 3));
    const float globals[] = {0.5f, 0.02f, 0.03f, 0.02f, -0.01f, 0.01f, 0.01f, 0.3f, 0.004f};
    for (int i = 1; i <= 9; ++i) c.pv(i) = globals[i - 1];
    const float back[] = {120, 110, 95, 90};
    for (int i = 1; i <= 4; ++i) c.pv(9 + i) = back[i - 1];
    const float peaks[3][4] = {{25.3f, 900, 0.01f, 0.05f}, {32.1f, 1500, -0.005f, 0.1f}, {32.4f, 600, 0.02f, -0.05f}};
    for (int k = 0; k < 3; ++k)
        for (int j = 0; j < 4; ++j) c.pv(14 + 4 * k + j) = peaks[k][j];
    return c;
}

float Y_At(MODEL_CASE c, int i, float value, float x) {
    c.pv(i) = value;
    Arc_Prepare(c.m, c.pv);
    std::vector<ARC_DERIV_TYPE> d;
    return Arc_Point(c.m, c.pv, x, d);
}

void Check_Derivatives(bool asym) {
    MODEL_CASE c = Make_Case(asym);
    Arc_Prepare(c.m, c.pv);
    const Array1<std::string> names = Arc_Parameter_Names(4, 3);
    const int np = c.pv.size();
    std::vector<float> xs = {25.1f, 25.25f, 25.3f, 25.38f, 25.5f, 31.95f, 32.1f, 32.22f, 32.35f, 32.5f, 32.7f, 40.0f};
    std::vector<float> largest(static_cast<std::size_t>(np + 1), 0.0f);
    std::vector<std::vector<float>> an(xs.size()), nu(xs.size()), noise(xs.size());
    for (std::size_t j = 0; j < xs.size(); ++j) {
        Array1<float> row;
        Arc_Prepare(c.m, c.pv);
        const float y = Arc_Point_Dense(c.m, c.pv, xs[j], row);
        noise[j].assign(static_cast<std::size_t>(np + 1), 0.0f);
        an[j].assign(static_cast<std::size_t>(np + 1), 0.0f);
        nu[j].assign(static_cast<std::size_t>(np + 1), 0.0f);
        for (int i = 1; i <= np; ++i) {
            const float v = c.pv(i);
            const bool position = i >= 14 && (i - 14) % 4 == 0;
            const float e = position ? 1e-3f : std::max(std::fabs(v) * 1e-3f, 1e-4f);
            nu[j][static_cast<std::size_t>(i)] = (Y_At(c, i, v + e, xs[j]) - Y_At(c, i, v - e, xs[j])) / (2 * e);
            an[j][static_cast<std::size_t>(i)] = row(i);
            // Rounding of ycalc in float, divided by the step.
            noise[j][static_cast<std::size_t>(i)] = 4 * 6e-8f * std::fabs(y) / e;
            largest[static_cast<std::size_t>(i)] =
                std::max(largest[static_cast<std::size_t>(i)], std::fabs(nu[j][static_cast<std::size_t>(i)]));
        }
    }
    for (int i = 1; i <= np; ++i) {
        const bool position = i >= 14 && (i - 14) % 4 == 0;
        // With the asymmetry on, the fold's own shape is taken as fixed when
        // the peak moves: a small share of the position derivative.
        const float rel = asym && position ? 0.03f : 5e-3f;
        if (asym || (i != 2 && i != 3)) {
            EXPECT_GT(largest[static_cast<std::size_t>(i)], 0.0f) << names(i);
        }
        for (std::size_t j = 0; j < xs.size(); ++j)
            EXPECT_NEAR(an[j][static_cast<std::size_t>(i)], nu[j][static_cast<std::size_t>(i)],
                        rel * largest[static_cast<std::size_t>(i)] + noise[j][static_cast<std::size_t>(i)])
                << names(i) << " at " << xs[j] << (asym ? " asym" : "");
    }
}

TEST(ArcfitModel, EveryDerivativeMatchesCentralDifferences) {
    Check_Derivatives(false);
    Check_Derivatives(true);
}

TEST(ArcfitModel, NamesFollowTheLayout) {
    const Array1<std::string> n = Arc_Parameter_Names(12, 11);
    ASSERT_EQ(n.size(), 9 + 12 + 44);
    EXPECT_EQ(n(1), "Ka2/Ka1-ratio");
    EXPECT_EQ(n(2), "Asym-1(S_L)");
    EXPECT_EQ(n(9), "X-PV");
    EXPECT_EQ(n(10), "background_1");
    EXPECT_EQ(n(21), "background_12");
    EXPECT_EQ(n(22), "Bragg_Pos_1");
    EXPECT_EQ(n(23), "Intensity_1");
    EXPECT_EQ(n(24), "Shf_Gamma_1");
    EXPECT_EQ(n(25), "Shf_EtaPV_1");
    EXPECT_EQ(n(62), "Bragg_Pos_11");
    EXPECT_EQ(n(65), "Shf_EtaPV_11");
}

TEST(ArcfitModel, EdgeCasesOfTheText) {
    // Lambda1 = Lambda2: no second line, the ratio changes nothing and has no derivative.
    MODEL_CASE same = Make_Case(false, 1, 1.5406f);
    Arc_Prepare(same.m, same.pv);
    EXPECT_FALSE(same.m.second_line);
    Array1<float> row;
    const float y1 = Arc_Point_Dense(same.m, same.pv, 32.1f, row);
    EXPECT_EQ(row(1), 0.0f);
    same.pv(1) = 0.0f;
    Arc_Prepare(same.m, same.pv);
    Array1<float> row0;
    EXPECT_EQ(Arc_Point_Dense(same.m, same.pv, 32.1f, row0), y1);
    MODEL_CASE doublet = Make_Case(false, 1);
    Arc_Prepare(doublet.m, doublet.pv);
    Arc_Point_Dense(doublet.m, doublet.pv, 32.1f, row);
    EXPECT_NE(row(1), 0.0f);
    // Inst other than 1 or 3: no second line either.
    MODEL_CASE inst2 = Make_Case(false, 2);
    Arc_Prepare(inst2.m, inst2.pv);
    EXPECT_FALSE(inst2.m.second_line);

    // Z = 0: its derivative stays 0 everywhere.
    MODEL_CASE z0 = Make_Case(false);
    z0.pv(7) = 0;
    Arc_Prepare(z0.m, z0.pv);
    for (float x : {25.3f, 32.1f, 32.4f}) {
        Arc_Point_Dense(z0.m, z0.pv, x, row);
        EXPECT_EQ(row(7), 0.0f);
        EXPECT_NE(row(6), 0.0f);
    }

    // A narrow peak: a point beyond 80 widths gets nothing from it.
    ARC_MODEL_TYPE m;
    m.nb = 2;
    m.npk = 1;
    m.xb = Array1<float>(2);
    m.xb(1) = 20;
    m.xb(2) = 40;
    m.asymmetry = false;
    Array1<float> pv(Arc_Parameter_Count(2, 1));
    pv(10) = 10;
    pv(11) = 10;
    pv(12) = 30;
    pv(13) = 100;
    pv(14) = 0.01f;  // H = 0.01 with U = V = W = Z = 0
    Arc_Prepare(m, pv);
    std::vector<ARC_DERIV_TYPE> d;
    float peaks = -1;
    EXPECT_FLOAT_EQ(Arc_Point(m, pv, 30.41f, d, &peaks), 10.0f);
    EXPECT_EQ(peaks, 0.0f);
    for (const ARC_DERIV_TYPE& e : d) EXPECT_LT(e.index, 12);
    Arc_Point(m, pv, 30.39f, d, &peaks);
    EXPECT_GT(peaks, 0.0f);
    EXPECT_EQ(d.back().index, 15);
}

TEST(ArcfitModel, BackgroundEndRuleUsesTheFirstTwoPoints) {
    ARC_MODEL_TYPE m;
    m.nb = 3;
    m.xb = Array1<float>(3);
    m.xb(1) = 10;
    m.xb(2) = 20;
    m.xb(3) = 30;
    Array1<float> pv(Arc_Parameter_Count(3, 0));
    pv(10) = 100;
    pv(11) = 80;
    pv(12) = 90;
    Arc_Prepare(m, pv);
    Array1<float> row;
    EXPECT_FLOAT_EQ(Arc_Point_Dense(m, pv, 25, row), 85.0f);
    EXPECT_FLOAT_EQ(row(11), 0.5f);
    EXPECT_FLOAT_EQ(row(12), 0.5f);
    EXPECT_FLOAT_EQ(Arc_Point_Dense(m, pv, 20, row), 80.0f);  // both ends count; the first interval wins
    EXPECT_FLOAT_EQ(row(10), 0.0f);
    EXPECT_FLOAT_EQ(row(11), 1.0f);
    // Outside every interval: t = (x - 10) / (30 - 10) on points 1 and 2.
    EXPECT_FLOAT_EQ(Arc_Point_Dense(m, pv, 35, row), 100 + 1.25f * (80 - 100));
    EXPECT_FLOAT_EQ(row(10), -0.25f);
    EXPECT_FLOAT_EQ(row(11), 1.25f);
    EXPECT_FLOAT_EQ(row(12), 0.0f);
    EXPECT_FLOAT_EQ(Arc_Point_Dense(m, pv, 5, row), 100 - 0.25f * (80 - 100));
}

TEST(ArcfitWidths, SplitGoesBackThroughBothEquations) {
    for (float eta : {0.05f, 0.3f, 0.5f, 0.77f, 0.95f}) {
        const float h = 0.2f;
        float hg = 0, hl = 0;
        ASSERT_TRUE(Split_Widths(h, eta, hg, hl)) << eta;
        const double q = hl / h;
        EXPECT_NEAR(1.36603 * q - 0.47719 * q * q + 0.11116 * q * q * q, eta, 2e-6) << eta;
        const double g = hg, l = hl;
        const double h5 = std::pow(g, 5) + 2.69269 * std::pow(g, 4) * l + 2.42843 * std::pow(g, 3) * l * l +
                          4.47163 * g * g * std::pow(l, 3) + 0.07842 * g * std::pow(l, 4) + std::pow(l, 5);
        EXPECT_NEAR(std::pow(h5, 0.2), h, 2e-6) << eta;
        EXPECT_GT(hg, 0.0f);
        EXPECT_LT(hl, h);
    }
    float hg = -1, hl = -1;
    EXPECT_TRUE(Split_Widths(0.2f, 0.0f, hg, hl));
    EXPECT_EQ(hg, 0.2f);
    EXPECT_EQ(hl, 0.0f);
    EXPECT_TRUE(Split_Widths(0.2f, 1.3f, hg, hl));
    EXPECT_EQ(hg, 0.0f);
    EXPECT_EQ(hl, 0.2f);
    EXPECT_FALSE(Split_Widths(0.0f, 0.5f, hg, hl));
    EXPECT_FALSE(Split_Widths(std::nanf(""), 0.5f, hg, hl));
}

}  // namespace
}  // namespace hxl
