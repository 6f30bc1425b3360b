#pragma once
// Automatic search of background points and peaks (shoulders included) in a
// window of one pattern, from the derivatives of a cubic spline on a grid of
// half the data step. No model of the peak shape is assumed.
#include <string>

#include "patterns/diffraction_pattern.h"
#include "support/array1.h"

namespace hxl {

// What one search hands back; arrays sized np and indexed from 1.
struct PKB_TYPE {
    int np = 0;
    Array1<float> x;    // positions
    Array1<float> y;    // intensities (peaks) or background values
    Array1<float> bgr;  // background under each peak
};

// The settings of the conditions dialogs, kept by the caller for the run.
struct SEARCH_CONDITIONS_TYPE {
    float peak_threshold = 0.02f;
    float shoulder_threshold = 2.0f;
    float bkg_threshold = 0.05f;
    int peak_type = 1;  // 1 single, 2 Cu, 3 Mo, 4 Co doublets
    int iterations = 3;
};

// Where the result file goes and what its head says.
struct SEARCH_FILE_TYPE {
    std::string folder;       // with or without a trailing '/'; empty: the working directory
    std::string data_name;    // the data file's name
    std::string format_name;  // the profile's format
    bool write = true;        // false only for callers that keep no file (fuzzing)
};

extern thread_local bool ERR_Search;
extern thread_local std::string ERR_Search_Mess;  // 120

inline constexpr const char* kMsgFewBackground =
    " The number of determined background points is too low, peak search impossible!";
inline constexpr const char* kMsgNoPeak = " ! No peak detected ! ";
inline constexpr const char* kMsgPeakOpen =
    " Problem opening the 'peak.aps' file: please check the file properties. ";
inline constexpr const char* kMsgBgrOpen = " Problem opening the 'background.xy' file";
inline constexpr const char* kMsgBadIntensity =
    " ! Intensities that are not numbers in the search window: search impossible ! ";
inline constexpr const char* kMsgBadX = " ! Positions that do not rise in the search window: search impossible ! ";

// Searches the points of `p` with xmin <= x <= xmax. `mode` holding
// "background" gives background points, "satellites" searches
// observed - calculated + background, anything else peaks. On success the
// result is replaced and the file peak.aps or background.xy written; the
// count is returned. 0 without an error means no peak survived the filters
// (the result and the files are left alone). On failure ERR_Search is set.
int Search_Points(const DIFFRACTION_PATTERN_TYPE& p, float xmin, float xmax, const std::string& mode,
                  const SEARCH_CONDITIONS_TYPE& c, const SEARCH_FILE_TYPE& file, PKB_TYPE& result);

// One pass replaces each value by a seven-point mean without a centre weight;
// the three points at each end use what exists. Fewer than 7 values are left alone.
void Smooth_Derivative(float* v, int n, int passes);

// K-alpha1, K-alpha2 and their ratio for a peak type; `own` is the profile's wavelength.
struct WAVELENGTHS_TYPE {
    float lambda1, lambda2, ratio;
};
WAVELENGTHS_TYPE Peak_Type_Wavelengths(int peak_type, float own);

// Drops the K-alpha2 partner of each peak (positions in degrees 2theta);
// returns the new count. Type 1 or unknown types keep everything.
int Doublet_Filter(int peak_type, Array1<float>& x, Array1<float>& y, Array1<float>& bgr, int np);

// The plain detector of a zone: positions and intensities at the raw maxima.
// False with `message` for a zone out of range, fewer than 10 points or more
// than `limit` peaks (the peaks up to the limit are kept in the result).
bool Search_Peaks_In_Zone(const DIFFRACTION_PATTERN_TYPE& p, float x1, float x2, int limit, PKB_TYPE& result,
                          std::string& message);

}  // namespace hxl
