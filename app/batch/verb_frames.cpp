// zendrite-batch frames: a frame of a detector as a picture, or the powder
// pattern of a run of a bank of tubes.
#include <algorithm>
#include <string>
#include <vector>

#include "app/batch/batch_verbs.h"
#include "instrument/picture_png.h"
#include "instrument/frame_image.h"
#include "instrument/frame_set.h"
#include "instrument/tube_pattern.h"
#include "patterns/pattern_writers.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace zendrite {
namespace {

// Each frame enlarged by a whole factor to about 512 pixels; several frames tiled five a row.
std::vector<std::uint8_t> picture(const hxl::FRAME_SET_TYPE& f, const std::vector<int>& which,
                                  const hxl::FRAME_VIEW_TYPE& view, int& width, int& height) {
    int zoom = std::max(1, 512 / std::max(f.nx, f.ny) / (which.size() > 1 ? 2 : 1));
    int cols = std::min<int>(5, static_cast<int>(which.size()));
    int rows = (static_cast<int>(which.size()) + cols - 1) / cols;
    int gap = which.size() > 1 ? 4 : 0;
    int tw = f.nx * zoom, th = f.ny * zoom;
    width = cols * tw + (cols - 1) * gap;
    height = rows * th + (rows - 1) * gap;
    std::vector<std::uint8_t> out(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3, 255);
    for (std::size_t n = 0; n < which.size(); ++n) {
        float lo = 0, hi = 0;
        std::vector<std::uint8_t> rgb = hxl::Frame_RGB(f, which[n], view, lo, hi);
        int x0 = static_cast<int>(n % static_cast<std::size_t>(cols)) * (tw + gap);
        int y0 = static_cast<int>(n / static_cast<std::size_t>(cols)) * (th + gap);
        for (int y = 0; y < th; ++y)
            for (int x = 0; x < tw; ++x) {
                // Row 1 of the frame at the bottom, as the pixels of a tube count upwards.
                std::size_t src = (static_cast<std::size_t>(f.ny - 1 - y / zoom) * static_cast<std::size_t>(f.nx) +
                                   static_cast<std::size_t>(x / zoom)) * 3;
                std::size_t dst = (static_cast<std::size_t>(y0 + y) * static_cast<std::size_t>(width) +
                                   static_cast<std::size_t>(x0 + x)) * 3;
                std::copy_n(&rgb[src], 3, &out[dst]);
            }
    }
    return out;
}

int run_frames(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    std::string file, out_name, dataset, frame_word = "1";
    bool pattern = false;
    hxl::FRAME_VIEW_TYPE view;
    hxl::TUBE_BANK_TYPE bank;
    auto need = [&](std::size_t i) {
        if (i + 1 < args.size()) return true;
        err << "zendrite-batch frames: " << args[i] << " needs a value\n";
        return false;
    };
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (a == "--pattern") {
            pattern = true;
        } else if (a == "--out" || a == "--frame" || a == "--dataset" || a == "--scale" || a == "--tube-step" ||
                   a == "--bin") {
            if (!need(i)) return 2;
            const std::string& v = args[++i];
            bool ok = true;
            if (a == "--out") out_name = v;
            else if (a == "--frame") frame_word = v;
            else if (a == "--dataset") dataset = v;
            else if (a == "--scale") ok = hxl::Parse_Frame_Scale(v, view.scale);
            else if (a == "--tube-step") ok = hxl::Parse_Real(v, bank.tube_step) && bank.tube_step > 0;
            else ok = hxl::Parse_Real(v, bank.bin) && bank.bin > 0;
            if (!ok) {
                err << "zendrite-batch frames: " << a << " does not take '" << v << "'\n";
                return 2;
            }
        } else if (a == "--percentiles" || a == "--band") {
            if (i + 2 >= args.size()) {
                err << "zendrite-batch frames: " << a << " needs two values\n";
                return 2;
            }
            bool ok = a == "--band" ? hxl::Parse_Integer(args[i + 1], bank.band_first) &&
                                          hxl::Parse_Integer(args[i + 2], bank.band_last)
                                    : hxl::Parse_Real(args[i + 1], view.low_percentile) &&
                                          hxl::Parse_Real(args[i + 2], view.high_percentile) &&
                                          view.low_percentile >= 0 && view.high_percentile <= 100 &&
                                          view.low_percentile < view.high_percentile;
            if (!ok) {
                err << "zendrite-batch frames: " << a << " does not take '" << args[i + 1] << " " << args[i + 2] << "'\n";
                return 2;
            }
            i += 2;
        } else if (hxl::Starts_With(a, "--")) {
            err << "zendrite-batch frames: unknown option " << a << "\n";
            return 2;
        } else if (file.empty()) {
            file = a;
        } else {
            err << "zendrite-batch frames: one file at a time (" << a << ")\n";
            return 2;
        }
    }
    if (file.empty() || out_name.empty()) {
        err << "zendrite-batch frames: give a file and --out\n";
        return 2;
    }
    hxl::FRAME_SET_TYPE frames;
    std::string message;
    if (!hxl::Read_Frames(file, frames, message, dataset)) {
        err << message << "\n";
        return 1;
    }
    if (pattern) {
        hxl::DIFFRACTION_PATTERN_TYPE p;
        if (!hxl::Tube_Bank_Pattern(frames, bank, p, message) || !hxl::Save_XYE(out_name, p, message)) {
            err << message << "\n";
            return 1;
        }
        out << out_name << "  " << p.npts << " points from " << p.x(1) << " to " << p.x(p.npts) << " degrees, wavelength "
            << p.lambda1 << "\n";
        return 0;
    }
    std::vector<int> which;
    if (hxl::Lower(frame_word) == "all") {
        for (int k = 1; k <= frames.n_frames; ++k) which.push_back(k);
    } else {
        int k = 0;
        if (!hxl::Parse_Integer(frame_word, k) || k < 1 || k > frames.n_frames) {
            err << "The frame " << frame_word << " is not among the " << frames.n_frames << " frames of " << file << "\n";
            return 1;
        }
        which.push_back(k);
    }
    int w = 0, h = 0;
    std::vector<std::uint8_t> rgb = picture(frames, which, view, w, h);
    if (!hxl::Write_PNG_RGB(out_name, w, h, rgb, message)) {
        err << message << "\n";
        return 1;
    }
    out << out_name << "  " << which.size() << " frame(s) of " << frames.nx << " x " << frames.ny << " from "
        << frames.format << " " << file << "\n";
    return 0;
}

const bool registered = Register_Batch_Verb(
    {"frames", "frames FILE [--frame N|all] [--scale linear|log|sqrt] [--percentiles LO HI] [--dataset PATH] --out OUT.png\n"
               "  zendrite-batch frames FILE --pattern [--tube-step DEG] [--band FIRST LAST] [--bin DEG] --out OUT.xye",
     "      shows a frame of a detector (numor, EDF, TIFF, CBF, HDF5 with --dataset) as\n"
     "      a picture, colours between two percentiles of its counts (1 and 99.5); with\n"
     "      --pattern, makes the powder pattern of a numor of a bank of tubes (tubes\n"
     "      1.25 degrees apart, the last at the step's angle, central half summed)",
     run_frames});

}  // namespace
}  // namespace zendrite
