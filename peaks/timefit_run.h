#pragma once
// One run of the time-of-flight profile fit on a job: the listing, the
// least-squares cycles with the "continue?" loop, the report, the final
// table and the result files. Also the starting job from the peak and
// background lists.
#include <string>
#include <vector>

#include "peaks/arcfit_run.h"
#include "peaks/timefit_job.h"

namespace hxl {

inline constexpr const char* kTofNoSpace = "Error allocating Space for TOF Fitting Procedure!";
inline constexpr const char* kTofBadDtt = " => Error: the d to TOF coefficient must be a positive number ! ";

struct TOF_PEAK_RESULT_TYPE {
    float pos = 0, inten = 0, fwhm = 0, alpha = 0, beta = 0, eta = 0, d = 0;
    float s_pos = 0, s_inten = 0;
};

struct TOF_FIT_RESULT_TYPE {
    std::string info;
    bool reached = false, stopped = false;
    float chi2 = 0;
    int iterations = 0, questions = 0;
    TOF_JOB_TYPE job;  // final values and chi2, for the job file
    Array1<float> x, yobs, ycalc, bgr, diff;
    std::vector<Array1<float>> single;
    std::vector<TOF_PEAK_RESULT_TYPE> peaks;  // in job order
    std::vector<std::string> files;
};

// Runs the fit of `job` on `data` with the options of the constant-wavelength
// fit (the IRF choice is not used). False with `message` when the job is
// refused, when the model produced NaN or a file could not be written;
// `result` is then left alone.
bool Tof_Fit(const TOF_JOB_TYPE& job, const ARC_DATA_TYPE& data, const ARC_FIT_OPTIONS_TYPE& options,
             TOF_FIT_RESULT_TYPE& result, std::string& message);

// The starting job from the lists: background and range as the
// constant-wavelength start, widths at half height (the mean of those found
// where a peak has none), alpha, beta and Sig-1 from them, positions,
// intensities and background free. False with the dialog's texts.
bool Tof_Start_Job(const ARC_DATA_TYPE& data, float step, const std::vector<PEAK_POINT_TYPE>& peaks,
                   const std::vector<PEAK_POINT_TYPE>& background, float dtt, int cycles, TOF_JOB_TYPE& job,
                   std::string& message);

// The same from a constant-wavelength start (Arc_Start_Job's job): its
// range, background, positions and widths, in the TOF layout.
void Tof_Job_From_Start(const PIK_JOB_TYPE& start, float dtt, TOF_JOB_TYPE& job);

}  // namespace hxl
