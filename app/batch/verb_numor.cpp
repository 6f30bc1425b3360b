// zendrite-batch numor: reads numors of a powder instrument and writes the
// resulting pattern(s) as ".xys" files in the current directory.
#include <optional>
#include <string>
#include <vector>

#include "app/batch/batch_verbs.h"
#include "instrument/adding_numors.h"
#include "instrument/nrf_blocks.h"
#include "instrument/open_numors.h"
#include "patterns/pattern_writers.h"
#include "support/fixed_text.h"
#include "support/list_read.h"

namespace zendrite {
namespace {

std::string base_name(const std::string& path) {
    std::size_t cut = path.find_last_of('/');
    std::string b = cut == std::string::npos ? path : path.substr(cut + 1);
    if (b.size() > 2 && b.compare(b.size() - 2, 2, ".Z") == 0) b.resize(b.size() - 2);
    return b;
}

bool write_xys(const hxl::DIFFRACTION_PATTERN_TYPE& p, const std::string& name, std::ostream& out,
               std::ostream& err) {
    std::string message;
    if (!hxl::Save_XY(name, p, name, hxl::XY_Export_Defaults(p), message)) {
        err << "zendrite-batch numor: " << name << ": " << message << "\n";
        return false;
    }
    out << name << "  " << p.npts << " points  " << hxl::Trim(p.title) << "\n";
    return true;
}

int run_numor(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    std::vector<std::string> files;
    std::string instrument, out_name;
    bool add = false;
    std::optional<float> monitor;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (a == "--instrument" || a == "--monitor" || a == "--out") {
            if (i + 1 >= args.size()) {
                err << "zendrite-batch numor: " << a << " needs a value\n";
                return 2;
            }
            const std::string& v = args[++i];
            if (a == "--instrument") instrument = v;
            else if (a == "--out") out_name = v;
            else {
                float m = 0;
                if (!hxl::Parse_Real(v, m)) {
                    err << "zendrite-batch numor: --monitor needs a number, not '" << v << "'\n";
                    return 2;
                }
                monitor = m;
            }
        } else if (a == "--add") {
            add = true;
        } else if (hxl::Starts_With(a, "--")) {
            err << "zendrite-batch numor: unknown option " << a << "\n";
            return 2;
        } else {
            files.push_back(a);
        }
    }
    if (files.empty()) {
        err << "zendrite-batch numor: no numor file given\n";
        return 2;
    }
    if (hxl::Is_Blank(instrument)) instrument = hxl::Instrument_From_Numor_Path(files.front());
    if (hxl::Is_Blank(instrument)) {
        err << "zendrite-batch numor: no instrument in the path of " << files.front()
            << ": give --instrument NAME (KV7, KV8, KV9, KW1, KW2)\n";
        return 2;
    }

    if (!add) {
        hxl::OPEN_NUMORS_RESULT r = hxl::Open_Numor_Files(files, instrument, static_cast<int>(files.size()), monitor);
        for (const auto& m : r.messages) err << m << "\n";
        bool ok = r.messages.empty();
        for (const auto& p : r.profiles) ok = write_xys(p.pattern, base_name(p.file) + ".xys", out, err) && ok;
        return ok ? 0 : 1;
    }

    std::vector<hxl::POWDER_NUMOR_TYPE> list;
    for (const auto& f : files) {
        hxl::POWDER_NUMOR_TYPE n;
        std::string message;
        if (!hxl::Read_Numor_File(f, instrument, n, message)) {
            err << message << "\n";
            return 1;
        }
        list.push_back(std::move(n));
    }
    hxl::DIFFRACTION_PATTERN_TYPE pattern;
    hxl::Adding_Numors(list, std::vector<bool>(list.size(), true), pattern, monitor);
    if (hxl::ERR_Nrf) {
        err << hxl::ERR_Nrf_Mess << "\n";
        return 1;
    }
    if (out_name.empty()) out_name = base_name(files.front()) + "_" + base_name(files.back()) + ".xys";
    return write_xys(pattern, out_name, out, err) ? 0 : 1;
}

const bool registered = Register_Batch_Verb(
    {"numor", "numor FILE... [--instrument NAME] [--add] [--monitor M] [--out FILE]",
     "      reads run files (numors) of a powder instrument (KV7, KV8, KV9, KW1, KW2;\n"
     "      taken from the path when not given) and writes each as FILE.xys in the\n"
     "      current directory; --add adds them into one pattern (--out names it);\n"
     "      --monitor M normalises to monitor M, or to |M| seconds when M < 0",
     run_numor});

}  // namespace
}  // namespace zendrite
