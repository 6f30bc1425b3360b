#pragma once
// Iso-lines of a frame by marching squares between pixel centres.
#include <array>
#include <vector>

#include "instrument/frame_set.h"
#include "instrument/frame_image.h"

namespace hxl {

// Segments (x1, y1, x2, y2) where frame k crosses `level`, in pixel
// coordinates (pixel i's centre at i - 0.5), within columns i1..i2, rows j1..j2.
std::vector<std::array<float, 4>> Iso_Segments(const FRAME_SET_TYPE& f, int k, float level, int i1, int i2, int j1, int j2);

// The counts at position t (0 to 1) of the scale between lo and hi: the
// inverse of Scale_Position.
float Scale_Level(float t, float lo, float hi, Frame_Scale scale);

}  // namespace hxl
