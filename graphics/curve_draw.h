#pragma once
// Curves of the frame through the layer: a sparse curve point by point, a dense one as the
// column runs its pixels can show, so that the cost follows the width of the picture.
#include "graphics/curve_reduce.h"

namespace zendrite {

// How a curve looks: marker 1 or less draws no markers, line type -1 no line.
struct CURVE_LOOK {
    int marker = 1, marker_colour = 0, marker_size = 5;
    int line_type = -1, line_colour = 0, line_width = 1;
};

// The pixels of the frame whose data units were just set, in a picture of width by height.
void Set_Frame_Pixels(float xmin, float xmax, float ymin, float ymax, int width, int height);

// Markers, then the line; `log` draws the logarithm of Y (0 for values up to 1).
void Draw_Curve(const float* x, const float* y, int n, bool log, const CURVE_LOOK& look);
// Vertical bars from low to high.
void Draw_Error_Bars(const float* x, const float* low, const float* high, int n, int colour, int marker_size);

}  // namespace zendrite
