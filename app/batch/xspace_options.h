#pragma once
// The X space options of the verbs that load patterns: --xspace NAME, with --lambda L and
// --dtt1 A --dtt2 B standing in for the grids of the constants.
#include <ostream>
#include <string>
#include <vector>

#include "patterns/diffraction_pattern.h"

namespace zendrite {

struct X_SPACE_OPTIONS {
    std::string target;  // empty: no conversion
    bool lambda_given = false, dtt1_given = false, dtt2_given = false;
    float lambda = 0, dtt1 = 0, dtt2 = 0;
};

// Takes the options out of `args` into `rest`; false with a message on `err` when one is wrong.
bool Take_X_Space_Options(const char* verb, const std::vector<std::string>& args, std::vector<std::string>& rest,
                          X_SPACE_OPTIONS& options, std::ostream& err);

// The store's slots `slots` into the target space, the constants given first: false with
// the system's text on `err` when refused (the store is then as it was).
bool Apply_X_Space_Options(const X_SPACE_OPTIONS& options, const std::vector<int>& slots, std::ostream& err);

// One pattern read apart from the store (a verb that writes files) through the same
// conversion: it enters an empty store, is converted, and comes back.
bool Convert_Pattern_By_Options(const X_SPACE_OPTIONS& options, hxl::DIFFRACTION_PATTERN_TYPE& pattern, int row,
                                std::ostream& err);

}  // namespace zendrite
