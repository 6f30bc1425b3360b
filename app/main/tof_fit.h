#pragma once
// The time-of-flight side of the Profile fitting menu: its dialog
// "Starting parameters for TOF data profile fitting procedure" and the run.
#include <functional>
#include <string>

#include "app/main/fit_dialog.h"
#include "peaks/timefit_job.h"

namespace zendrite {

inline constexpr int kTofDialog = 1971;

// Shows the job; true on "OK/Start Refinement" with every cell read back.
// A bad cell names itself and the dialog comes back; Cancel leaves all as it was.
bool Tof_Start_Dialog(hxl::TOF_JOB_TYPE& job, FIT_CHOICES& choices);

// Runs the TOF fit on the first profile. Its job is the one kept from the
// last run or loaded, else the one `start` gives (the constant-wavelength
// start from the lists, turned into the TOF layout).
void Tof_Fit_Run(const std::function<bool(hxl::PIK_JOB_TYPE& start, std::string& message)>& start);

// A TOF job file loaded by "Load PIK/NEW file": false when `file` is not one.
bool Tof_Load_Job(const std::string& file);

// Forgets the kept job (Clear all, a new mode).
void Tof_Fit_Clear();

}  // namespace zendrite
