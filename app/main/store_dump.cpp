// The store as text, one value a line, for scripts and tests.
#include <cstdio>
#include <sstream>

#include "app/main/zendrite_app.h"
#include "app/store/zendrite_param_global.h"
#include "support/fixed_text.h"

namespace zendrite {

std::string Dump_Number(double v) {
    char b[40];
    std::snprintf(b, sizeof b, "%.6g", v);
    return b;
}

// The sum of the first n values, in double, so that a changed point shows in the dump.
static double Dump_Sum(const hxl::Array1<float>& v, int n) {
    double sum = 0;
    for (int i = 1; i <= n && i <= v.size(); ++i) sum += v(i);
    return sum;
}

// FNV-1a over the bits of every array of a record, so that any changed value shows in the dump.
static unsigned long long Dump_Hash(const DIFFRACTION_PATTERN_TYPE& p) {
    unsigned long long h = 1469598103934665603ull;
    auto add = [&h](const auto& a) {
        const auto* b = reinterpret_cast<const unsigned char*>(a.data());
        const std::size_t n = static_cast<std::size_t>(a.size()) * sizeof(*a.data());
        for (std::size_t i = 0; i < n; ++i) h = (h ^ b[i]) * 1099511628211ull;
        h = (h ^ n) * 1099511628211ull;
    };
    add(p.x), add(p.y), add(p.sigma), add(p.istat), add(p.ycalc), add(p.bgr), add(p.aux);
    return h;
}

std::string Store_Dump() {
    const ZENDRITE_STORE& g = zendrite_param_global();
    std::ostringstream o;
    o << "xspace " << hxl::Trim(g.xspace) << "\n"
      << "graph_mode " << g.graph_mode << "\n"
      << "calc_mode " << g.calc_mode << "\n"
      << "MoveMode " << g.MoveMode << "\n"
      << "win " << Dump_Number(g.win_xmin) << ' ' << Dump_Number(g.win_xmax) << ' ' << Dump_Number(g.win_ymin) << ' ' << Dump_Number(g.win_ymax) << "\n"
      << "data " << Dump_Number(g.data_xmin) << ' ' << Dump_Number(g.data_xmax) << ' ' << Dump_Number(g.data_ymin) << ' ' << Dump_Number(g.data_ymax)
      << "\n"
      << "prf_loaded " << (g.prf_loaded ? 1 : 0) << "\n"
      << "ProfilePRFactive " << g.ProfilePRFactive << "\n"
      << "nperfiles " << g.nperfiles << "\n"
      << "show " << g.show_ycalc << g.show_ydiff << g.show_reflexions << g.show_background << "\n"
      << "shift_last " << Dump_Number(g.shift_x_last) << ' ' << Dump_Number(g.shift_y_last) << "\n"
      << "edit_flags " << g.peak_insert << g.peak_delete << g.bgr_insert << g.bgr_delete << "\n";
    o << "peaks " << g.Peak_List.count << "\n";
    for (int i = 1; i <= g.Peak_List.count && i <= kMaxPeaks + 1; ++i) {
        const PEAK_RECORD& p = g.Peak_List.p[static_cast<std::size_t>(i)];
        o << "  " << Dump_Number(p.x) << ' ' << Dump_Number(p.y) << ' ' << Dump_Number(p.bgr) << "\n";
    }
    o << "background " << g.Bgr_List.count << "\n";
    for (int i = 1; i <= g.Bgr_List.count && i <= kMaxBgrPoints; ++i) {
        const BGR_RECORD& p = g.Bgr_List.p[static_cast<std::size_t>(i)];
        o << "  " << Dump_Number(p.x) << ' ' << Dump_Number(p.y) << "\n";
    }
    for (int s = 1; s <= g.nperfiles; ++s) {
        const auto& p = g.pattern[static_cast<std::size_t>(s)];
        const auto& in = g.info[static_cast<std::size_t>(s)];
        o << "slot " << s << "\n"
          << "  prf_name " << hxl::Trim(in.prf_name) << "\n"
          << "  prf_type " << hxl::Trim(in.prf_type) << "\n"
          << "  prf_format " << hxl::Trim(in.prf_format) << "\n"
          << "  scat_var " << hxl::Trim(p.scat_var) << "\n"
          << "  title " << hxl::Trim(p.title) << "\n"
          << "  npts " << p.npts << "\n"
          << "  xmin " << Dump_Number(p.xmin) << "\n"
          << "  xmax " << Dump_Number(p.xmax) << "\n"
          << "  ymin " << Dump_Number(p.ymin) << "\n"
          << "  ymax " << Dump_Number(p.ymax) << "\n"
          << "  step " << Dump_Number(p.step) << "\n"
          << "  lambda1 " << Dump_Number(p.lambda1) << "\n"
          << "  lambda2 " << Dump_Number(p.lambda2) << "\n"
          << "  monitor " << Dump_Number(p.monitor) << "\n"
          << "  x_shift_total " << Dump_Number(g.x_shift_total[static_cast<std::size_t>(s)]) << "\n"
          << "  y_mult_total " << Dump_Number(g.y_mult_total[static_cast<std::size_t>(s)]) << "\n"
          << "  draw_offset " << Dump_Number(g.draw_dx[static_cast<std::size_t>(s)]) << ' '
          << Dump_Number(g.draw_dy[static_cast<std::size_t>(s)]) << "\n"
          << "  y_sum " << Dump_Number(Dump_Sum(p.y, p.npts)) << "\n"
          << "  sigma_sum " << Dump_Number(Dump_Sum(p.sigma, p.npts)) << "\n"
          << "  arrays_hash " << std::hex << Dump_Hash(p) << std::dec << "\n"
          << "  nexcl " << in.nexcl << "\n";
        // A calculated curve: its sum and that of the difference, so that a fit shows.
        if (g.plot_calc[static_cast<std::size_t>(s)] && p.ycalc.size() >= p.npts) {
            double diff = 0;
            for (int i = 1; i <= p.npts; ++i) diff += p.y(i) - p.ycalc(i);
            o << "  ycalc_sum " << Dump_Number(Dump_Sum(p.ycalc, p.npts)) << "\n"
              << "  ydiff_sum " << Dump_Number(diff) << "\n";
        }
        for (int e = 1; e <= in.nexcl && e <= hxl::kMaxExcluded; ++e)
            o << "    " << Dump_Number(in.excl_low(e)) << ' ' << Dump_Number(in.excl_high(e)) << "\n";
        o << "  nrefl " << in.nrefl << "\n"
          << "  nphases " << in.nphases << "\n"
          << "  show_profile " << g.show_profile[static_cast<std::size_t>(s)] << "\n";
    }
    return o.str();
}

}  // namespace zendrite
