// zendrite-batch hkl: the reflections of a cell and space group in a 2theta range.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "app/batch/batch_verbs.h"
#include "crystal/crystal_metrics.h"
#include "crystal/niggli_cell.h"
#include "crystal/reflections.h"
#include "crystal/space_group.h"

namespace zendrite {
namespace {

bool number(const std::string& s, float& v) {
    char* end = nullptr;
    const double d = std::strtod(s.c_str(), &end);
    if (end == s.c_str() || *end != '\0' || !std::isfinite(d)) return false;
    v = static_cast<float>(d);
    return true;
}

int run_hkl(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    float cell[6] = {0, 0, 0, 0, 0, 0}, lambda = 0, range[2] = {0, 0};
    bool has_cell = false, has_lambda = false, has_range = false;
    std::string symbol;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        auto take = [&](float* v, int n, const char* what) {
            if (i + n >= args.size()) {
                err << "zendrite-batch hkl: " << a << " needs " << what << "\n";
                return false;
            }
            for (int j = 0; j < n; ++j)
                if (!number(args[i + 1 + j], v[j])) {
                    err << "zendrite-batch hkl: " << a << " needs " << what << ", not " << args[i + 1 + j] << "\n";
                    return false;
                }
            i += n;
            return true;
        };
        if (a == "--cell") {
            if (!take(cell, 6, "six numbers (a b c alpha beta gamma)")) return 2;
            has_cell = true;
        } else if (a == "--lambda") {
            if (!take(&lambda, 1, "a wavelength")) return 2;
            has_lambda = true;
        } else if (a == "--range") {
            if (!take(range, 2, "two angles (2THMIN 2THMAX)")) return 2;
            has_range = true;
        } else if (a == "--sg") {
            while (i + 1 < args.size() && args[i + 1].rfind("--", 0) != 0) symbol += (symbol.empty() ? "" : " ") + args[++i];
            if (symbol.empty()) {
                err << "zendrite-batch hkl: --sg needs a space-group symbol\n";
                return 2;
            }
        } else {
            err << "zendrite-batch hkl: unknown argument " << a << "\n";
            return 2;
        }
    }
    if (!has_cell || symbol.empty() || !has_lambda || !has_range) {
        err << "zendrite-batch hkl: give --cell, --sg, --lambda and --range\n";
        return 2;
    }
    if (!(lambda > 0)) {
        err << "Bad wavelength\n";
        return 1;
    }
    hxl::Cell_Record rec;
    const bool angles_ok = hxl::Cell_Angles_Allowed(cell + 3);
    hxl::Fill_Cell_Record(cell, cell + 3, rec);
    if (!angles_ok || hxl::ERR_Crys || !(rec.volume > 0)) {
        err << "Wrong cell parameters\n";
        return 1;
    }
    hxl::SPACE_GROUP_TYPE sg;
    hxl::Set_SpaceGroup(symbol, sg);
    if (hxl::ERR_Symm) {
        err << " Problems in SpaceGroup: " << hxl::ERR_Symm_Mess << "\n";
        if (!hxl::ERR_Symm_Info.empty()) err << " " << hxl::ERR_Symm_Info << "\n";
        return 1;
    }
    float smin = 0, smax = 0;
    std::string msg;
    if (!hxl::Hkl_S_Limits(hxl::HKL_XSPACE::TWOTHETA, range[0], range[1], lambda, 0, 0, smin, smax, msg)) {
        err << msg << "\n";
        return 1;
    }
    std::vector<hxl::HKL_GEN_TYPE> list;
    if (!hxl::Hkl_Generate(rec, sg, smin * 0.999f, smax, list, msg)) {
        err << msg << "\n";
        return 1;
    }
    out << "    h    k    l  mult           d      2theta\n";
    char buf[120];
    for (const auto& r : list) {
        float tth = 0;
        if (!hxl::Hkl_Position(hxl::HKL_XSPACE::TWOTHETA, r.s, lambda, 0, 0, tth)) continue;
        if (tth < range[0] || tth > range[1]) continue;
        std::snprintf(buf, sizeof buf, "%5d%5d%5d%6d%12.5f%12.4f", r.h, r.k, r.l, r.mult, 0.5 / static_cast<double>(r.s),
                      static_cast<double>(tth));
        out << buf << "\n";
    }
    return 0;
}

const bool registered = Register_Batch_Verb(
    {"hkl", "hkl --cell a b c al be ga --sg SYMBOL --lambda L --range 2THMIN 2THMAX",
     "      lists the reflections the space group allows in the 2theta range:\n"
     "      h k l, multiplicity, d and 2theta, by rising 2theta",
     run_hkl});

}  // namespace
}  // namespace zendrite
