#pragma once
// Vendor files of row 16 ("LIBRARY"): the binary and text formats read
// through xylib (Bruker/Siemens RAW, Philips RD/SD, Sietronics CPI, VAMAS,
// ChiPLOT, XFIT XDD, DBWS, RIET7, Canberra MCA/CNF, ...) and the Rigaku
// SmartLab RAS text files, read by a reader of our own. One profile per
// block or scan; blocks past `max_patterns`, or with fewer than two points,
// are counted in `left_out`. Failures set ERR_Pattern and leave `patterns` empty.
// The library runs in a child process: a file that crashes it is refused.
#include <string>
#include <vector>

#include "patterns/diffraction_pattern.h"
#include "support/text_unit.h"

namespace hxl {

void Read_Pattern_Library(const std::string& filename, std::vector<DIFFRACTION_PATTERN_TYPE>& patterns,
                          int max_patterns, int& left_out);

// The same on a file already in memory; `filename` names the profiles and,
// where the content does not settle it, chooses the format by its extension.
void Read_Library_Bytes(const std::string& bytes, const std::string& filename,
                        std::vector<DIFFRACTION_PATTERN_TYPE>& patterns, int max_patterns, int& left_out);

// Rigaku SmartLab ".ras": one profile per *RAS_HEADER_START/*RAS_INT_END scan.
void Read_Pattern_Ras(Text_Unit& unit, std::vector<DIFFRACTION_PATTERN_TYPE>& patterns, int max_patterns,
                      int& left_out);

// What both routes finish a scan with: a descending scan turned ascending,
// limits, the mean step, ct_step kept only for an evenly stepped X.
void Finish_Library_Scan(DIFFRACTION_PATTERN_TYPE& pattern);

// A value that a 32-bit float holds as a finite number.
bool Finite_Float(double value);

}  // namespace hxl
