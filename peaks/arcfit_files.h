#pragma once
// The listing and result files of the constant-wavelength fit: the head of
// `_pf.out`, the resolution file `_pf.irf` and `arcfit_obscalc.xyy`.
#include <string>
#include <vector>

#include "peaks/pik_file.h"
#include "support/array1.h"

namespace hxl {

// The banner and the job as `_pf.out` lists them, up to the number of
// refined parameters.
std::string Arc_Out_Head(const PIK_JOB_TYPE& job, int refined);

// One peak of the resolution file; `ok` false when its widths could not be given.
struct ARC_IRF_PEAK_TYPE {
    float pos = 0, hg = 0, hl = 0;
    bool ok = true;
};

// The lines of one run in `_pf.irf`: the head when the file is new, then the
// count and one line per peak.
std::string Arc_Irf_Text(const std::vector<ARC_IRF_PEAK_TYPE>& peaks, float s_l, float d_l, bool is_new);

// Adds the run to `file` (made with its head when it does not exist), through
// a temporary file. False with a message when it cannot be written.
bool Write_Arc_Irf(const std::string& file, const std::vector<ARC_IRF_PEAK_TYPE>& peaks, float s_l, float d_l,
                   std::string& message);

// `arcfit_obscalc.xyy`: X, observed, calculated, background and the single
// peaks, as many as the 18 columns of a line hold. `single(k)` is peak k.
std::string Arc_Obscalc_Text(const Array1<float>& x, const Array1<float>& yobs, const Array1<float>& ycalc,
                             const Array1<float>& bgr, const std::vector<Array1<float>>& single);
bool Write_Arc_Obscalc(const std::string& file, const Array1<float>& x, const Array1<float>& yobs,
                       const Array1<float>& ycalc, const Array1<float>& bgr, const std::vector<Array1<float>>& single,
                       std::string& message);

}  // namespace hxl
