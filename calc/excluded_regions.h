#pragma once
// Excluded regions of one profile: appended, deleted, converted with X.
#include <string>
#include <vector>

#include "calc/xspace.h"
#include "prf/prf_info.h"

namespace hxl {

// Appends the region; false when the profile holds 100 already.
bool Append_Excluded_Region(PRF_INFO_ADD_TYPE& info, float low, float high);

// Removes region j (from 1); the later ones move up by one.
void Delete_Excluded_Region(PRF_INFO_ADD_TYPE& info, int j);

// Converts every region with the steps of the pattern's X. A region needs
// positive finite limits, low below high, and converted limits of the same
// kind (swapped when the conversion reverses X); otherwise it is deleted with
// the message naming `file`, and the conversion goes on.
void Convert_Excluded_Regions(PRF_INFO_ADD_TYPE& info, const std::vector<X_STEP>& steps, double c1, double c2,
                              const std::string& file, std::vector<std::string>& messages);

}  // namespace hxl
