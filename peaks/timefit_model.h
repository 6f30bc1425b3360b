#pragma once
// The time-of-flight profile model: back-to-back exponential peaks convolved
// with a pseudo-Voigt, widths from d through Sig-2, Sig-1, Sig-0, and the
// piecewise linear background, with the analytic derivative of every
// parameter.
//
// Parameters are a 1-based array laid out as
//   1 alpha, 2 beta, 3 Sig-2, 4 Sig-1, 5 Sig-0, 6 eta,
//   7 .. 6+nb background values,
//   then 6 per peak k: TOF, intensity, shifts of sigma^2, alpha, beta, eta.
#include <string>
#include <vector>

#include "peaks/arcfit_model.h"
#include "peaks/timefit_job.h"
#include "support/array1.h"

namespace hxl {

inline constexpr int kTofMaxBackground = 120;
inline constexpr int kTofMaxPeaks = 400;

// One peak, made once per pass.
struct TOF_PEAK_TYPE {
    int k = 0;
    float t = 0, inten = 0;
    double a = 0, b = 0, e = 0, h = 0;
    double dh_dv = 0;   // dH / d(sig2 + shift), its sign included
    double d = 0;       // T / dtt
    double dh_dt = 0;   // the width follows the position through d
    double left = 0, right = 0;  // how far the peak reaches on each side
};

struct TOF_MODEL_TYPE {
    int nb = 0, npk = 0;
    Array1<float> xb;
    float dtt = 1;
    bool lorentz_on = false;
    std::vector<TOF_PEAK_TYPE> peaks;  // sorted by TOF
    double max_left = 0, max_right = 0;
};

// (parameter index, derivative), as the constant-wavelength model gives them.
using TOF_DERIV_TYPE = ARC_DERIV_TYPE;

int Tof_Parameter_Count(int nb, int npk);
int Tof_Peak_Base(int nb, int k);  // index of peak k's TOF

// "Global-alpha", ..., "background_" N, "Bragg_Pos_" k, "Intensity_" k,
// "Shf_Sigma_" k, "Shf_Alpha_" k, "Shf_Beta_" k, "Shf_Eta_" k.
Array1<std::string> Tof_Parameter_Names(int nb, int npk);

// The tables of a pass, before its first point. `code` (may be empty) gives
// the flags: a flagged eta switches the Lorentzian part on.
void Tof_Prepare(TOF_MODEL_TYPE& m, const Array1<float>& pv, const Array1<std::int16_t>& code);

// ycalc at x with its derivatives in rising index order, each index once;
// `peaks` receives the peak sum, `single` (sized npk) each peak alone.
float Tof_Point(const TOF_MODEL_TYPE& m, const Array1<float>& pv, float x, std::vector<TOF_DERIV_TYPE>& deriv,
                float* peaks = nullptr, std::vector<float>* single = nullptr);

}  // namespace hxl
