#pragma once
// What a profile fit takes from a pattern: the points with their variances,
// and a background list cut down to what a job can hold.
#include <vector>

#include "patterns/diffraction_pattern.h"
#include "peaks/arcfit_run.h"

namespace hxl {

// The points of `p`; without sigmas the variance is the count itself.
ARC_DATA_TYPE Arc_Data_From_Pattern(const DIFFRACTION_PATTERN_TYPE& p);

// At most 120 background points, spread evenly over `all`, both ends kept.
std::vector<PEAK_POINT_TYPE> Arc_Thin_Background(const std::vector<PEAK_POINT_TYPE>& all);

}  // namespace hxl
