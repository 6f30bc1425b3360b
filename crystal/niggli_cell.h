#pragma once
// Niggli reduction (Krivy-Gruber) and the small cell tools of the metrics module.
#include <string>

#include "crystal/crystal_metrics.h"

namespace hxl {

// Reduces the metric tensor `g` in place; `reduced` gets the reduced cell and
// `trans` the matrix whose columns are the new axes in terms of the old ones.
// At the 100th round the error pair is set and the last cell is kept.
void Niggli_Cell_NiggliMat(float g[3][3], Cell_Record& reduced, int trans[3][3]);

// The same from cell parameters.
void Niggli_Cell_Params(const float cell[3], const float ang[3], Cell_Record& reduced, int trans[3][3]);

// The cell spanned by three Cartesian vectors.
void Cell_From_Vectors(const float v1[3], const float v2[3], const float v3[3], Cell_Record& record);

// True when the three angles (degrees) can be those of a cell.
bool Cell_Angles_Allowed(const float ang[3]);

// "TRIC", "MONO", ... to the full name of the crystal family.
void Get_Crystal_Family(const std::string& name, std::string& family);

}  // namespace hxl
