// The command Focus: Y limits from the points inside the present X window.
#include <algorithm>

#include "app/store/zendrite_param_global.h"
#include "graphics/plot.h"

namespace zendrite {

void Focus_Y() {
    ZENDRITE_STORE& g = zendrite_param_global();
    const int n = std::min(g.nperfiles, kMaxProfiles);
    float ylow = g.data_ymax, yhigh = g.data_ymin;
    for (int k = 1; k <= n; ++k) {
        const DIFFRACTION_PATTERN_TYPE& p = g.pattern[static_cast<std::size_t>(k)];
        const int npts = std::min({p.npts, p.x.size(), p.y.size()});
        for (int i = 1; i <= npts; ++i) {
            if (!(p.x(i) > g.win_xmin && p.x(i) < g.win_xmax)) continue;
            ylow = std::min(ylow, p.y(i));
            yhigh = std::max(yhigh, p.y(i));
        }
    }
    if (!(ylow < yhigh)) return;
    const float margin = 0.05f * (yhigh - ylow);
    g.win_ymax = yhigh + margin;
    const float lo = ylow - margin;
    if (!g.prf_loaded) {
        g.win_ymin = lo;
        return;
    }
    const float band = 0.14f * (g.win_ymax - lo);
    g.y_floor = lo - 0.2f * (g.win_ymax - lo);
    g.diff_base = lo - band;
    const bool active = g.ProfilePRFactive >= 1 && g.ProfilePRFactive <= n;
    const int nphases = active ? std::min(g.info[static_cast<std::size_t>(g.ProfilePRFactive)].nphases, kMaxTickPhases) : 0;
    Compute_Tick_Rows(band, nphases);
    if (g.show_ydiff) g.win_ymin = g.y_floor;
    else if (g.show_reflexions) g.win_ymin = g.diff_base + g.tick_bottom[static_cast<std::size_t>(std::max(nphases, 0))];
    else g.win_ymin = lo;
}

}  // namespace zendrite
