#pragma once
// The commands that combine, rescale and smooth whole profiles of the store.
// Each returns a status (0 done, -1 failed or cancelled) and a text; the text
// "Cancelled" is not shown. A refusal leaves the store as it was.
#include <string>
#include <vector>

#include "app/store/zendrite_param_global.h"

namespace zendrite {

void Sum_Profiles(int mode, int& status, std::string& text);  // mode 0 sum, else average
void Difference_Profiles(int& status, std::string& text);
void Multiply_Shift_Panel(int& status, std::string& text);
void Apply_Efficiency(int& status, std::string& text);
void Normalize_Monitor(int& status, std::string& text);
void Shift_Profiles(int& status, std::string& text);

// The dialogs Offset/Align (kind 3), Scaling Y (4) and Scaling X (5): `mouse` tells
// that the user left the work to the mouse; the marked slots are then in the
// mouse state.
void Offset_Scale_Dialog(int kind, bool& mouse, int& status, std::string& text);

void Smooth_Polynomial(int& status, std::string& text);
void Smooth_Fourier(int& status, std::string& text);

// A profile of the types that sum, difference and smoothing refuse.
bool Prf_Like(const PRF_INFO_ADD_TYPE& info);
// Puts a synthetic profile into the next slot: a copy of `from_info` with the type
// and name given, its directory blank, the per-slot totals at their start values.
// Its slot, or 0 (and nothing changed) when the store is full.
int Add_Synthetic_Profile(DIFFRACTION_PATTERN_TYPE&& pattern, const PRF_INFO_ADD_TYPE& from_info,
                          const std::string& type, const std::string& name);

}  // namespace zendrite
