#pragma once
// The one record in which every pattern lives, whatever file or run it came from.
#include <limits>
#include <string>

#include "support/array1.h"

namespace hxl {

// Declared widths of the text fields; Cut() applies them where a field is set.
inline constexpr std::size_t kTitleLen = 180, kKindLen = 20, kScatLen = 20, kAxisLen = 40,
                             kInstrLen = 20, kFileLen = 512;

struct DIFFRACTION_PATTERN_TYPE {
    std::string title;      // 180
    std::string diff_kind;  // 20: "neutrons_cw", "neutrons_tof", "xrays_cw", "constant_wavelength", "unknown"
    std::string scat_var;   // 20: X space of x
    std::string xax_text;   // 40
    std::string yax_text;   // 40
    std::string instr;      // 20: reader code text then the mode
    std::string filename;   // 512: without directory
    std::string filepath;   // 512: directory with its trailing separator
    float xmin = 0, xmax = 0;
    float ymin = 0, ymax = 0;
    float scal = 0;
    float monitor = 0;
    float reserved1 = 0, reserved2 = 0;  // no reader sets these
    float step = 0;
    float reserved3 = 0;
    float tsamp = 0;
    float tset = 0;
    // When the measurement started, seconds since 1970 UTC; NaN when the file does not say.
    double acq_time = std::numeric_limits<double>::quiet_NaN();
    int npts = 0;
    bool ct_step = false;
    bool gy = false, gycalc = false, gbgr = false, gsigma = false;
    bool sig_var = true;  // sigma holds variances
    bool al_x = false, al_y = false, al_ycalc = false, al_bgr = false, al_sigma = false, al_istat = false;
    float lambda1 = 0, lambda2 = 0;  // Dtt1 and Dtt2 in a TOF or energy pattern
    float ratio = 0;
    float lambda_beta = 0;
    Array1<float> x;
    Array1<float> y;
    Array1<float> sigma;
    Array1<int> istat;
    Array1<float> ycalc;
    Array1<float> bgr;
    Array1<float> aux;
    bool operator==(const DIFFRACTION_PATTERN_TYPE&) const = default;
};

// The outcome of every operation of the pattern module; one pair per thread,
// so that files can be read on worker threads.
extern thread_local bool ERR_Pattern;
extern thread_local std::string ERR_Pattern_Mess;  // 150
void Set_Pattern_Error(const std::string& message);
void Clear_Pattern_Error();

// With n given npts := n. Allocates every array with npts elements, zeroed,
// istat 1; fails with a message when npts < 1.
void Allocate_Pattern(DIFFRACTION_PATTERN_TYPE& pattern, int n = -1);

// Smallest and largest y, scanned from the largest float down, so that an
// empty pattern gives +3.4028235e38 and -3.4028235e38.
void Pattern_Y_Limits(DIFFRACTION_PATTERN_TYPE& pattern);

}  // namespace hxl
