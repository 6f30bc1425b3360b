#include "instrument/nrf_frames.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <sstream>

#include "instrument/nrf_blocks.h"
#include "instrument/numor_head.h"
#include "support/fixed_text.h"

namespace hxl {

namespace {

// Data lines an I block of `n` values needs, and those it has before the next marker.
bool block_complete(int k, int n) {
    int s = Block_Start(kBlockI, k), e = Block_End(kBlockI, k);
    return e - s - 1 - nrf.n_text >= (n + 9) / 10;
}

int square_side(int n) {
    int s = static_cast<int>(std::lround(std::sqrt(static_cast<double>(n))));
    return s * s == n ? s : 0;
}

}  // namespace

bool Looks_Like_Numor(const std::string& path) {
    std::ifstream f(path, std::ios::binary);
    std::string first;
    return f && std::getline(f, first) && Marker_Letter(first) == kBlockR;
}

bool Read_Nrf_Frames(const std::string& path, FRAME_SET_TYPE& frames, std::string& message, int n_columns) {
    frames = FRAME_SET_TYPE{};
    Clear_Nrf_Error();
    nrf_header_only = false;
    NUMOR_HEAD head;
    // Any instrument: the layout of the blocks, not the name, tells a frame numor.
    if (!Read_Numor_Head(path, "", "Problems trying to read the numor in file ", "", head)) {
        message = ERR_Nrf_Mess;
        return false;
    }
    std::ostringstream why;
    if (Read_I_Occurrence(head, 1) < 24 || Read_F_Occurrence(head, 1) < 18) {
        message = "The numor " + path + " has no header blocks of a detector run";
        return false;
    }
    Read_I_Occurrence(head, 1);
    int n_steps = I_Value(7), n_pixels = I_Value(24), n_angles = I_Value(5);
    Read_F_Occurrence(head, 1);
    frames.wavelength = F_Value(18);
    int n_i = nrf.block_count[kBlockI - 1], n_f = nrf.block_count[kBlockF - 1];
    if (n_pixels < 2 || n_steps < 1 || n_i < 2 || n_f < 2) {
        why << "The numor " << path << " holds no detector frames (" << n_steps << " steps of " << n_pixels
            << " cells)";
        message = why.str();
        return false;
    }
    int nx = n_columns > 0 ? n_columns : square_side(n_pixels);
    if (nx < 1 || n_pixels % nx != 0) {
        why << "The detector layout of " << n_pixels << " cells is not known: give the number of tubes";
        message = why.str();
        return false;
    }
    // A run stopped early holds fewer steps than its header announces: read those.
    int n_frames = std::min({n_steps, n_i - 1, n_f - 1});
    if (!Frame_Size_Check(nx, n_pixels / nx, n_frames, message)) return false;
    Allocate_Frames(frames, nx, n_pixels / nx, n_frames);
    for (int k = 1; k <= n_frames; ++k) {
        Read_F_Occurrence(head, k + 1);
        frames.time[static_cast<std::size_t>(k - 1)] = F_Value(1);
        frames.monitor[static_cast<std::size_t>(k - 1)] = F_Value(2);
        // The angles follow time, monitor and total counts, in thousandths of a degree.
        frames.angle[static_cast<std::size_t>(k - 1)] = n_angles >= 1 ? F_Value(4) / 1000.0f : 0.0f;
        if (ERR_Nrf || Read_I_Occurrence(head, k + 1) != n_pixels || ERR_Nrf || !block_complete(k + 1, n_pixels)) {
            why << "The frame of step " << k << " in " << path << " is incomplete: expected " << n_pixels
                << " counts" << (ERR_Nrf ? " (" + Trim(ERR_Nrf_Mess) + ")" : "");
            message = why.str();
            frames = FRAME_SET_TYPE{};
            return false;
        }
        // The file holds the cells tube after tube; the record keeps rows of the image.
        int ny = frames.ny;
        float* out = frames.counts.data() + static_cast<std::size_t>(k - 1) * static_cast<std::size_t>(n_pixels);
        for (int tube = 1; tube <= nx; ++tube)
            for (int p = 1; p <= ny; ++p)
                out[static_cast<std::size_t>(p - 1) * static_cast<std::size_t>(nx) + static_cast<std::size_t>(tube - 1)] =
                    static_cast<float>(nrf.int_values((tube - 1) * ny + p));
    }
    frames.source = path;
    frames.format = "NUMOR";
    frames.numor = head.numor;
    frames.instrument = Trim(head.instrument);
    frames.header = head.header;
    std::string title = head.text_a2;
    for (char& c : title)
        if (c == '\n') c = ' ';
    // The detector instruments write the title in 72 columns and the scan type after it,
    // as the descriptor line of their A block says ("Title ... Scantype").
    title.resize(80, ' ');
    frames.title = Trim(title.substr(0, 72));
    frames.scan_var = Trim(title.substr(72, 8));
    if (frames.scan_var.empty()) {
        // The single-crystal layout: title in 60 columns, scan type in the next 8.
        frames.title = Trim(title.substr(0, 60));
        frames.scan_var = Trim(title.substr(60, 8));
    }
    return true;
}

}  // namespace hxl
