#pragma once
// List-directed ("free") reading: values separated by blanks, tabs or commas,
// over as many lines as the values need; `D` or `E` exponents and signs;
// repeat counts `r*value` and null values (`r*`, or nothing between two
// commas) which leave the variable as it was; a slash ends the list and
// leaves the remaining variables as they were. As with a formatted read, the
// rest of the last line used is skipped.
#include <string_view>

#include "support/text_unit.h"

namespace hxl {

enum class List_Result { Ok, End_Of_File, Bad_Value };

List_Result List_Read(Text_Unit& unit, float* out, int n);
List_Result List_Read(Text_Unit& unit, double* out, int n);
List_Result List_Read(Text_Unit& unit, int* out, int n);

// Internal read from one text; running out of text is End_Of_File.
List_Result List_Read(std::string_view text, float* out, int n);
List_Result List_Read(std::string_view text, double* out, int n);
List_Result List_Read(std::string_view text, int* out, int n);

// One number in Fortran notation ("1.5", "-.5", "+2.", "1.5D-3", "1e5");
// false when the whole text is not one number. Beyond the range of the type
// a value reads as infinite, below it as zero.
bool Parse_Real(std::string_view word, double& value);
bool Parse_Real(std::string_view word, float& value);
bool Parse_Integer(std::string_view word, int& value);

}  // namespace hxl
