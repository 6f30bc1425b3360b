#pragma once
// Writing one pattern back to disk as a free-format ".dat" file or an
// "XYDATA" ".xys" file. Both take a file name, write through a temporary file
// and answer true, or false with the system's message; the pattern is not changed.
#include <string>

#include "patterns/diffraction_pattern.h"

namespace hxl {

// A name without "." gets `extension` (".dat" or ".xys") appended.
std::string Export_File_Name(const std::string& name, const std::string& extension);

// The record format of the free-format values, chosen by the largest value
// rounded to the nearest integer: "(10f8.4)" up to 99, "(10f8.3)" up to 999, ...
// Returns the number of decimals.
int Free_Format_Decimals(float largest);

// Resamples the pattern onto its mean constant step by a natural spline and
// writes "x1 step xn title", then ten values a line.
bool Save_Free_Format(const std::string& filename, const DIFFRACTION_PATTERN_TYPE& pattern, std::string& message);

// The fields of the dialog "Export Data as *.xys".
struct XY_EXPORT_TYPE {
    float xmin = 0;          // 1674 "Xmin =": lowest X written (inclusive)
    float xmax = 0;          // 1681 "Xmax =": highest X written (inclusive)
    float a = 0;             // 1685 "A =": slope of the background subtracted
    float b = 0;             // 1686 "B =": constant of the background subtracted
    float multiplier = 1;    // 1753: applied after the subtraction
};

// The start values of the dialog for a pattern.
XY_EXPORT_TYPE XY_Export_Defaults(const DIFFRACTION_PATTERN_TYPE& pattern);

// `prf_name` is the file name the store keeps for the profile. The pattern's
// sigma holds variances unless sig_var is false; the file holds standard deviations.
bool Save_XY(const std::string& filename, const DIFFRACTION_PATTERN_TYPE& pattern, const std::string& prf_name,
             const XY_EXPORT_TYPE& options, std::string& message);

// x, y and the standard deviation in three columns under "#" comment lines.
bool Save_XYE(const std::string& filename, const DIFFRACTION_PATTERN_TYPE& pattern, std::string& message);

}  // namespace hxl
