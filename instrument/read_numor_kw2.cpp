// KW2: six F blocks of settings and the counts in one J block.
#include "instrument/nrf_blocks.h"
#include "instrument/numor_arrays.h"
#include "instrument/numor_head.h"
#include "instrument/powder_numor.h"
#include "support/fixed_text.h"

namespace hxl {

namespace {

std::string between(const std::string& text, const std::string& after, const std::string& before, std::size_t gap) {
    std::size_t a = text.find(after);
    if (a == std::string::npos) return "";
    a += after.size();
    std::size_t b = text.find(before, a);
    std::string s = b == std::string::npos ? text.substr(a) : text.substr(a, b >= a + gap ? b - gap - a : 0);
    for (char& ch : s)
        if (ch == '\n') ch = ' ';
    return Trim(s);
}

}  // namespace

void Read_Numor_KW2(const std::string& path, POWDER_NUMOR_TYPE& numor) {
    numor = POWDER_NUMOR_TYPE{};
    Clear_Nrf_Error();
    const std::string refusal = "This numor: " + path + " does not correspond with KW2 Format";
    NUMOR_HEAD head;
    if (!Read_Numor_Head(path, "KW2", " Problems trying to read the numor for KW2 Instrument in file ", refusal, head,
                         1024))
        return;
    if (!Blocks_Match({1, 2, 1, 6, 0, 1, 0})) {
        Set_Nrf_Error(refusal);
        return;
    }
    Set_Numor_Head(numor, head);
    numor.scan_type = "2theta  ";
    numor.n_frames = 1;
    // "Title :" runs to two characters before "Local"; the sample name to one before "Experimentalist".
    std::string title = between(head.text_a2, "Title :", "Local", 1);
    std::string sample = between(head.text_a2, "SAMPLE             :", "Experimentalist", 0);
    numor.title = Cut(sample + "--" + title, kNumorTitleLen);

    Read_F_Occurrence(head, 1);
    numor.wavelength = F_Value(4);
    Read_F_Occurrence(head, 5);
    numor.monitor = F_Value(51);
    numor.time = F_Value(52);
    Read_F_Occurrence(head, 6);
    for (int i = 0; i < 3; ++i) numor.sample_env[static_cast<std::size_t>(i)] = F_Value(2 + i);
    numor.scan_values[0] = F_Value(5);

    nrf.n_int = 0;
    nrf.int_values.clear();
    Read_J_Block(head.lines, Block_Start(kBlockJ, 1), Block_End(kBlockJ, 1));
    numor.n_pixels = nrf.n_int;
    if (numor.n_pixels > 0) numor.scan_values[1] = 160.0f / static_cast<float>(numor.n_pixels);
    if (nrf_header_only) return;
    if (!Allocate_Numor_Arrays(numor, 3, "KW2")) return;
    if (numor.n_pixels > 0) {
        numor.frame_params(1, 1) = numor.time;
        numor.frame_params(2, 1) = numor.monitor;
        numor.frame_params(3, 1) = numor.scan_values[0];
    }
    for (int k = 1; k <= numor.n_pixels; ++k) numor.counts(k, 1) = static_cast<float>(I_Value(k));
}

}  // namespace hxl
