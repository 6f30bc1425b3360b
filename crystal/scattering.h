#pragma once
// Scattering data of atoms: the X-ray form factor f0(sin(theta)/lambda) and the
// bound coherent neutron scattering length. Elements from gemmi's tables
// (International Tables C 1992 four-Gaussian coefficients; Sears, Neutron News
// 3(3) 1992, real parts); ions from Waasmaier & Kirfel 1995 (five Gaussians);
// the isotopes users name from the same Sears table.
#include <string>

namespace hxl {

struct SCATTERER_TYPE {
    std::string element;  // "Fe", "D"
    int z = 0;
    int charge = 0;       // from "Fe3+", "O2-", "O-2"
    int mass = 0;         // isotope mass number, 0 for the natural element
    double b_fm = 0;      // neutron scattering length, fm
    double a[5] = {0, 0, 0, 0, 0}, b[5] = {0, 0, 0, 0, 0}, c = 0;  // f0 coefficients
    bool ion_f0 = false;  // f0 is the ion's own (else the neutral atom's)
    bool has_xray = false;
    bool has_neutron = false;
};

// Reads a scattering type: an element symbol in any case ("FE", "fe"), with a
// charge ("Fe3+", "Fe+3", "O2-"), an isotope ("7Li", "60Ni", "D"), or a site
// label that starts with an element ("O1", "Fe2a": the digits after the symbol
// are the label's). False with a message for a type that names no element, or
// an isotope the table lacks.
bool Find_Scatterer(const std::string& type, SCATTERER_TYPE& s, std::string& message);

// f0 at s = sin(theta)/lambda, in electrons. An ion the tables lack (Fe4+) has
// the f0 of its neutral atom, and `ion_f0` says so.
double Xray_F0(const SCATTERER_TYPE& s, double stl);

}  // namespace hxl
