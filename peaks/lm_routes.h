#pragma once
// The two routes of the least-squares solver behind LM_Der, and the final
// inverse of the curvature matrix. Internal to the engines.
#include <functional>
#include <vector>

#include "peaks/lm_driver.h"
#include "peaks/lsq_types.h"

namespace hxl {

using LM_EVAL = std::function<int(const double* x, double* fvec)>;
using LM_REPORT = std::function<int(const double* x, const double* fvec)>;
// Fills fjac (m by n, by columns) at x, whose residuals are fvec; 0, or < 0 to stop.
using LM_DENSE_JACOBIAN = std::function<int(const double* x, const double* fvec, double* fjac)>;
// Fills the Jacobian rows at x; 0, or < 0 to stop.
using LM_SPARSE_JACOBIAN = std::function<int(const double* x, LSQ_SPARSE_JACOBIAN_TYPE& fjac)>;

struct LM_TOLERANCES {
    double ftol = 0.0, xtol = 0.0, gtol = 0.0;
    int maxfev = 1;
};

void LM_Run_Dense(int m, int n, std::vector<double>& x, std::vector<double>& fvec, const LM_EVAL& eval,
                  const LM_REPORT& report, const LM_DENSE_JACOBIAN& jac, const LM_TOLERANCES& t, LM_RUN_TYPE& run);
void LM_Run_Sparse(int m, int n, std::vector<double>& x, std::vector<double>& fvec, const LM_EVAL& eval,
                   const LM_REPORT& report, const LM_SPARSE_JACOBIAN& jac, const LM_TOLERANCES& t, LM_RUN_TYPE& run);

// The inverse of the curvature matrix J^T J into `covar` (n by n, by
// columns). False when it is singular, with the free parameter (from 1)
// whose pivot vanished in `bad`.
bool Dense_Covariance(int m, int n, const double* fjac, std::vector<float>& covar, int& bad);
bool Sparse_Covariance(const LSQ_SPARSE_JACOBIAN_TYPE& fjac, std::vector<float>& covar, int& bad);

// A pivot of the symmetric curvature matrix counts as vanished below this
// part of its diagonal: the part of the column that the others do not explain.
inline constexpr double kSingularPivot = 1e-10;

}  // namespace hxl
