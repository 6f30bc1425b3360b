#pragma once
// The ".pik" file of a time-of-flight job, and the one entry that reads
// either kind of job file: the word of the head comment in line 2 decides.
#include <string>

#include "peaks/pik_file.h"
#include "peaks/timefit_job.h"

namespace hxl {

// True when the first comment after the title names "TOF_init".
bool Pik_Text_Is_Tof(const std::string& text);

// Reads a TOF job; on failure `job` is untouched and `message` says why.
bool Read_Tof_Pik_Text(const std::string& text, TOF_JOB_TYPE& job, std::string& message);
std::string Tof_Pik_Text(const TOF_JOB_TYPE& job);
bool Write_Tof_Pik(const std::string& file, const TOF_JOB_TYPE& job, std::string& message);

// Reads a job file of either kind: `tof` tells which record was filled.
bool Read_Any_Pik(const std::string& file, PIK_JOB_TYPE& cw, TOF_JOB_TYPE& tof_job, bool& tof, std::string& message);

}  // namespace hxl
