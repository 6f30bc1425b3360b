#pragma once
// Numbers as Fortran input writes them: "1.5", "-.5", "+2.", "1.5D-3",
// "1e5", the bare signed exponent of "1.0+3", and "Inf"/"NaN". Shared by the
// list-directed and the edit-descriptor readers; never depends on the locale.
#include <string_view>

namespace hxl {

// The whole of `text` (no blanks) as one real. When the mantissa has no
// decimal point it takes `implied` decimals, as an F or E field does.
// Values beyond the range read as infinite, below it as zero.
bool Fortran_Real(std::string_view text, int implied, double& value);
bool Fortran_Real(std::string_view text, int implied, float& value);

// Optional sign and digits only.
bool Fortran_Integer(std::string_view text, int& value);

}  // namespace hxl
