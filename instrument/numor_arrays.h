#pragma once
// Allocation of the frame tables of a powder numor, refusing header
// dimensions that no real run has (negative, or more cells than memory holds).
#include <string>

#include "instrument/powder_numor.h"

namespace hxl {

// Allocates counts(n_pixels, n_frames) and frame_params(rows, n_frames), zero.
// False with the module's error set when the dimensions are impossible.
bool Allocate_Numor_Arrays(POWDER_NUMOR_TYPE& numor, int rows, const std::string& instrument);

// Copies the head fields common to all powder readers.
struct NUMOR_HEAD;
void Set_Numor_Head(POWDER_NUMOR_TYPE& numor, const NUMOR_HEAD& head);

}  // namespace hxl
