#pragma once
// Instrumental resolution files (".irf"): the profile parameters of an
// instrument, used as starting values of the peak fits.
#include <string>

namespace hxl {

// The values found, each with its flag. Values a line does not give stay 0.
struct IRF_TYPE {
    int ireso = 0;                 // kind of file; 1 is the older one-record layout
    bool has_uvwxy = false;        // ireso 1: U, V, W, X, Y
    float uvwxy[5] = {0, 0, 0, 0, 0};
    bool has_jobt = false;
    std::string jobt;              // job type word
    bool has_prof = false;
    int prof = 0;                  // profile type
    float prof_par[3] = {0, 0, 0}; // values behind the profile type
    bool has_thrg = false;
    float thrg[3] = {0, 0, 0};     // 2theta start, step, end
    bool has_wave = false;
    float wave[3] = {0, 0, 0};     // lambda1, lambda2, ratio
    bool has_geom = false;
    int geom = 0;                  // "BRAG" 1, "DEBY" 2, "SYNC" 3, "TRMB" 5, "TRMF" 6; 0 unknown word
    bool has_cthm = false;
    float cthm = 0;
    bool has_rkk = false;
    float rkk = 0;
    bool has_asym = false;
    float asym[4] = {0, 0, 0, 0};  // S_L, D_L and two more
    bool has_d2tof = false;
    float d2tof[3] = {0, 0, 0};    // Dtt1, Dtt2, zero
    bool has_twoth = false;
    float twoth = 0;
    bool has_tofrg = false;
    float tofrg[3] = {0, 0, 0};    // TOF start, step, end
    bool has_d2tot = false;
    float d2tot[5] = {0, 0, 0, 0, 0};
    bool has_sigma = false;
    float sigma[3] = {0, 0, 0};
    bool has_gamma = false;
    float gamma[3] = {0, 0, 0};
    bool has_alfbe = false;
    float alfbe[4] = {0, 0, 0, 0}; // alpha0, beta0, alpha1, beta1
    bool has_alfbt = false;
    float alfbt[4] = {0, 0, 0, 0};
    // How many values each record gave; a short line leaves the rest at 0.
    int n_uvwxy = 0, n_wave = 0, n_asym = 0, n_d2tof = 0, n_sigma = 0, n_alfbe = 0;
};

// Reads `name` (".irf" added when it has no extension) into `irf`.
// `status` is false with the message in `text` when the file cannot be read.
void Read_Irf(const std::string& name, IRF_TYPE& irf, bool& status, std::string& text);

// The same on a file already in memory; `name` is used in the messages.
void Read_Irf_Text(const std::string& name, const std::string& contents, IRF_TYPE& irf, bool& status,
                   std::string& text);

}  // namespace hxl
