#include "peaks/lm_der.h"

#include <cfloat>
#include <cmath>
#include <cstdio>

#include "peaks/lm_routes.h"

namespace hxl {

namespace {

std::string Number(const char* fmt, double v) {
    char buf[64];
    std::snprintf(buf, sizeof buf, fmt, v);
    return buf;
}

std::string Tol_Text(float tol) { return Number("%.5E", tol); }

bool All_Finite(const float* v, std::size_t k) {
    for (std::size_t i = 0; i < k; ++i)
        if (!std::isfinite(v[i])) return false;
    return true;
}

// The model in one of its three forms, seen by the solver in double.
struct MODEL_LINK {
    const LSQ_MODEL_FUNCTION* dense = nullptr;
    const LSQ_SPARSE_MODEL_FUNCTION* sparse = nullptr;
    const LSQ_FUNCTION* plain = nullptr;
    int m = 0, n = 0;
    Array1<float> xf, fv;
    LSQ_DENSE_JACOBIAN_TYPE dj;
    LSQ_SPARSE_JACOBIAN_TYPE sj;  // for the dense route of a row-wise model
    bool nan = false;

    void Set_X(const double* x) {
        for (int j = 1; j <= n; ++j) xf(j) = static_cast<float>(x[j - 1]);
    }
    int Call(int flag) {
        int iflag = flag;
        if (dense) (*dense)(m, n, xf, fv, dj, iflag);
        else if (sparse) (*sparse)(m, n, xf, fv, sj, iflag);
        else (*plain)(m, n, xf, fv, iflag);
        return iflag < 0 ? -1 : 0;
    }
    int Eval(const double* x, double* fvec) {
        Set_X(x);
        if (Call(1) < 0) return -1;
        if (!All_Finite(fv.data(), static_cast<std::size_t>(m))) {
            nan = true;
            return -2;
        }
        for (int i = 0; i < m; ++i) fvec[i] = fv.data()[i];
        return 0;
    }
    int Report(const double* x, const double* fvec) {
        Set_X(x);
        for (int i = 0; i < m; ++i) fv.data()[i] = static_cast<float>(fvec[i]);
        return Call(0);
    }
    // The dense Jacobian at x, by the model or by forward differences.
    int Dense_Jacobian(const double* x, const double* f0, double* fjac, int& nfev) {
        const std::size_t mm = static_cast<std::size_t>(m);
        if (plain) {
            std::vector<double> f1(mm);
            const float eps = std::sqrt(FLT_EPSILON);
            std::vector<double> xs(x, x + n);
            for (int j = 0; j < n; ++j) {
                const float xj = static_cast<float>(x[j]);
                float h = eps * std::fabs(xj);
                if (h == 0.0f) h = eps;
                const double step = static_cast<double>(xj + h) - static_cast<double>(xj);  // what the float model sees
                xs[static_cast<std::size_t>(j)] = static_cast<double>(xj + h);
                const int st = Eval(xs.data(), f1.data());
                ++nfev;
                xs[static_cast<std::size_t>(j)] = x[j];
                if (st < 0) return st;
                for (std::size_t i = 0; i < mm; ++i) fjac[static_cast<std::size_t>(j) * mm + i] = (f1[i] - f0[i]) / step;
            }
            return 0;
        }
        Set_X(x);
        if (dense) {
            dj.Resize(m, n);
            if (Call(2) < 0) return -1;
            if (!All_Finite(dj.data(), mm * static_cast<std::size_t>(n))) {
                nan = true;
                return -2;
            }
            for (std::size_t k = 0; k < mm * static_cast<std::size_t>(n); ++k) fjac[k] = dj.data()[k];
            return 0;
        }
        if (int st = Sparse_Jacobian(x, sj); st < 0) return st;
        std::fill(fjac, fjac + mm * static_cast<std::size_t>(n), 0.0);
        for (int r = 0; r < m; ++r)
            for (int k = sj.Row_Start()[static_cast<std::size_t>(r)]; k < sj.Row_Start()[static_cast<std::size_t>(r) + 1]; ++k)
                fjac[static_cast<std::size_t>(sj.Col()[static_cast<std::size_t>(k)]) * mm + static_cast<std::size_t>(r)] =
                    sj.Val()[static_cast<std::size_t>(k)];
        return 0;
    }
    int Sparse_Jacobian(const double* x, LSQ_SPARSE_JACOBIAN_TYPE& rows) {
        Set_X(x);
        rows.Clear(m, n);
        int iflag = 2;
        (*sparse)(m, n, xf, fv, rows, iflag);
        if (iflag < 0) return -1;
        const bool ok = rows.Finish();
        if (!ok || !All_Finite(rows.Val().data(), rows.Val().size())) {  // a bad row counts as a bad value
            nan = true;
            return -2;
        }
        return 0;
    }
};

double Chi2_Of(const std::vector<double>& fvec, int m, int n) {
    double s = 0.0;
    for (double f : fvec) s += f * f;
    return s / (m > n ? m - n : 1);
}

void Run(MODEL_LINK& link, int m, LSQ_CONDITIONS_TYPE& c, LSQ_STATE_VECTOR_TYPE& vs, float& chi2, bool calc_sigma,
         std::string& info, LSQ_OUTCOME_TYPE* outcome, Lsq_Route route) {
    LSQ_OUTCOME_TYPE local;
    LSQ_OUTCOME_TYPE& out = outcome ? *outcome : local;
    out = LSQ_OUTCOME_TYPE{};
    c.reached = false;
    const int np = std::min({vs.np, vs.pv.size(), vs.code.size()});
    std::vector<int> free;  // places in the vector, from 1
    for (int k = 1; k <= np; ++k)
        if (vs.code(k) == 1) free.push_back(k);
    const int n = static_cast<int>(free.size());
    c.npvar = n;
    out.n = n;
    if (n <= 0 || m < n || !(c.tol >= 0.0f)) {
        info = std::string("Improper input parameters in LM-optimization (n,m,tol):") +
               " nb of free (refined) parameters: " + std::to_string(n) + ", number of observations: " +
               std::to_string(m) + ", tolerance: " + Tol_Text(c.tol);
        return;
    }
    link.m = m;
    link.n = n;
    link.xf.resize(n);
    link.fv.resize(m);
    std::vector<double> x(static_cast<std::size_t>(n)), fvec(static_cast<std::size_t>(m));
    for (int j = 0; j < n; ++j) x[static_cast<std::size_t>(j)] = vs.pv(free[static_cast<std::size_t>(j)]);
    const int st0 = link.Eval(x.data(), fvec.data());
    if (st0 < 0) {
        out.info = st0 == -2 ? -2 : -1;
        info = st0 == -2 ? kLsqNaN : kLsqStopped;
        chi2 = st0 == -2 ? NAN : 0.0f;
        return;
    }
    const double chi2_0 = Chi2_Of(fvec, m, n);
    out.initial_chi2 = static_cast<float>(chi2_0);
    LM_TOLERANCES t;
    t.ftol = t.xtol = c.tol;
    t.gtol = 0.0;
    t.maxfev = c.icyc > 0 ? c.icyc : 100 * (n + 1);
    const bool sparse =
        link.sparse && (route == Lsq_Route::Sparse || (route == Lsq_Route::Automatic && n >= kLsqSparseFrom));
    out.sparse = sparse;
    LM_RUN_TYPE run;
    const LM_EVAL eval = [&](const double* xx, double* f) { return link.Eval(xx, f); };
    const LM_REPORT report = [&](const double* xx, const double* f) { return link.Report(xx, f); };
    if (sparse) {
        LM_Run_Sparse(m, n, x, fvec, eval, report,
                      [&](const double* xx, LSQ_SPARSE_JACOBIAN_TYPE& rows) { return link.Sparse_Jacobian(xx, rows); }, t,
                      run);
    } else {
        LM_Run_Dense(m, n, x, fvec, eval, report,
                     [&](const double* xx, const double* f, double* fjac) { return link.Dense_Jacobian(xx, f, fjac, run.nfev); }, t, run);
    }
    out.info = run.info;
    out.nfev = run.nfev;
    out.njev = run.njev;
    out.iterations = run.iterations;
    out.lambda = run.par;
    if (link.nan) {  // the values at entry stand
        out.info = -2;
        info = kLsqNaN;
        chi2 = static_cast<float>(chi2_0);
        return;
    }
    for (int j = 0; j < n; ++j) vs.pv(free[static_cast<std::size_t>(j)]) = static_cast<float>(x[static_cast<std::size_t>(j)]);
    // the model once more at the values kept, for chi2 and the curvature
    if (link.Eval(x.data(), fvec.data()) < 0 && link.nan) {
        info = kLsqNaN;
        out.info = -2;
        chi2 = NAN;
        return;
    }
    chi2 = static_cast<float>(Chi2_Of(fvec, m, n));
    c.reached = run.info >= 1 && (run.info <= 4 || run.info == 8);
    info = run.info < 0 ? kLsqStopped : Lsq_Stop_Text(run.info, c.tol, t.maxfev);
    if (c.reached) info = "Initial Chi2:" + Number("%14.5f", chi2_0) + info;
    if (!calc_sigma) return;
    bool ok = false;
    int bad = 0;
    if (sparse) {
        LSQ_SPARSE_JACOBIAN_TYPE rows;
        ok = link.Sparse_Jacobian(x.data(), rows) == 0 && Sparse_Covariance(rows, out.covar, bad);
    } else {
        std::vector<double> fjac(static_cast<std::size_t>(m) * static_cast<std::size_t>(n));
        int extra = 0;
        ok = link.Dense_Jacobian(x.data(), fvec.data(), fjac.data(), extra) == 0 && Dense_Covariance(m, n, fjac.data(), out.covar, bad);
    }
    for (int k : free) vs.spv(k) = 0.0f;
    if (!ok) {
        out.covar.clear();
        out.singular = true;
        out.singular_index = bad;
        info += std::string(" Singular Matrix at the end of LM_Der for calculating std deviations ...") +
                " Final Singular Matrix!, problem with parameter #" + std::to_string(bad);
        return;
    }
    for (int j = 0; j < n; ++j) {
        const float v = out.covar[static_cast<std::size_t>(j) * static_cast<std::size_t>(n) + static_cast<std::size_t>(j)];
        vs.spv(free[static_cast<std::size_t>(j)]) = std::sqrt(std::max(v, 0.0f));
    }
}

void Vector_Form(MODEL_LINK& link, int m, LSQ_CONDITIONS_TYPE& c, Array1<float>& x, Array1<float>& sx, float& chi2,
                 bool calc_sigma, std::string& info, LSQ_OUTCOME_TYPE* outcome) {
    LSQ_STATE_VECTOR_TYPE vs;
    Allocate_State_Vector(vs, x.size());
    vs.pv = x;
    vs.code.fill(1);
    if (sx.size() == x.size()) vs.spv = sx;
    Run(link, m, c, vs, chi2, calc_sigma, info, outcome, Lsq_Route::Dense);
    x = vs.pv;
    sx = vs.spv;
}

}  // namespace

std::string Lsq_Stop_Text(int code, float tol, int maxfev) {
    const std::string t = Tol_Text(tol);
    switch (code) {
        case 1: return "     Convergence reached: The relative error in the sum of squares is at most " + t;
        case 2: return "     Convergence reached: The relative error between x and the solution is at most " + t;
        case 3:
            return "     Convergence reached: The relative error in the sum of squares and the difference between x and "
                   "the solution are both " + t;
        case 4:
        case 8:  // gtol is 0: a cosine at machine precision is the same finding
            return "     Convergence reached: Residuals vector is orthogonal to the columns of the Jacobian to machine "
                   "precision";
        case 5:
            return "Convergence NOT reached: Number of calls to model function with iflag=1 has reached " +
                   std::to_string(maxfev);
        case 6:
            return "Convergence NOT reached: Provided tolerance " + t +
                   " is too small! No further reduction in the sum of squares is possible";
        case 7:
            return "Convergence NOT reached: Provided tolerance " + t +
                   " is too small! No further improvement in the approximate solution x is possible";
        default: return "";
    }
}

void LM_Der(const LSQ_MODEL_FUNCTION& model, int m, LSQ_CONDITIONS_TYPE& conditions, LSQ_STATE_VECTOR_TYPE& vs,
            float& chi2, bool calc_sigma, std::string& info, LSQ_OUTCOME_TYPE* outcome) {
    MODEL_LINK link;
    link.dense = &model;
    Run(link, m, conditions, vs, chi2, calc_sigma, info, outcome, Lsq_Route::Dense);
}

void LM_Der(const LSQ_SPARSE_MODEL_FUNCTION& model, int m, LSQ_CONDITIONS_TYPE& conditions,
            LSQ_STATE_VECTOR_TYPE& vs, float& chi2, bool calc_sigma, std::string& info, LSQ_OUTCOME_TYPE* outcome,
            Lsq_Route route) {
    MODEL_LINK link;
    link.sparse = &model;
    Run(link, m, conditions, vs, chi2, calc_sigma, info, outcome, route);
}

void LM_Dif(const LSQ_FUNCTION& model, int m, LSQ_CONDITIONS_TYPE& conditions, LSQ_STATE_VECTOR_TYPE& vs,
            float& chi2, bool calc_sigma, std::string& info, LSQ_OUTCOME_TYPE* outcome) {
    MODEL_LINK link;
    link.plain = &model;
    Run(link, m, conditions, vs, chi2, calc_sigma, info, outcome, Lsq_Route::Dense);
}

void LM_DerV(const LSQ_MODEL_FUNCTION& model, int m, LSQ_CONDITIONS_TYPE& conditions, Array1<float>& x,
             Array1<float>& sx, float& chi2, bool calc_sigma, std::string& info, LSQ_OUTCOME_TYPE* outcome) {
    MODEL_LINK link;
    link.dense = &model;
    Vector_Form(link, m, conditions, x, sx, chi2, calc_sigma, info, outcome);
}

void LM_DifV(const LSQ_FUNCTION& model, int m, LSQ_CONDITIONS_TYPE& conditions, Array1<float>& x, Array1<float>& sx,
             float& chi2, bool calc_sigma, std::string& info, LSQ_OUTCOME_TYPE* outcome) {
    MODEL_LINK link;
    link.plain = &model;
    Vector_Form(link, m, conditions, x, sx, chi2, calc_sigma, info, outcome);
}

}  // namespace hxl
