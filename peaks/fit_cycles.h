#pragma once
// What the constant-wavelength and time-of-flight fits share around their
// models: the observations of the range, the model on the free parameters
// for the solver with its progress lines and Stop, the least-squares cycles
// with the "continue?" question, and the final curves.
#include <functional>
#include <string>
#include <vector>

#include "peaks/arcfit_model.h"
#include "peaks/arcfit_run.h"
#include "peaks/lsq_types.h"

namespace hxl {

// A profile model: `prepare` before the first point of a pass, `point` at x
// with its derivatives (and the peak sum and single peaks when asked).
struct FIT_MODEL_LINK_TYPE {
    std::function<void(const Array1<float>& pv)> prepare;
    std::function<float(const Array1<float>& pv, float x, std::vector<ARC_DERIV_TYPE>& deriv, float* peaks,
                        std::vector<float>* single)>
        point;
};

struct FIT_CYCLES_TYPE {
    Array1<float> x, y, sigma, w;  // the observations: sigma 10 where the variance gives none
    std::vector<int> free, free_of;  // the free parameters in order, and the column of each parameter
    float chi2 = 0;
    std::string info;
    LSQ_OUTCOME_TYPE outcome;
    int count = 0, questions = 0;
    bool stopped = false;
};

// Sets the conditions (corrmax 70, tol 1e-5, icyc `cycles`), takes the
// observations strictly inside (lo, hi) and runs LM_Der and the continue
// loop. False with kArcNoSpace (`no_space`) when the arrays cannot be had,
// or with the solver's text when it refused the input.
bool Fit_Cycles(const FIT_MODEL_LINK_TYPE& model, const ARC_DATA_TYPE& data, float lo, float hi, int cycles,
                const ARC_FIT_OPTIONS_TYPE& options, const char* no_space, LSQ_CONDITIONS_TYPE& cond,
                LSQ_STATE_VECTOR_TYPE& vs, FIT_CYCLES_TYPE& run, std::string& message);

// The curves at the values of `vs` over the observations: calculated,
// background, difference, and each of `npeak` peaks when `single`.
void Fit_Curves(const FIT_MODEL_LINK_TYPE& model, const FIT_CYCLES_TYPE& run, const LSQ_STATE_VECTOR_TYPE& vs,
                int npeak, bool single, Array1<float>& ycalc, Array1<float>& bgr, Array1<float>& diff,
                std::vector<Array1<float>>& singles);

}  // namespace hxl
