#pragma once
// The peak function of the constant-wavelength fit: an area-normalised
// pseudo-Voigt, folded when asked by the axial-divergence weight of Finger,
// Cox and Jephcoat (S_L, D_L), with its derivatives.
#include <vector>

namespace hxl {

// Value and derivatives of one peak function at one point. `dp` is the
// derivative with respect to the peak position (that is minus d/dx).
struct ARC_PROFILE_TYPE {
    float v = 0, dp = 0, dh = 0, deta = 0, ds = 0, dd = 0;
};

// The plain pseudo-Voigt at d = x - P with FWHM H and mixing eta; the
// Gaussian part is 0 beyond |d|/H > 6. ds and dd are 0.
ARC_PROFILE_TYPE Pseudo_Voigt(float d, float h, float eta);

// The folding weights of one peak. They depend on P, S_L and D_L only and are
// made again when one of the three moves by more than 1e-6.
struct ASYM_CACHE_TYPE {
    bool valid = false;
    bool plain = true;        // no folding: near 90 degrees, or no divergence
    float p = 0, s_l = 0, d_l = 0;
    float p_min = 0;          // angle where the weight starts
    int nodes = 0;
    std::vector<float> delta; // node angles (degrees 2theta)
    std::vector<float> a;     // weight of each node in the profile
    std::vector<float> as;    // its derivative with respect to S_L
    std::vector<float> ad;    // and to D_L
    double sum_a = 0, sum_as = 0, sum_ad = 0;
};

// Brings `c` up to date for (p, s_l, d_l). With `on` false or |p - 90| < 0.4
// the cache says plain. True when the weights were made again.
bool Asym_Refresh(ASYM_CACHE_TYPE& c, bool on, float p, float s_l, float d_l);

// The number of Gauss-Legendre nodes for a weight spread over `spread`
// degrees: the first of 6, 10, 20, ..., 1000 at least 1000 spread.
int Asym_Node_Count(float spread);

// The peak function at x for a peak at p: folded when `c` is not plain.
ARC_PROFILE_TYPE Peak_Function(float x, float p, float h, float eta, const ASYM_CACHE_TYPE& c);

}  // namespace hxl
