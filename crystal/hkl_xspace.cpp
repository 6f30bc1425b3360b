// Which X space a profile gives the reflection ticks, and the checks of the setup.
#include "crystal/reflections.h"

#include <cmath>
#include <numbers>

#include "support/fixed_text.h"

namespace hxl {

bool Hkl_XSpace_From_Name(const std::string& scat_var, HKL_XSPACE& space, std::string& message) {
    message.clear();
    const std::string v = Upper(Trim(scat_var));
    if (v == "2THETA" || v == "OMEGA") space = HKL_XSPACE::TWOTHETA;
    else if (v == "TOF") space = HKL_XSPACE::TOF;
    else if (v == "D-SPACE" || v == "D-SPACING") space = HKL_XSPACE::D;
    else if (v == "Q-SPACE") space = HKL_XSPACE::Q;
    else if (v == "S-SPACE") space = HKL_XSPACE::S;
    else {
        message = "xspace not permited";
        return false;
    }
    return true;
}

bool Hkl_Check_Setup(const std::string& spgr, HKL_XSPACE space, float lambda, std::string& message) {
    message.clear();
    if (Is_Blank(spgr)) {
        message = "Empty SPGR field";
        return false;
    }
    if (space == HKL_XSPACE::TWOTHETA && !(lambda > 0)) {
        message = "Bad wavelength";
        return false;
    }
    return true;
}

bool Hkl_Two_Theta(HKL_XSPACE space, double x, double lambda, double& tth) {
    double stl = 0;  // sin(theta)/lambda
    switch (space) {
        case HKL_XSPACE::TWOTHETA: tth = x; return std::isfinite(x) && x > 0 && x < 180;
        case HKL_XSPACE::D: stl = x > 0 ? 0.5 / x : -1; break;
        case HKL_XSPACE::Q: stl = x / (4 * std::numbers::pi); break;
        case HKL_XSPACE::S: stl = x / 2; break;
        case HKL_XSPACE::TOF: return false;
    }
    const double sine = stl * lambda;
    if (!(sine > 0 && sine < 1) || !(lambda > 0)) return false;
    tth = 2 * std::asin(sine) * 180 / std::numbers::pi;
    return true;
}

}  // namespace hxl
