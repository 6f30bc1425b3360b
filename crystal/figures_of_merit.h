#pragma once
// How well a trial cell explains a list of observed peak positions: de Wolff's
// M(20) (J. Appl. Cryst. 1, 108 (1968)), Smith and Snyder's F(N) (J. Appl.
// Cryst. 12, 60 (1979)) and the count of peaks no reflection explains.
//
// Made to be called at every move of a slider: one reflection list up to the
// last observed peak and one pass over the peaks (well under a millisecond for
// 20 to 50 peaks and a cell of a few hundred reflections).
//
// Definitions used (Q = 1/d^2):
//   M(20) = Q20 / (2 <eps> N20): Q20 the Q of the 20th observed line (by
//     rising Q), <eps> the mean |Qobs - Qcalc| over the 20 first lines, Qcalc
//     the nearest calculated line, N20 the number of distinct calculated Q up
//     to Q20 (equivalent and coincident reflections counted once, systematic
//     absences of the group left out).
//   F(N) = N / (<|dx|> N_poss): <|dx|> the mean |xobs - xcalc| over the N first
//     lines, N_poss the distinct calculated lines up to the N-th observed one.
//     Published values are in 2theta (degrees); in another X space the same
//     formula is taken in that unit and the text names it.
//   A peak is unexplained when its nearest reflection is farther than the
//   tolerance (default: 0.05 degree in 2theta; 0.1 % of the position in d, Q,
//   s and TOF, about the same at the middle of a laboratory pattern).
#include <string>
#include <vector>

#include "crystal/reflections.h"

namespace hxl {

// The X space of the peak positions and its constants. `zero` is subtracted
// from every observed position before it is compared (x_obs = x_calc + zero).
struct PEAK_XSPACE_TYPE {
    HKL_XSPACE space = HKL_XSPACE::TWOTHETA;
    double lambda = 0;           // 2theta
    double dtt1 = 0, dtt2 = 0;   // TOF: t = dtt1 d + dtt2 d^2
    double zero = 0;
};

// Q = 1/d^2 of a position (zero already removed); false when it has none.
bool Q_Of_X(const PEAK_XSPACE_TYPE& x, double pos, double& q);
// The position of Q, and dx/dQ when `dxdq` is given; false when it has none
// (2theta beyond 180 degrees).
bool X_Of_Q(const PEAK_XSPACE_TYPE& x, double q, double& pos, double* dxdq = nullptr);
// The default tolerance at a position, in the X unit.
double Default_Peak_Tolerance(const PEAK_XSPACE_TYPE& x, double pos);
// The constants make sense for the space ("Bad wavelength", "Bad dtt1/dtt2").
bool Check_Peak_XSpace(const PEAK_XSPACE_TYPE& x, std::string& message);
// "2theta", "d", "Q", "s", "TOF": the unit's name in the texts.
const char* XSpace_Unit_Name(HKL_XSPACE space);

struct FOM_SETTINGS_TYPE {
    PEAK_XSPACE_TYPE x;
    double tolerance = 0;  // in the X unit; 0 or less: the default above
    int fn_lines = 0;      // N of F(N); 0: all observed peaks
};

struct FOM_RESULT_TYPE {
    bool ok = false;
    std::string message;  // why there is no result (bad cell, group, space)
    int n_obs = 0;        // peaks with a position in the space
    bool m20_valid = false;
    double m20 = 0, m20_eps = 0, q20 = 0;
    int n20 = 0;
    bool fn_valid = false;
    double fn = 0, fn_mean_delta = 0;
    int fn_n = 0, fn_poss = 0;
    int unexplained = 0;
    // Per observed peak, in the order given: the index in `reflections` of its
    // nearest reflection, and whether it lies within the tolerance.
    std::vector<int> nearest;
    std::vector<bool> explained;
    std::vector<HKL_GEN_TYPE> reflections;  // up to past the last peak, `pos` in the X space (zero not added)
    std::string m20_text;  // "M(20) = 55.3", or "M(20): fewer than 20 peaks (16)"
    std::string fn_text;   // "F(16) = 112.4 (0.0071, 20)", or "F(30): fewer than 30 peaks (16)"
    std::string text;      // one line for the panel: both, and the unexplained count
};

// The figures of a trial cell against the observed positions (any order; the
// "first" lines are those of lowest Q). False, with `message`, on a bad cell,
// group or space, or no peak: then nothing else of `result` is meaningful.
bool Figures_Of_Merit(const std::vector<double>& x_obs, const Cell_Record& cell, const SPACE_GROUP_TYPE& sg,
                      const FOM_SETTINGS_TYPE& settings, FOM_RESULT_TYPE& result);

// The reflections with 0 < Q <= qmax, positions in the space; false with `message`.
bool Reflections_To_Q(const Cell_Record& cell, const SPACE_GROUP_TYPE& sg, const PEAK_XSPACE_TYPE& x, double qmax,
                      std::vector<HKL_GEN_TYPE>& list, std::string& message);
// The index of the reflection whose `pos` is nearest to `pos` in a list sorted
// by rising s; -1 for an empty list.
int Nearest_Reflection(const std::vector<HKL_GEN_TYPE>& list, HKL_XSPACE space, double pos);

}  // namespace hxl
