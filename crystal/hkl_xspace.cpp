// Which X space a profile gives the reflection ticks, and the checks of the setup.
#include "crystal/reflections.h"
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

}  // namespace hxl
