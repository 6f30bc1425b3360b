#pragma once
// The outer loop of the MINPACK lmder scheme (trust region, Levenberg
// parameter, stop tests), written once for two ways of finding the step: the
// dense one (cminpack's QR with column pivoting and lmpar) and the sparse one
// (damped normal equations by sparse Cholesky). It is lmder's own loop, line
// for line, so that both routes stop by the same tests.
//
// An Engine provides:
//   int Jacobian(const double* x, const double* fvec)  0, or < 0 to stop
//   const double* Acnorm()                              column norms of J
//   double Gnorm(double fnorm)                          max cosine of fvec and J's columns
//   void Step(const double* diag, double delta, double& par, double* p)
//                                                      the step p (x + p), par updated
//   double Jp_Norm(const double* p)                     |J p|
#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

namespace hxl {

struct LM_RUN_TYPE {
    int info = 0;  // as lmder; < 0 when an evaluation stopped the run
    int nfev = 0, njev = 0, iterations = 0;
    double par = 0.0;
    double fnorm = 0.0;
};

double Lsq_Norm(int n, const double* x);  // enorm: the Euclidean norm without overflow
double Lsq_Epsilon();                     // dpmpar(1)

// `eval(x, fvec)` returns 0 or < 0 to stop; `report(x, fvec)` likewise, at each
// accepted point. On entry x is the start and fvec its residuals (counted
// as one evaluation); on return they hold the best point.
template <class Engine>
void LM_Iterate(Engine& engine, int m, int n, std::vector<double>& x, std::vector<double>& fvec,
                const std::function<int(const double*, double*)>& eval,
                const std::function<int(const double*, const double*)>& report, double ftol, double xtol,
                double gtol, int maxfev, LM_RUN_TYPE& run) {
    constexpr double p1 = 0.1, p5 = 0.5, p25 = 0.25, p75 = 0.75, p0001 = 1e-4, factor = 100.0;
    const double epsmch = Lsq_Epsilon();
    std::vector<double> diag(n, 0.0), wa1(n), wa2(n), wa3(n), wa4(m);
    run.nfev = 1;
    run.info = 0;
    double fnorm = Lsq_Norm(m, fvec.data());
    double par = 0.0, delta = 0.0, xnorm = 0.0;
    int iflag = 0;
    run.iterations = 1;
    for (;;) {  // outer loop: a new Jacobian
        iflag = report(x.data(), fvec.data());
        if (iflag < 0) break;
        iflag = engine.Jacobian(x.data(), fvec.data());
        ++run.njev;
        if (iflag < 0) break;
        const double* acnorm = engine.Acnorm();
        if (run.iterations == 1) {
            for (int j = 0; j < n; ++j) {
                diag[j] = acnorm[j] == 0.0 ? 1.0 : acnorm[j];
                wa3[j] = diag[j] * x[j];
            }
            xnorm = Lsq_Norm(n, wa3.data());
            delta = factor * xnorm;
            if (delta == 0.0) delta = factor;
        }
        const double gnorm = fnorm == 0.0 ? 0.0 : engine.Gnorm(fnorm);
        if (gnorm <= gtol) run.info = 4;
        if (run.info != 0) break;
        for (int j = 0; j < n; ++j) diag[j] = std::max(diag[j], acnorm[j]);
        double ratio = 0.0;
        do {  // inner loop: until a step is accepted
            engine.Step(diag.data(), delta, par, wa1.data());
            for (int j = 0; j < n; ++j) {
                wa2[j] = x[j] + wa1[j];
                wa3[j] = diag[j] * wa1[j];
            }
            const double pnorm = Lsq_Norm(n, wa3.data());
            if (run.iterations == 1) delta = std::min(delta, pnorm);
            iflag = eval(wa2.data(), wa4.data());
            ++run.nfev;
            if (iflag < 0) break;
            const double fnorm1 = Lsq_Norm(m, wa4.data());
            double actred = -1.0;
            if (p1 * fnorm1 < fnorm) actred = 1.0 - (fnorm1 / fnorm) * (fnorm1 / fnorm);
            const double temp1 = engine.Jp_Norm(wa1.data()) / fnorm;
            const double temp2 = std::sqrt(par) * pnorm / fnorm;
            const double prered = temp1 * temp1 + temp2 * temp2 / p5;
            const double dirder = -(temp1 * temp1 + temp2 * temp2);
            ratio = prered != 0.0 ? actred / prered : 0.0;
            if (ratio <= p25) {
                double temp = actred >= 0.0 ? p5 : p5 * dirder / (dirder + p5 * actred);
                if (p1 * fnorm1 >= fnorm || temp < p1) temp = p1;
                delta = temp * std::min(delta, pnorm / p1);
                par /= temp;
            } else if (par == 0.0 || ratio >= p75) {
                delta = pnorm / p5;
                par = p5 * par;
            }
            if (ratio >= p0001) {  // accepted
                for (int j = 0; j < n; ++j) {
                    x[j] = wa2[j];
                    wa2[j] = diag[j] * x[j];
                }
                fvec.swap(wa4);
                xnorm = Lsq_Norm(n, wa2.data());
                fnorm = fnorm1;
                ++run.iterations;
            }
            const bool small_sum = std::fabs(actred) <= ftol && prered <= ftol && p5 * ratio <= 1.0;
            if (small_sum) run.info = 1;
            if (delta <= xtol * xnorm) run.info = small_sum ? 3 : 2;
            if (run.info != 0) break;
            if (run.nfev >= maxfev) run.info = 5;
            if (std::fabs(actred) <= epsmch && prered <= epsmch && p5 * ratio <= 1.0) run.info = 6;
            if (delta <= epsmch * xnorm) run.info = 7;
            if (gnorm <= epsmch) run.info = 8;
            if (run.info != 0) break;
        } while (ratio < p0001);
        if (iflag < 0 || run.info != 0) break;
    }
    if (iflag < 0) run.info = iflag;
    run.par = par;
    run.fnorm = fnorm;
    --run.iterations;  // lmder's iter starts at 1
}

}  // namespace hxl
