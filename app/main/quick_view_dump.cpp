// The Quick View as text, one value a line, for scripts and tests.
#include <sstream>

#include "app/main/quick_view.h"
#include "app/main/zendrite_app.h"
#include "support/fixed_text.h"

namespace zendrite {

std::string Quick_View_Dump() {
    const QUICK_VIEW_TYPE& qv = Quick_View();
    std::ostringstream o;
    o << "qv_window " << qv.qv_window << "\n"
      << "qv_dir " << hxl::Trim(qv.qv_dir) << "\n"
      << "qv_count " << qv.qv_count << "\n"
      << "qv_current " << qv.qv_current << "\n"
      << "qv_limits " << Dump_Number(qv.qv_xmin) << ' ' << Dump_Number(qv.qv_xmax) << ' ' << Dump_Number(qv.qv_ymin) << ' '
      << Dump_Number(qv.qv_ymax) << "\n"
      << "items " << WMenuGetState(kQvPrevious, 1) << WMenuGetState(kQvNext, 1) << WMenuGetState(kQvToMain, 1)
      << "\n"
      << "check_40030 " << WMenuGetState(40030, 2) << "\n";
    for (int k = 1; k <= qv.qv_count; ++k)
        o << "file " << k << ' ' << hxl::Trim(qv.qv_files(k)) << " |" << qv.qv_temps(k) << "\n";
    o << "on_view " << hxl::Trim(qv.qv_info.prf_name) << "\n"
      << "npts " << qv.qv_pattern.npts << "\n"
      << "nphases " << qv.qv_info.nphases << "\n";
    if (qv.qv_window != 0) {
        const int keep = WindowSelected();
        WindowSelect(qv.qv_window);
        for (int part = 1; part <= 5; ++part) o << "status " << part << ' ' << WindowStatusBarText(part) << "\n";
        WindowSelect(keep);
    }
    return o.str();
}

}  // namespace zendrite
