#pragma once
// What the variants of the profile-file reader share while one file is read.
#include <string>
#include <string_view>

#include "patterns/diffraction_pattern.h"
#include "prf/prf_info.h"
#include "prf/read_prf.h"
#include "support/array1.h"
#include "support/edit_format.h"
#include "support/text_unit.h"

namespace hxl {

struct PRF_READ_STATE {
    Text_Unit unit;
    std::string filename;          // as given, with its folder
    std::string line2;             // second line of the file
    bool sx = false;               // "sx_multiphase" in the first six lines
    Array1<int> nvk;               // (nphases) propagation vectors of each phase
    Array1<int> superspace;        // (nphases) 1 for a superspace phase
    int has_k = 0;                 // sum of nvk
    int nexcl = 0;
    float zero = 0, c1 = 0, c2 = 0;
};

// One line of the file, at most 256 characters; false at end of file.
bool Prf_Line(Text_Unit& unit, std::string& line, std::size_t width = 256);

// A parsed record layout, kept for the next call with the same text.
const EDIT_FORMAT_TYPE& Prf_Format(const std::string& text);

// True when the correction is `zero` alone (time of flight, energy).
bool Prf_Zero_Only(const DIFFRACTION_PATTERN_TYPE& pattern);

// xmin, xmax, step from the ends of x; ymin over y and ycalc; ymax the same
// but for points inside an excluded region.
void Prf_Ranges(const PRF_INFO_ADD_TYPE& info, DIFFRACTION_PATTERN_TYPE& pattern);

// The reflection arrays with `n` rows, zeroed.
void Prf_Allocate_Reflections(PRF_INFO_ADD_TYPE& info, int n);
// Keeps the first `n` rows of the reflection arrays.
void Prf_Cut_Reflections(PRF_INFO_ADD_TYPE& info, int n);
// Room for `n` excluded regions (the record holds at least 100).
void Prf_Excluded_Room(PRF_INFO_ADD_TYPE& info, int n);

// A count no file of this size could hold.
bool Prf_Implausible(const Text_Unit& unit, long long n);

// The variants; each returns false with the message of its failing step.
bool Read_Prf_Column(PRF_READ_STATE& s, PRF_INFO_ADD_TYPE& info, DIFFRACTION_PATTERN_TYPE& pat, std::string& message);
bool Read_Prf_3111(PRF_READ_STATE& s, PRF_INFO_ADD_TYPE& info, DIFFRACTION_PATTERN_TYPE& pat, std::string& message);
bool Read_Prf_Sin(PRF_READ_STATE& s, PRF_INFO_ADD_TYPE& info, DIFFRACTION_PATTERN_TYPE& pat, std::string& message);
bool Read_Prf_Pairs(PRF_READ_STATE& s, PRF_INFO_ADD_TYPE& info, DIFFRACTION_PATTERN_TYPE& pat, std::string& message);
bool Read_Prf_Xrf(PRF_READ_STATE& s, PRF_INFO_ADD_TYPE& info, DIFFRACTION_PATTERN_TYPE& pat, std::string& message);

}  // namespace hxl
