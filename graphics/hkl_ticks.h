#pragma once
// The ticks of the HKL generator over the plot and the reflections under the mouse.
#include <vector>

#include "crystal/reflections.h"

namespace zendrite {

// One bar per reflection inside the last frame, just above the pattern at its position.
void Draw_Hkl_Ticks(const std::vector<hxl::HKL_GEN_TYPE>& list);
// The reflections whose position lies within 0.01 of the window's width of x, with y
// below their bar, at most 28; when the list differs from the last event, the picture is
// repainted and a box beside the mouse gives h k l, multiplicity and d of each.
void Search_HKLGen_Refl(float x, float y, const std::vector<hxl::HKL_GEN_TYPE>& list, bool& changed);
// The line of the box for one reflection.
std::string Hkl_Refl_Label(const hxl::HKL_GEN_TYPE& r);

}  // namespace zendrite
