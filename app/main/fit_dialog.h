#pragma once
// The dialog "Starting parameters for CWL data profile fitting procedure":
// the job in grids, the choices of the run, and the read-back with its texts.
#include "peaks/pik_file.h"

namespace zendrite {

inline constexpr int kFitDialog = 1970;

struct FIT_CHOICES {
    int irf = 1;  // 1 "None", 2 "Create .IRF File", 3 "Create .IPC File"
    bool save_calculated = false, single_peaks = false;
};

// Shows the job; true on "OK/Start Refinement" with every cell read back
// into `job`. A bad cell names itself and the dialog comes back with what
// the user typed; Cancel leaves `job` and `choices` as they were.
bool Fit_Start_Dialog(hxl::PIK_JOB_TYPE& job, FIT_CHOICES& choices);

}  // namespace zendrite
