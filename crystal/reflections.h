#pragma once
// Reflections of a cell and space group: absences, multiplicities, the
// asymmetric region of each Laue class, and the generated list.
#include <ostream>
#include <string>
#include <vector>

#include "crystal/crystal_metrics.h"
#include "crystal/space_group.h"

namespace hxl {

struct HKL_GEN_TYPE {
    int h = 0, k = 0, l = 0;
    int mult = 0;
    float s = 0;    // sin(theta)/lambda
    float pos = 0;  // position in the chosen X space
    float y = 0;    // intensity of the pattern there (set by the caller)
};

// X spaces of the generated positions.
enum class HKL_XSPACE { TWOTHETA, D, Q, S, TOF };

// True when the operators extinguish hkl.
bool Hkl_Absent(const SPACE_GROUP_TYPE& sg, int h, int k, int l);
// The powder multiplicity: the number of distinct reflections equivalent to
// hkl in the Laue class (Friedel pairs included).
int Hkl_Mult(const SPACE_GROUP_TYPE& sg, int h, int k, int l);
// sin(theta)/lambda of hkl.
float Hkl_S(const Cell_Record& cell, int h, int k, int l);

// The text naming the asymmetric region used for the group's Laue class.
std::string Laue_Region_Text(const SPACE_GROUP_TYPE& sg);

// All allowed reflections with smin < s <= smax, one per set of equivalents,
// sorted by s. Returns false (list unchanged, message set) on bad limits.
bool Hkl_Generate(const Cell_Record& cell, const SPACE_GROUP_TYPE& sg, float smin, float smax,
                  std::vector<HKL_GEN_TYPE>& list, std::string& message);

// Room reserved for a list up to smax: N = int(8 smax^3 1.05 (4 pi / 3) V), doubled
// and divided by `count` (the group's count, at least 1).
long Hkl_Size_Estimate(float smax, float volume, int count);

// The cell of a trial: angles that give no cell, a non-positive edge or a volume near
// zero (below 1e-3 of a b c) give "Wrong cell parameters".
bool Hkl_Trial_Cell(const float cell[6], Cell_Record& record, std::string& message);

// The list of a plot window [xmin, xmax] in an X space: the limits in s, the generation,
// each position (reflections without one, 2theta beyond 180, are dropped), and y from
// the point of (px, py) nearest in x (n points, x rising; n = 0 leaves y at 0).
// False with the message and the list unchanged on failure.
bool Hkl_Generate_Window(const Cell_Record& cell, const SPACE_GROUP_TYPE& sg, HKL_XSPACE space, float lambda,
                         float dtt1, float dtt2, float xmin, float xmax, const float* px, const float* py, int n,
                         std::vector<HKL_GEN_TYPE>& list, std::string& message);

// Limits of a window in an X space turned into s, with the margin of 0.2 on
// the upper one. lambda for 2theta, dtt1/dtt2 for TOF (t = dtt1 d + dtt2 d^2).
bool Hkl_S_Limits(HKL_XSPACE space, float xmin, float xmax, float lambda, float dtt1, float dtt2, float& smin,
                  float& smax, std::string& message);
// The X space of a profile's scat_var: "2theta" and "Omega" mean 2theta; "TOF",
// "d-space"/"d-spacing", "q-space" and "s-space" keep their own; others refuse
// with "xspace not permited".
bool Hkl_XSpace_From_Name(const std::string& scat_var, HKL_XSPACE& space, std::string& message);
// The checks of the setup: "Empty SPGR field", "Bad wavelength" (2theta only).
bool Hkl_Check_Setup(const std::string& spgr, HKL_XSPACE space, float lambda, std::string& message);

// The position of s in an X space; false when it has none there (2theta beyond 180).
bool Hkl_Position(HKL_XSPACE space, float s, float lambda, float dtt1, float dtt2, float& pos);
// The 2theta at wavelength lambda of a position x in a constant-wavelength X
// space (2theta, d, Q, s); false in TOF, or where sin(theta) would pass 1.
bool Hkl_Two_Theta(HKL_XSPACE space, double x, double lambda, double& tth);

// The three-section listing of reflection conditions.
void Write_Reflection_Conditions(const SPACE_GROUP_TYPE& sg, std::ostream& unit);

}  // namespace hxl
