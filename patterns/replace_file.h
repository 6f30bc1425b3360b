#pragma once
// Writes a whole file through a temporary file and a rename, so that a
// failure never leaves a half-written file where the old one stood.
#include <string>

namespace hxl {

bool Replace_File(const std::string& path, const std::string& contents);

}  // namespace hxl
