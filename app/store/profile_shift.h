#pragma once
// The drawing offsets of the Shift dialog: the profiles are drawn as a stack, slot k
// moved k-1 times the shift X and Y from its data, which stay as they are.
namespace zendrite {

// Applies the difference between the new shifts and the last ones given to every
// filled slot and keeps the new ones as the last. Non-finite values change nothing
// and return false.
bool Apply_Profile_Shift(float shift_x, float shift_y);

}  // namespace zendrite
