#pragma once
// The frames of a numor whose every scan step records a whole detector: the
// 2D powder instruments (a bank of position-sensitive tubes) and the
// single-crystal instruments (an area detector).
#include <string>

#include "instrument/frame_set.h"

namespace hxl {

// Reads the frames of a numor: header I and F blocks, then per step an F block
// (time, monitor, total counts, angles x 1000) and an I block of counts.
// The detector is taken square (tubes by pixels) unless `n_columns` is given.
bool Read_Nrf_Frames(const std::string& path, FRAME_SET_TYPE& frames, std::string& message, int n_columns = 0);

// True when the file starts as a numor (an R block marker on its first line).
bool Looks_Like_Numor(const std::string& path);

}  // namespace hxl
