// The sparse route. A profile fit of a few hundred peaks has well over a
// thousand free parameters, but each observation depends only on the
// globals, two background values and the few peaks within reach, so its
// Jacobian row holds a few tens of values. A dense QR of the whole Jacobian
// costs m n^2 per iteration (seconds at 10^4 x 1600); the normal matrix
// J^T J formed from the rows costs m k^2 for k values a row, and is sparse
// but for the global rows and columns, which the minimum-degree ordering of
// a sparse Cholesky puts last. So the step is found from the damped normal
// equations (J^T J + par D^2) p = -J^T f by Eigen's SimplicialLDLT: the
// pattern is analysed once per Jacobian and each trial of par is one
// numerical factorisation. The Levenberg parameter follows Moré's lmpar,
// with the norms it needs taken from the same factorisation, so the trust
// region and the stop tests are those of the dense route. Squaring the
// condition number costs accuracy only near a singular problem, which the
// final curvature check reports anyway.
#include <Eigen/SparseCholesky>
#include <Eigen/SparseCore>
#include <cmath>
#include <limits>

#include "peaks/lm_routes.h"

namespace hxl {

namespace {

using SPARSE_ROWS = Eigen::SparseMatrix<double, Eigen::RowMajor>;
using SPARSE_COLS = Eigen::SparseMatrix<double>;

// J as an Eigen matrix, in double.
SPARSE_ROWS To_Eigen(const LSQ_SPARSE_JACOBIAN_TYPE& fjac, std::vector<double>& values) {
    values.assign(fjac.Val().begin(), fjac.Val().end());
    Eigen::Map<const SPARSE_ROWS> map(fjac.Rows(), fjac.Cols(), static_cast<Eigen::Index>(values.size()),
                                      fjac.Row_Start().data(), fjac.Col().data(), values.data());
    return SPARSE_ROWS(map);
}

// J^T J with every diagonal entry stored, so that a damping term has its place.
SPARSE_COLS Normal_Matrix(const SPARSE_ROWS& j) {
    const Eigen::Index n = j.cols();
    SPARSE_COLS zero(n, n);
    zero.setIdentity();
    zero *= 0.0;
    SPARSE_COLS a = SPARSE_COLS(j.transpose() * j) + zero;
    a.makeCompressed();
    return a;
}

struct SPARSE_ENGINE {
    int m, n;
    const LM_SPARSE_JACOBIAN& jac;
    LSQ_SPARSE_JACOBIAN_TYPE rows;
    std::vector<double> values;
    SPARSE_ROWS j;
    SPARSE_COLS a, damped;
    std::vector<Eigen::Index> diag_pos;  // place of each diagonal entry in a's values
    Eigen::VectorXd g, acnorm, dx, w, y;
    Eigen::SimplicialLDLT<SPARSE_COLS> ldlt;
    double dwarf = std::numeric_limits<double>::min();

    SPARSE_ENGINE(int m_, int n_, const LM_SPARSE_JACOBIAN& jc) : m(m_), n(n_), jac(jc) {}

    int Jacobian(const double* x, const double* fvec) {
        rows.Clear(m, n);
        const int st = jac(x, rows);
        if (st < 0) return st;
        j = To_Eigen(rows, values);
        a = Normal_Matrix(j);
        diag_pos.assign(static_cast<std::size_t>(n), 0);
        for (Eigen::Index c = 0; c < n; ++c)
            for (Eigen::Index k = a.outerIndexPtr()[c]; k < a.outerIndexPtr()[c + 1]; ++k)
                if (a.innerIndexPtr()[k] == c) diag_pos[static_cast<std::size_t>(c)] = k;
        acnorm.resize(n);
        for (Eigen::Index c = 0; c < n; ++c) acnorm(c) = std::sqrt(std::max(a.valuePtr()[diag_pos[static_cast<std::size_t>(c)]], 0.0));
        g = j.transpose() * Eigen::Map<const Eigen::VectorXd>(fvec, m);
        damped = a;
        ldlt.analyzePattern(damped);
        return 0;
    }
    const double* Acnorm() const { return acnorm.data(); }
    double Gnorm(double fnorm) const {
        double r = 0.0;
        for (int c = 0; c < n; ++c)
            if (acnorm(c) != 0.0) r = std::max(r, std::fabs(g(c) / fnorm / acnorm(c)));
        return r;
    }

    // Factorises J^T J + par D^2; false when a pivot vanished.
    bool Factorise(const double* diag, double par) {
        std::copy(a.valuePtr(), a.valuePtr() + a.nonZeros(), damped.valuePtr());
        for (int c = 0; c < n; ++c) damped.valuePtr()[diag_pos[static_cast<std::size_t>(c)]] += par * diag[c] * diag[c];
        ldlt.factorize(damped);
        if (ldlt.info() != Eigen::Success) return false;
        const Eigen::VectorXd& d = ldlt.vectorD();
        for (int k = 0; k < n; ++k)
            if (!(d(k) > 0.0)) return false;
        return true;
    }
    // w^T M^{-1} w for the matrix last factorised.
    double Inverse_Form(const Eigen::VectorXd& v) {
        y = ldlt.solve(v);
        return v.dot(y);
    }

