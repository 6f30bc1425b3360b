#include <cmath>

#include "instrument/adding_numors.h"
#include "instrument/nrf_blocks.h"
#include "support/fixed_text.h"

namespace hxl {

float Frame_Angle(const POWDER_NUMOR_TYPE& numor, int j) {
    // KV9 keeps time, monitor and total counts before its angles; the others time and monitor.
    int row = Upper(numor.instrument).find("KV9") != std::string::npos ? 4 : 3;
    return numor.frame_params.holds(row, j) ? numor.frame_params(row, j) : 0.0f;
}

void Numor_To_Pattern(const POWDER_NUMOR_TYPE& numor, DIFFRACTION_PATTERN_TYPE& pattern,
                      std::optional<float> monitor_norm) {
    pattern = DIFFRACTION_PATTERN_TYPE{};
    if (numor.n_pixels < 1 || numor.counts.rows() < numor.n_pixels || numor.counts.cols() < 1) {
        Set_Nrf_Error(" The numor " + std::to_string(numor.numor) + " holds no counts to make a pattern");
        return;
    }
    Allocate_Pattern(pattern, numor.n_pixels);
    if (ERR_Pattern) {
        Set_Nrf_Error(ERR_Pattern_Mess);
        return;
    }
    for (int i = 1; i <= pattern.npts; ++i) {
        pattern.x(i) = numor.scan_values[0] + static_cast<float>(i - 1) * numor.scan_values[1];
        pattern.y(i) = numor.counts(i, 1);
        pattern.sigma(i) = pattern.y(i);
        pattern.istat(i) = 1;
    }
    pattern.title = Cut(Trim(numor.title) + ", Instr: " + Trim(numor.instrument) + ", Header: " + Trim(numor.header),
                        kTitleLen);
    pattern.diff_kind = "neutrons_cw";
    pattern.scat_var = "2theta";
    pattern.xax_text = "2theta(degrees)";
    pattern.yax_text = "Intensity (arb. units)";
    pattern.instr = Cut(Trim(numor.instrument), kInstrLen);
    pattern.tset = numor.sample_env[0];
    pattern.tsamp = numor.sample_env[2];
    pattern.lambda1 = numor.wavelength;
    pattern.lambda2 = numor.wavelength;
    pattern.step = numor.scan_values[1];
    pattern.ct_step = true;
    pattern.xmin = pattern.x(1);
    pattern.xmax = pattern.x(pattern.npts);
    pattern.monitor = numor.monitor;
    if (monitor_norm) {
        float m = *monitor_norm;
        float factor = 1.0f;
        if (m >= 0.0f) {
            pattern.monitor = m;
            factor = numor.monitor != 0.0f ? m / numor.monitor : 0.0f;
        } else {
            factor = numor.time != 0.0f ? std::fabs(m) / numor.time : 0.0f;
            pattern.monitor = numor.monitor * factor;
        }
        if (factor == 0.0f) {
            Set_Nrf_Error(" The numor " + std::to_string(numor.numor) +
                          (m >= 0.0f ? " has a zero monitor: no normalisation" : " has a zero time: no normalisation"));
            return;
        }
        for (int i = 1; i <= pattern.npts; ++i) {
            pattern.y(i) *= factor;
            pattern.sigma(i) *= factor * factor;
        }
    }
    Pattern_Y_Limits(pattern);
}

}  // namespace hxl
