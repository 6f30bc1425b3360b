#pragma once
// Least-squares refinement of a cell on observed peak positions, in the X unit
// of the pattern. The parameters are those the crystal system of the group
// leaves free (cubic a; tetragonal, hexagonal and trigonal on hexagonal axes
// a, c; rhombohedral axes a, alpha; orthorhombic a, b, c; monoclinic a, b, c
// and the angle of the unique axis; triclinic all six) and, when asked, a
// zero shift. Each peak is given the reflection nearest to it within the
// tolerance; after a fit the peaks are matched again with the new cell until
// the matches stay the same. Standard deviations: the diagonal of the inverted
// normal matrix times the reduced chi2 (unit weights).
#include <string>
#include <vector>

#include "crystal/figures_of_merit.h"

namespace hxl {

struct CELL_REFINE_SETTINGS_TYPE {
    PEAK_XSPACE_TYPE x;     // x.zero is the starting zero shift
    double tolerance = 0;   // in the X unit; 0 or less: Default_Peak_Tolerance
    bool refine_zero = false;
    int max_iterations = 50;
};

struct CELL_REFINE_RESULT_TYPE {
    bool ok = false;
    std::string message;
    double cell[6] = {0, 0, 0, 0, 0, 0};
    double cell_std[6] = {0, 0, 0, 0, 0, 0};  // 0 for a parameter the system fixes
    double zero = 0, zero_std = 0;
    int n_used = 0;       // peaks matched and fitted
    int n_par = 0;        // free parameters
    double chi2 = 0;      // sum of squared residuals over (n_used - n_par)
    int iterations = 0;
    std::vector<int> used;  // indices in the observed list of the peaks fitted
    std::string cell_text;  // "a b c alpha beta gamma"
    std::string std_text;   // their standard deviations, same columns
};

// The free parameters of the group's system for this cell: a text naming the
// system's constraint that the cell breaks, or empty when it keeps them.
std::string Cell_Constraint_Problem(const double cell[6], const SPACE_GROUP_TYPE& sg);

// Refines `cell` (a b c alpha beta gamma, degrees) on `x_obs`. False with
// `message` (result otherwise empty) when the cell, group or space is bad,
// the cell breaks its system's metric, too few peaks are matched for the
// parameters, or the peaks do not fix them (singular normal matrix).
bool Refine_Cell(const std::vector<double>& x_obs, const double cell[6], const SPACE_GROUP_TYPE& sg,
                 const CELL_REFINE_SETTINGS_TYPE& settings, CELL_REFINE_RESULT_TYPE& result);

}  // namespace hxl
