#pragma once
// The texts shown for a reflection under the mouse, and the phase of a
// reflection from its code.
#include <string>

#include "support/array1.h"

namespace hxl {

// "Nuc.", "Mag.", "Nuc.+Mag." for kinds 1, 2, 3 (9 characters); blank otherwise.
std::string Prf_Kind_Name(int kind);

// hkl and ph with their wavelength number.
std::string Prf_Label_Lambda(const int* hkl, int phase, int lambda);
// hkl and ph with the kind name.
std::string Prf_Label_Kind(const int* hkl, int phase, int kind);
// hkl and ph with the propagation vector.
std::string Prf_Label_Kvec(const int* hkl, int phase, const float* k, int lambda);
// A superspace reflection: 3 + `extra` indices, ph, wavelength number, kind name.
std::string Prf_Label_Super(const int* hkl, int extra, int phase, int lambda, int kind);

// Phase of a reflection from its code by the cumulative codes of the phases
// (each phase takes one code per propagation vector, at least one); `vector`
// gets the vector's number within the phase (0 when the phase has none).
int Prf_Phase_From_Code(int code, const Array1<int>& nvk, int& vector);

// Phase from a code of the older fixed layout, whose high bits hold it.
int Prf_Phase_From_3111_Code(int code);

// Integer and real fields as an edit descriptor writes them; stars when too wide.
std::string Prf_I(long long value, int width);
std::string Prf_F(double value, int width, int decimals);

}  // namespace hxl
