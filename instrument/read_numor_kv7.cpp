// KV7: one block set, every frame packed into the second I block with a fixed stride.
#include "instrument/nrf_blocks.h"
#include "instrument/numor_arrays.h"
#include "instrument/numor_head.h"
#include "instrument/powder_numor.h"

namespace hxl {

void Read_Numor_KV7(const std::string& path, POWDER_NUMOR_TYPE& numor) {
    numor = POWDER_NUMOR_TYPE{};
    Clear_Nrf_Error();
    const std::string refusal = "This numor does not correspond with KV7 Format";
    NUMOR_HEAD head;
    if (!Read_Numor_Head(path, "KV7", " Problems trying to read the Numor for KV7 Instrument in file ", refusal, head))
        return;
    if (!Blocks_Match({1, 2, 1, 1, 2, 0, 0})) {
        Set_Nrf_Error(refusal);
        return;
    }
    Set_Numor_Head(numor, head);

    Read_I_Occurrence(head, 1);
    numor.principal_angle = I_Value(4);
    numor.n_angles = I_Value(5);
    numor.n_frames = I_Value(7);
    numor.n_pixels = I_Value(24);

    Read_F_Occurrence(head, 1);
    numor.wavelength = F_Value(18);
    for (int i = 0; i < 5; ++i) numor.sample_env[static_cast<std::size_t>(i)] = F_Value(46 + i);
    numor.scan_type = "2theta  ";
    if (nrf_header_only) return;

    if (!Allocate_Numor_Arrays(numor, numor.n_angles + 2, "KV7")) return;
    int n = Read_I_Occurrence(head, 2);
    if (n == 0) return;  // a run without counts yet
    long long expected = (static_cast<long long>(numor.n_pixels) + numor.n_angles + 2) * numor.n_frames;
    if (n != expected) {
        Set_Nrf_Error("Counts problems in Numor format for KV7 Instrument");
        return;
    }
    // The stride of 29 values a frame is the instrument's, whatever the header says.
    double time = 0, monitor = 0;
    for (int j = 1; j <= numor.n_frames; ++j) {
        long long b = 29LL * (j - 1);
        auto value = [&](long long i) { return i <= n ? static_cast<float>(I_Value(static_cast<int>(i))) : 0.0f; };
        float mon = value(b + 1), t = value(b + 2) * 0.001f, angle = value(b + 3) * 0.001f;
        for (int k = 1; k <= numor.n_pixels; ++k) numor.counts(k, j) = value(b + 4 + k);
        const float params[3] = {t, mon, angle};
        for (int r = 1; r <= 3 && r <= numor.frame_params.rows(); ++r) numor.frame_params(r, j) = params[r - 1];
        time += t;
        monitor += mon;
    }
    numor.time = static_cast<float>(time);
    numor.monitor = numor.n_frames > 0 ? static_cast<float>(monitor / numor.n_frames) : 0.0f;
}

}  // namespace hxl
