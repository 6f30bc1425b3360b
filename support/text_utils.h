#pragma once
// Cutting lines into words and reading numbers without a fixed format. Every
// routine clears the error state on entry and sets it on failure; none prints.
#include <string>
#include <string_view>
#include <vector>

#include "support/array1.h"

namespace hxl {

extern bool err_string;
extern std::string err_string_mess;  // 150
void Clear_String_Error();
void Set_String_Error(const std::string& message);

// Removes the first word of `line` (leading blanks dropped first) into `word`;
// `line` keeps the rest, left-justified. Lengths are those of the results.
void Cutst(std::string& line, int* nlong1 = nullptr, std::string* word = nullptr, int* nlong2 = nullptr);

// Reads every word of `line` as a number: `vet` the value, `ivet` its integer
// part, `iv` the count. Capacity is the size of `vet`.
void Getnum(std::string_view line, Array1<float>& vet, Array1<int>& ivet, int& iv);

// Words of the form value(std): 1.234(5) gives 1.234 and 0.005; a word
// without brackets has std 0. A line with no brackets at all is read the same
// way but sets the error "Wrong format using Standard values".
void Getnum_Std(std::string_view line, Array1<float>& value, Array1<float>& std, int& ic);

// value(std) with the uncertainty in one or two digits.
void SetNum_Std(float value, float std, std::string& text);

// Splits `line` into words at blanks; a part in single or double quotes is
// one word, without its quotes.
void Get_Words(std::string_view line, std::vector<std::string>& words, int& count);

// The number of values (data fields) one pass of a format string takes.
void NumCol_from_NumFmt(std::string_view format, int& ncol);

}  // namespace hxl
