// zendrite-batch simulate: the powder pattern calculated from a structure.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "app/batch/batch_verbs.h"
#include "crystal/powder_calc.h"
#include "crystal/structure.h"
#include "prf/read_irf.h"
#include "support/text_file.h"

namespace zendrite {
namespace {

bool number(const std::string& s, double& v) {
    char* end = nullptr;
    v = std::strtod(s.c_str(), &end);
    return end != s.c_str() && *end == '\0' && std::isfinite(v);
}

int run_simulate(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    std::string file, block, out_file;
    hxl::POWDER_CALC_SETTINGS set;
    bool have_lambda = false, have_range = false, list = false;
    double fwhm = 0.1, step = 0.01;
    hxl::LINE_SHAPE_TYPE shape;
    bool uvw = false;
    std::string irf_file;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        auto need = [&](int n) {
            if (i + n >= args.size()) {
                err << "zendrite-batch simulate: " << a << " needs " << n << " value(s)\n";
                return false;
            }
            return true;
        };
        if (a == "--block") {
            if (!need(1)) return 2;
            block = args[++i];
        } else if (a == "--lambda") {
            if (!need(1) || !number(args[++i], set.lambda)) return 2;
            have_lambda = true;
        } else if (a == "--range") {
            if (!need(2) || !number(args[i + 1], set.tth_min) || !number(args[i + 2], set.tth_max)) return 2;
            i += 2;
            have_range = true;
        } else if (a == "--neutron") {
            set.neutron = true;
        } else if (a == "--list") {
            list = true;
        } else if (a == "--out") {
            if (!need(1)) return 2;
            out_file = args[++i];
        } else if (a == "--fwhm") {
            if (!need(1) || !number(args[++i], fwhm) || fwhm <= 0) return 2;
        } else if (a == "--eta") {
            if (!need(1) || !number(args[++i], shape.eta) || shape.eta < 0 || shape.eta > 1) return 2;
        } else if (a == "--uvw") {
            if (!need(3) || !number(args[i + 1], shape.u) || !number(args[i + 2], shape.v) ||
                !number(args[i + 3], shape.w))
                return 2;
            i += 3;
            uvw = true;
        } else if (a == "--irf") {
            if (!need(1)) return 2;
            irf_file = args[++i];
        } else if (a == "--step") {
            if (!need(1) || !number(args[++i], step) || step <= 0) return 2;
        } else if (file.empty()) {
            file = a;
        } else {
            err << "zendrite-batch simulate: unexpected argument " << a << "\n";
            return 2;
        }
    }
    if (file.empty() || !have_lambda || !have_range || (!list && out_file.empty())) {
        err << "zendrite-batch simulate: give FILE, --lambda, --range and --list or --out\n";
        return 2;
    }
    std::string message;
    if (!irf_file.empty()) {
        // The widths of a resolution file, as the constant-wavelength fit writes it.
        hxl::IRF_TYPE irf;
        bool status = false;
        hxl::Read_Irf(irf_file, irf, status, message);
        if (!status) {
            err << message << "\n";
            return 1;
        }
        if (!irf.has_uvwxy || irf.n_uvwxy < 3) {
            err << "The IRF file " << irf_file << " gives no U, V, W\n";
            return 1;
        }
        shape.u = irf.uvwxy[0], shape.v = irf.uvwxy[1], shape.w = irf.uvwxy[2];
        shape.lx = irf.uvwxy[3], shape.ly = irf.uvwxy[4];
        shape.tch = true;
    } else if (!uvw) {
        shape.u = shape.v = 0, shape.w = fwhm * fwhm;
    }
    std::vector<hxl::STRUCTURE_TYPE> structures;
    if (!hxl::Read_Structure_File(file, structures, message)) {
        err << message << "\n";
        return 1;
    }
    const hxl::STRUCTURE_TYPE* st = &structures[0];
    if (!block.empty()) {
        st = nullptr;
        for (const auto& s : structures)
            if (s.block == block) st = &s;
        if (!st) {
            err << "No structure block " << block << " in " << file << "\n";
            return 1;
        }
    }
    std::vector<hxl::CALC_REFLECTION_TYPE> refl;
    std::vector<std::string> notes;
    if (!hxl::Calc_Powder_Reflections(*st, set, refl, notes, message)) {
        err << message << "\n";
        return 1;
    }
    for (const std::string& n : notes) err << "Note: " << n << "\n";
    if (list) {
        out << "   2theta   Intensity     h   k   l mult\n";
        for (const hxl::POWDER_LINE_TYPE& l : hxl::Powder_Lines(refl)) {
            char buf[64];
            std::snprintf(buf, sizeof buf, "%9.4f %11.4f  ", l.tth, l.intensity);
            out << buf;
            for (std::size_t k = 0; k < l.refl.size(); ++k) {
                const auto& r = refl[l.refl[k]];
                std::snprintf(buf, sizeof buf, "%s%4d%4d%4d%5d", k ? " /" : "", r.h, r.k, r.l, r.mult);
                out << buf;
            }
            out << "\n";
        }
    }
    if (!out_file.empty()) {
        const int n = static_cast<int>(std::floor((set.tth_max - set.tth_min) / step + 1e-9)) + 1;
        if (n > 10000000) {
            err << "Too many points: make --step larger\n";
            return 1;
        }
        std::vector<double> x(static_cast<std::size_t>(n)), y;
        for (int i = 0; i < n; ++i) x[static_cast<std::size_t>(i)] = set.tth_min + i * step;
        hxl::Calc_Profile(refl, x.data(), n, shape, y);
        std::string text = "! calculated from " + file + " block " + st->block + ", lambda " + std::to_string(set.lambda) +
                           (set.neutron ? ", neutrons" : ", X-rays") + "\n";
        char buf[64];
        for (int i = 0; i < n; ++i) {
            std::snprintf(buf, sizeof buf, "%10.4f %14.4f\n", x[static_cast<std::size_t>(i)], y[static_cast<std::size_t>(i)]);
            text += buf;
        }
        if (!hxl::Replace_File_Told(out_file, text, message)) {
            err << message << "\n";
            return 1;
        }
    }
    return 0;
}

const bool registered = Register_Batch_Verb(
    {"simulate",
     "simulate FILE [--block NAME] --lambda L --range A B [--neutron] [--list] [--out OUT.xy] [--fwhm F] [--eta E] "
     "[--uvw U V W] [--irf FILE.irf] [--step S]",
     "      the powder pattern of a structure: with --list one line per distinct\n"
     "      position (2theta, intensity scaled to 100 for the strongest, h k l and\n"
     "      multiplicity); with --out the profile of pseudo-Voigt peaks (FWHM F\n"
     "      degrees, default 0.1, Lorentzian fraction E, default 0.5) as x y;\n"
     "      --uvw gives the widths by the Caglioti law, --irf the U V W X Y of a\n"
     "      resolution file (the fit's _pf.irf) joined by Thompson-Cox-Hastings",
     run_simulate});

}  // namespace
}  // namespace zendrite
