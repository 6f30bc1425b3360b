#pragma once
// The efficiency file: one line "(i5,2f14.5)" a point, a number, a column that
// the reader discards, and the efficiency. The Multiply/Shift panel and the
// Fourier filter write it; the efficiency correction reads it.
#include <string>
#include <vector>

#include "patterns/diffraction_pattern.h"

namespace hxl {

inline constexpr const char* kEfficiencyFile = "zendrite-2006.eff";

// Reads up to `n` efficiencies into e(1..n), which starts at 1. A line that is
// not three numbers, or whose values are not finite, ends the list: the values
// not read keep 1. Values below 0.0001 (negative ones too) become 1. False with
// "ERROR opening the file " + the name when the file cannot be opened; `read`
// is the number of lines taken.
bool Read_Efficiency_File(const std::string& file, int n, Array1<float>& e, int& read, std::string& message);

// y(i) /= e(i), sigma(i) /= e(i)^2 for the points of the pattern that e covers;
// by point number, not by X.
void Apply_Efficiency_Pattern(DIFFRACTION_PATTERN_TYPE& pattern, const Array1<float>& e);

// The lines "(i5,2f14.5)" of (number, a, b) for i from 1.
std::string Efficiency_Lines(const std::vector<float>& a, const std::vector<float>& b);

// The file of the Fourier filter: point number, raw y, raw / smoothed; a smoothed
// value of 0 repeats the last quotient (1 before the first).
std::string Smoothing_Efficiency_Text(const Array1<float>& raw, const Array1<float>& smoothed, int n);

}  // namespace hxl
