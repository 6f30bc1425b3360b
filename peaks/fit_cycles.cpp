#include "peaks/fit_cycles.h"

#include <algorithm>
#include <cmath>
#include <new>

#include "peaks/arcfit_layout.h"
#include "peaks/lm_der.h"

namespace hxl {
namespace {

// Sum of squares of fvec in double: single floats lose the small changes near convergence.
double Sum_Squares(const Array1<float>& f) {
    double s = 0;
    for (int i = 1; i <= f.size(); ++i) s += static_cast<double>(f(i)) * f(i);
    return s;
}

}  // namespace

bool Fit_Cycles(const FIT_MODEL_LINK_TYPE& model, const ARC_DATA_TYPE& data, float lo, float hi, int cycles,
                const ARC_FIT_OPTIONS_TYPE& o, const char* no_space, LSQ_CONDITIONS_TYPE& cond,
                LSQ_STATE_VECTOR_TYPE& vs, FIT_CYCLES_TYPE& run, std::string& message) {
    cond.reached = false;
    cond.corrmax = 70;
    cond.tol = 1e-5f;
    cond.icyc = cycles;
    try {
        run.free_of.assign(static_cast<std::size_t>(vs.np) + 1, 0);
        for (int i = 1; i <= vs.np; ++i)
            if (vs.code(i) == 1) run.free.push_back(i), run.free_of[static_cast<std::size_t>(i)] = static_cast<int>(run.free.size());
        const int n = std::min({data.npts, data.x.size(), data.y.size(), data.var.size()});
        for (int i = 1; i <= n; ++i) {
            if (!(data.x(i) > lo && data.x(i) < hi)) continue;
            float s = std::sqrt(std::max(data.var(i), 0.0f));
            if (!(s >= 1e-5f)) s = 10.0f;
            run.x.vec().push_back(data.x(i));
            run.y.vec().push_back(data.y(i));
            run.sigma.vec().push_back(s);
            run.w.vec().push_back(1.0f / (s * s));
        }
    } catch (const std::bad_alloc&) {
        message = no_space;
        return false;
    }
    cond.npvar = static_cast<int>(run.free.size());
    const int m = run.x.size();

    // The model on the free parameters, mapped back into the whole vector.
    Array1<float> pv = vs.pv;
    std::vector<ARC_DERIV_TYPE> deriv;
    const Layout iteration("(a,i6,a,f14.5)");
    const LSQ_SPARSE_MODEL_FUNCTION fn = [&](int mm, int n, const Array1<float>& x, Array1<float>& fvec,
                                             LSQ_SPARSE_JACOBIAN_TYPE& fjac, int& iflag) {
        if (iflag == 0) {
            ++run.count;
            if (o.status) {
                std::string line;
                iteration(line, " => Iteration number: ", run.count, "  Chi2=",
                          static_cast<float>(Sum_Squares(fvec) / std::max(mm - n, 1)));
                if (!line.empty() && line.back() == '\n') line.pop_back();
                o.status(line);
            }
            if (o.stop && o.stop()) run.stopped = true, iflag = -1;
            return;
        }
        for (int j = 1; j <= n; ++j) pv(run.free[static_cast<std::size_t>(j - 1)]) = x(j);
        model.prepare(pv);
        for (int i = 1; i <= mm; ++i) {
            const float yc = model.point(pv, run.x(i), deriv, nullptr, nullptr);
            if (iflag == 1) {
                fvec(i) = (run.y(i) - yc) / run.sigma(i);
                continue;
            }
            for (const ARC_DERIV_TYPE& d : deriv) {
                const int col = run.free_of[static_cast<std::size_t>(d.index)];
                if (col > 0) fjac.Add(i, col, -d.value / run.sigma(i));
            }
        }
    };

    float previous = 1e8f;
    LM_Der(fn, m, cond, vs, run.chi2, true, run.info, &run.outcome);
    while (run.outcome.info > 0 && !cond.reached && !run.stopped && std::fabs(previous - run.chi2) > cond.tol) {
        ++run.questions;
        if (!o.ask || !o.ask(kArcAskContinue)) break;
        previous = run.chi2;
        pv = vs.pv;
        LM_Der(fn, m, cond, vs, run.chi2, true, run.info, &run.outcome);
    }
    if (run.outcome.info == 0) {  // the solver refused the input
        message = run.info;
        return false;
    }
    return true;
}

void Fit_Curves(const FIT_MODEL_LINK_TYPE& model, const FIT_CYCLES_TYPE& run, const LSQ_STATE_VECTOR_TYPE& vs,
                int npeak, bool single, Array1<float>& ycalc, Array1<float>& bgr, Array1<float>& diff,
                std::vector<Array1<float>>& singles) {
    const int m = run.x.size();
    model.prepare(vs.pv);
    ycalc = Array1<float>(m);
    bgr = Array1<float>(m);
    diff = Array1<float>(m);
    singles.clear();
    if (single) singles.assign(static_cast<std::size_t>(npeak), Array1<float>(m));
    std::vector<float> one(static_cast<std::size_t>(npeak));
    std::vector<ARC_DERIV_TYPE> deriv;
    for (int i = 1; i <= m; ++i) {
        float peaks = 0;
        std::fill(one.begin(), one.end(), 0.0f);
        ycalc(i) = model.point(vs.pv, run.x(i), deriv, &peaks, single ? &one : nullptr);
        bgr(i) = ycalc(i) - peaks;
        diff(i) = run.y(i) - ycalc(i);
        if (single)
            for (int k = 1; k <= npeak; ++k) singles[static_cast<std::size_t>(k - 1)](i) = one[static_cast<std::size_t>(k - 1)];
    }
}

}  // namespace hxl
