// The Levenberg-Marquardt solvers: stop tests and their texts on small
// problems whose answers are known, the deviations of a straight line
// against the closed-form formula, and the bad inputs.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "peaks/lm_der.h"
#include "tests/peaks/lsq_fixture.h"

using namespace hxl;

namespace {

// y = a + b x (+ c times nothing when `idle`): the residuals and Jacobian by hand.
struct LINE {
    std::vector<float> x, y, s;
    bool idle = false;
    LSQ_MODEL_FUNCTION Model() const {
        return [this](int m, int, const Array1<float>& p, Array1<float>& fvec, LSQ_DENSE_JACOBIAN_TYPE& fjac, int& iflag) {
            for (int i = 1; i <= m; ++i) {
                const float xi = x[static_cast<std::size_t>(i - 1)], si = s[static_cast<std::size_t>(i - 1)];
                if (iflag == 1) fvec(i) = (y[static_cast<std::size_t>(i - 1)] - (p(1) + p(2) * xi)) / si;
                if (iflag == 2) {
                    fjac(i, 1) = -1.0f / si;
                    fjac(i, 2) = -xi / si;
                    if (idle) fjac(i, 3) = 0.0f;
                }
            }
        };
    }
};

LSQ_STATE_VECTOR_TYPE Vector(std::initializer_list<float> values, std::initializer_list<int> codes) {
    LSQ_STATE_VECTOR_TYPE vs;
    Allocate_State_Vector(vs, static_cast<int>(values.size()));
    int k = 1;
    for (float v : values) vs.pv(k++) = v;
    k = 1;
    for (int c : codes) vs.code(k++) = static_cast<std::int16_t>(c);
    for (k = 1; k <= vs.np; ++k) vs.nampar(k) = "p" + std::to_string(k);
    return vs;
}

// The start of the one-peak fits: background, slope, centre, height, width.
constexpr float kStart[5] = {45.0f, 0.0f, 3.2f, 150.0f, 0.6f};

LSQ_STATE_VECTOR_TYPE One_Peak_Start() {
    LSQ_STATE_VECTOR_TYPE vs;
    Allocate_State_Vector(vs, 5);
    for (int k = 1; k <= 5; ++k) {
        vs.pv(k) = kStart[k - 1];
        vs.code(k) = 1;
    }
    return vs;
}

bool Starts(const std::string& s, const std::string& head) { return s.rfind(head, 0) == 0; }

// The sums of the weighted line worked by hand: x = 0..4, sigma 1,2,1,2,1,
// y = 1.1, 2.8, 5.05, 7.1, 8.7. S = 3.5, Sx = 7, Sxx = 22.5, D = S Sxx - Sx^2
// = 29.75, Sy = 17.325, Sxy = 50.925; a = (Sxx Sy - Sx Sxy)/D, b = (S Sxy - Sx Sy)/D,
// var a = Sxx/D = 90/119, var b = S/D = 2/17.
LINE Hand_Line() {
    LINE l;
    l.x = {0, 1, 2, 3, 4};
    l.y = {1.1f, 2.8f, 5.05f, 7.1f, 8.7f};
    l.s = {1, 2, 1, 2, 1};
    return l;
}

}  // namespace

