#pragma once
// The powder pattern of a structure: reflections with |F|^2 from the atoms,
// multiplicity and Lorentz-polarisation, and the profile they make.
#include <string>
#include <vector>

#include "crystal/structure.h"

namespace hxl {

struct CALC_REFLECTION_TYPE {
    int h = 0, k = 0, l = 0;
    int mult = 0;
    double s = 0;    // sin(theta)/lambda
    double tth = 0;  // 2theta, degrees
    double f2 = 0;   // |F|^2 per cell (electrons^2 or fm^2)
    double intensity = 0;  // mult |F|^2 LP
};

struct POWDER_CALC_SETTINGS {
    double lambda = 1.5406;
    double tth_min = 5, tth_max = 120;
    bool neutron = false;
};

// The reflections between the two angles, by rising 2theta. X-rays: f0 with
// Biso, LP = (1 + cos^2 2theta) / (sin^2 theta cos theta); neutrons: the bound
// lengths, Lorentz only. False with a message on bad settings or an atom with
// no scattering data for the radiation; `notes` says what was approximated.
bool Calc_Powder_Reflections(const STRUCTURE_TYPE& st, const POWDER_CALC_SETTINGS& set,
                             std::vector<CALC_REFLECTION_TYPE>& out, std::vector<std::string>& notes,
                             std::string& message);

// One line of the pattern: the reflections at one position (333 and 511 of a
// cubic cell), intensities summed and scaled to 100 for the strongest line.
struct POWDER_LINE_TYPE {
    double tth = 0;
    double intensity = 0;
    std::vector<std::size_t> refl;  // indices into the reflection list
};
std::vector<POWDER_LINE_TYPE> Powder_Lines(const std::vector<CALC_REFLECTION_TYPE>& refl);

// Pseudo-Voigt of full width `fwhm` and Lorentzian fraction `eta`, unit area.
double Pseudo_Voigt(double dx, double fwhm, double eta);
// Caglioti: FWHM^2 = U tan^2 theta + V tan theta + W.
double Caglioti_Fwhm(double u, double v, double w, double tth_deg);

// The width law of the lines. Without `tch`, the law of the constant-wavelength
// fit: FWHM = sqrt(U tan^2 theta + V tan theta + W) + Z / cos theta and
// eta = Eta0 + X 2theta (one width for every line is W = FWHM^2). With it, as a
// resolution file gives it: the Gaussian width from U, V, W, the Lorentzian
// HL = X tan theta + Y / cos theta, joined into FWHM and eta by Thompson, Cox &
// Hastings (J. Appl. Cryst. 20 (1987) 79).
struct LINE_SHAPE_TYPE {
    double u = 0, v = 0, w = 0.01, z = 0;
    double eta = 0.5, eta_x = 0;  // Eta0 and X of the fit
    double lx = 0, ly = 0;        // X and Y of a resolution file
    bool tch = false;
};
void Line_Width(const LINE_SHAPE_TYPE& shape, double tth_deg, double& fwhm, double& eta);

// The calculated profile at the points x (2theta, rising): the sum of the peaks.
void Calc_Profile(const std::vector<CALC_REFLECTION_TYPE>& refl, const double* x, int n, const LINE_SHAPE_TYPE& shape,
                  std::vector<double>& y);

// The least-squares scale of calc onto obs (the scale alone): sum(o c) / sum(c c).
double Scale_To_Data(const std::vector<double>& obs, const std::vector<double>& calc);

}  // namespace hxl
