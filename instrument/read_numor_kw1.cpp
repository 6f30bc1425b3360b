// KW1: nine detector banks of 64 cells, one I block each.
#include "instrument/nrf_blocks.h"
#include "instrument/numor_arrays.h"
#include "instrument/numor_head.h"
#include "instrument/powder_numor.h"
#include "support/fixed_text.h"

namespace hxl {

namespace {
// The title stands between "Title" and "Subtitle", after its ":".
std::string kw1_title(const std::string& text) {
    std::size_t a = text.find("Title");
    if (a == std::string::npos) return "";
    std::size_t b = text.find("Subtitle", a + 5);
    std::string part = text.substr(a + 5, b == std::string::npos ? std::string::npos : b - a - 5);
    std::size_t c = part.find(':');
    if (c != std::string::npos) part = part.substr(c + 1);
    for (char& ch : part)
        if (ch == '\n') ch = ' ';
    return Trim(part);
}
}  // namespace

void Read_Numor_KW1(const std::string& path, POWDER_NUMOR_TYPE& numor) {
    numor = POWDER_NUMOR_TYPE{};
    Clear_Nrf_Error();
    numor.n_frames = 9;
    numor.n_pixels = 64;
    numor.counts.resize(64, 9);
    numor.frame_params.resize(9, 9);
    NUMOR_HEAD head;
    if (!Read_Numor_Head(path, "KW1", " Problems trying to read the Numor for KW1 Instrument in file ",
                         "This numor does not correspond with KW1 Format", head))
        return;
    Set_Numor_Head(numor, head);
    numor.title = Cut(kw1_title(head.text_a2), kNumorTitleLen);
    numor.scan_type = "2Theta  ";

    Read_F_Occurrence(head, 1);
    numor.wavelength = F_Value(5);
    numor.monitor = F_Value(1);
    numor.time = F_Value(2);
    numor.scan_values[0] = F_Value(12);
    auto& fp = numor.frame_params;
    fp(1, 1) = numor.time;
    fp(2, 1) = numor.monitor;
    fp(3, 1) = F_Value(11);
    // Rows past 9 run on into the column of the second bank, as the layout has it.
    for (int r = 4; r <= 11; ++r) fp(r, 1) = F_Value(28 + r);
    fp(12, 1) = F_Value(40);

    Read_F_Occurrence(head, 2);
    numor.sample_env[2] = F_Value(1);
    numor.sample_env[1] = F_Value(2);
    numor.sample_env[0] = F_Value(3);
    if (nrf_header_only) return;

    for (int j = 1; j <= 9; ++j) {
        if (Read_I_Occurrence(head, j) != 64) {
            Set_Nrf_Error("Problem reading Counts for Detector " + std::to_string(j) + " for KW1 Instrument");
            return;
        }
        for (int k = 1; k <= 64; ++k) numor.counts(k, j) = static_cast<float>(I_Value(k));
    }
}

}  // namespace hxl
