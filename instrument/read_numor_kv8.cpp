// KV8: one frame in three block layouts, told apart by the block counts.
#include "instrument/fixed_columns.h"
#include "instrument/nrf_blocks.h"
#include "instrument/numor_arrays.h"
#include "instrument/numor_head.h"
#include "instrument/powder_numor.h"

namespace hxl {

namespace {

void layout_1(const NUMOR_HEAD& head, POWDER_NUMOR_TYPE& numor) {
    Read_I_Occurrence(head, 1);
    numor.principal_angle = I_Value(4);
    numor.n_angles = I_Value(5);
    numor.calc_angle_type = I_Value(9);
    numor.n_pixels = I_Value(24);
    for (int i = 0; i < 7; ++i) numor.int_desc[static_cast<std::size_t>(i)] = I_Value(25 + i);
    Read_F_Occurrence(head, 1);
    numor.wavelength = F_Value(18);
    for (int i = 0; i < 5; ++i) numor.sample_env[static_cast<std::size_t>(i)] = F_Value(46 + i);
    numor.scan_values[0] = F_Value(7);
    if (nrf_header_only) return;
    if (!Allocate_Numor_Arrays(numor, numor.n_angles + 4, "KV8")) return;

    int nf = Read_F_Occurrence(head, 2);
    if (nf < 1) {
        Set_Nrf_Error("Problem reading Time, Monitor, Counts, Angles parameters in Numor:" + Format_I(numor.numor, 5));
        return;
    }
    auto& fp = numor.frame_params;
    for (int r = 1; r <= fp.rows() && r <= nf; ++r) fp(r, 1) = (r == 2 || r == 3) ? F_Value(r) : F_Value(r) * 0.001f;
    numor.time = fp.rows() >= 1 ? fp(1, 1) : 0.0f;
    numor.monitor = fp.rows() >= 2 ? fp(2, 1) : 0.0f;

    int ni = Read_I_Occurrence(head, 2);
    if (ni != numor.n_pixels) {
        Set_Nrf_Error("Problem reading Counts in Numor:" + Format_I(numor.numor, 5));
        return;
    }
    for (int k = 1; k <= numor.n_pixels; ++k) numor.counts(k, 1) = static_cast<float>(I_Value(k));
}

void layout_2(const NUMOR_HEAD& head, POWDER_NUMOR_TYPE& numor) {
    Read_I_Occurrence(head, 1);
    numor.int_desc[0] = I_Value(8);
    Read_F_Occurrence(head, 1);
    numor.wavelength = F_Value(18);
    for (int i = 0; i < 3; ++i) numor.sample_env[static_cast<std::size_t>(i)] = F_Value(46 + i);
    int ni = Read_I_Occurrence(head, 2);
    if (ni < 3) {
        Set_Nrf_Error("Problem reading Counts in Numor:" + Format_I(numor.numor, 5));
        return;
    }
    numor.n_pixels = ni - 3;
    numor.monitor = static_cast<float>(I_Value(1));
    numor.time = static_cast<float>(I_Value(2)) * 0.001f;
    numor.scan_values[0] = static_cast<float>(I_Value(3)) * 0.001f;
    if (nrf_header_only) return;
    if (!Allocate_Numor_Arrays(numor, 3, "KV8")) return;
    numor.frame_params(1, 1) = numor.time;
    numor.frame_params(2, 1) = numor.monitor;
    numor.frame_params(3, 1) = numor.scan_values[0];
    for (int k = 1; k <= numor.n_pixels; ++k) numor.counts(k, 1) = static_cast<float>(I_Value(k + 3));
}

void layout_3(const NUMOR_HEAD& head, POWDER_NUMOR_TYPE& numor) {
    Read_I_Occurrence(head, 1);
    numor.int_desc[0] = I_Value(8);
    Read_F_Occurrence(head, 1);
    numor.monitor = F_Value(1);
    numor.time = F_Value(2);
    numor.scan_values[0] = F_Value(3);
    numor.sample_env[0] = F_Value(15);
    numor.sample_env[1] = F_Value(16);
    numor.sample_env[2] = F_Value(17);
    numor.wavelength = F_Value(18);
    int nf = Read_F_Occurrence(head, 2);
    numor.n_pixels = nf;
    if (nrf_header_only) return;
    if (!Allocate_Numor_Arrays(numor, 3, "KV8")) return;
    numor.frame_params(1, 1) = numor.time;
    numor.frame_params(2, 1) = numor.monitor;
    numor.frame_params(3, 1) = numor.scan_values[0];
    for (int k = 1; k <= numor.n_pixels; ++k) numor.counts(k, 1) = F_Value(k);
}

}  // namespace

void Read_Numor_KV8(const std::string& path, POWDER_NUMOR_TYPE& numor) {
    numor = POWDER_NUMOR_TYPE{};
    Clear_Nrf_Error();
    const std::string refusal = "This numor does not correspond with KV8 Format";
    NUMOR_HEAD head;
    if (!Read_Numor_Head(path, "KV8", " Problems trying to read the Numor for KV8 Instrument in file ", refusal, head))
        return;
    int layout = Blocks_Match({1, 2, 1, 2, 2, 0, 0}) ? 1 : Blocks_Match({1, 2, 1, 1, 2, 0, 0}) ? 2
               : Blocks_Match({1, 2, 1, 2, 1, 0, 0}) ? 3 : 0;
    if (layout == 0) {
        Set_Nrf_Error(refusal);
        return;
    }
    Set_Numor_Head(numor, head);
    numor.n_frames = 1;
    numor.scan_type = "2theta  ";
    // The instrument's step changed with run 102577.
    numor.scan_values[1] = numor.numor < 102577 ? 0.2f : 0.1f;
    if (layout == 1) layout_1(head, numor);
    else if (layout == 2) layout_2(head, numor);
    else layout_3(head, numor);
}

}  // namespace hxl
