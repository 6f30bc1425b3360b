// Slot operations of the Profiles menu: copy, removal, new order, focus on some slots.
#include <algorithm>
#include <utility>

#include "app/main/profile_commands.h"
#include "app/store/zendrite_param_global.h"
#include "graphics/plot.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {

constexpr std::size_t kTitleLength = 180;

std::size_t at(int slot) { return static_cast<std::size_t>(slot); }

// Everything that belongs to one slot, moved as a whole.
struct SLOT {
    DIFFRACTION_PATTERN_TYPE pattern;
    PRF_INFO_ADD_TYPE info;
    bool show = true, calc = false, bgr = false;
    float x_shift_total = 0, y_mult_total = 1, dx = 0, dy = 0;
};

SLOT take(ZENDRITE_STORE& g, int s) {
    SLOT out{std::move(g.pattern[at(s)]), std::move(g.info[at(s)]), g.show_profile[at(s)], g.plot_calc[at(s)],
             g.plot_bgr[at(s)], g.x_shift_total[at(s)], g.y_mult_total[at(s)], g.draw_dx[at(s)], g.draw_dy[at(s)]};
    Reset_Slot_Totals(s);
    Clear_Pattern_Record(g.pattern[at(s)]);
    Clear_Prf_Info(g.info[at(s)]);
    g.show_profile[at(s)] = true;
    g.plot_calc[at(s)] = g.plot_bgr[at(s)] = false;
    return out;
}

void put(ZENDRITE_STORE& g, int s, SLOT&& from) {
    g.pattern[at(s)] = std::move(from.pattern);
    g.info[at(s)] = std::move(from.info);
    g.show_profile[at(s)] = from.show;
    g.plot_calc[at(s)] = from.calc;
    g.plot_bgr[at(s)] = from.bgr;
    g.x_shift_total[at(s)] = from.x_shift_total;
    g.y_mult_total[at(s)] = from.y_mult_total;
    g.draw_dx[at(s)] = from.dx;
    g.draw_dy[at(s)] = from.dy;
}

}  // namespace

bool Copy_Profile(std::string& message) {
    ZENDRITE_STORE& g = zendrite_param_global();
    message.clear();
    if (g.nperfiles < 1) {
        message = "There is no profile to copy";
        return false;
    }
    if (g.nperfiles + 1 > kMaxProfiles) {
        message = kMsgMaxProfiles;
        return false;
    }
    const int s = ++g.nperfiles;
    Clear_Pattern_Record(g.pattern[at(s)]);
    Clear_Prf_Info(g.info[at(s)]);
    Copy_Pattern_Record(g.pattern[1], g.pattern[at(s)]);
    Copy_Prf_Info(g.info[1], g.info[at(s)]);
    g.pattern[at(s)].title = hxl::Cut("Copy of " + hxl::Trim(g.pattern[1].title), kTitleLength);
    g.info[at(s)].prf_name = "<copy>";
    g.info[at(s)].prf_dir.clear();
    g.info[at(s)].prf_type = "COPY";
    g.show_profile[at(s)] = true;
    g.plot_calc[at(s)] = g.plot_bgr[at(s)] = false;
    Reset_Slot_Totals(s);
    return true;
}

void Remove_Slots(const std::vector<bool>& remove) {
    ZENDRITE_STORE& g = zendrite_param_global();
    const int n = std::min(g.nperfiles, static_cast<int>(remove.size()));
    int kept = 0, active = 0;
    for (int s = 1; s <= n; ++s) {
        if (remove[at(s - 1)]) {
            take(g, s);
            continue;
        }
        ++kept;
        if (s == g.ProfilePRFactive) active = kept;
        if (kept != s) put(g, kept, take(g, s));
    }
    for (int s = n + 1; s <= g.nperfiles; ++s) {  // slots the flags did not reach stay
        ++kept;
        if (s == g.ProfilePRFactive) active = kept;
        put(g, kept, take(g, s));
    }
    g.nperfiles = kept;
    g.ProfilePRFactive = active;
    if (active == 0) g.prf_loaded = false;
}

void Reorder_Slots(const std::vector<int>& order) {
    ZENDRITE_STORE& g = zendrite_param_global();
    const int n = g.nperfiles;
    // anything but a permutation of the slots would lose profiles
    if (static_cast<int>(order.size()) != n) return;
    std::vector<int> sorted = order;
    std::sort(sorted.begin(), sorted.end());
    for (int i = 1; i <= n; ++i)
        if (sorted[at(i - 1)] != i) return;
    std::vector<SLOT> old;
    old.reserve(at(n));
    for (int s = 1; s <= n; ++s) old.push_back(take(g, s));
    int active = 0;
    for (int s = 1; s <= n; ++s) {
        const int from = order[at(s - 1)];
        if (from == g.ProfilePRFactive) active = s;
        put(g, s, std::move(old[at(from - 1)]));
    }
    g.ProfilePRFactive = active;
}

bool Focus_Slots(const std::vector<bool>& chosen) {
    ZENDRITE_STORE& g = zendrite_param_global();
    const int n = std::min(g.nperfiles, static_cast<int>(chosen.size()));
    float ylow = g.data_ymax, yhigh = g.data_ymin;
    bool any = false;
    for (int k = 1; k <= n; ++k) {
        if (!chosen[at(k - 1)]) continue;
        const DIFFRACTION_PATTERN_TYPE& p = g.pattern[at(k)];
        const int npts = std::min({p.npts, p.x.size(), p.y.size()});
        for (int i = 1; i <= npts; ++i) {
            if (!(p.x(i) > g.win_xmin && p.x(i) < g.win_xmax)) continue;
            ylow = std::min(ylow, p.y(i));
            yhigh = std::max(yhigh, p.y(i));
            any = true;
        }
    }
    if (!any || !(ylow < yhigh)) return false;
    const float margin = 0.05f * (yhigh - ylow);
    g.win_ymax = yhigh + margin;
    const float lo = ylow - margin;
    if (!g.prf_loaded) {
        g.win_ymin = lo;
        return true;
    }
    // the band of the Rietveld profile stays under the chosen curves
    const float band = 0.14f * (g.win_ymax - lo);
    g.y_floor = lo - 0.2f * (g.win_ymax - lo);
    g.diff_base = lo - band;
    const bool active = g.ProfilePRFactive >= 1 && g.ProfilePRFactive <= g.nperfiles;
    const int nphases = active ? std::clamp(g.info[at(g.ProfilePRFactive)].nphases, 0, kMaxTickPhases) : 0;
    Compute_Tick_Rows(band, nphases);
    if (g.show_ydiff) g.win_ymin = g.y_floor;
    else if (g.show_reflexions) g.win_ymin = g.diff_base + g.tick_bottom[at(nphases)];
    else g.win_ymin = lo;
    return true;
}

}  // namespace zendrite
