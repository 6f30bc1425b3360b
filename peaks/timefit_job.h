#pragma once
// The job of the time-of-flight profile fit, as its ".pik" file holds it:
// range and counts, the d to TOF coefficient, six global parameters, the
// background points and the peaks with their six values and flags.
#include <array>
#include <string>

#include "support/array1.h"

namespace hxl {

inline constexpr int kTofGlobals = 6;  // alpha, beta, Sig-2, Sig-1, Sig-0, eta

struct TOF_JOB_TYPE {
    std::string title;
    float tof_init = 0, tof_fin = 0;
    int nbac = 0, npeak = 0, ncyc = 0, inst = 0, jobt = 0, cont = 0, weight = 70, corr = 0, constr = 0, percent = 0;
    float dtt = 0;                    // d to T.O.F. coefficient: T = dtt d
    std::array<float, 7> glob{};      // 1 alpha, 2 beta, 3 Sig-2, 4 Sig-1, 5 Sig-0, 6 eta
    std::array<int, 7> gflag{};
    Array1<float> bx, bv;             // background positions and values
    Array1<int> bf;
    // Per peak: 0 TOF, 1 intensity, 2 shift of sigma^2, 3 of alpha, 4 of beta, 5 of eta.
    Array1<std::array<float, 6>> pk;
    Array1<std::array<int, 6>> pf;
    bool has_chi2 = false;
    float chi2 = 0;
};

// Sizes the peak lists to npeak, all zero.
void Size_Tof_Peaks(TOF_JOB_TYPE& job);

}  // namespace hxl
