#pragma once
// Acquisition times written by instruments, as seconds since 1970-01-01 00:00 UTC.
#include <string_view>

namespace hxl {

// "2021-05-20T15:55:51+02:00", with optional fractions of a second and a zone ("Z", "+hh:mm",
// "-hhmm"); a time without a zone is taken as UTC. False on anything else, or a date or time
// out of range.
bool Iso_Time_Seconds(std::string_view text, double& seconds);

// "MM/DD/YY hh:mm:ss" or "MM/DD/YYYY hh:mm:ss" (the Rigaku heads), taken as UTC; two-digit
// years are 20YY. False on anything else.
bool Slash_Time_Seconds(std::string_view text, double& seconds);

}  // namespace hxl
