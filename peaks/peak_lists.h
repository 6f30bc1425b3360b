#pragma once
// From a search result to the records of the program's lists: the limits
// and the spacing rule that the peak and background commands apply.
#include <string>
#include <vector>

#include "patterns/diffraction_pattern.h"
#include "peaks/peak_files.h"
#include "peaks/search_points.h"

namespace hxl {

inline constexpr int kListLimit = 400;
inline constexpr const char* kMsgMaxPeaks = "Maximum number of peaks reached!";
inline constexpr const char* kMsgMaxBgrAuto = "Max num. points for background";

// The step that the spacing rule measures in: the profile's, or the mean one
// when the profile has none.
float Profile_Step(const DIFFRACTION_PATTERN_TYPE& p);

// The peaks to copy. With `spaced` a peak not farther than 3 steps from the
// last copied position is left out; that position starts at 0, so a peak
// within 3 steps of X = 0 goes too. False with the text above 400 peaks.
bool Peaks_For_List(const PKB_TYPE& r, float step, bool spaced, std::vector<PEAK_POINT_TYPE>& out,
                    std::string& message);

// Background points; false with its text above 400.
bool Background_For_List(const PKB_TYPE& r, std::vector<PEAK_POINT_TYPE>& out, std::string& message);

}  // namespace hxl
