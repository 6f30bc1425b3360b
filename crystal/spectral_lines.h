#pragma once
// Characteristic wavelengths of the usual anode elements, for the spectral lines
// drawn beside a reflection.
#include <string>
#include <vector>

namespace hxl {

struct SPECTRAL_ELEMENT_TYPE {
    std::string symbol;
    double kalpha1 = 0, kalpha2 = 0, kbeta = 0, lalpha1 = 0;  // angstrom
};

// Cr, Fe, Co, Ni, Cu, Mo, Ag, W, in that order.
const std::vector<SPECTRAL_ELEMENT_TYPE>& Spectral_Elements();
// The element (from 1) whose K-alpha1 lies within 0.002 A of `lambda`; 0 when none does.
int Spectral_Element_Of(double lambda);
// 2theta of the same d for another wavelength; false when there is none (sin beyond 1).
bool Same_D_Two_Theta(double two_theta, double lambda_from, double lambda_to, double& out);

}  // namespace hxl
