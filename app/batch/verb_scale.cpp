// zendrite-batch scale: the Multiply Y / Shift X panel's Apply on a file.
#include <cmath>
#include <string>
#include <vector>

#include "app/batch/arith_batch_io.h"
#include "app/batch/batch_verbs.h"
#include "calc/arithmetic.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace zendrite {
namespace {

int run_scale(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    std::vector<std::string> files;
    std::string out_file, factor_text, shift_text = "0";
    if (!Batch_Parse_Options("scale", args, {{"--out", &out_file}, {"--factor", &factor_text}, {"--shift", &shift_text}},
                             files, err))
        return 2;
    if (files.size() != 1 || factor_text.empty()) {
        err << "zendrite-batch scale: give one file and --factor F\n";
        return 2;
    }
    if (!Batch_Output_Name_Ok("scale", out_file, err)) return 2;
    float factor = 1, shift = 0;
    if (!hxl::Parse_Real(factor_text, factor) || !hxl::Parse_Real(shift_text, shift) || !std::isfinite(factor) ||
        !std::isfinite(shift)) {
        err << "The X shift and the Y multiplier must be numbers\n";
        return 1;
    }
    hxl::DIFFRACTION_PATTERN_TYPE p;
    if (!Batch_Read_Pattern(files[0], p, err)) return 1;
    hxl::Multiply_Shift_Pattern(p, shift, factor);
    // the written range follows the shifted points
    p.xmin = p.x(1);
    p.xmax = p.x(p.npts);
    return Batch_Write_Pattern(out_file, p, hxl::Trim(p.filename), out, err) ? 0 : 1;
}

const bool registered = Register_Batch_Verb(
    {"scale", "scale FILE --factor F [--shift S] --out OUT",
     "      y times F (sigma times F squared) and x plus S, written as OUT (.dat or .xys)", run_scale});

}  // namespace
}  // namespace zendrite
