#include "instrument/numor_arrays.h"

#include "instrument/nrf_blocks.h"
#include "instrument/numor_head.h"
#include "support/fixed_text.h"

namespace hxl {

namespace {
constexpr long long kMaxCells = 1LL << 24;
}

bool Allocate_Numor_Arrays(POWDER_NUMOR_TYPE& numor, int rows, const std::string& instrument) {
    long long cells = static_cast<long long>(numor.n_pixels) * numor.n_frames;
    long long params = static_cast<long long>(rows) * numor.n_frames;
    if (numor.n_pixels < 0 || numor.n_frames < 0 || rows < 0 || cells > kMaxCells || params > kMaxCells) {
        Set_Nrf_Error(" Impossible dimensions in the header of the numor for " + instrument + " Instrument: " +
                      std::to_string(numor.n_pixels) + " cells, " + std::to_string(numor.n_frames) + " frames");
        return false;
    }
    numor.counts.resize(numor.n_pixels, numor.n_frames);
    numor.frame_params.resize(rows, numor.n_frames);
    return true;
}

void Set_Numor_Head(POWDER_NUMOR_TYPE& numor, const NUMOR_HEAD& head) {
    numor.numor = head.numor;
    numor.instrument = head.instrument;
    numor.header = head.header;
    numor.title = Cut(Trim(head.text_a2), kNumorTitleLen);
}

}  // namespace hxl
