#pragma once
// Sums, averages and differences of whole patterns, and the rescaling of one
// pattern in Y and X. Every routine answers false with the system's message and
// leaves its output untouched when it refuses, so a command can test before it
// takes a slot.
#include <string>
#include <vector>

#include "patterns/diffraction_pattern.h"

namespace hxl {

// The grid test of the sum and average: npts first (its text speaks of the step,
// although the test is on the number of points), then every x compared exactly.
bool Same_Grid(const std::vector<const DIFFRACTION_PATTERN_TYPE*>& set, std::string& message);

// Sum (average false) or average of `set` on the grid of its first pattern.
// `out` becomes a copy of the first pattern whose y alone is combined: sigma,
// ycalc and bgr stay those of the first. Title gets "Summation of profiles " or
// "Average of profiles " in front; ymin and ymax are recomputed.
bool Sum_Patterns(const std::vector<const DIFFRACTION_PATTERN_TYPE*>& set, bool average,
                  DIFFRACTION_PATTERN_TYPE& out, std::string& message);

// What the interpolating sum left out.
struct SUM_LEFT_OUT_TYPE {
    long long beyond_first = 0;  // points of the other patterns outside the first one's X range
    int not_covered = 0;         // points of the first grid outside another pattern's X range
};

// The same on patterns whose grids differ: each further pattern is interpolated
// linearly onto the x of the first, and the variances go with it
// ((1-t)^2 s(j) + t^2 s(j+1)), summed, and divided by the count squared for the
// average. Only first-grid points inside every pattern's range are kept.
bool Sum_Patterns_Interpolated(const std::vector<const DIFFRACTION_PATTERN_TYPE*>& set, bool average,
                               DIFFRACTION_PATTERN_TYPE& out, SUM_LEFT_OUT_TYPE& left_out, std::string& message);

// A - B on equal grids: `out` is a copy of A with y := yA - yB, ymin and ymax
// recomputed. The title is the caller's, since it holds the names of the store.
bool Difference_Patterns(const DIFFRACTION_PATTERN_TYPE& a, const DIFFRACTION_PATTERN_TYPE& b,
                         DIFFRACTION_PATTERN_TYPE& out, std::string& message);

// x += shift; y *= factor; sigma (variances) *= factor^2; ymin, ymax *= factor.
// xmin and xmax are not moved.
void Multiply_Shift_Pattern(DIFFRACTION_PATTERN_TYPE& pattern, float shift, float factor);

// Rescales to the monitor `to`: y *= to / monitor, sigma by the square, monitor := to.
void Normalize_Pattern_Monitor(DIFFRACTION_PATTERN_TYPE& pattern, float to);

}  // namespace hxl
