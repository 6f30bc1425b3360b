// zendrite-batch integrate: the powder pattern of a flat-panel image by
// azimuthal integration with a geometry.
#include <string>
#include <vector>

#include "app/batch/batch_verbs.h"
#include "instrument/azimuthal.h"
#include "instrument/frame_set.h"
#include "patterns/pattern_writers.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace zendrite {
namespace {

int run_integrate(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    std::string file, geometry, out_name, dataset, mask_name;
    int frame = 1;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (a == "--geometry" || a == "--out" || a == "--dataset" || a == "--mask" || a == "--frame") {
            if (i + 1 >= args.size()) {
                err << "zendrite-batch integrate: " << a << " needs a value\n";
                return 2;
            }
            const std::string& v = args[++i];
            if (a == "--geometry") geometry = v;
            else if (a == "--out") out_name = v;
            else if (a == "--dataset") dataset = v;
            else if (a == "--mask") mask_name = v;
            else if (!hxl::Parse_Integer(v, frame) || frame < 1) {
                err << "zendrite-batch integrate: --frame needs a frame number, not '" << v << "'\n";
                return 2;
            }
        } else if (hxl::Starts_With(a, "--")) {
            err << "zendrite-batch integrate: unknown option " << a << "\n";
            return 2;
        } else if (file.empty()) {
            file = a;
        } else {
            err << "zendrite-batch integrate: one image at a time (" << a << ")\n";
            return 2;
        }
    }
    if (file.empty() || geometry.empty() || out_name.empty()) {
        err << "zendrite-batch integrate: give an image, --geometry and --out\n";
        return 2;
    }
    hxl::DETECTOR_GEOMETRY_TYPE g;
    std::string message, geometry_mask;
    if (!hxl::Read_Geometry_File(geometry, g, geometry_mask, message)) {
        err << message << "\n";
        return 1;
    }
    if (mask_name.empty()) mask_name = geometry_mask;
    hxl::FRAME_SET_TYPE image;
    if (!hxl::Read_Frames(file, image, message, dataset)) {
        err << message << "\n";
        return 1;
    }
    if (frame > image.n_frames) {
        err << "The frame " << frame << " is not among the " << image.n_frames << " frames of " << file << "\n";
        return 1;
    }
    std::vector<unsigned char> mask;
    if (!mask_name.empty()) {
        hxl::FRAME_SET_TYPE m;
        if (!hxl::Read_Frames(mask_name, m, message)) {
            err << "The mask cannot be read: " << message << "\n";
            return 1;
        }
        if (m.nx != image.nx || m.ny != image.ny) {
            err << "The mask " << mask_name << " (" << m.nx << " x " << m.ny << ") is not the size of the image ("
                << image.nx << " x " << image.ny << ")\n";
            return 1;
        }
        mask.resize(static_cast<std::size_t>(m.nx) * static_cast<std::size_t>(m.ny));
        for (std::size_t i = 0; i < mask.size(); ++i) mask[i] = m.counts[i] != 0;
    }
    hxl::INTEGRATION_TABLE_TYPE table;
    hxl::DIFFRACTION_PATTERN_TYPE p;
    if (!hxl::Build_Integration_Table(g, image.nx, image.ny, table, message) ||
        !hxl::Integrate_Image(table, hxl::Frame_Data(image, frame), mask.empty() ? nullptr : &mask, g, p, message)) {
        err << message << "\n";
        return 1;
    }
    p.title = hxl::Cut(hxl::Is_Blank(image.title) ? file : image.title, hxl::kTitleLen);
    if (!hxl::Save_XYE(out_name, p, message)) {
        err << message << "\n";
        return 1;
    }
    out << out_name << "  " << p.npts << " points from " << p.x(1) << " to " << p.x(p.npts) << " degrees\n";
    return 0;
}

const bool registered = Register_Batch_Verb(
    {"integrate", "integrate FILE --geometry FILE.json [--mask FILE] [--frame N] [--dataset PATH] --out OUT.xye",
     "      integrates a flat-panel image around the beam into a powder pattern, each\n"
     "      pixel split between the 2theta bins by its area, with solid-angle and (when\n"
     "      the geometry gives \"polarisation\") polarisation corrections; pixels of the\n"
     "      mask (not zero) and negative counts are left out; sigma from the counts",
     run_integrate});

}  // namespace
}  // namespace zendrite
