// zendrite-batch difference: A - B as the Difference of the Calculations menu.
#include <string>
#include <vector>

#include "app/batch/arith_batch_io.h"
#include "app/batch/batch_verbs.h"
#include "calc/arithmetic.h"
#include "support/fixed_text.h"

namespace zendrite {
namespace {

int run_difference(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    std::vector<std::string> files;
    std::string out_file;
    if (!Batch_Parse_Options("difference", args, {{"--out", &out_file}}, files, err)) return 2;
    if (files.size() != 2) {
        err << "zendrite-batch difference: give two files A B\n";
        return 2;
    }
    if (!Batch_Output_Name_Ok("difference", out_file, err)) return 2;
    hxl::DIFFRACTION_PATTERN_TYPE a, b, result;
    if (!Batch_Read_Pattern(files[0], a, err) || !Batch_Read_Pattern(files[1], b, err)) return 1;
    std::string message;
    if (!hxl::Difference_Patterns(a, b, result, message)) {
        err << message << "\n";
        return 1;
    }
    result.title = hxl::Cut("Difference of profiles: " + hxl::Trim(a.filename) + " - " + hxl::Trim(b.filename),
                            hxl::kTitleLen);
    return Batch_Write_Pattern(out_file, result, "<difference>", out, err) ? 0 : 1;
}

const bool registered = Register_Batch_Verb(
    {"difference", "difference A B --out OUT",
     "      y of A minus y of B on the same X points, written as OUT (.dat or .xys)", run_difference});

}  // namespace
}  // namespace zendrite
