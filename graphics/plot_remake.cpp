// Plot_ReMake: the limits of all the data, the band under a Rietveld profile, the X space menus.
#include <algorithm>

#include "app/present.h"
#include "app/store/x_space.h"
#include "app/store/zendrite_param_global.h"
#include "graphics/plot.h"
#include "graphics/plot_settings.h"
#include "graphics/plot_state.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {
using hxl::Same;

constexpr int kItem2theta = 40042, kItemOmega = 40228, kItemTof = 40043, kItemEnergy = 40229;

// First X of a slot raised past the excluded regions that cover it, last X lowered likewise.
void trimmed_range(int slot, float& first, float& last) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    const DIFFRACTION_PATTERN_TYPE& p = g.pattern[static_cast<std::size_t>(slot)];
    const PRF_INFO_ADD_TYPE& info = g.info[static_cast<std::size_t>(slot)];
    first = p.xmin;  // x keeps the order of the file: after a conversion to d it falls
    last = p.xmax;
    const int n = std::min(info.nexcl, hxl::kMaxExcluded);
    for (int r = 1; r <= n; ++r) {
        if (info.excl_low(r) > 0 && info.excl_low(r) > first) continue;
        if (info.excl_high(r) > first) first = info.excl_high(r);
    }
    for (int r = 1; r <= n; ++r) {
        if (info.excl_high(r) < last) continue;
        if (info.excl_low(r) < last) last = info.excl_low(r);
    }
}

bool has_points(const DIFFRACTION_PATTERN_TYPE& p) { return p.npts > 0 && p.x.size() >= p.npts && p.y.size() >= p.npts; }
}  // namespace

void Compute_Tick_Rows(float band, int nphases) {
    ZENDRITE_STORE& g = zendrite_param_global();
    if (nphases <= 0) return;
    const int n = std::min(nphases, kMaxTickPhases);
    g.tick_step = band / static_cast<float>(8 * n + 20);
    for (int p = 1; p <= n; ++p) {
        g.tick_top[static_cast<std::size_t>(p)] = band - static_cast<float>(8 * (p - 1) + 10) * g.tick_step;
        g.tick_bottom[static_cast<std::size_t>(p)] = band - static_cast<float>(8 * (p - 1) + 17) * g.tick_step;
    }
}

void Compute_Plot_Limits() {
    ZENDRITE_STORE& g = zendrite_param_global();
    const int n = std::min(g.nperfiles, kMaxProfiles);
    bool any = false;
    float xmin = 0, xmax = 0, ymin = 0, ymax = 0;
    for (int k = 1; k <= n; ++k) {
        const DIFFRACTION_PATTERN_TYPE& p = g.pattern[static_cast<std::size_t>(k)];
        if (!has_points(p)) continue;
        // a shifted slot is drawn where its offset puts it, and the window follows it there
        const float dx = g.draw_dx[static_cast<std::size_t>(k)], dy = g.draw_dy[static_cast<std::size_t>(k)];
        if (!any) {
            xmin = p.xmin + dx, xmax = p.xmax + dx, ymin = p.ymin + dy, ymax = p.ymax + dy;
            any = true;
            continue;
        }
        xmin = std::min(xmin, p.xmin + dx);
        xmax = std::max(xmax, p.xmax + dx);
        ymin = std::min(ymin, p.ymin + dy);
        ymax = std::max(ymax, p.ymax + dy);
    }
    g.data_xmin = xmin;
    g.data_xmax = xmax;
    if (Plot_Settings().excluded_limit_range && any) {
        bool first_slot = true;
        float lo = 0, hi = 0;
        for (int k = 1; k <= n; ++k) {
            if (!has_points(g.pattern[static_cast<std::size_t>(k)])) continue;
            float a = 0, b = 0;
            trimmed_range(k, a, b);
            lo = first_slot ? a : std::min(lo, a);
            hi = first_slot ? b : std::max(hi, b);
            first_slot = false;
        }
        if (lo < hi) {
            g.data_xmin = lo;
            g.data_xmax = hi;
        }
    }
    g.win_xmin = g.data_xmin;
    g.win_xmax = g.data_xmax;
    g.data_ymin = ymin;
    g.data_ymax = ymax;
    const float range = g.data_ymax - g.data_ymin;
    g.win_ymax = g.data_ymax + 0.05f * range;
    g.win_ymin = g.data_ymin - 0.05f * range;
    g.y_floor = g.data_ymin - 0.2f * range;
    g.diff_band = 0.14f * range;
    g.diff_base = g.data_ymin - g.diff_band;

    for (int k = 1; k <= n; ++k) {
        const std::string& type = g.info[static_cast<std::size_t>(k)].prf_type;
        if (Same(type, "PRF") || Same(type, "MONO")) {
            g.ProfilePRFactive = k;
            g.prf_loaded = true;
        }
    }
    if (g.prf_loaded) {
        g.win_ymin = g.y_floor;
        if (g.ProfilePRFactive >= 1 && g.ProfilePRFactive <= n)
            Compute_Tick_Rows(g.diff_band, g.info[static_cast<std::size_t>(g.ProfilePRFactive)].nphases);
    }
}

void Update_X_Space_Menus() {
    if (X_Space_Hooks().menu_states) {  // the shell's states by space
        Update_Mixed_Scat_Var();
        X_Space_Hooks().menu_states();
        return;
    }
    ZENDRITE_STORE& g = zendrite_param_global();
    const int n = std::min(g.nperfiles, kMaxProfiles);
    g.mixed_scat_var = false;
    for (int k = 2; k <= n; ++k)
        if (!Same(g.pattern[static_cast<std::size_t>(k)].scat_var, g.pattern[1].scat_var)) g.mixed_scat_var = true;
    const int items[4] = {kItem2theta, kItemOmega, kItemTof, kItemEnergy};
    const char* names[4] = {"2theta", "Omega", "TOF", "Energy"};
    for (int i = 0; i < 4; ++i) {
        if (!WMenuHasItem(items[i])) continue;
        if (g.mixed_scat_var) {
            WMenuSetState(items[i], 1, 0);
            continue;
        }
        WMenuSetState(items[i], 1, 1);
        WMenuSetState(items[i], 2, n >= 1 && Same(g.pattern[1].scat_var, names[i]) ? 1 : 0);
    }
}

void Plot_ReMake() {
    ZENDRITE_STORE& g = zendrite_param_global();
    const std::string& mode = g.graph_mode;
    const bool log = Same(mode, "multi_log");
    if (!Same(mode, "none") && !Same(mode, "single") && !Same(mode, "multi") && !log)
        Graphics_Fault("Fault /zendrite_graphics/Plot_ReMake/02 mode invalid por this subroutine");
    if (g.nperfiles == 0) {
        if (Graphics_Hooks().title_screen) Graphics_Hooks().title_screen();
        return;
    }
    Compute_Plot_Limits();
    Update_X_Space_Menus();
    if (Same(mode, "none") || Same(mode, "single")) {
        Enter_Calculation_Mode(0);
        Enter_Single_Mode(0);
        g.Peak_List.count = 0;
        g.Bgr_List.count = 0;
        if (Graphics_Hooks().enable_data_menus) Graphics_Hooks().enable_data_menus();
    } else {
        Enter_Multi_Mode(log);
    }
    if (log)
        plot_graph2d(g.nperfiles, g.win_xmin, g.win_xmax, 0.0f, Frame_Y(g.win_ymax, true), true);
    else
        plot_graph2d(g.nperfiles, g.win_xmin, g.win_xmax, g.win_ymin, g.win_ymax);
}

}  // namespace zendrite