TEST(LmDer, StraightLineValuesAndDeviationsMatchTheClosedForm) {
    const LINE l = Hand_Line();
    LSQ_CONDITIONS_TYPE c;
    c.icyc = 50;
    LSQ_STATE_VECTOR_TYPE vs = Vector({0.0f, 0.0f}, {1, 1});
    float chi2 = -1.0f;
    std::string info;
    LM_Der(l.Model(), 5, c, vs, chi2, true, info);
    EXPECT_TRUE(c.reached) << info;
    EXPECT_EQ(c.npvar, 2);
    EXPECT_NEAR(vs.pv(1), 33.3375 / 29.75, 1e-5);
    EXPECT_NEAR(vs.pv(2), 56.9625 / 29.75, 1e-5);
    EXPECT_NEAR(vs.spv(1), std::sqrt(90.0 / 119.0), 1e-5);
    EXPECT_NEAR(vs.spv(2), std::sqrt(2.0 / 17.0), 1e-5);
    // chi2 = sum of weighted squares / (5 - 2), the residuals from the hand values
    double s = 0.0;
    for (int i = 0; i < 5; ++i) {
        const double r = (l.y[static_cast<std::size_t>(i)] - (33.3375 / 29.75 + 56.9625 / 29.75 * l.x[static_cast<std::size_t>(i)])) /
                         l.s[static_cast<std::size_t>(i)];
        s += r * r;
    }
    EXPECT_NEAR(chi2, s / 3.0, 1e-5);
    EXPECT_TRUE(Starts(info, "Initial Chi2:")) << info;

    // the vector form reaches the same
    Array1<float> x(2), sx(2);
    LSQ_CONDITIONS_TYPE cv;
    LM_DerV(l.Model(), 5, cv, x, sx, chi2, true, info);
    EXPECT_NEAR(x(2), 56.9625 / 29.75, 1e-5);
    EXPECT_NEAR(sx(1), std::sqrt(90.0 / 119.0), 1e-5);
}

TEST(LmDer, EachStopTestGivesItsText) {
    // A line met exactly at the start: zero residuals are orthogonal to everything.
    LINE exact;
    exact.x = {0, 1, 2, 3};
    exact.y = {1, 3, 5, 7};
    exact.s = {1, 1, 1, 1};
    LSQ_CONDITIONS_TYPE c;
    LSQ_STATE_VECTOR_TYPE vs = Vector({1.0f, 2.0f}, {1, 1});
    float chi2 = -1.0f;
    std::string info;
    LSQ_OUTCOME_TYPE out;
    LM_Der(exact.Model(), 4, c, vs, chi2, false, info, &out);
    EXPECT_TRUE(c.reached);
    EXPECT_EQ(out.info, 4);
    EXPECT_EQ(info, "Initial Chi2:       0.00000     Convergence reached: Residuals vector is orthogonal to the columns "
                    "of the Jacobian to machine precision");
    EXPECT_EQ(chi2, 0.0f);

    // A Gaussian on exact data from a start off the truth: the sum of squares
    // keeps falling by large fractions, so the step size test stops it.
    std::vector<float> truth;
    const GAUSS_FIT_PROBLEM g = Gauss_Fit_Problem(1, 61, 0.0f, 6.0f, 0.5f, 0.0f, truth);
    LSQ_STATE_VECTOR_TYPE gv = One_Peak_Start();
    LSQ_CONDITIONS_TYPE gc;
    gc.icyc = 200;
    LM_Der(g.Sparse_Model(), 61, gc, gv, chi2, true, info, &out);
    ASSERT_TRUE(gc.reached) << info;
    for (int k = 1; k <= 5; ++k) EXPECT_NEAR(gv.pv(k), truth[static_cast<std::size_t>(k - 1)], 1e-3 * (1 + std::fabs(truth[static_cast<std::size_t>(k - 1)])));
    EXPECT_TRUE(out.info == 2 || out.info == 3) << info;
    EXPECT_NE(info.find("     Convergence reached: The relative error"), std::string::npos);

    // With noise the sum of squares settles: its test stops the fit.
    const GAUSS_FIT_PROBLEM gn = Gauss_Fit_Problem(1, 61, 0.0f, 6.0f, 0.5f, 1.0f, truth);
    for (int k = 1; k <= 5; ++k) gv.pv(k) = kStart[k - 1];
    gc.tol = 1e-3f;
    LM_Der(gn.Sparse_Model(), 61, gc, gv, chi2, false, info, &out);
    ASSERT_TRUE(gc.reached) << info;
    EXPECT_TRUE(out.info == 1 || out.info == 3) << info;
    const std::string sum_text = out.info == 1
        ? "     Convergence reached: The relative error in the sum of squares is at most 1.00000E-03"
        : "     Convergence reached: The relative error in the sum of squares and the difference between x and the "
          "solution are both 1.00000E-03";
    EXPECT_EQ(info.substr(info.size() - sum_text.size()), sum_text);

    // The call limit: 3 evaluations, the first one included.
    for (int k = 1; k <= 5; ++k) gv.pv(k) = kStart[k - 1];
    gc.tol = 1e-5f;
    gc.icyc = 3;
    LM_Der(gn.Sparse_Model(), 61, gc, gv, chi2, false, info, &out);
    EXPECT_FALSE(gc.reached);
    EXPECT_EQ(out.nfev, 3);
    EXPECT_EQ(info, "Convergence NOT reached: Number of calls to model function with iflag=1 has reached 3");
    EXPECT_NE(gv.pv(3), kStart[2]);  // the best point reached is kept

    // A tolerance of zero can only end in "too small".
    for (int k = 1; k <= 5; ++k) gv.pv(k) = kStart[k - 1];
    gc.tol = 0.0f;
    gc.icyc = 2000;
    LM_Der(gn.Sparse_Model(), 61, gc, gv, chi2, false, info, &out);
    EXPECT_FALSE(gc.reached);
    ASSERT_TRUE(out.info == 6 || out.info == 7) << info;
    EXPECT_EQ(info, out.info == 6 ? "Convergence NOT reached: Provided tolerance 0.00000E+00 is too small! No further "
                                    "reduction in the sum of squares is possible"
                                  : "Convergence NOT reached: Provided tolerance 0.00000E+00 is too small! No further "
                                    "improvement in the approximate solution x is possible");
    EXPECT_NEAR(gv.pv(3), 3.0f, 0.02f);
}

