// zendrite-batch info: loads files into the store as the window does and
// reports each slot.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>

#include "app/batch/batch_format.h"
#include "app/batch/batch_verbs.h"
#include "app/batch/xspace_options.h"
#include "app/store/add_profile.h"
#include "app/store/load_folder.h"
#include "app/store/zendrite_param_global.h"
#include "patterns/format_table.h"
#include "support/fixed_text.h"
#include "support/folder_files.h"

namespace zendrite {
namespace {

std::string g(float v) {
    char buf[48];
    std::snprintf(buf, sizeof buf, "%.7g", static_cast<double>(v));
    return buf;
}

void report(int slot, std::ostream& out, bool points) {
    const ZENDRITE_STORE& st = zendrite_param_global();
    const auto& p = st.pattern[static_cast<std::size_t>(slot)];
    const auto& info = st.info[static_cast<std::size_t>(slot)];
    out << "slot " << slot << "\n"
        << "  file     " << hxl::Trim(info.prf_dir) << hxl::Trim(info.prf_name) << "\n"
        << "  format   " << hxl::Trim(info.prf_format) << "\n"
        << "  type     " << hxl::Trim(info.prf_type) << "\n"
        << "  instr    " << hxl::Trim_Right(p.instr) << "\n"
        << "  title    " << hxl::Trim(p.title) << "\n"
        << "  scat_var " << hxl::Trim(p.scat_var) << "\n"
        << "  npts     " << p.npts << "\n"
        << "  xmin     " << g(p.xmin) << "\n"
        << "  xmax     " << g(p.xmax) << "\n"
        << "  step     " << g(p.step) << "\n"
        << "  ymin     " << g(p.ymin) << "\n"
        << "  ymax     " << g(p.ymax) << "\n"
        << "  monitor  " << g(p.monitor) << "\n"
        << "  lambda1  " << g(p.lambda1) << "\n"
        << "  lambda2  " << g(p.lambda2) << "\n"
        << "  tsamp    " << g(p.tsamp) << "\n";
    if (!points) return;
    out << "  points (x y sigma)\n";
    // The record holds variances while sig_var is set; the column is headed sigma.
    for (int i = 1; i <= p.npts; ++i) {
        const float s = p.sig_var ? std::sqrt(std::max(p.sigma(i), 0.0f)) : p.sigma(i);
        out << "  " << g(p.x(i)) << " " << g(p.y(i)) << " " << g(s) << "\n";
    }
}

int run_info(const std::vector<std::string>& all, std::ostream& out, std::ostream& err) {
    std::vector<std::string> args;
    X_SPACE_OPTIONS xo;
    if (!Take_X_Space_Options("info", all, args, xo, err)) return 2;
    std::vector<std::string> files;
    std::string mode;
    bool points = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (args[i] == "--format") {
            if (i + 1 >= args.size()) {
                err << "zendrite-batch info: --format needs a mode (" << Batch_Mode_List() << ")\n";
                return 2;
            }
            mode = args[++i];
        } else if (args[i] == "--points") {
            points = true;
        } else if (hxl::Starts_With(args[i], "--")) {
            err << "zendrite-batch info: unknown option " << args[i] << "\n";
            return 2;
        } else if (hxl::Is_Folder(args[i])) {
            // A folder stands for its pattern files, in natural order, as the window loads it.
            std::vector<std::string> found, skipped;
            std::vector<int> rows;
            std::string why;
            if (!Folder_Pattern_Files(args[i], found, rows, skipped, why)) {
                err << why << "\n";
                return 1;
            }
            for (const auto& f : skipped) err << f << ": format not known, skipped\n";
            files.insert(files.end(), found.begin(), found.end());
        } else {
            files.push_back(args[i]);
        }
    }
    if (files.empty()) {
        err << "zendrite-batch info: no file given\n";
        return 2;
    }
    BATCH_FORMAT format;
    if (!mode.empty() && !Batch_Format_Option("info", mode, format, err)) return 2;
    int status = 0;
    for (const auto& f : files) {
        const int row = Batch_Format_Row(f, format, err);
        if (row == 0) {
            status = 1;
            continue;
        }
        LOAD_RESULT r = Load_Data_File(f, row);
        for (const auto& m : r.messages) err << m << "\n";
        if (r.left_out > 0) err << f << ": " << r.left_out << " block(s) of the file were left out\n";
        if (r.slots.empty()) status = 1;
        if (!r.slots.empty() && !Apply_X_Space_Options(xo, r.slots, err)) return 1;
        for (int slot : r.slots) report(slot, out, points);
        if (r.limit_reached) break;
    }
    return status;
}

const bool registered = Register_Batch_Verb(
    {"info", "info FILE... [--format MODE|auto] [--points] [--xspace NAME [--lambda L] [--dtt1 A --dtt2 B]]",
     "      loads each file as the window does; the format is MODE when given (it wins\n"
     "      over the extension), guessed from the content with auto, else by extension;\n"
     "      a folder stands for its pattern files in natural order;\n"
     "      and prints, for each slot, its file, format, texts, limits and wavelengths;\n"
     "      --points adds the points (x y sigma); --xspace converts the profiles first",
     run_info});

}  // namespace
}  // namespace zendrite
