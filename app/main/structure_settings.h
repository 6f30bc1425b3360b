#pragma once
// The dialog of a calculated pattern's settings (File, "Open structure...").
#include "app/store/zendrite_param_global.h"
#include "crystal/powder_calc.h"

namespace zendrite {

struct PHASE_SETTINGS {
    hxl::POWDER_CALC_SETTINGS calc;
    hxl::LINE_SHAPE_TYPE shape;
};

// Asks for the radiation, the wavelength and the width law, offering the law of
// the last profile fit when there is one. False when given up or refused (the
// refusal is shown).
bool Structure_Phase_Settings(const DIFFRACTION_PATTERN_TYPE& p, PHASE_SETTINGS& out);

}  // namespace zendrite
