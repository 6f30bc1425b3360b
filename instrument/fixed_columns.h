#pragma once
// Fixed-width numeric fields of numor lines: "(10I8)", "(8I10)", "(5E16.8)"
// (width 8 or 10 for integers, 16 for reals), read through the edit-descriptor reader.
// As in a formatted read, a blank or missing field reads as zero and blanks
// inside a field are ignored.
#include <string>
#include <string_view>

namespace hxl {

// Reads `count` fields of `width` columns into `out`; false when a field holds no number.
bool Read_Int_Fields(std::string_view line, int width, int count, int* out);
bool Read_Real_Fields(std::string_view line, int width, int count, float* out);

// An integer right-justified in `width` columns, asterisks when it does not fit ("(Iw)").
std::string Format_I(long long value, int width);

}  // namespace hxl
