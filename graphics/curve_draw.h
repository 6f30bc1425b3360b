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

// Between these two, curves are reduced on two threads and drawn in the order they were
// given, at the latest by End_Curve_Batch (or by the next Set_Frame_Pixels): draw nothing else
// in between, and keep the arrays given alive until then, or take them from Curve_Scratch.
void Begin_Curve_Batch();
void End_Curve_Batch();
// n floats that live until the curve drawn from them is drawn.
float* Curve_Scratch(int n);

}  // namespace zendrite
