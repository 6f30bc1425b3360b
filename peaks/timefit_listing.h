#pragma once
// The texts of `_pf.out` for a time-of-flight job: the head with the job as
// read, and the final table of values and standard deviations.
#include <string>

#include "peaks/lsq_types.h"
#include "peaks/timefit_job.h"

namespace hxl {

std::string Tof_Out_Head(const TOF_JOB_TYPE& job, int refined);

// `vs` holds the final values and deviations in the model's layout; `scale`
// is the factor applied to the intensities listed.
std::string Tof_Final_Table(const TOF_JOB_TYPE& job, const LSQ_STATE_VECTOR_TYPE& vs, float scale);

}  // namespace hxl
