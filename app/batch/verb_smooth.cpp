// zendrite-batch smooth: the polynomial or the Fourier filter of the Smoothing menu.
#include <string>
#include <vector>

#include "app/batch/arith_batch_io.h"
#include "app/batch/batch_verbs.h"
#include "calc/efficiency_file.h"
#include "calc/smoothing.h"
#include "patterns/replace_file.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace zendrite {
namespace {

int run_smooth(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    std::vector<std::string> words;
    std::string out_file, eff_file, param = "5";
    if (!Batch_Parse_Options("smooth", args, {{"--out", &out_file}, {"--param", &param}, {"--eff", &eff_file}}, words,
                             err))
        return 2;
    if (words.size() != 2 || (words[0] != "poly" && words[0] != "fourier")) {
        err << "zendrite-batch smooth: give poly or fourier and one file\n";
        return 2;
    }
    const bool fourier = words[0] == "fourier";
    if (!eff_file.empty() && !fourier) {
        err << "zendrite-batch smooth: --eff goes with the Fourier filter only\n";
        return 2;
    }
    if (!Batch_Output_Name_Ok("smooth", out_file, err)) return 2;
    int n = 0;
    if (!hxl::Parse_Integer(param, n)) {
        err << (fourier ? "Incorrect value of Fourier Windows: FW > Npoints/2 ! Diminish the value of FW !"
                        : "Incorrect value of parameter ")
            << "\n";
        return 1;
    }
    hxl::DIFFRACTION_PATTERN_TYPE p;
    if (!Batch_Read_Pattern(words[1], p, err)) return 1;
    std::string message;
    const bool ok = fourier ? hxl::Check_Fourier_Window(static_cast<float>(n), p.npts, message)
                            : hxl::Check_Polynomial_Order(n, message);
    if (!ok) {
        err << message << "\n";
        return 1;
    }
    const hxl::Array1<float> raw = p.y;
    if (fourier)
        hxl::Fourier_Smooth(p.y, p.npts, static_cast<float>(n));
    else
        hxl::Smooth_5Point(p.y, p.npts);
    p.title = hxl::Cut("Smoothing Fourier of " + hxl::Trim(p.title), hxl::kTitleLen);
    if (!eff_file.empty() && !hxl::Replace_File(eff_file, hxl::Smoothing_Efficiency_Text(raw, p.y, p.npts))) {
        err << "ERROR writing the file " << eff_file << "\n";
        return 1;
    }
    return Batch_Write_Pattern(out_file, p, "<smoothing>", out, err) ? 0 : 1;
}

const bool registered = Register_Batch_Verb(
    {"smooth", "smooth poly|fourier FILE --param N --out OUT [--eff EFF]",
     "      the five-point polynomial filter (N, 1 to 20, has no further effect) or the\n"
     "      Fourier filter of window N (1 to npts/2) on FILE, written as OUT;\n"
     "      --eff writes the efficiency file raw / smoothed as EFF",
     run_smooth});

}  // namespace
}  // namespace zendrite
