// The store as text, one value a line, for scripts and tests.
#include <cstdio>
#include <sstream>

#include "app/main/zendrite_app.h"
#include "app/store/zendrite_param_global.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {
std::string num(double v) {
    char b[40];
    std::snprintf(b, sizeof b, "%.6g", v);
    return b;
}
}  // namespace

std::string Store_Dump() {
    const ZENDRITE_STORE& g = zendrite_param_global();
    std::ostringstream o;
    o << "xspace " << hxl::Trim(g.xspace) << "\n"
      << "graph_mode " << g.graph_mode << "\n"
      << "calc_mode " << g.calc_mode << "\n"
      << "MoveMode " << g.MoveMode << "\n"
      << "win " << num(g.win_xmin) << ' ' << num(g.win_xmax) << ' ' << num(g.win_ymin) << ' ' << num(g.win_ymax) << "\n"
      << "data " << num(g.data_xmin) << ' ' << num(g.data_xmax) << ' ' << num(g.data_ymin) << ' ' << num(g.data_ymax)
      << "\n"
      << "prf_loaded " << (g.prf_loaded ? 1 : 0) << "\n"
      << "ProfilePRFactive " << g.ProfilePRFactive << "\n"
      << "nperfiles " << g.nperfiles << "\n"
      << "show " << g.show_ycalc << g.show_ydiff << g.show_reflexions << g.show_background << "\n"
      << "edit_flags " << g.peak_insert << g.peak_delete << g.bgr_insert << g.bgr_delete << "\n";
    o << "peaks " << g.Peak_List.count << "\n";
    for (int i = 1; i <= g.Peak_List.count && i <= kMaxPeaks + 1; ++i) {
        const PEAK_RECORD& p = g.Peak_List.p[static_cast<std::size_t>(i)];
        o << "  " << num(p.x) << ' ' << num(p.y) << ' ' << num(p.bgr) << "\n";
    }
    o << "background " << g.Bgr_List.count << "\n";
    for (int i = 1; i <= g.Bgr_List.count && i <= kMaxBgrPoints; ++i) {
        const BGR_RECORD& p = g.Bgr_List.p[static_cast<std::size_t>(i)];
        o << "  " << num(p.x) << ' ' << num(p.y) << "\n";
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
          << "  xmin " << num(p.xmin) << "\n"
          << "  xmax " << num(p.xmax) << "\n"
          << "  ymin " << num(p.ymin) << "\n"
          << "  ymax " << num(p.ymax) << "\n"
          << "  step " << num(p.step) << "\n"
          << "  lambda1 " << num(p.lambda1) << "\n"
          << "  lambda2 " << num(p.lambda2) << "\n"
          << "  nexcl " << in.nexcl << "\n";
        for (int e = 1; e <= in.nexcl && e <= hxl::kMaxExcluded; ++e)
            o << "    " << num(in.excl_low(e)) << ' ' << num(in.excl_high(e)) << "\n";
        o << "  nrefl " << in.nrefl << "\n"
          << "  nphases " << in.nphases << "\n"
          << "  show_profile " << g.show_profile[static_cast<std::size_t>(s)] << "\n";
    }
    return o.str();
}

}  // namespace zendrite
