#pragma once
// The format library's side of the "LIBRARY" row: picks the library's format
// for a file, checks it and reads it into our own terms. It runs in a child
// process (see read_pattern_library.cpp) and trusts nothing of the bytes.
#include <string>

#include "patterns/library_data.h"

namespace hxl {

// Fills `data` with the blocks to be read (at most `max_patterns` of two
// points or more) and returns "", or returns the refusal text.
std::string Load_Library_Data(const std::string& bytes, const std::string& filename, int max_patterns,
                              Library_Data& data);

}  // namespace hxl
