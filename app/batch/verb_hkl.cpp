// zendrite-batch hkl: the reflections of a cell and space group in a 2theta range.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "app/batch/batch_verbs.h"
#include "crystal/cell_refine.h"
#include "crystal/crystal_metrics.h"
#include "crystal/figures_of_merit.h"
#include "crystal/niggli_cell.h"
#include "crystal/reflections.h"
#include "crystal/space_group.h"
#include "peaks/peak_file_read.h"
#include "support/fixed_text.h"

namespace zendrite {
namespace {

bool number(const std::string& s, float& v) {
    char* end = nullptr;
    const double d = std::strtod(s.c_str(), &end);
    if (end == s.c_str() || *end != '\0' || !std::isfinite(d)) return false;
    v = static_cast<float>(d);
    return true;
}

// The figures of merit of the cell against the peaks and the refined cell.
int Print_Peak_Figures(const std::vector<hxl::PEAK_POINT_TYPE>& peak_list, const hxl::Cell_Record& rec,
                       const float cell[6], const hxl::SPACE_GROUP_TYPE& sg, float lambda, float zero, float tolerance,
                       bool refine_zero, std::ostream& out, std::ostream& err) {
    std::vector<double> x;
    for (const auto& p : peak_list) x.push_back(p.x);
    hxl::FOM_SETTINGS_TYPE fs;
    fs.x.lambda = lambda;
    fs.x.zero = zero;
    fs.tolerance = tolerance;
    hxl::FOM_RESULT_TYPE fom;
    if (!hxl::Figures_Of_Merit(x, rec, sg, fs, fom)) {
        err << fom.message << "\n";
        return 1;
    }
    char buf[160];
    out << "\n";
    if (fom.m20_valid) std::snprintf(buf, sizeof buf, "M(20) = %.1f", fom.m20);
    else std::snprintf(buf, sizeof buf, "%s", fom.m20_text.c_str());
    out << buf << "\n";
    if (fom.fn_valid) {
        std::snprintf(buf, sizeof buf, "F(N) = %.1f (N = %d)", fom.fn, fom.fn_n);
        out << buf << "\n      " << fom.fn_text << "  (mean |delta 2theta|, N_poss)\n";
    } else {
        out << fom.fn_text << "\n";
    }
    std::snprintf(buf, sizeof buf, "Unexplained peaks: %d of %d (tolerance %.4f deg)", fom.unexplained, fom.n_obs,
                  tolerance > 0 ? static_cast<double>(tolerance) : hxl::Default_Peak_Tolerance(fs.x, 0));
    out << buf << "\n";
    if (fom.n_obs < static_cast<int>(x.size()))
        out << "Peaks beyond 180 degrees or not positive, left out: " << x.size() - fom.n_obs << "\n";
    hxl::CELL_REFINE_SETTINGS_TYPE rs;
    rs.x = fs.x;
    rs.tolerance = tolerance;
    rs.refine_zero = refine_zero;
    double start[6];
    for (int i = 0; i < 6; ++i) start[i] = cell[i];
    hxl::CELL_REFINE_RESULT_TYPE r;
    if (!hxl::Refine_Cell(x, start, sg, rs, r)) {
        err << r.message << "\n";
        return 1;
    }
    out << "Refined cell: " << r.cell_text << "\n";
    out << "       sigma: " << r.std_text << "\n";
    if (refine_zero) {
        std::snprintf(buf, sizeof buf, "Zero shift: %.5f (%.5f) deg", r.zero, r.zero_std);
        out << buf << "\n";
    }
    std::snprintf(buf, sizeof buf, "Peaks used: %d of %d, parameters %d, reduced chi2 %.4g deg^2", r.n_used,
                  static_cast<int>(x.size()), r.n_par, r.chi2);
    out << buf << "\n";
    return 0;
}

int run_hkl(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    float cell[6] = {0, 0, 0, 0, 0, 0}, lambda = 0, range[2] = {0, 0}, zero = 0, tolerance = 0;
    bool has_cell = false, has_sg = false, has_lambda = false, has_range = false, refine_zero = false;
    std::string symbol, peaks;
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
        } else if (a == "--peaks") {
            if (i + 1 >= args.size()) {
                err << "zendrite-batch hkl: --peaks needs a peak file\n";
                return 2;
            }
            peaks = args[++i];
        } else if (a == "--zero") {
            if (!take(&zero, 1, "a zero shift in degrees")) return 2;
        } else if (a == "--tolerance") {
            if (!take(&tolerance, 1, "a tolerance in degrees")) return 2;
            if (!(tolerance > 0)) {
                err << "zendrite-batch hkl: --tolerance needs a positive number\n";
                return 2;
            }
        } else if (a == "--refine-zero") {
            refine_zero = true;
        } else if (a == "--sg") {
            // the words up to the next option; words that are all blank are an empty field
            symbol.clear();
            has_sg = false;
            while (i + 1 < args.size() && args[i + 1].rfind("--", 0) != 0) {
                symbol += (has_sg ? " " : "") + args[++i];
                has_sg = true;
            }
            if (!has_sg) {
                err << "zendrite-batch hkl: --sg needs a space-group symbol\n";
                return 2;
            }
        } else {
            err << "zendrite-batch hkl: unknown argument " << a << "\n";
            return 2;
        }
    }
    if (!has_cell || !has_sg || !has_lambda || !has_range) {
        err << "zendrite-batch hkl: give --cell, --sg, --lambda and --range\n";
        return 2;
    }
    symbol = hxl::Trim(symbol);
    if (symbol.empty()) {
        err << "Empty SPGR field\n";
        return 1;
    }
    if (!(lambda > 0)) {
        err << "Bad wavelength\n";
        return 1;
    }
    // the panel's rules: positive edges, angles that close, a volume that is not near zero
    hxl::Cell_Record rec;
    std::string msg;
    if (!hxl::Hkl_Trial_Cell(cell, rec, msg)) {
        err << msg << "\n";
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
    if (!hxl::Hkl_S_Limits(hxl::HKL_XSPACE::TWOTHETA, range[0], range[1], lambda, 0, 0, smin, smax, msg)) {
        err << msg << "\n";
        return 1;
    }
    // The peak file is read before anything is printed, so that a refusal prints nothing else.
    std::vector<hxl::PEAK_POINT_TYPE> peak_list;
    if (!peaks.empty() && !hxl::Read_Free_Peaks(peaks, peak_list, msg)) {
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
    if (peaks.empty()) return 0;
    return Print_Peak_Figures(peak_list, rec, cell, sg, lambda, zero, tolerance, refine_zero, out, err);
}

const bool registered = Register_Batch_Verb(
    {"hkl",
     "hkl --cell a b c al be ga --sg SYMBOL --lambda L --range 2THMIN 2THMAX [--peaks FILE [--zero Z] "
     "[--refine-zero] [--tolerance T]]",
     "      lists the reflections the space group allows in the 2theta range:\n"
     "      h k l, multiplicity, d and 2theta, by rising 2theta; with --peaks, a\n"
     "      peak file of the free format (positions in 2theta) is compared with the\n"
     "      cell: de Wolff's M(20), Smith and Snyder's F(N), the peaks no reflection\n"
     "      explains within T degrees (0.05), and the cell refined by least squares\n"
     "      on the matched peaks (with the zero shift when asked)",
     run_hkl});

}  // namespace
}  // namespace zendrite
