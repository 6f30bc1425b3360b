// The excluded regions of the shown profiles as hatched bands across the
// frame, under the curves, so that a region reads at a glance even where the
// profile has no point in it.
#include <algorithm>

#include "app/present.h"
#include "app/store/zendrite_param_global.h"
#include "graphics/plot_parts.h"
#include "graphics/plot_settings.h"

namespace zendrite {

void Draw_Excluded_Bands(int nperfiles, float xmin, float xmax) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    const PLOT_SETTINGS& s = Plot_Settings();
    if (!s.excluded_drawn || !(xmax > xmin)) return;
    const float pw = static_cast<float>(s.page_width), ph = static_cast<float>(s.page_height);
    const float left = s.zone_left * pw, right = s.zone_right * pw;
    const float bottom = s.zone_bottom * ph, top = s.zone_top * ph;
    const float per_unit = (right - left) / (xmax - xmin);
    // A shade darker than the excluded points, so that the thin lines show on the zone.
    int r = 0, gr = 0, b = 0;
    WRGBsplit(s.excluded_colour, r, gr, b);
    IGrColourN(WRGB(r * 3 / 4, gr * 3 / 4, b * 3 / 4));
    IGrLineWidth(1);
    IGrLineType(0);
    IGrFillPattern(1, 0, 0);
    for (int k = 1; k <= nperfiles; ++k) {
        const auto slot = static_cast<std::size_t>(k);
        if (!g.show_profile[slot]) continue;
        const PRF_INFO_ADD_TYPE& info = g.info[slot];
        const int n = std::min(info.nexcl, hxl::kMaxExcluded);
        for (int e = 1; e <= n; ++e) {
            // the regions move with the drawn profile
            const float lo = info.excl_low(e) + g.draw_dx[slot], hi = info.excl_high(e) + g.draw_dx[slot];
            if (!(lo <= hi) || !(lo < xmax) || !(hi > xmin)) continue;
            const float x1 = left + (std::max(lo, xmin) - xmin) * per_unit;
            const float x2 = left + (std::min(hi, xmax) - xmin) * per_unit;
            IGrRectangle(x1, bottom, std::max(x2, x1 + 1.0f), top);
        }
    }
    IGrFillPattern(0, 0, 0);
}

}  // namespace zendrite
