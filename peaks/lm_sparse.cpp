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

using SPARSE_COLS = Eigen::SparseMatrix<double>;

// J^T J, lower triangle by columns with every diagonal entry stored (so that
// a damping term has its place), formed straight from J's rows: row i adds
// J(i,c) J(i,q) at (q, c) for each pair q >= c of its entries. The pattern
// is kept while J's pairs fall inside it, as they do between most Jacobians
// of a fit (a peak's reach moves by a point now and then); only when it is
// laid out anew is the Cholesky's ordering analysed again.
struct NORMAL_MATRIX {
    std::vector<int> jstart, jcol;        // J's pattern when `a` was laid out
    std::vector<int> tstart, trow, tpos;  // J by columns: rows, and places in J's values
    std::vector<int> where, stamp, fill;  // scatter: place of row q in the current column of a, and that column
    SPARSE_COLS a;

    // True when the pattern was laid out anew.
    bool Form(const LSQ_SPARSE_JACOBIAN_TYPE& f) {
        const bool same = f.Row_Start() == jstart && f.Col() == jcol && a.cols() == f.Cols();
        if (same ? Add_Up(f, false) : a.cols() == f.Cols() && Add_Up(f, true)) return false;
        Lay_Out(f);
        return true;
    }

private:
    // The sums into the laid-out pattern; with `check`, false as soon as a
    // pair falls outside it (the peaks' reach grew), else the pattern is kept
    // for J's as the layout it now serves.
    bool Add_Up(const LSQ_SPARSE_JACOBIAN_TYPE& f, bool check) {
        const int n = f.Cols();
        const std::vector<int>&rs = f.Row_Start(), &cs = f.Col();
        const std::vector<float>& v = f.Val();
        if (check && !Transpose(f)) return false;
        double* val = a.valuePtr();
        const int* outer = a.outerIndexPtr();
        const int* inner = a.innerIndexPtr();
        std::fill(val, val + a.nonZeros(), 0.0);
        where.resize(static_cast<std::size_t>(n));
        stamp.assign(static_cast<std::size_t>(n), -1);
        for (int c = 0; c < n; ++c) {
            for (int k = outer[c]; k < outer[c + 1]; ++k) {
                where[static_cast<std::size_t>(inner[k])] = k;
                stamp[static_cast<std::size_t>(inner[k])] = c;
            }
            for (int t = tstart[static_cast<std::size_t>(c)]; t < tstart[static_cast<std::size_t>(c) + 1]; ++t) {
                const int r = trow[static_cast<std::size_t>(t)], at = tpos[static_cast<std::size_t>(t)];
                const double vc = v[static_cast<std::size_t>(at)];
                // rows are sorted: the entries from c's own on are those with q >= c
                for (int k = at; k < rs[static_cast<std::size_t>(r) + 1]; ++k) {
                    const std::size_t q = static_cast<std::size_t>(cs[static_cast<std::size_t>(k)]);
                    if (check && stamp[q] != c) return false;
                    val[where[q]] += vc * v[static_cast<std::size_t>(k)];
                }
            }
        }
        if (check) jstart = rs, jcol = cs;
        return true;
    }

    // J by columns; false when a row is not sorted.
    bool Transpose(const LSQ_SPARSE_JACOBIAN_TYPE& f) {
        const int n = f.Cols(), m = f.Rows();
        const std::vector<int>&rs = f.Row_Start(), &cs = f.Col();
        tstart.assign(static_cast<std::size_t>(n) + 1, 0);
        for (int c : cs) ++tstart[static_cast<std::size_t>(c) + 1];
        for (int c = 0; c < n; ++c) tstart[static_cast<std::size_t>(c) + 1] += tstart[static_cast<std::size_t>(c)];
        trow.resize(cs.size());
        tpos.resize(cs.size());
        fill.assign(tstart.begin(), tstart.end() - 1);
        for (int r = 0; r < m; ++r)
            for (int k = rs[static_cast<std::size_t>(r)]; k < rs[static_cast<std::size_t>(r) + 1]; ++k) {
                if (k > rs[static_cast<std::size_t>(r)] && cs[static_cast<std::size_t>(k)] <= cs[static_cast<std::size_t>(k) - 1])
                    return false;
                const int t = fill[static_cast<std::size_t>(cs[static_cast<std::size_t>(k)])]++;
                trow[static_cast<std::size_t>(t)] = r;
                tpos[static_cast<std::size_t>(t)] = k;
            }
        return true;
    }

