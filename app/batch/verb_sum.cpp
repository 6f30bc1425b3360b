// zendrite-batch sum and average: the Summation and Average of the Calculations
// menu on files, written as OUT.
#include <string>
#include <vector>

#include "app/batch/arith_batch_io.h"
#include "app/batch/batch_verbs.h"
#include "calc/arithmetic.h"
#include "support/fixed_text.h"

namespace zendrite {

int Run_Sum_Verb(bool average, const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const std::string verb = average ? "average" : "sum";
    std::vector<std::string> files;
    std::string out_file;
    bool interpolate = false;
    if (!Batch_Parse_Options(verb, args, {{"--out", &out_file}, {"--interpolate", nullptr, &interpolate}}, files, err))
        return 2;
    if (!Batch_Output_Name_Ok(verb, out_file, err)) return 2;
    std::vector<hxl::DIFFRACTION_PATTERN_TYPE> set(files.size());
    std::vector<const hxl::DIFFRACTION_PATTERN_TYPE*> ptr;
    for (std::size_t k = 0; k < files.size(); ++k) {
        if (!Batch_Read_Pattern(files[k], set[k], err)) return 1;
        ptr.push_back(&set[k]);
    }
    hxl::DIFFRACTION_PATTERN_TYPE result;
    hxl::SUM_LEFT_OUT_TYPE left_out;
    std::string message;
    const bool ok = interpolate ? hxl::Sum_Patterns_Interpolated(ptr, average, result, left_out, message)
                                : hxl::Sum_Patterns(ptr, average, result, message);
    if (!ok) {
        err << message << "\n";
        return 1;
    }
    if (left_out.beyond_first > 0)
        err << left_out.beyond_first << " points outside the range of the first profile were left out\n";
    if (left_out.not_covered > 0)
        err << left_out.not_covered << " points of the first profile outside another profile's range were left out\n";
    return Batch_Write_Pattern(out_file, result, average ? "<Average>" : "<summation>", out, err) ? 0 : 1;
}

namespace {
int run_sum(const std::vector<std::string>& a, std::ostream& o, std::ostream& e) { return Run_Sum_Verb(false, a, o, e); }

const bool registered = Register_Batch_Verb(
    {"sum", "sum FILE... --out OUT [--interpolate]",
     "      adds the y of the files point by point (as Calculations, Summation: sigma,\n"
     "      ycalc and bgr those of the first) and writes OUT (.dat or .xys);\n"
     "      --interpolate puts the others onto the X grid of the first",
     run_sum});
}  // namespace

}  // namespace zendrite
