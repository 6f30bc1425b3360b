#pragma once
// A generic chart drawn on the whole page of the present target.
#include "graphics/chart_files.h"

namespace zendrite {

void Draw_Chart(const hxl::CHART_TYPE& chart);

}  // namespace zendrite
