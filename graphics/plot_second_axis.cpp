// A second X axis along the top of the frame, in d or Q, from the constants of the first
// shown profile: round values of that unit placed by the non-linear mapping.
#include <cstdio>

#include "app/present.h"
#include "app/store/zendrite_param_global.h"
#include "calc/xspace.h"
#include "calc/xspace_readout.h"
#include "graphics/plot_parts.h"
#include "graphics/plot_settings.h"
#include "graphics/plot_state.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

// Neighbouring ticks at least this fraction of the frame's width apart: room for a label.
constexpr double kTickGap = 0.06;

std::vector<hxl::X_TICK> ticks() {
    const ZENDRITE_STORE& g = zendrite_param_global();
    const PLOT_SETTINGS& s = Plot_Settings();
    const FRAME_LIMITS& f = Graphics_State().frame;
    const int k = First_Shown_Slot();
    if (s.second_axis.empty() || k == 0 || !f.drawn) return {};
    const DIFFRACTION_PATTERN_TYPE& p = g.pattern[static_cast<std::size_t>(k)];
    return hxl::Second_Axis_Ticks(g.xspace, p.scat_var, s.second_axis, f.xmin, f.xmax, p.lambda1, p.lambda2,
                                  kTickGap);
}

std::string legend(const std::string& unit) {
    if (unit == "d-space") return "d (\u00C5)";
    std::string x, y;
    hxl::X_Space_Legends(unit, false, x, y);
    return x;
}

}  // namespace

bool Second_Axis_Wanted() { return !ticks().empty(); }

void Draw_Second_Axis(int nperfiles) {
    const PLOT_SETTINGS& s = Plot_Settings();
    const std::vector<hxl::X_TICK> t = ticks();
    if (t.empty()) return;
    const float pw = static_cast<float>(s.page_width), ph = static_cast<float>(s.page_height);
    const float top = s.zone_top * ph, tick = 0.012f * ph, text_y = top + tick + 0.008f * ph;
    const FRAME_LIMITS& f = Graphics_State().frame;
    IGrLineWidth(1);
    Apply_Text_Style(s.x_scale);
    for (const hxl::X_TICK& k : t) {
        float px = 0, py = 0;
        Data_To_Page(static_cast<float>(k.x), f.ymax, px, py);
        IGrMoveTo(px, top);
        IGrLineTo(px, top + tick);
        char label[48];
        std::snprintf(label, sizeof label, "%.*f", k.decimals, k.value);
        WGrTextCentre(px, text_y, label);
    }
    Apply_Text_Style(s.x_legend);
    WGrTextString(s.zone_right * pw + 0.012f * pw, text_y, legend(s.second_axis));
    // The title, above the numbers of this axis.
    if (s.title.position != 1 && nperfiles >= 1) {
        Apply_Text_Style(s.title);
        const std::string pos = Title_Position_Letter(s.title.position), text = Plot_Title(nperfiles);
        const float y = top + 0.075f * ph;
        if (pos == "L") WGrTextString(s.zone_left * pw, y, text);
        else if (pos == "R") WGrTextRight(s.zone_right * pw, y, text);
        else WGrTextCentre(0.5f * (s.zone_left + s.zone_right) * pw, y, text);
    }
}

}  // namespace zendrite
