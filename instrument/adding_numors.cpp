#include "instrument/adding_numors.h"

#include "instrument/nrf_blocks.h"
#include "support/fixed_text.h"

namespace hxl {

void Adding_Numors(const std::vector<POWDER_NUMOR_TYPE>& list, const std::vector<bool>& active,
                   DIFFRACTION_PATTERN_TYPE& pattern, std::optional<float> monitor_norm,
                   const CALIBRATION_DETECTOR_TYPE* calibration) {
    Clear_Nrf_Error();
    if (list.empty()) {
        Set_Nrf_Error(" Number of Numors in the List was zero!");
        return;
    }
    std::vector<int> used;
    for (std::size_t i = 0; i < list.size(); ++i)
        if (i < active.size() && active[i]) used.push_back(static_cast<int>(i));
    if (used.empty()) {
        Set_Nrf_Error(" Number of active Numors in the List was zero!");
        return;
    }
    const POWDER_NUMOR_TYPE& first = list[static_cast<std::size_t>(used.front())];
    if (Is_Blank(first.instrument)) {
        Set_Nrf_Error(" The Instrument name for the first active numor was empty!");
        return;
    }
    std::string name = Upper(Trim(first.instrument));
    if (name.find("KV8") != std::string::npos || name.find("KW2") != std::string::npos)
        Adding_Numors_Sum(list, used, pattern, monitor_norm);
    else if (name.find("KV7") != std::string::npos || name.find("KV9") != std::string::npos)
        ADDING_NUMORS_KV7_DIFFPATTERN(list, used, pattern, monitor_norm, calibration);
    else if (name.find("KW1") != std::string::npos)
        ADDING_NUMORS_KW1_DIFFPATTERN(list, used, pattern, monitor_norm, calibration);
    else {
        Set_Nrf_Error(" Adding numors is not implemented for the Instrument: " + name);
        return;
    }
    if (ERR_Nrf) return;
    const POWDER_NUMOR_TYPE& last = list[static_cast<std::size_t>(used.back())];
    pattern.title = Cut(" Numors added from " + std::to_string(first.numor) + " to " + std::to_string(last.numor) +
                            " " + Trim(pattern.title),
                        kTitleLen);
}

}  // namespace hxl
