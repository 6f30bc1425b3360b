#pragma once
// The job file of the constant-wavelength profile fit (".pik"): title, range
// and counts, wavelengths, the nine global parameters, the background points
// and the peaks, each value with its refinement flag.
#include <array>
#include <string>

#include "support/array1.h"

namespace hxl {

struct PIK_JOB_TYPE {
    std::string title;
    std::string x_label = "2Theta";  // the word of the column heads
    bool constant_wavelength = true; // "Ang_init" stood in the head comment
    float ang_init = 0, ang_fin = 0;
    int nbac = 0, npeak = 0, ncyc = 0, inte = 0, inst = 0, jobt = 0, cont = 0, weight = 70, corr = 0, constr = 0,
        percent = 0;
    float lambda1 = 0, lambda2 = 0;
    std::array<float, 10> glob{};    // 1 ratio, 2 S_L, 3 D_L, 4 U, 5 V, 6 W, 7 Z, 8 Eta0, 9 X
    std::array<int, 10> gflag{};
    Array1<float> bx, bv;            // background positions and values
    Array1<int> bf;
    Array1<float> pos, inten, shf_g, shf_e;
    Array1<std::array<int, 4>> pf;   // flags of position, intensity, width shift, eta shift
    bool has_chi2 = false;
    float chi2 = 0;
};

// Sizes the five peak lists to npeak, every value zero.
void Size_Peak_Lists(PIK_JOB_TYPE& job);

// Reads the text of a job file. On failure `job` is untouched and `message`
// holds the reader's text.
bool Read_Pik_Text(const std::string& text, PIK_JOB_TYPE& job, std::string& message);

// Reads the named file: "ERROR opening the file: " and the name when it cannot.
bool Read_Pik(const std::string& file, PIK_JOB_TYPE& job, std::string& message);

// The text of a job file. Inte, Inst and Jobt are written as 0 whatever the
// job holds; at most 120 background points are written.
std::string Pik_Text(const PIK_JOB_TYPE& job);

// Replaces `file` by the job's text through a temporary file.
bool Write_Pik(const std::string& file, const PIK_JOB_TYPE& job, std::string& message);

}  // namespace hxl
