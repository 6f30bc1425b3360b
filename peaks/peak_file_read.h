#pragma once
// Reading back a peak file of the free format: "!" lines are comments, every
// other line holds position, intensity and background (the last two may be
// missing), values separated by blanks or commas.
#include <string>
#include <vector>

#include "peaks/peak_files.h"

namespace hxl {

// Reads `path` into `list` in the file's order. False with `message`, and
// `list` untouched, when the file cannot be read, is not text, holds a line
// that is not numbers (its number is told), a position that is not finite,
// or no peak at all.
bool Read_Free_Peaks(const std::string& path, std::vector<PEAK_POINT_TYPE>& list, std::string& message);
// The same from the text of such a file; `name` goes into the messages.
bool Parse_Free_Peaks(const std::string& text, const std::string& name, std::vector<PEAK_POINT_TYPE>& list,
                      std::string& message);

}  // namespace hxl
