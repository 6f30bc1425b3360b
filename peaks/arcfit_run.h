#pragma once
// One run of the constant-wavelength profile fit on a job: the listing, the
// least-squares cycles with the "continue?" loop, the report, the widths,
// the result files and the values for the job file. Also the starting job
// the dialog builds from the peak and background lists.
#include <functional>
#include <string>
#include <vector>

#include "peaks/peak_files.h"
#include "peaks/pik_file.h"
#include "support/array1.h"

namespace hxl {

inline constexpr const char* kArcAskContinue = "Convergence not reached!. Do you want continue?";
inline constexpr const char* kArcNaN =
    "NaN has been detected, the initial parameters are surely wrong! Re-start with less peaks or new parameters ....";
inline constexpr const char* kArcNoSpace = "Error allocating Space for Fitting Procedure!";
inline constexpr const char* kArcNoPeak = "ERROR: No peak has been selected!";
inline constexpr const char* kArcNoBackground = "ERROR: The background line is not yet selected!";
inline constexpr const char* kArcTooManyPeaks = "The maximum number of peaks to fit was reached!";
inline constexpr const char* kArcStoppedLine = " => The fit was stopped: the best values reached are kept";
inline constexpr int kArcMaxSingle = 15;

// The points of the pattern, indexed from 1; `var` holds variances.
struct ARC_DATA_TYPE {
    int npts = 0;
    Array1<float> x, y, var;
};

struct ARC_FIT_OPTIONS_TYPE {
    std::string folder;  // where the data file lies; empty: the working directory
    std::string stem;    // the data file's name without its extension: stem_pf.out, stem_pf.irf
    bool irf = false;            // "Create .IRF File"
    bool save_calculated = false;  // "Save Calculated Pattern": arcfit_obscalc.xyy
    bool single_peaks = false;     // "Plot Individual Peaks"
    bool asymmetry = true;
    // The "continue?" question; nullptr answers No.
    std::function<bool(const std::string& question)> ask;
    // The status-bar line of each improved chi2.
    std::function<void(const std::string& line)> status;
    // Asked between two iterations; true stops the fit keeping the best values.
    std::function<bool()> stop;
};

// One fitted peak: values and standard deviations; FWHM and eta are those of
// the first line, their deviations carried through the correlations.
struct ARC_PEAK_RESULT_TYPE {
    float pos = 0, area = 0, fwhm = 0, eta = 0;
    float s_pos = 0, s_area = 0, s_fwhm = 0, s_eta = 0;
    float hg = 0, hl = 0;
    bool split = false;  // hg, hl could be given
};

struct ARC_FIT_RESULT_TYPE {
    std::string info;     // the solver's stop text
    bool reached = false;
    bool stopped = false; // stopped from outside
    float chi2 = 0;
    int iterations = 0;   // improved chi2 lines, all restarts together
    int questions = 0;    // times "continue?" was put
    PIK_JOB_TYPE job;     // the final values and the chi2, for the job file
    Array1<float> x, yobs, ycalc, bgr, diff;  // over the observations of the fit
    std::vector<Array1<float>> single;        // each peak alone, when asked and npk <= 15
    std::vector<ARC_PEAK_RESULT_TYPE> peaks;
    std::vector<std::string> files;           // the files written
};

// Runs the fit of `job` on `data`. False with `message` when the job is
// refused before the fit (no peak, no background, too many peaks, a zero
// intensity, too few observations), when the model produced NaN, or when a
// file could not be written; `result` is then left alone. `_pf.out` is
// written in every case that reaches the fit.
bool Arc_Fit(const PIK_JOB_TYPE& job, const ARC_DATA_TYPE& data, const ARC_FIT_OPTIONS_TYPE& options,
             ARC_FIT_RESULT_TYPE& result, std::string& message);

// The starting job from the peak list (positions, heights with the
// background under them) and the background list: each width measured on
// the profile at half height, the widths not found taking the mean of those
// found (10 steps when none is found, the step being the distance of the
// first two points when `step` is not positive); intensities from height and
// width; positions, intensities, shifts of width and eta and the background
// free, globals fixed. The range runs from the first to the last background
// point; peaks outside it are left out. False with the dialog's text when a
// list is empty or too long.
bool Arc_Start_Job(const ARC_DATA_TYPE& data, float step, const std::vector<PEAK_POINT_TYPE>& peaks,
                   const std::vector<PEAK_POINT_TYPE>& background, float lambda1, float lambda2, int cycles,
                   PIK_JOB_TYPE& job, std::string& message);

// The height of an area-normalised pseudo-Voigt of FWHM h and mixing eta at
// its centre: the starting rule turns a height into an intensity with it.
float Pseudo_Voigt_Top(float h, float eta);

// The width at half height of the peak at `pos` of total height `height`
// above `bgr` on the profile, the crossings interpolated; twice the half
// width of one side when only that side comes down to half height before
// the profile rises again; 0 when neither does.
float Half_Height_Width(const ARC_DATA_TYPE& data, float pos, float height, float bgr);

}  // namespace hxl