TEST(LmDer, ImproperInputLeavesTheVectorAlone) {
    const LINE l = Hand_Line();
    float chi2 = 7.0f;
    std::string info;
    struct CASE {
        int m;
        std::initializer_list<int> codes;
        float tol;
        int n;
    };
    for (const CASE& k : {CASE{5, {0, 0}, 1e-5f, 0}, CASE{1, {1, 1}, 1e-5f, 2}, CASE{5, {1, 1}, -1.0f, 2},
                          CASE{5, {1, 1}, NAN, 2}}) {
        LSQ_STATE_VECTOR_TYPE vs = Vector({3.0f, 4.0f}, k.codes);
        LSQ_CONDITIONS_TYPE c;
        c.tol = k.tol;
        c.reached = true;
        LM_Der(l.Model(), k.m, c, vs, chi2, true, info);
        EXPECT_FALSE(c.reached);
        EXPECT_EQ(vs.pv(1), 3.0f);
        EXPECT_EQ(vs.pv(2), 4.0f);
        const std::string head = "Improper input parameters in LM-optimization (n,m,tol): nb of free (refined) parameters: " +
                                 std::to_string(k.n) + ", number of observations: " + std::to_string(k.m) + ", tolerance: ";
        EXPECT_TRUE(Starts(info, head)) << info;
    }
    EXPECT_EQ(chi2, 7.0f);
}

