#pragma once
// The powder pattern of a run of a bank of position-sensitive tubes.
#include <string>

#include "instrument/frame_set.h"
#include "patterns/diffraction_pattern.h"

namespace hxl {

struct TUBE_BANK_TYPE {
    float tube_step = 1.25f;  // degrees between neighbouring tubes
    int reference_tube = 0;   // the tube at the step's angle; 0 for the last
    int band_first = 0;       // pixels summed along each tube; 0 for the central half
    int band_last = 0;
    float bin = 0;            // width of the 2theta bins; 0 for the scan step
};

// Sums each tube's band of pixels per step, places it at the step's angle
// plus the tube's offset, and averages what falls in one bin weighted by the
// monitors. Bins no tube reached are left out. False with a message.
bool Tube_Bank_Pattern(const FRAME_SET_TYPE& frames, const TUBE_BANK_TYPE& bank, DIFFRACTION_PATTERN_TYPE& pattern,
                       std::string& message);

}  // namespace hxl
