// KV9: one F block and one I block per frame after the header blocks; a run
// that stopped early simply has fewer of them.
#include "instrument/nrf_blocks.h"
#include "instrument/numor_arrays.h"
#include "instrument/numor_head.h"
#include "instrument/powder_numor.h"

namespace hxl {

void Read_Numor_KV9(const std::string& path, POWDER_NUMOR_TYPE& numor) {
    numor = POWDER_NUMOR_TYPE{};
    Clear_Nrf_Error();
    NUMOR_HEAD head;
    if (!Read_Numor_Head(path, "KV9", " Problems trying to read the Numor for KV9 Instrument in file ",
                         "This numor does not correspond to KV9 Format", head))
        return;
    Set_Numor_Head(numor, head);

    Read_I_Occurrence(head, 1);
    numor.principal_angle = I_Value(4);
    numor.n_angles = I_Value(5);
    numor.n_frames = I_Value(7);
    numor.calc_angle_type = I_Value(9);
    numor.n_pixels = I_Value(24);
    for (int i = 0; i < 7; ++i) numor.int_desc[static_cast<std::size_t>(i)] = I_Value(25 + i);

    Read_F_Occurrence(head, 1);
    numor.wavelength = F_Value(18);
    for (int i = 0; i < 3; ++i) numor.scan_values[static_cast<std::size_t>(i)] = F_Value(36 + i);
    for (int i = 0; i < 5; ++i) numor.sample_env[static_cast<std::size_t>(i)] = F_Value(46 + i);
    numor.scan_type = "2theta  ";
    if (nrf_header_only) return;

    const int rows = numor.n_angles + 3;
    if (!Allocate_Numor_Arrays(numor, rows, "KV9")) return;
    // Sums over frames in double: a long run adds many large monitors.
    double time = 0, monitor = 0;
    int reached = 0;
    for (int j = 1; j <= numor.n_frames; ++j) {
        int nf = Read_F_Occurrence(head, j + 1);
        if (nf == 0) break;
        if (nf != rows) {
            Set_Nrf_Error("Problem reading Time, Monitor, Counts, Angles parameters in Frame: " + std::to_string(j) +
                          ", Numor:" + std::to_string(numor.numor));
            break;
        }
        for (int r = 1; r <= rows; ++r) numor.frame_params(r, j) = (r == 2 || r == 3) ? F_Value(r) : F_Value(r) * 0.001f;
        time += numor.frame_params(1, j);
        monitor += numor.frame_params(2, j);
        reached = j;
        int ni = Read_I_Occurrence(head, j + 1);
        if (ni != numor.n_pixels) {
            Set_Nrf_Error("Problem reading Counts in Frame: " + std::to_string(j));
            break;
        }
        for (int k = 1; k <= numor.n_pixels; ++k) numor.counts(k, j) = static_cast<float>(I_Value(k));
    }
    numor.time = static_cast<float>(time);
    numor.monitor = reached > 0 ? static_cast<float>(monitor / reached) : 0.0f;
}

}  // namespace hxl
