#pragma once
// Checks every reader's result passes through before it reaches a profile:
// a value that is not a finite 32-bit number is refused with the line it
// came from, and a scan written with X descending is turned round.
#include <string_view>

#include "patterns/diffraction_pattern.h"

namespace hxl {

// False, with the pattern error set, when an array of the record holds a value
// that is not finite. `text` is the file as read (may be empty for binary
// files): the message names the line of the first such value in it, or the
// point when the value came out of a calculation.
bool Check_Finite_Values(const DIFFRACTION_PATTERN_TYPE& pattern, std::string_view text);

// Reverses every array of a pattern whose X runs downwards (no step up
// anywhere) into ascending order; limits and step follow. True when reversed.
bool Make_X_Ascending(DIFFRACTION_PATTERN_TYPE& pattern);

// Reverses the order of the points of every array; limits and step follow.
void Reverse_Points(DIFFRACTION_PATTERN_TYPE& pattern);

// The first token of `text` (outside "#"/"!" comment lines) that reads as a
// number but is not a finite value of the 32-bit range: its 1-based line
// and the token. Line 0 when there is none.
struct BAD_NUMBER_TYPE {
    int line = 0;
    std::string_view token;
};
BAD_NUMBER_TYPE Find_Bad_Number(std::string_view text);

}  // namespace hxl
