// The two routes of the solver: the dense one step for step against
// cminpack's own lmder driver, the sparse one against the dense one.
#include <gtest/gtest.h>
#include <cminpack.h>

#include <cmath>

#include "peaks/lm_der.h"
#include "peaks/lm_routes.h"
#include "tests/peaks/lsq_fixture.h"

using namespace hxl;

namespace {

// Two Gaussians and a constant in double: y = c + sum h exp(-((x - p)/w)^2 / 2).
struct DOUBLE_PROBLEM {
    std::vector<double> x, y;
    void Residuals(const double* p, double* f) const {
        for (std::size_t i = 0; i < x.size(); ++i) {
            double yc = p[0];
            for (int k = 0; k < 2; ++k) {
                const double u = (x[i] - p[1 + 3 * k]) / p[3 + 3 * k];
                yc += p[2 + 3 * k] * std::exp(-0.5 * u * u);
            }
            f[i] = y[i] - yc;
        }
    }
    void Jacobian(const double* p, double* fjac) const {
        const std::size_t m = x.size();
        for (std::size_t i = 0; i < m; ++i) {
            fjac[i] = -1.0;
            for (int k = 0; k < 2; ++k) {
                const double w = p[3 + 3 * k], h = p[2 + 3 * k], u = (x[i] - p[1 + 3 * k]) / w, e = std::exp(-0.5 * u * u);
                fjac[(1 + 3 * k) * m + i] = -h * e * u / w;
                fjac[(2 + 3 * k) * m + i] = -e;
                fjac[(3 + 3 * k) * m + i] = -h * e * u * u / w;
            }
        }
    }
};

int Lmder_Callback(void* p, int, int, const double* x, double* fvec, double* fjac, int, int iflag) {
    const auto* d = static_cast<const DOUBLE_PROBLEM*>(p);
    if (iflag == 1) d->Residuals(x, fvec);
    if (iflag == 2) d->Jacobian(x, fjac);
    return 0;
}

}  // namespace

TEST(LmRoutes, DenseRouteTakesTheStepsOfCminpackLmder) {
    DOUBLE_PROBLEM d;
    for (int i = 0; i < 80; ++i) {
        const double x = 0.1 * i;
        d.x.push_back(x);
        d.y.push_back(3.0 + 10.0 * std::exp(-0.5 * std::pow((x - 3.0) / 0.4, 2)) +
                      6.0 * std::exp(-0.5 * std::pow((x - 5.0) / 0.6, 2)) + 0.05 * std::sin(7.0 * i));
    }
    const int m = 80, n = 7;
    const std::vector<double> start = {2.0, 3.3, 8.0, 0.6, 4.8, 5.0, 0.5};
    for (double tol : {1e-5, 1e-10, 0.0}) {
        for (int maxfev : {4, 400}) {
            // reference: the library's own driver
            std::vector<double> xr = start, fr(m), fjac(m * n), diag(n), qtf(n), w1(n), w2(n), w3(n), w4(m);
            std::vector<int> ipvt(n);
            int nfev = 0, njev = 0;
            const int info = lmder(Lmder_Callback, &d, m, n, xr.data(), fr.data(), fjac.data(), m, tol, tol, 0.0, maxfev,
                                   diag.data(), 1, 100.0, 0, &nfev, &njev, ipvt.data(), qtf.data(), w1.data(), w2.data(),
                                   w3.data(), w4.data());
            // ours
            std::vector<double> x = start, f(m);
            d.Residuals(x.data(), f.data());
            LM_RUN_TYPE run;
            LM_TOLERANCES t;
            t.ftol = t.xtol = tol;
            t.maxfev = maxfev;
            LM_Run_Dense(
                m, n, x, f, [&](const double* xx, double* ff) { d.Residuals(xx, ff); return 0; },
                [](const double*, const double*) { return 0; },
                [&](const double* xx, const double*, double* fj) { d.Jacobian(xx, fj); return 0; }, t, run);
            EXPECT_EQ(run.info, info) << tol << " " << maxfev;
            EXPECT_EQ(run.nfev, nfev);
            EXPECT_EQ(run.njev, njev);
            for (int j = 0; j < n; ++j) EXPECT_EQ(x[static_cast<std::size_t>(j)], xr[static_cast<std::size_t>(j)]) << j;
        }
    }
}

