#pragma once
// Turning one or more powder numors into one diffraction pattern.
#include <optional>
#include <vector>

#include "instrument/powder_numor.h"
#include "patterns/diffraction_pattern.h"
#include "support/array1.h"

namespace hxl {

// Optional correction of the cells: position offset, efficiency per cell and
// frame, and whether a cell is used.
struct CALIBRATION_DETECTOR_TYPE {
    Array1<float> pos_offset;  // (cell)
    Array2<float> effic;       // (cell, frame)
    Array1<int> active;        // (cell): 0 leaves the cell out
};

// Adds the active numors of `list` (one flag each in `active`) into `pattern`,
// choosing the way by the instrument of the first active one. Failures set
// the module's error pair. A non-negative `monitor_norm` is a monitor to
// normalise to; a negative one means counts per |monitor_norm| seconds.
void Adding_Numors(const std::vector<POWDER_NUMOR_TYPE>& list, const std::vector<bool>& active,
                   DIFFRACTION_PATTERN_TYPE& pattern, std::optional<float> monitor_norm = std::nullopt,
                   const CALIBRATION_DETECTOR_TYPE* calibration = nullptr);

// KV8 and KW2: cell-by-cell sum of numors with equal wavelength and start angle.
void Adding_Numors_Sum(const std::vector<POWDER_NUMOR_TYPE>& list, const std::vector<int>& used,
                       DIFFRACTION_PATTERN_TYPE& pattern, std::optional<float> monitor_norm);

// KV7/KV9 and KW1: the cells of all frames interpolated onto one common grid.
// `used` holds the 0-based indices of the active numors.
void ADDING_NUMORS_KV7_DIFFPATTERN(const std::vector<POWDER_NUMOR_TYPE>& list, const std::vector<int>& used,
                                   DIFFRACTION_PATTERN_TYPE& pattern, std::optional<float> monitor_norm,
                                   const CALIBRATION_DETECTOR_TYPE* calibration);
void ADDING_NUMORS_KW1_DIFFPATTERN(const std::vector<POWDER_NUMOR_TYPE>& list, const std::vector<int>& used,
                                   DIFFRACTION_PATTERN_TYPE& pattern, std::optional<float> monitor_norm,
                                   const CALIBRATION_DETECTOR_TYPE* calibration);

// One frame of a numor as a pattern: x from the scan start and step, y the
// counts, variance y; normalised as Adding_Numors describes.
void Numor_To_Pattern(const POWDER_NUMOR_TYPE& numor, DIFFRACTION_PATTERN_TYPE& pattern,
                      std::optional<float> monitor_norm = std::nullopt);

// The angle of frame j: the first moved angle, whose row differs by instrument.
float Frame_Angle(const POWDER_NUMOR_TYPE& numor, int j);

}  // namespace hxl
