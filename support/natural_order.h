#pragma once
// The order in which people expect numbered file names: "run_2" before "run_10".
#include <string_view>

namespace hxl {

// Case-insensitive, runs of digits compared by their value (leading zeros do
// not count; runs of any length, no overflow); names equal by that rule are
// ordered by their plain bytes, so the order is total.
bool Natural_Less(std::string_view a, std::string_view b);

}  // namespace hxl