TEST(LmRoutes, SparseAndDenseAgreeOnPeaksOnABackground) {
    std::vector<float> truth;
    // five peaks, close enough to overlap, with noise
    const GAUSS_FIT_PROBLEM g = Gauss_Fit_Problem(5, 400, 10.0f, 30.0f, 0.7f, 1.5f, truth);
    const int np = g.Params();
    LSQ_STATE_VECTOR_TYPE start;
    Allocate_State_Vector(start, np);
    for (int k = 1; k <= np; ++k) {
        // off the truth: positions by 0.15, heights by 20 %, widths by 25 %
        const float t = truth[static_cast<std::size_t>(k - 1)];
        const int kind = k <= 2 ? 0 : (k - 3) % 3 + 1;
        start.pv(k) = kind == 0 ? t * 0.9f : kind == 1 ? t + 0.15f : kind == 2 ? t * 1.2f : t * 1.25f;
        start.code(k) = 1;
        start.nampar(k) = "p" + std::to_string(k);
    }
    for (float tol : {1e-5f, 1e-3f}) {
        LSQ_STATE_VECTOR_TYPE dv = start, sv = start;
        LSQ_CONDITIONS_TYPE dc, sc;
        dc.tol = sc.tol = tol;
        dc.icyc = sc.icyc = 500;
        float dchi2 = 0.0f, schi2 = 0.0f;
        std::string dinfo, sinfo;
        LSQ_OUTCOME_TYPE dout, sout;
        LM_Der(g.Sparse_Model(), 400, dc, dv, dchi2, true, dinfo, &dout, Lsq_Route::Dense);
        LM_Der(g.Sparse_Model(), 400, sc, sv, schi2, true, sinfo, &sout, Lsq_Route::Sparse);
        EXPECT_FALSE(dout.sparse);
        EXPECT_TRUE(sout.sparse);
        ASSERT_TRUE(dc.reached) << dinfo;
        ASSERT_TRUE(sc.reached) << sinfo;
        // the same stop text (after the initial chi2, which is the same start)
        EXPECT_EQ(dinfo, sinfo);
        for (int k = 1; k <= np; ++k) {
            EXPECT_NEAR(sv.pv(k), dv.pv(k), 1e-4 * std::fabs(dv.pv(k))) << k;
            EXPECT_NEAR(sv.spv(k), dv.spv(k), 1e-3 * dv.spv(k) + 1e-12) << k;
        }
        EXPECT_NEAR(schi2, dchi2, 1e-5 * dchi2);
        EXPECT_NEAR(dchi2, 0.75, 0.12);  // deviations uniform within 1.5 sigma: variance 1.5^2/3
        // the same covariance, whole
        ASSERT_EQ(sout.covar.size(), dout.covar.size());
        const std::size_t n = static_cast<std::size_t>(dout.n);
        for (std::size_t r = 0; r < n; ++r)
            for (std::size_t c = 0; c < n; ++c)
                EXPECT_NEAR(sout.covar[c * n + r], dout.covar[c * n + r],
                            1e-4 * std::sqrt(dout.covar[r * n + r] * dout.covar[c * n + c]));
    }
}

TEST(LmRoutes, ManyParametersTakeTheSparseRouteByThemselves) {
    std::vector<float> truth;
    const GAUSS_FIT_PROBLEM g = Gauss_Fit_Problem(20, 2000, 0.0f, 100.0f, 0.8f, 1.0f, truth);
    const int np = g.Params();
    ASSERT_GE(np, kLsqSparseFrom);
    LSQ_STATE_VECTOR_TYPE vs;
    Allocate_State_Vector(vs, np);
    for (int k = 1; k <= np; ++k) {
        const int kind = k <= 2 ? 0 : (k - 3) % 3 + 1;
        vs.pv(k) = truth[static_cast<std::size_t>(k - 1)] * (kind == 1 ? 1.0f : 1.1f) + (kind == 1 ? 0.1f : 0.0f);
        vs.code(k) = 1;
    }
    LSQ_CONDITIONS_TYPE c;
    c.icyc = 500;
    float chi2 = 0.0f;
    std::string info;
    LSQ_OUTCOME_TYPE out;
    LM_Der(g.Sparse_Model(), 2000, c, vs, chi2, true, info, &out);
    EXPECT_TRUE(out.sparse);
    ASSERT_TRUE(c.reached) << info;
    for (int k = 3; k <= np; k += 3) EXPECT_NEAR(vs.pv(k), truth[static_cast<std::size_t>(k - 1)], 4.0f * vs.spv(k)) << k;
    EXPECT_LT(chi2, 0.5f);
}
