// The dense route: cminpack's own QR with column pivoting and lmpar, so the
// steps are those of lmder.
#include <cminpack.h>

#include <Eigen/Dense>
#include <cmath>

#include "peaks/lm_routes.h"
#include "support/matrix_inverse.h"

namespace hxl {

double Lsq_Norm(int n, const double* x) { return enorm(n, x); }
double Lsq_Epsilon() { return dpmpar(1); }

namespace {

struct DENSE_ENGINE {
    int m, n;
    const LM_DENSE_JACOBIAN& jac;
    std::vector<double> fjac, acnorm, rdiag, qtf, wa, wa1, wa2, wa3, wa4;
    std::vector<int> ipvt;

    DENSE_ENGINE(int m_, int n_, const LM_DENSE_JACOBIAN& j)
        : m(m_), n(n_), jac(j), fjac(static_cast<std::size_t>(m_) * n_), acnorm(n_), rdiag(n_), qtf(n_), wa(n_),
          wa1(n_), wa2(n_), wa3(n_), wa4(m_), ipvt(n_) {}

    double& r(int i, int j) { return fjac[static_cast<std::size_t>(j) * m + i]; }

    int Jacobian(const double* x, const double* fvec) {
        const int st = jac(x, fvec, fjac.data());
        if (st < 0) return st;
        qrfac(m, n, fjac.data(), m, 1, ipvt.data(), n, rdiag.data(), acnorm.data(), wa.data());
        // Q^T fvec, as lmder forms it
        wa4.assign(fvec, fvec + m);
        for (int j = 0; j < n; ++j) {
            if (r(j, j) != 0.0) {
                double sum = 0.0;
                for (int i = j; i < m; ++i) sum += r(i, j) * wa4[i];
                const double temp = -sum / r(j, j);
                for (int i = j; i < m; ++i) wa4[i] += r(i, j) * temp;
            }
            r(j, j) = rdiag[j];
            qtf[j] = wa4[j];
        }
        return 0;
    }
    const double* Acnorm() const { return acnorm.data(); }
    double Gnorm(double fnorm) {
        double g = 0.0;
        for (int j = 0; j < n; ++j) {
            const int l = ipvt[j] - 1;
            if (acnorm[l] == 0.0) continue;
            double sum = 0.0;
            for (int i = 0; i <= j; ++i) sum += r(i, j) * (qtf[i] / fnorm);
            g = std::max(g, std::fabs(sum / acnorm[l]));
        }
        return g;
    }
    void Step(const double* diag, double delta, double& par, double* p) {
        lmpar(n, fjac.data(), m, ipvt.data(), diag, qtf.data(), delta, &par, p, wa1.data(), wa2.data(), wa3.data());
        for (int j = 0; j < n; ++j) p[j] = -p[j];
    }
    double Jp_Norm(const double* p) {
        for (int j = 0; j < n; ++j) {
            wa3[j] = 0.0;
        }
        for (int j = 0; j < n; ++j) {
            const double temp = p[ipvt[j] - 1];
            for (int i = 0; i <= j; ++i) wa3[i] += r(i, j) * temp;
        }
        return enorm(n, wa3.data());
    }
};

}  // namespace

void LM_Run_Dense(int m, int n, std::vector<double>& x, std::vector<double>& fvec, const LM_EVAL& eval,
                  const LM_REPORT& report, const LM_DENSE_JACOBIAN& jac, const LM_TOLERANCES& t, LM_RUN_TYPE& run) {
    DENSE_ENGINE engine(m, n, jac);
    LM_Iterate(engine, m, n, x, fvec, eval, report, t.ftol, t.xtol, t.gtol, t.maxfev, run);
}

bool Dense_Covariance(int m, int n, const double* fjac, std::vector<float>& covar, int& bad) {
    bad = 0;
    Eigen::Map<const Eigen::MatrixXd> j(fjac, m, n);
    Eigen::MatrixXd a = j.transpose() * j;
    // An unpivoted LDL^T names the first parameter that the ones before it explain.
    Eigen::MatrixXd l = a;
    for (int k = 0; k < n && bad == 0; ++k) {
        for (int s = 0; s < k; ++s) l(k, k) -= l(k, s) * l(k, s) * l(s, s);
        if (!(l(k, k) > kSingularPivot * a(k, k)) || !(a(k, k) > 0.0)) {
            bad = k + 1;
            break;
        }
        for (int i = k + 1; i < n; ++i) {
            double v = l(i, k);
            for (int s = 0; s < k; ++s) v -= l(i, s) * l(k, s) * l(s, s);
            l(i, k) = v / l(k, k);
        }
    }
    if (bad != 0) return false;
    bool singular = false;
    Invert_Matrix(a, singular);
    if (singular) {
        bad = n;
        return false;
    }
    covar.assign(a.data(), a.data() + static_cast<std::size_t>(n) * n);
    return true;
}

}  // namespace hxl