TEST(LmDer, ParameterOutsideTheModelGivesTheSingularTexts) {
    LINE l = Hand_Line();
    l.idle = true;
    LSQ_STATE_VECTOR_TYPE vs = Vector({0.0f, 0.0f, 5.0f}, {1, 1, 1});
    LSQ_CONDITIONS_TYPE c;
    float chi2 = 0.0f;
    std::string info;
    LSQ_OUTCOME_TYPE out;
    LM_Der(l.Model(), 5, c, vs, chi2, true, info, &out);
    // the fit itself goes through: the idle parameter does not move
    EXPECT_NEAR(vs.pv(1), 33.3375 / 29.75, 1e-5);
    EXPECT_EQ(vs.pv(3), 5.0f);
    EXPECT_TRUE(out.singular);
    EXPECT_EQ(out.singular_index, 3);
    const std::string tail =
        " Singular Matrix at the end of LM_Der for calculating std deviations ... Final Singular Matrix!, problem with "
        "parameter #3";
    ASSERT_GE(info.size(), tail.size());
    EXPECT_EQ(info.substr(info.size() - tail.size()), tail);
    for (int k = 1; k <= 3; ++k) EXPECT_EQ(vs.spv(k), 0.0f);

    // The same problem through the sparse route names the same parameter.
    LSQ_SPARSE_MODEL_FUNCTION sm = [&l](int m, int, const Array1<float>& p, Array1<float>& fvec,
                                        LSQ_SPARSE_JACOBIAN_TYPE& fjac, int& iflag) {
        for (int i = 1; i <= m; ++i) {
            const float xi = l.x[static_cast<std::size_t>(i - 1)], si = l.s[static_cast<std::size_t>(i - 1)];
            if (iflag == 1) fvec(i) = (l.y[static_cast<std::size_t>(i - 1)] - (p(1) + p(2) * xi)) / si;
            if (iflag == 2) {
                fjac.Add(i, 2, -xi / si);  // out of order within the row on purpose
                fjac.Add(i, 1, -1.0f / si);
            }
        }
    };
    LSQ_STATE_VECTOR_TYPE vs2 = Vector({0.0f, 5.0f, 0.0f}, {1, 1, 1});
    // put the idle parameter first: the model reads p(1), p(2) only
    LSQ_SPARSE_MODEL_FUNCTION shifted = [&sm](int m, int n, const Array1<float>& p, Array1<float>& fvec,
                                              LSQ_SPARSE_JACOBIAN_TYPE& fjac, int& iflag) {
        Array1<float> q(2);
        q(1) = p(2);
        q(2) = p(3);
        LSQ_SPARSE_JACOBIAN_TYPE rows;
        rows.Clear(m, 2);
        sm(m, 2, q, fvec, rows, iflag);
        if (iflag == 2) {
            rows.Finish();
            for (int i = 0; i < m; ++i)
                for (int k = rows.Row_Start()[static_cast<std::size_t>(i)]; k < rows.Row_Start()[static_cast<std::size_t>(i) + 1]; ++k)
                    fjac.Add(i + 1, rows.Col()[static_cast<std::size_t>(k)] + 2, rows.Val()[static_cast<std::size_t>(k)]);
        }
        (void)n;
    };
    vs2.pv(1) = 5.0f;
    vs2.pv(2) = 0.0f;
    LSQ_CONDITIONS_TYPE c2;
    LM_Der(shifted, 5, c2, vs2, chi2, true, info, &out, Lsq_Route::Sparse);
    EXPECT_TRUE(out.sparse);
    EXPECT_NEAR(vs2.pv(2), 33.3375 / 29.75, 1e-4);
    EXPECT_NEAR(vs2.pv(3), 56.9625 / 29.75, 1e-4);
    EXPECT_EQ(out.singular_index, 1);
    EXPECT_NE(info.find("Final Singular Matrix!, problem with parameter #1"), std::string::npos) << info;
}

TEST(LmDer, NaNFromTheModelIsReportedAndChangesNothing) {
    std::vector<float> truth;
    const GAUSS_FIT_PROBLEM g = Gauss_Fit_Problem(1, 61, 0.0f, 6.0f, 0.5f, 1.0f, truth);
    const LSQ_SPARSE_MODEL_FUNCTION base = g.Sparse_Model();
    for (int when : {1, 2, 3}) {  // NaN at the start, in a Jacobian, at a trial point
        int calls = 0;
        LSQ_SPARSE_MODEL_FUNCTION model = [&](int m, int n, const Array1<float>& p, Array1<float>& fvec,
                                              LSQ_SPARSE_JACOBIAN_TYPE& fjac, int& iflag) {
            base(m, n, p, fvec, fjac, iflag);
            if (when == 1 && iflag == 1) fvec(7) = NAN;
            if (when == 2 && iflag == 2) fjac.Add(m, 4, NAN);
            if (when == 3 && iflag == 1 && ++calls == 3) fvec(m) = INFINITY;
        };
        LSQ_STATE_VECTOR_TYPE vs = One_Peak_Start();
        vs.spv.fill(-1.0f);
        LSQ_CONDITIONS_TYPE c;
        float chi2 = 0.0f;
        std::string info;
        LM_Der(model, 61, c, vs, chi2, true, info);
        EXPECT_NE(info.find("NaN"), std::string::npos) << when << " " << info;
        EXPECT_FALSE(c.reached);
        for (int k = 1; k <= 5; ++k) {
            EXPECT_EQ(vs.pv(k), kStart[k - 1]);
            EXPECT_EQ(vs.spv(k), -1.0f);
        }
    }
}

