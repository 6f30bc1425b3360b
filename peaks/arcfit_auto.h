#pragma once
// The automatic start made good: fit, add the peaks the difference curve
// still shows, drop the peaks the fit cannot support, refit, until the list
// stops changing.
#include <functional>
#include <string>

#include "patterns/diffraction_pattern.h"
#include "peaks/arcfit_run.h"

namespace hxl {

struct ARC_AUTO_OPTIONS_TYPE {
    // A missed peak is added where the difference curve, matched against a
    // peak of the local width, stands above this many standard deviations.
    // Noise alone passes 5 about once in 3.5e6 independent windows, and a
    // pattern holds a few thousand: no noise peak in a thousand patterns,
    // while a peak 3 sigma of the counts tall (about 5 over the 3-5 points of
    // its half width) is still caught.
    float add_sigma = 5.0f;
    // A peak whose area is below this many of its standard deviations is not
    // supported by the data: 3 leaves about one real peak in a thousand.
    float keep_sigma = 3.0f;
    // A width more than this factor above or below the local width (the
    // median of the nearest peaks) is a peak that swallowed a neighbour, the
    // background or a noise spike.
    float width_factor = 5.0f;
    int rounds = 8;
    // Told before each fit, with its round (1-based).
    std::function<void(int round)> on_round;
};

struct ARC_AUTO_REPORT_TYPE {
    int rounds = 0;   // fits made before the list stopped changing
    int added = 0, dropped = 0;
    bool settled = false;  // the last round changed nothing
};

// Fits `job` on `data`, then repeats: a peak with its area below keep_sigma
// standard deviations while its width or mixing is free gets the local width
// and a mixing within [0, 1], both fixed for the rounds (and freed again for
// the last fit); otherwise such a peak, a negative area, or a width out of
// the band around the local width is dropped; each place where the difference
// curve holds a missed peak gets one, started by the dialog's rule (its
// height above the fit, the local width, mixing 0.5); the job is fitted
// again from the values reached. It stops when a round changes nothing, or
// after `rounds`. The files of `options` are written by the last fit only.
// False with the message of Arc_Fit when a fit is refused or fails.
bool Arc_Auto_Fit(const PIK_JOB_TYPE& job, const ARC_DATA_TYPE& data, const ARC_FIT_OPTIONS_TYPE& options,
                  const ARC_AUTO_OPTIONS_TYPE& auto_options, ARC_FIT_RESULT_TYPE& result, ARC_AUTO_REPORT_TYPE& report,
                  std::string& message);

// The starting job of the automatic search of peaks and background of `p`
// over [xmin, xmax] (peak threshold `threshold`, a fraction of the maximum):
// the background thinned evenly to 120 points at most, then Arc_Start_Job.
bool Arc_Automatic_Job(const DIFFRACTION_PATTERN_TYPE& p, const ARC_DATA_TYPE& data, float xmin, float xmax,
                       int cycles, float threshold, PIK_JOB_TYPE& job, std::string& message);

}  // namespace hxl
