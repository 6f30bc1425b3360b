#pragma once
// The geometry of the present diffractometer, read from a keyword file or
// set to one of two built-in defaults.
#include <array>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "instrument/array2.h"

namespace hxl {

using Mat3 = std::array<std::array<float, 3>, 3>;

struct ANGULAR_MOTOR {
    std::string name;  // 12
    float min = 0, max = 0, offset = 0, velocity = 0;
};

struct DISPLACEMENT_MOTOR {
    std::string name;  // 12
    float min = 0, max = 0, offset = 0;
};

struct RANGE_TIME_SECTION {
    std::string motor;
    std::vector<std::pair<float, float>> range_time;
};

struct INSTRUMENT_TYPE {
    std::string info;        // 80
    std::string name;        // 12
    std::string geom;        // 15
    std::string bl_frame;    // 6
    std::string dist_units;  // 4
    std::string rot_order;   // 3
    std::string angl_units;  // 4
    std::string det_type;    // 32
    float dist_det = 0;
    float wavelength = 0, lambda_min = 0, lambda_max = 0;
    float horiz_size = 0, vert_size = 0;
    float anode_gap = 0, cathode_gap = 0;
    int horiz_pxel = 0, vert_pxel = 0;
    std::array<float, 3> e1{}, e2{}, e3{};
    std::array<float, 2> gn_centre{};  // gamma and nu of the detector centre
    std::array<float, 3> tilt_angles{};
    int geom_code = 0;
    int ipsd = 0;
    Mat3 ub{}, ub_inv{};
    float gamma_min = 0, gamma_max = 0;
    float gamma_neg_min = 0, gamma_neg_max = 0;
    float nu_min = 0, nu_max = 0;
    float d_min = 0;
    float x_min = 0, x_max = 0;
    float z_min = 0, z_max = 0;
    int num_ang = 0;
    std::vector<ANGULAR_MOTOR> ang;  // names, limits, offsets, velocities
    int num_disp = 0;
    std::vector<DISPLACEMENT_MOTOR> disp;
    std::array<float, 3> det_offsets{};
    std::array<float, 3> disp_centre{};
    Mat3 setting{};
    std::vector<RANGE_TIME_SECTION> range_time;
    std::string alpha_file;
    Array2<float> det_alphas;          // (vert_pxel, horiz_pxel)
    Array2<float> resolution_surface;  // with its two dimensions
    bool ub_read = false;
};

extern INSTRUMENT_TYPE Current_Instrument;
extern bool Current_Instrument_Set;

// Error pair of the instrument definition.
extern bool ERR_Instrm;
extern std::string ERR_Instrm_Mess;  // 150

// Fills Current_Instrument with the 4-circle or the Laue default; the Laue
// wavelength limits are the caller's when given.
void Set_Default_Instrument(bool laue = false, std::optional<std::pair<float, float>> wave_limits = std::nullopt);

// Reads a keyword file into Current_Instrument.
void Read_Current_Instrm(const std::string& filename);

// "Current Instrument not set! (call subroutine: Read_Current_Instrm)" when no instrument is set.
bool Check_Current_Instrument(std::string& message);

}  // namespace hxl
