#pragma once
// Pictures written without a window system: 8-bit RGB PNG through libpng.
#include <cstdint>
#include <string>
#include <vector>

namespace hxl {

// Writes width x height RGB pixels (rows from the top) to `path` through a
// temporary file and a rename; false with a message.
bool Write_PNG_RGB(const std::string& path, int width, int height, const std::vector<std::uint8_t>& rgb,
                   std::string& message);

}  // namespace hxl
