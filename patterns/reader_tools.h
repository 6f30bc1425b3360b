#pragma once
// Small pieces the format readers share: free fields of a data row, blocks of
// fixed-width columns, and trimming the arrays to the points actually read.
#include <string>
#include <string_view>

#include "patterns/diffraction_pattern.h"
#include "support/text_unit.h"

namespace hxl {

enum class Field_Result { Ok, End_Of_File, Bad_Value };

// Reads up to `max` reals from one data row into `out` (missing ones are 0)
// and their number into `count`. Values are separated by blanks, tabs or
// commas; in a row of blank-separated values that each hold one comma and no
// point, the comma is the decimal sign (as some vendor exports write it).
bool Read_Row_Fields(std::string_view line, float* out, int max, int& count);

// The same for the common row of blank-separated plain numbers, read in place
// from the text, line end included in the search: on success `p` stands on
// the row's line end (or the end of the text). False, with `p` unmoved, at
// anything else (a comma, a word, a comment): the caller takes the line
// through Read_Row_Fields.
bool Scan_Row(const char*& p, const char* e, float* out, int max, int& count);

// Fortran-style fixed columns: `n` reals of `width` columns, `per_line` to a
// record, the layout reused on as many lines as needed; blank fields read 0.
Field_Result Read_Fixed_Reals(Text_Unit& unit, float* out, int n, int per_line, int width);

// `n` pairs (integer of `iw` columns, real of `rw` columns), `per_line` to a record.
Field_Result Read_Fixed_Pairs(Text_Unit& unit, int* ints, float* reals, int n, int per_line, int iw, int rw);

// One fixed field: blank reads 0; false when it is not a number. As in an
// edit descriptor fW.D, a field without a point has its last D digits as decimals.
bool Fixed_Real(std::string_view line, std::size_t col, std::size_t width, float& value, int decimals = 0);

// Integer part of a computed point count; -1 when it is not a finite count.
int Point_Count(double value);

// Guards allocation against a count no file of this size could hold.
bool Implausible_Count(const Text_Unit& unit, long long npts);

// Allocates a fixed-step pattern of `npts` points, taking, when `npts` is not
// positive, the integer part of (xmax - xmin)/step + 1.5. False, with the
// reader's message, when the head gives no points or more than the file holds.
bool Allocate_Fixed_Step(const Text_Unit& unit, DIFFRACTION_PATTERN_TYPE& pattern);

// Cuts every array of the record to its first `n` points (n <= allocated size).
void Shrink_Pattern(DIFFRACTION_PATTERN_TYPE& pattern, int n);

// X from xmin and step, 1-based formula x(i) = xmin + (i-1) * step.
void Fill_Constant_Step(DIFFRACTION_PATTERN_TYPE& pattern);

// Mean step of an explicit X array.
float Mean_Step(const DIFFRACTION_PATTERN_TYPE& pattern);

// PSI DMC/HRPT heads: "lambda=  1.49400, T=   0.000, ..." gives lambda1 (and
// tsamp when T is not 0); the limits line "xmin step xmax monitor, ..." its
// fourth number as the monitor. Other text leaves the record alone.
void Read_Psi_Lambda_Line(std::string_view line, DIFFRACTION_PATTERN_TYPE& pattern);
void Read_Psi_Monitor(std::string_view limits_line, DIFFRACTION_PATTERN_TYPE& pattern);

// Removes a trailing run of blanks and one leading colon with blanks ("TITLE: x").
std::string Keyword_Value(std::string_view rest);

}  // namespace hxl
