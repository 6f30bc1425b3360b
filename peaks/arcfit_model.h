#pragma once
// The constant-wavelength profile model: pseudo-Voigt peaks with a Caglioti
// width law, a second wavelength, axial-divergence asymmetry and a piecewise
// linear background, with the analytic derivative of every parameter.
//
// Parameters are a 1-based array laid out as
//   1 ratio, 2 S_L, 3 D_L, 4 U, 5 V, 6 W, 7 Z, 8 Eta0, 9 X,
//   10 .. 9+nb background values,
//   then 4 per peak k: position, intensity, Shf_Gamma, Shf_EtaPV.
#include <string>
#include <utility>
#include <vector>

#include "peaks/arcfit_profile.h"
#include "support/array1.h"

namespace hxl {

inline constexpr int kArcGlobals = 9;
inline constexpr int kArcMaxBackground = 120;
inline constexpr int kArcMaxPeaks = 400;

// One line (first or second wavelength) of one peak, made once per pass.
struct ARC_LINE_TYPE {
    int peak = 0;          // k
    bool second = false;
    float pos = 0, h = 0, eta = 0, area = 0;
    float reach = 0;       // half width of the window the 80-width cut allows
    float dh_du = 0, dh_dv = 0, dh_dw = 0, dh_dz = 0;
    float dpos_dp = 1, dh_dp = 0, deta_dp = 0;
    ASYM_CACHE_TYPE asym;
};

struct ARC_MODEL_TYPE {
    // The job: fixed for a fit.
    int nb = 0, npk = 0;
    Array1<float> xb;             // background positions, in list order
    float lambda1 = 0, lambda2 = 0;
    int inst = 0;                 // 1 or 3: the second line is computed
    bool asymmetry = true;

    // Per-pass tables (Arc_Prepare).
    bool second_line = false;
    float c = 1;                  // 1 / (1 + r)
    std::vector<ARC_LINE_TYPE> lines;  // sorted by position
    float max_reach = 0;
};

struct ARC_DERIV_TYPE {
    int index;
    float value;
};

// Number of parameters for nb background points and npk peaks.
int Arc_Parameter_Count(int nb, int npk);

// The names of the parameters, 1-based: "Ka2/Ka1-ratio", ..., "background_"
// and N, "Bragg_Pos_" and k, "Intensity_" and k, "Shf_Gamma_" and k,
// "Shf_EtaPV_" and k.
Array1<std::string> Arc_Parameter_Names(int nb, int npk);

// True when the job computes the second line: Inst 1 or 3 and two different
// wavelengths. Without it the ratio takes no part.
bool Arc_Has_Second_Line(const ARC_MODEL_TYPE& m);

// The tables of a pass, made before its first point: areas, widths, mixings,
// second-line positions, asymmetry weights (kept while P, S_L, D_L stay
// within 1e-6) and the order of the lines by position.
void Arc_Prepare(ARC_MODEL_TYPE& m, const Array1<float>& pv);

// ycalc at x and the derivatives it has, as (parameter index, value) pairs in
// rising index order, each index once. Only the peaks within reach of x are
// evaluated. `peaks`, when given, receives the peak sum; `single`, when given
// (sized npk), each peak's own contribution.
float Arc_Point(const ARC_MODEL_TYPE& m, const Array1<float>& pv, float x, std::vector<ARC_DERIV_TYPE>& deriv,
                float* peaks = nullptr, std::vector<float>* single = nullptr);

// The same with the derivatives in a dense row of all parameters.
float Arc_Point_Dense(const ARC_MODEL_TYPE& m, const Array1<float>& pv, float x, Array1<float>& row);

// The background alone at x, with the interval's two parameters and weights.
float Arc_Background(const ARC_MODEL_TYPE& m, const Array1<float>& pv, float x, int& i1, float& t);

}  // namespace hxl
