#pragma once
// Reading a Rietveld profile file (".prf", and the ".xrf" output of the
// peak-fitting procedure) into a pattern record and its information record.
#include <string>

#include "patterns/diffraction_pattern.h"
#include "prf/prf_info.h"

namespace hxl {

// Both records are reset first. `error_flag` is true unless the whole file was
// read; then `message` tells why, and the records hold what was read so far,
// for the caller to drop.
void Read_Prf_File(const std::string& filename, PRF_INFO_ADD_TYPE& prf_info, DIFFRACTION_PATTERN_TYPE& pattern,
                   bool& error_flag, std::string& message);

// The same on the contents of a file already in memory; `filename` still
// gives the extension, the names and the folder of companion files.
void Read_Prf_Text(const std::string& filename, const std::string& text, PRF_INFO_ADD_TYPE& prf_info,
                   DIFFRACTION_PATTERN_TYPE& pattern, bool& error_flag, std::string& message);

// Zero correction of a constant-wavelength file, x in degrees; a
// time-of-flight or energy file is corrected by `zero` alone.
float Prf_Shift(float x, float zero, float c1, float c2, bool zero_only = false);

}  // namespace hxl