    // The pattern and the sums in one pass, each column gathered in a dense
    // accumulator.
    void Lay_Out(const LSQ_SPARSE_JACOBIAN_TYPE& f) {
        const int n = f.Cols();
        const std::vector<int>&rs = f.Row_Start(), &cs = f.Col();
        const std::vector<float>& v = f.Val();
        jstart = rs, jcol = cs;
        Transpose(f);
        // The old pattern stays in the new one (its pairs summed as zero): a peak's reach
        // moves back and forth by a point between Jacobians, and a pattern that holds both
        // is laid out, and its ordering analysed, once instead of at every move.
        const SPARSE_COLS old = a.cols() == n ? a : SPARSE_COLS();
        std::vector<int> mark(static_cast<std::size_t>(n), -1), outer(static_cast<std::size_t>(n) + 1, 0), inner, list;
        std::vector<double> sum(static_cast<std::size_t>(n), 0.0), values;
        for (int c = 0; c < n; ++c) {
            list.assign(1, c);
            mark[static_cast<std::size_t>(c)] = c;
            sum[static_cast<std::size_t>(c)] = 0.0;
            if (old.cols() == n)
                for (int k = old.outerIndexPtr()[c]; k < old.outerIndexPtr()[c + 1]; ++k) {
                    const std::size_t q = static_cast<std::size_t>(old.innerIndexPtr()[k]);
                    if (mark[q] != c) mark[q] = c, sum[q] = 0.0, list.push_back(static_cast<int>(q));
                }
            for (int t = tstart[static_cast<std::size_t>(c)]; t < tstart[static_cast<std::size_t>(c) + 1]; ++t) {
                const int r = trow[static_cast<std::size_t>(t)], at = tpos[static_cast<std::size_t>(t)];
                const double vc = v[static_cast<std::size_t>(at)];
                for (int k = at; k < rs[static_cast<std::size_t>(r) + 1]; ++k) {
                    const std::size_t q = static_cast<std::size_t>(cs[static_cast<std::size_t>(k)]);
                    if (mark[q] != c) mark[q] = c, sum[q] = 0.0, list.push_back(static_cast<int>(q));
                    sum[q] += vc * v[static_cast<std::size_t>(k)];
                }
            }
            std::sort(list.begin(), list.end());
            inner.insert(inner.end(), list.begin(), list.end());
            for (int q : list) values.push_back(sum[static_cast<std::size_t>(q)]);
            outer[static_cast<std::size_t>(c) + 1] = static_cast<int>(inner.size());
        }
        Eigen::Map<const SPARSE_COLS> map(n, n, static_cast<Eigen::Index>(inner.size()), outer.data(), inner.data(),
                                          values.data());
        a = map;
        a.makeCompressed();
    }
};

struct SPARSE_ENGINE {
    int m, n;
    const LM_SPARSE_JACOBIAN& jac;
    LSQ_SPARSE_JACOBIAN_TYPE rows;
    NORMAL_MATRIX normal;
    SPARSE_COLS damped;
    Eigen::VectorXd g, acnorm, dx, w, y;
    Eigen::SimplicialLDLT<SPARSE_COLS> ldlt;
    double dwarf = std::numeric_limits<double>::min();
    const SPARSE_COLS& a = normal.a;

    SPARSE_ENGINE(int m_, int n_, const LM_SPARSE_JACOBIAN& jc) : m(m_), n(n_), jac(jc) {}

    // The diagonal entry of column c: the first of its lower triangle.
    double Diagonal(int c) const { return a.valuePtr()[a.outerIndexPtr()[c]]; }

    int Jacobian(const double* x, const double* fvec) {
        rows.Clear(m, n);
        const int st = jac(x, rows);
        if (st < 0) return st;
        const bool changed = normal.Form(rows);
        acnorm.resize(n);
        for (int c = 0; c < n; ++c) acnorm(c) = std::sqrt(std::max(Diagonal(c), 0.0));
        g.setZero(n);
        const std::vector<int>&rs = rows.Row_Start(), &cs = rows.Col();
        const std::vector<float>& v = rows.Val();
        for (int r = 0; r < m; ++r)
            for (int k = rs[static_cast<std::size_t>(r)]; k < rs[static_cast<std::size_t>(r) + 1]; ++k)
                g(cs[static_cast<std::size_t>(k)]) += static_cast<double>(v[static_cast<std::size_t>(k)]) * fvec[r];
        if (changed) {
            damped = a;
            ldlt.analyzePattern(damped);
        }
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
        for (int c = 0; c < n; ++c) damped.valuePtr()[a.outerIndexPtr()[c]] += par * diag[c] * diag[c];
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
                amax = std::max(amax, Diagonal(c));
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
    double Jp_Norm(const double* p) {
        const std::vector<int>&rs = rows.Row_Start(), &cs = rows.Col();
        const std::vector<float>& v = rows.Val();
        double sum = 0.0;
        for (int r = 0; r < m; ++r) {
            double jp = 0.0;
            for (int k = rs[static_cast<std::size_t>(r)]; k < rs[static_cast<std::size_t>(r) + 1]; ++k)
                jp += static_cast<double>(v[static_cast<std::size_t>(k)]) * p[cs[static_cast<std::size_t>(k)]];
            sum += jp * jp;
        }
        return std::sqrt(sum);
    }
};

}  // namespace

void LM_Run_Sparse(int m, int n, std::vector<double>& x, std::vector<double>& fvec, const LM_EVAL& eval,
                   const LM_REPORT& report, const LM_SPARSE_JACOBIAN& jac, const LM_TOLERANCES& t, LM_RUN_TYPE& run) {
    SPARSE_ENGINE engine(m, n, jac);
    LM_Iterate(engine, m, n, x, fvec, eval, report, t.ftol, t.xtol, t.gtol, t.maxfev, run);
}

bool Sparse_Covariance(const LSQ_SPARSE_JACOBIAN_TYPE& fjac, std::vector<float>& covar, int& bad) {
    bad = 0;
    NORMAL_MATRIX normal;
    normal.Form(fjac);
    const SPARSE_COLS& a = normal.a;
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
