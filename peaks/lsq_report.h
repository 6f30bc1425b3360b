#pragma once
// The report of a least-squares run: R-factors, the last Levenberg
// parameter, correlations, the table of refined parameters, the final chi2,
// and the observed and calculated curves in a file of their own.
#include <ostream>
#include <string>

#include "peaks/lsq_types.h"

namespace hxl {

inline constexpr const char* kLmFitFile = "LM_fit.xy";

// Writes the report of the run `outcome` on the m observations x, y (observed),
// yc (calculated), w (weights 1/sigma^2) to `lun`, and, when `xy_file` is not
// empty, replaces that file with the four columns. With `matrix` the whole
// correlation matrix is listed too. False with `message` when the file could
// not be written (the report is written all the same).
bool Info_LSQ_LM(float chi2, std::ostream& lun, int m, const Array1<float>& x, const Array1<float>& y,
                 const Array1<float>& yc, const Array1<float>& w, const LSQ_CONDITIONS_TYPE& conditions,
                 const LSQ_STATE_VECTOR_TYPE& vs, const LSQ_OUTCOME_TYPE& outcome, const std::string& xy_file,
                 bool matrix, std::string& message);

}  // namespace hxl
