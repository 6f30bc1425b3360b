#pragma once
// Counts in the heads of text files, checked before the file reaches the
// format library, whose readers trust them: an absurd count asked for more
// memory than any file could fill.
#include <string>

namespace hxl {

// The point count of line 4 of a ChiPlot file: a whole number no larger than
// the file has lines.
bool Chiplot_Head_Plausible(const std::string& bytes, std::string& why);

}  // namespace hxl
