#include "instrument/current_instrument.h"
#include "support/fixed_text.h"

namespace hxl {

INSTRUMENT_TYPE Current_Instrument;
bool Current_Instrument_Set = false;
bool ERR_Instrm = false;
std::string ERR_Instrm_Mess;

namespace {
const Mat3 kIdentity = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
}

void Set_Default_Instrument(bool laue, std::optional<std::pair<float, float>> wave_limits) {
    INSTRUMENT_TYPE& c = Current_Instrument;
    c = INSTRUMENT_TYPE{};
    c.info = laue ? "Default Laue diffractrometer" : "Default 4-cercles diffractrometer";
    c.name = laue ? "LaueDiff" : "";
    c.geom = Cut(laue ? "Laue" : "4C-Diff High-Chi, Eulerian cradle", 15);
    c.bl_frame = "z-up";
    c.dist_units = "mm";
    c.rot_order = "xyz";
    c.angl_units = "deg";
    c.det_type = "Flat_rect";
    c.dist_det = 488.0f;
    c.e1 = {1, 0, 0};
    c.e2 = {0, 1, 0};
    c.e3 = {0, 0, 1};
    c.ub = c.ub_inv = kIdentity;
    c.ipsd = 2;
    c.num_ang = 4;
    c.num_disp = 0;
    // The motor limits are those the defaults always held.
    c.ang = {{"Gamma", 2.0f, laue ? 175.0f : 130.0f, 0, 0},
             {"Omega", 1.0f, 49.0f, 0, 0},
             {"Chi", 77.0f, 202.0f, 0, 0},
             {"Phi", -180.0f, 180.0f, 0, 0}};
    if (laue) {
        c.wavelength = 2.0f;
        c.lambda_min = wave_limits ? wave_limits->first : 0.7f;
        c.lambda_max = wave_limits ? wave_limits->second : 5.5f;
        c.horiz_size = 198.0f;
        c.vert_size = 256.0f;
        c.horiz_pxel = 1980;
        c.vert_pxel = 2560;
        c.geom_code = 3;
    } else {
        c.wavelength = 0.71f;
        c.horiz_size = c.vert_size = 64.0f;
        c.anode_gap = c.cathode_gap = 2.0f;
        c.horiz_pxel = c.vert_pxel = 32;
        c.geom_code = 2;
        c.gamma_min = 0.0f;
        c.gamma_max = 140.0f;
        c.nu_min = -15.0f;
        c.nu_max = 15.0f;
        c.d_min = 0.5f;
        c.x_min = c.z_min = 0.0f;
        c.x_max = c.z_max = 40.0f;
    }
    Current_Instrument_Set = true;
}

bool Check_Current_Instrument(std::string& message) {
    message.clear();
    if (Current_Instrument_Set) return true;
    message = "Current Instrument not set! (call subroutine: Read_Current_Instrm)";
    return false;
}

}  // namespace hxl
