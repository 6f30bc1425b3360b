#pragma once
// A generic chart drawn on the whole page of the present target.
#include "graphics/chart_files.h"

namespace zendrite {

void Draw_Chart(const hxl::CHART_TYPE& chart);

// The data frame of the last XY chart drawn: X, the left Y and the right Y ranges (the
// right one maps curves of the second axis onto the left one's units).
struct CHART_FRAME_TYPE {
    bool xy = false;
    float x1 = 0, x2 = 1, y1 = 0, y2 = 1, r1 = 0, r2 = 1;
    float left = 0, bottom = 0, right = 1, top = 1;  // the frame on the page, as fractions of it
    float Left_Of_Right(float y) const { return y1 + (y - r1) / (r2 - r1) * (y2 - y1); }
};
const CHART_FRAME_TYPE& Last_Chart_Frame();

}  // namespace zendrite