    void Step(const double* diag, double delta, double& par, double* p) {
        const Eigen::Map<const Eigen::VectorXd> d(diag, n);
        Eigen::Map<Eigen::VectorXd> x(p, n);
        // the Gauss-Newton step; a rank-deficient J takes a whisker of damping
        bool nonsingular = Factorise(diag, 0.0);
        if (nonsingular) {
            const Eigen::VectorXd& dd = ldlt.vectorD();
            const double big = dd.cwiseAbs().maxCoeff();
            for (int k = 0; k < n; ++k)
                if (dd(k) <= 1e-13 * big) nonsingular = false;  // lmpar's exact zero, with room for rounding
        }
        if (!nonsingular) {
            double amax = 0.0, dmax = 0.0;
            for (int c = 0; c < n; ++c) {
                amax = std::max(amax, a.valuePtr()[diag_pos[static_cast<std::size_t>(c)]]);
                dmax = std::max(dmax, diag[c] * diag[c]);
            }
            Factorise(diag, amax > 0.0 ? n * 2.2e-16 * amax / dmax : 1.0);
        }
        x = -ldlt.solve(g);
        dx = d.cwiseProduct(x);
        double dxnorm = dx.norm();
        double fp = dxnorm - delta;
        if (fp <= 0.1 * delta) {
            par = 0.0;
            return;
        }
        double parl = 0.0;
        if (nonsingular) {
            w = d.cwiseProduct(dx) / dxnorm;
            const double t = Inverse_Form(w);  // |R^-T w|^2
            parl = fp / delta / t;
        }
        const double gnorm = g.cwiseQuotient(d).norm();
        double paru = gnorm / delta;
        if (paru == 0.0) paru = dwarf / std::min(delta, 0.1);
        par = std::max(par, parl);
        par = std::min(par, paru);
        if (par == 0.0) par = gnorm / dxnorm;
        for (int iter = 1;; ++iter) {
            if (par == 0.0) par = std::max(dwarf, 0.001 * paru);
            if (!Factorise(diag, par)) {  // cannot happen for par > 0 but on a bad Jacobian
                x.setZero();
                return;
            }
            x = -ldlt.solve(g);
            dx = d.cwiseProduct(x);
            dxnorm = dx.norm();
            const double temp = fp;
            fp = dxnorm - delta;
            if (std::fabs(fp) <= 0.1 * delta || (parl == 0.0 && fp <= temp && temp < 0.0) || iter == 10) return;
            w = d.cwiseProduct(dx) / dxnorm;
            const double t = Inverse_Form(w);
            const double parc = fp / delta / t;
            if (fp > 0.0) parl = std::max(parl, par);
            if (fp < 0.0) paru = std::min(paru, par);
            par = std::max(parl, par + parc);
        }
    }
    double Jp_Norm(const double* p) { return (j * Eigen::Map<const Eigen::VectorXd>(p, n)).norm(); }
};

}  // namespace

void LM_Run_Sparse(int m, int n, std::vector<double>& x, std::vector<double>& fvec, const LM_EVAL& eval,
                   const LM_REPORT& report, const LM_SPARSE_JACOBIAN& jac, const LM_TOLERANCES& t, LM_RUN_TYPE& run) {
    SPARSE_ENGINE engine(m, n, jac);
    LM_Iterate(engine, m, n, x, fvec, eval, report, t.ftol, t.xtol, t.gtol, t.maxfev, run);
}

bool Sparse_Covariance(const LSQ_SPARSE_JACOBIAN_TYPE& fjac, std::vector<float>& covar, int& bad) {
    bad = 0;
    std::vector<double> values;
    const SPARSE_ROWS j = To_Eigen(fjac, values);
    const SPARSE_COLS a = Normal_Matrix(j);
    const Eigen::Index n = a.cols();
    Eigen::SimplicialLDLT<SPARSE_COLS> ldlt(a);
    const Eigen::VectorXd& d = ldlt.vectorD();
    // The pivots come in the order of the fill-reducing permutation: name
    // the parameter whose pivot vanished first in that order.
    const auto& perm = ldlt.permutationP().indices();
    Eigen::VectorXi back(n);
    for (Eigen::Index c = 0; c < n; ++c) back(perm(c)) = static_cast<int>(c);
    for (Eigen::Index k = 0; k < n; ++k) {
        const int c = back(k);
        if (!(d(k) > kSingularPivot * a.coeff(c, c)) || !(a.coeff(c, c) > 0.0)) {
            bad = c + 1;
            return false;
        }
    }
    if (ldlt.info() != Eigen::Success) {
        bad = n > 0 ? static_cast<int>(n) : 1;
        return false;
    }
    covar.assign(static_cast<std::size_t>(n) * static_cast<std::size_t>(n), 0.0f);
    Eigen::VectorXd e = Eigen::VectorXd::Zero(n), col(n);
    for (Eigen::Index c = 0; c < n; ++c) {
        e(c) = 1.0;
        col = ldlt.solve(e);
        e(c) = 0.0;
        for (Eigen::Index r = 0; r < n; ++r) covar[static_cast<std::size_t>(c) * n + r] = static_cast<float>(col(r));
    }
    return true;
}

}  // namespace hxl
