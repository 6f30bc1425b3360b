// zendrite-batch convert: reads any supported pattern file and writes it as a
// free-format ".dat" or an XY ".xys" file with the writers of the File menu.
#include <string>
#include <vector>

#include "app/batch/batch_format.h"
#include "app/batch/batch_verbs.h"
#include "app/batch/xspace_options.h"
#include "patterns/format_table.h"
#include "patterns/pattern_writers.h"
#include "patterns/read_pattern.h"
#include "support/fixed_text.h"

namespace zendrite {
namespace {

// "out.xys" with several banks becomes "out_1.xys", "out_2.xys", ...
std::string numbered(const std::string& out, int k) {
    const std::size_t dot = out.rfind('.');
    return out.substr(0, dot) + "_" + std::to_string(k) + out.substr(dot);
}

std::string check(const hxl::DIFFRACTION_PATTERN_TYPE& p) {
    if (p.xmin >= p.xmax) return "xmin value >= xmax value";
    if (p.npts < 1) return "npts<1";
    if (p.x.size() < p.npts || p.x(1) >= p.x(p.npts)) return "x(1)>=x(npts)";
    return {};
}

int run_convert(const std::vector<std::string>& all, std::ostream& out, std::ostream& err) {
    std::vector<std::string> args;
    X_SPACE_OPTIONS xo;
    if (!Take_X_Space_Options("convert", all, args, xo, err)) return 2;
    std::vector<std::string> files;
    std::string mode;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--format") {
            if (i + 1 >= args.size()) {
                err << "zendrite-batch convert: --format needs a mode (" << Batch_Mode_List() << ")\n";
                return 2;
            }
            mode = args[++i];
        } else if (hxl::Starts_With(args[i], "--")) {
            err << "zendrite-batch convert: unknown option " << args[i] << "\n";
            return 2;
        } else {
            files.push_back(args[i]);
        }
    }
    if (files.size() != 2) {
        err << "zendrite-batch convert: give one input file and one output file (.dat or .xys)\n";
        return 2;
    }
    const std::string& in = files[0];
    const std::string out_ext = hxl::Upper_Extension(files[1]);
    if (out_ext != ".DAT" && out_ext != ".XYS") {
        err << "zendrite-batch convert: the output file must end in .dat or .xys: " << files[1] << "\n";
        return 2;
    }
    BATCH_FORMAT format;
    if (!mode.empty() && !Batch_Format_Option("convert", mode, format, err)) return 2;
    const int row = Batch_Format_Row(in, format, err);
    if (row == 0) return 1;
    std::vector<hxl::DIFFRACTION_PATTERN_TYPE> set;
    int left_out = 0;
    hxl::Read_Pattern_Blocks(in, std::string(hxl::Format_Row(row).mode), set, 2000, left_out);
    if (hxl::ERR_Pattern) {
        err << "ERROR in file: " << in << hxl::ERR_Pattern_Mess << "\n";
        return 1;
    }
    if (left_out > 0) err << in << ": " << left_out << " block(s) of the file were left out\n";
    const int count = static_cast<int>(set.size());
    int status = 0;
    for (int k = 0; k < count; ++k) {
        const auto& p = set[static_cast<std::size_t>(k)];
        if (std::string why = check(p); !why.empty()) {
            err << "ERROR Opening file: " << in << why << "\n";
            status = 1;
            continue;
        }
        if (!Convert_Pattern_By_Options(xo, set[static_cast<std::size_t>(k)], row, err)) return 1;
        const std::string target = count > 1 ? numbered(files[1], k + 1) : files[1];
        std::string message;
        const bool ok = out_ext == ".DAT" ? hxl::Save_Free_Format(target, p, message)
                                          : hxl::Save_XY(target, p, p.filename, hxl::XY_Export_Defaults(p), message);
        if (!ok) {
            err << message << " " << target << "\n";
            status = 1;
            continue;
        }
        out << target << ": " << p.npts << " points, " << hxl::Trim(p.scat_var) << " " << p.xmin << " to " << p.xmax
            << "\n";
    }
    return status;
}

const bool registered = Register_Batch_Verb(
    {"convert", "convert IN OUT [--format MODE|auto] [--xspace NAME [--lambda L] [--dtt1 A --dtt2 B]]",
     "      reads IN (format MODE when given, it wins over the extension; guessed from\n"
     "      the content with auto; else by extension) and writes OUT as a free-format\n"
     "      .dat file (resampled to a constant step) or an XY .xys file (x, y, sigma);\n"
     "      a file of several banks, scans or blocks gives OUT_1, OUT_2, ...",
     run_convert});

}  // namespace
}  // namespace zendrite
