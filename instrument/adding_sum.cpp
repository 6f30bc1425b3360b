#include <cmath>

#include "instrument/adding_numors.h"
#include "instrument/nrf_blocks.h"

namespace hxl {

namespace {
// Values that differ by 0.1 as the user reads them are still equal here.
constexpr float kTolerance = 0.1f + 1e-5f;
}  // namespace

void Adding_Numors_Sum(const std::vector<POWDER_NUMOR_TYPE>& list, const std::vector<int>& used,
                       DIFFRACTION_PATTERN_TYPE& pattern, std::optional<float> monitor_norm) {
    const POWDER_NUMOR_TYPE& first = list[static_cast<std::size_t>(used.front())];
    for (int u : used) {
        const POWDER_NUMOR_TYPE& n = list[static_cast<std::size_t>(u)];
        if (std::fabs(n.wavelength - first.wavelength) > kTolerance) {
            Set_Nrf_Error("Impossible to add the numors selected. Not all Numors have the same Wavelength!");
            return;
        }
        if (std::fabs(n.scan_values[0] - first.scan_values[0]) > kTolerance) {
            Set_Nrf_Error("Impossible to add the numors selected. Not all Numors have the same initial Angle!");
            return;
        }
        if (n.counts.rows() != first.counts.rows() || n.counts.cols() != first.counts.cols()) {
            Set_Nrf_Error("Impossible to add the numors selected. Not all Numors have the same number of cells!");
            return;
        }
    }
    POWDER_NUMOR_TYPE sum = first;
    // Monitors and times of long runs are large: sum them in double.
    double monitor = first.monitor, time = first.time;
    for (std::size_t k = 1; k < used.size(); ++k) {
        const POWDER_NUMOR_TYPE& n = list[static_cast<std::size_t>(used[k])];
        for (int j = 1; j <= sum.counts.cols(); ++j)
            for (int i = 1; i <= sum.counts.rows(); ++i) sum.counts(i, j) += n.counts(i, j);
        monitor += n.monitor;
        time += n.time;
    }
    sum.monitor = static_cast<float>(monitor);
    sum.time = static_cast<float>(time);
    Numor_To_Pattern(sum, pattern, monitor_norm);
}

}  // namespace hxl
