#pragma once
// Azimuthal integration of a flat-panel image: each pixel's counts go to the
// 2theta bins its area covers, with solid-angle and polarisation corrections.
#include <string>
#include <vector>

#include "instrument/frame_set.h"
#include "patterns/diffraction_pattern.h"

namespace hxl {

struct DETECTOR_GEOMETRY_TYPE {
    float distance = 0;      // mm, sample to the point the beam meets the detector
    float beam_x = 0;        // beam centre in pixels: pixel i spans i-1 to i
    float beam_y = 0;
    float pixel_x = 0;       // pixel size, mm
    float pixel_y = 0;
    float tilt = 0;          // degrees the detector normal leans from the beam
    float tilt_plane = 0;    // degrees from the x axis of the line the detector turns about
    float wavelength = 0;    // Angstrom
    float bin = 0.02f;       // width of the 2theta bins, degrees
    bool correct_polarisation = false;  // X-rays: divide by the polarisation factor
    float polarisation = 0;  // -1 to 1: 0 unpolarised, 0.95 a synchrotron's horizontal beam
    bool solid_angle = true;
};

// The geometry as a check: false with a message when a value is out of range
// or the beam centre lies so far off the detector that it sees no rings.
bool Check_Geometry(const DETECTOR_GEOMETRY_TYPE& g, int nx, int ny, std::string& message);

// Reads a geometry from a flat JSON object of numbers and booleans
// ("distance_mm", "beam_x_px", "beam_y_px", "pixel_mm" or "pixel_x_mm" and
// "pixel_y_mm", "tilt_deg", "tilt_plane_deg", "wavelength", "bin_deg",
// "polarisation", "solid_angle", "mask"). False with a message.
bool Read_Geometry_File(const std::string& path, DETECTOR_GEOMETRY_TYPE& g, std::string& mask_file,
                        std::string& message);

// 2theta and azimuth (degrees) of a point of the detector in pixel units.
void Pixel_Angles(const DETECTOR_GEOMETRY_TYPE& g, double px, double py, double& two_theta, double& azimuth);

// The pixel-to-bin table of one geometry and image size, built once and used
// for every image: for pixel p the entries first[p] to first[p+1]-1.
struct INTEGRATION_TABLE_TYPE {
    int nx = 0, ny = 0, n_bins = 0;
    double tth_min = 0;  // lower edge of bin 1
    double bin = 0;
    std::vector<long long> first;
    std::vector<int> bin_of;
    std::vector<float> weight;      // part of the pixel's area in the bin
    std::vector<float> correction;  // a pixel's relative solid angle times polarisation
};

bool Build_Integration_Table(const DETECTOR_GEOMETRY_TYPE& g, int nx, int ny, INTEGRATION_TABLE_TYPE& t,
                             std::string& message);

// Integrates nx*ny counts; masked pixels (mask != 0) and negative counts
// (the gaps and dead pixels of counting detectors) are left out. Sigma from
// counting statistics. False with a message.
bool Integrate_Image(const INTEGRATION_TABLE_TYPE& t, const float* counts, const std::vector<unsigned char>* mask,
                     const DETECTOR_GEOMETRY_TYPE& g, DIFFRACTION_PATTERN_TYPE& pattern, std::string& message);

}  // namespace hxl