TEST(LmDer, TheModelMayStopTheFitAndTheBestPointStays) {
    std::vector<float> truth;
    const GAUSS_FIT_PROBLEM g = Gauss_Fit_Problem(1, 61, 0.0f, 6.0f, 0.5f, 1.0f, truth);
    const LSQ_SPARSE_MODEL_FUNCTION base = g.Sparse_Model();
    int reports = 0;
    std::vector<double> chi2_seen;
    LSQ_SPARSE_MODEL_FUNCTION model = [&](int m, int n, const Array1<float>& p, Array1<float>& fvec,
                                          LSQ_SPARSE_JACOBIAN_TYPE& fjac, int& iflag) {
        if (iflag == 0) {
            double s = 0.0;
            for (int i = 1; i <= m; ++i) s += static_cast<double>(fvec(i)) * fvec(i);
            chi2_seen.push_back(s / (m - n));
            if (++reports == 3) iflag = -1;
            return;
        }
        base(m, n, p, fvec, fjac, iflag);
    };
    LSQ_STATE_VECTOR_TYPE vs = One_Peak_Start();
    LSQ_CONDITIONS_TYPE c;
    float chi2 = 0.0f;
    std::string info;
    LM_Der(model, 61, c, vs, chi2, false, info);
    EXPECT_FALSE(c.reached);
    EXPECT_EQ(info, kLsqStopped);
    ASSERT_EQ(chi2_seen.size(), 3u);
    EXPECT_LT(chi2_seen[2], chi2_seen[0]);           // each report is a better point
    EXPECT_NEAR(chi2, chi2_seen[2], 1e-4 * chi2);   // and the last one is what stays
    EXPECT_NE(vs.pv(3), kStart[2]);
}

TEST(LmDif, ForwardDifferencesReachTheAnalyticFit) {
    std::vector<float> truth;
    const GAUSS_FIT_PROBLEM g = Gauss_Fit_Problem(2, 121, 0.0f, 12.0f, 0.6f, 1.0f, truth);
    const float start[8] = {40.0f, 0.0f, 3.1f, 170.0f, 0.7f, 8.8f, 260.0f, 0.5f};
    LSQ_STATE_VECTOR_TYPE a, b;
    Allocate_State_Vector(a, 8);
    for (int k = 1; k <= 8; ++k) {
        a.pv(k) = start[k - 1];
        a.code(k) = 1;
    }
    b = a;
    LSQ_CONDITIONS_TYPE ca, cb;
    ca.icyc = cb.icyc = 2000;
    float chi2a = 0.0f, chi2b = 0.0f;
    std::string ia, ib;
    LM_Der(g.Sparse_Model(), 121, ca, a, chi2a, true, ia);
    LSQ_FUNCTION plain = [&g](int, int, const Array1<float>& p, Array1<float>& fvec, int& iflag) {
        if (iflag == 1) g.Eval(p, fvec, nullptr);
    };
    LSQ_OUTCOME_TYPE out;
    LM_Dif(plain, 121, cb, b, chi2b, true, ib, &out);
    ASSERT_TRUE(ca.reached) << ia;
    ASSERT_TRUE(cb.reached) << ib;
    EXPECT_GT(out.nfev, 8 * out.njev);  // the differences count as calls
    for (int k = 1; k <= 8; ++k) {
        EXPECT_NEAR(b.pv(k), a.pv(k), 0.05 * a.spv(k)) << k;  // well inside the deviation
        EXPECT_NEAR(b.spv(k), a.spv(k), 0.02 * a.spv(k)) << k;
    }
    EXPECT_NEAR(chi2a, chi2b, 1e-4 * chi2a);

    Array1<float> x(8), sx(8);
    for (int k = 1; k <= 8; ++k) x(k) = start[k - 1];
    LSQ_CONDITIONS_TYPE cv;
    cv.icyc = 2000;
    LM_DifV(plain, 121, cv, x, sx, chi2b, true, ib);
    EXPECT_NEAR(x(6), a.pv(6), 1e-3);
}
