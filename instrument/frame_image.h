#pragma once
// A frame turned into colours: the scale (linear, log, square root) between a
// low and a high count taken at percentiles of the frame.
#include <cstdint>
#include <string>
#include <vector>

#include "instrument/frame_set.h"

namespace hxl {

enum class Frame_Scale { Linear, Log, Sqrt };

struct FRAME_VIEW_TYPE {
    Frame_Scale scale = Frame_Scale::Linear;
    float low_percentile = 1.0f;    // counts at or below show the first colour
    float high_percentile = 99.5f;  // counts at or above show the last
};

// Counts at the percentile p (0 to 100) of frame k, by sorting a copy.
float Frame_Percentile(const FRAME_SET_TYPE& f, int k, float p);

// The position (0 to 1) of counts c on the scale between lo and hi.
float Scale_Position(float c, float lo, float hi, Frame_Scale scale);

// Red, green, blue of a position 0 to 1 on the colour ramp.
void Ramp_Colour(float t, std::uint8_t rgb[3]);

// Frame k as nx by ny RGB pixels, row 1 of the frame at the top of the picture;
// `lo` and `hi` receive the counts the ends of the scale stand for.
std::vector<std::uint8_t> Frame_RGB(const FRAME_SET_TYPE& f, int k, const FRAME_VIEW_TYPE& view, float& lo, float& hi);

bool Parse_Frame_Scale(const std::string& word, Frame_Scale& scale);

}  // namespace hxl
