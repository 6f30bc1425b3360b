#pragma once
// The Levenberg-Marquardt solvers of the fits: the MINPACK lmder scheme with
// the Jacobian from the model (LM_Der) or by forward differences (LM_Dif),
// on the free parameters of a state vector or on a plain vector (the V
// forms). They share the input check, the stop tests and their texts, and
// the standard deviations from the final curvature matrix.
//
// The call limit: icyc is the most evaluations of the model with iflag 1,
// the first one included (forward differences count one per parameter);
// icyc <= 0 means lmder's default of 100 (n + 1).
#include <string>

#include "peaks/lsq_types.h"

namespace hxl {

// From this many free parameters on, LM_Der with a row-wise Jacobian takes
// the sparse route (see lm_sparse.cpp); below it, a dense QR.
inline constexpr int kLsqSparseFrom = 60;

inline constexpr const char* kLsqNaN = "Convergence NOT reached: the model function returned NaN";
inline constexpr const char* kLsqStopped = "Convergence NOT reached: the fit was stopped, the best values reached are kept";

// Fits the parameters of `vs` with code 1 to the m observations of `model`.
// On return vs.pv holds the values reached and, with calc_sigma, vs.spv their
// standard deviations; chi2 = sum of fvec^2 / (m - n) (m = n divides by 1);
// conditions.reached tells whether a convergence test was met and `info` says
// which. Bad input leaves vs as it was, and so does a model that produces
// NaN (info then holds "NaN"). `outcome`, when given, receives what the
// report needs.
void LM_Der(const LSQ_MODEL_FUNCTION& model, int m, LSQ_CONDITIONS_TYPE& conditions, LSQ_STATE_VECTOR_TYPE& vs,
            float& chi2, bool calc_sigma, std::string& info, LSQ_OUTCOME_TYPE* outcome = nullptr);

// The same with the Jacobian given row by row: from kLsqSparseFrom free
// parameters on (or always with Lsq_Route::Sparse) the damped normal
// equations are solved by sparse Cholesky, else by the dense QR.
void LM_Der(const LSQ_SPARSE_MODEL_FUNCTION& model, int m, LSQ_CONDITIONS_TYPE& conditions,
            LSQ_STATE_VECTOR_TYPE& vs, float& chi2, bool calc_sigma, std::string& info,
            LSQ_OUTCOME_TYPE* outcome = nullptr, Lsq_Route route = Lsq_Route::Automatic);

// Forward differences: the step of parameter j is sqrt(FLT_EPSILON) |x(j)|
// (or that alone when x(j) is 0), since the model works in 32-bit floats.
void LM_Dif(const LSQ_FUNCTION& model, int m, LSQ_CONDITIONS_TYPE& conditions, LSQ_STATE_VECTOR_TYPE& vs,
            float& chi2, bool calc_sigma, std::string& info, LSQ_OUTCOME_TYPE* outcome = nullptr);

// The vector forms: every element of x is free; sx receives the deviations.
void LM_DerV(const LSQ_MODEL_FUNCTION& model, int m, LSQ_CONDITIONS_TYPE& conditions, Array1<float>& x,
             Array1<float>& sx, float& chi2, bool calc_sigma, std::string& info, LSQ_OUTCOME_TYPE* outcome = nullptr);
void LM_DifV(const LSQ_FUNCTION& model, int m, LSQ_CONDITIONS_TYPE& conditions, Array1<float>& x,
             Array1<float>& sx, float& chi2, bool calc_sigma, std::string& info, LSQ_OUTCOME_TYPE* outcome = nullptr);

// The text of a stop test (info 1..8 of lmder) with the tolerance and the
// call limit it names.
std::string Lsq_Stop_Text(int code, float tol, int maxfev);

}  // namespace hxl
