// zendrite-batch peaks: the automatic peak (or background) search of the
// Peak detection menu on a whole pattern or a range, and the peak files.
#include <cstdio>
#include <string>
#include <vector>

#include "app/batch/arith_batch_io.h"
#include "app/batch/batch_format.h"
#include "app/batch/batch_verbs.h"
#include "app/store/add_profile.h"
#include "patterns/format_table.h"
#include "patterns/replace_file.h"
#include "peaks/peak_files.h"
#include "peaks/peak_lists.h"
#include "peaks/search_points.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace zendrite {
namespace {

struct PEAKS_OPTIONS {
    std::string file, mode, save_format, save_file;
    bool range = false, background = false;
    float xmin = 0, xmax = 0;
    hxl::SEARCH_CONDITIONS_TYPE c;
};

int usage(std::ostream& err, const std::string& what) {
    err << "zendrite-batch peaks: " << what << "\n";
    return 2;
}

int peak_type_of(const std::string& word) {
    if (word == "single") return 1;
    if (word == "cu") return 2;
    if (word == "mo") return 3;
    if (word == "co") return 4;
    return 0;
}

// 0 when the options are understood, else the exit status.
int parse(const std::vector<std::string>& args, PEAKS_OPTIONS& o, std::ostream& err) {
    auto value = [&](std::size_t& i) -> const std::string* { return i + 1 < args.size() ? &args[++i] : nullptr; };
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        const std::string* v = nullptr;
        if (a == "--format") {
            if (!(v = value(i))) return usage(err, "--format needs a mode (" + Batch_Mode_List() + ")");
            o.mode = *v;
        } else if (a == "--range") {
            if (i + 2 >= args.size() || !hxl::Parse_Real(args[i + 1], o.xmin) || !hxl::Parse_Real(args[i + 2], o.xmax))
                return usage(err, "--range needs two numbers XMIN XMAX");
            o.range = true;
            i += 2;
        } else if (a == "--type") {
            if (!(v = value(i)) || peak_type_of(*v) == 0)
                return usage(err, "--type is one of single, cu, mo, co");
            o.c.peak_type = peak_type_of(*v);
        } else if (a == "--threshold") {
            if (!(v = value(i)) || !hxl::Parse_Real(*v, o.c.peak_threshold))
                return usage(err, "--threshold needs a number");
        } else if (a == "--shoulder") {
            if (!(v = value(i)) || !hxl::Parse_Real(*v, o.c.shoulder_threshold))
                return usage(err, "--shoulder needs a number");
        } else if (a == "--iterations") {
            if (!(v = value(i)) || !hxl::Parse_Integer(*v, o.c.iterations) || o.c.iterations < 0)
                return usage(err, "--iterations needs a whole number, 0 or more");
        } else if (a == "--background") {
            o.background = true;
        } else if (a == "--save") {
            hxl::PEAK_FORMAT_TYPE f;
            if (i + 2 >= args.size()) return usage(err, "--save needs a format and a file");
            o.save_format = args[i + 1];
            o.save_file = args[i + 2];
            i += 2;
            if (!hxl::Peak_Format_Of(o.save_format, f) || o.save_format != f.word) {
                err << "File format unknow!\n";
                return 1;
            }
        } else if (hxl::Starts_With(a, "--")) {
            return usage(err, "unknown option " + a);
        } else if (o.file.empty()) {
            o.file = a;
        } else {
            return usage(err, "give one pattern file");
        }
    }
    if (o.file.empty()) return usage(err, "give one pattern file");
    if (o.background && !o.save_format.empty()) return usage(err, "--save writes peaks; it does not go with --background");
    return 0;
}

void print(std::ostream& out, const std::vector<hxl::PEAK_POINT_TYPE>& list, bool background) {
    char line[128];
    for (const auto& p : list) {
        if (background)
            std::snprintf(line, sizeof line, "%.5f %.5f\n", double(p.x), double(p.y));
        else
            std::snprintf(line, sizeof line, "%.5f %.5f %.5f\n", double(p.x), double(p.y), double(p.bgr));
        out << line;
    }
}

int run_peaks(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    PEAKS_OPTIONS o;
    if (const int status = parse(args, o, err)) return status;
    BATCH_FORMAT format;
    if (!o.mode.empty() && !Batch_Format_Option("peaks", o.mode, format, err)) return 2;
    const int row = Batch_Format_Row(o.file, format, err);
    if (row == 0) return 1;
    READ_FILE_RESULT r = Read_Data_File(o.file, row, 1);
    if (r.patterns.empty()) {
        err << (r.error.empty() ? "ERROR in file: " + o.file : r.error) << "\n";
        return 1;
    }
    const hxl::DIFFRACTION_PATTERN_TYPE& p = r.patterns.front();
    if (p.npts < 1 || p.x.size() < p.npts || p.y.size() < p.npts) {
        err << "ERROR Opening file: " << o.file << "npts<1\n";
        return 1;
    }
    const float xmin = o.range ? o.xmin : p.x(1), xmax = o.range ? o.xmax : p.x(p.npts);
    // The result stays on standard output: no peak.aps or background.xy beside the caller.
    const hxl::SEARCH_FILE_TYPE no_file{"", p.filename, p.instr, false};
    hxl::PKB_TYPE result;
    const int n = hxl::Search_Points(p, xmin, xmax, o.background ? "background" : " ", o.c, no_file, result);
    if (hxl::ERR_Search) {
        err << hxl::ERR_Search_Mess << "\n";
        return 1;
    }
    std::vector<hxl::PEAK_POINT_TYPE> list;
    std::string message;
    const bool ok = o.background ? hxl::Background_For_List(result, list, message)
                                 : hxl::Peaks_For_List(result, hxl::Profile_Step(p), true, list, message);
    if (!ok) {
        err << message << "\n";
        return 1;
    }
    if (n == 0) err << "zendrite-batch peaks: no peak stands above its background\n";
    print(out, list, o.background);
    if (o.save_format.empty()) return 0;
    if (list.empty()) {
        err << "No peaks has been selected\n";
        return 1;
    }
    std::string text;
    hxl::Default_Peak_File_Text(o.save_format, p, o.c.peak_type, list, hxl::Date_Stamp_Now(), text);
    if (!hxl::Replace_File(o.save_file, text)) {
        hxl::PEAK_FORMAT_TYPE f;
        hxl::Peak_Format_Of(o.save_format, f);
        err << f.failure << "\n";
        return 1;
    }
    return 0;
}

const bool registered = Register_Batch_Verb(
    {"peaks",
     "peaks FILE [--format MODE] [--range XMIN XMAX] [--type single|cu|mo|co] [--threshold T] [--shoulder S] "
     "[--iterations N] [--background] [--save FORMAT OUT]",
     "      the automatic peak search of the Peak detection menu on FILE (or on the\n"
     "      X range, which plays the plot window): one line per peak, \"position\n"
     "      intensity background\", or per background point with --background;\n"
     "      --save writes the peaks as OUT in FreeFormat, DicvolFormat, ItoFormat,\n"
     "      TreorFormat or ombraFormat with the dialogs' defaults",
     run_peaks});

}  // namespace
}  // namespace zendrite
