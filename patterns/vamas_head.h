#pragma once
// The counts of a VAMAS head, checked before the file reaches the format
// library, whose reader overflows the stack on an absurd count.
#include <string>

namespace hxl {

// False, with the reason, when a count of the experiment head is not a
// number of reasonable size or the head ends early.
bool Vamas_Head_Plausible(const std::string& bytes, std::string& why);

}  // namespace hxl
