#include "app/store/zendrite_param_global.h"

#include <memory>

namespace zendrite {

ZENDRITE_STORE& zendrite_param_global() {
    // Allocated once, on first use: the slot arrays are too large for static storage of every test binary.
    static std::unique_ptr<ZENDRITE_STORE> store = [] {
        auto s = std::make_unique<ZENDRITE_STORE>();
        s->show_profile.fill(true);
        s->y_mult_total.fill(1.0f);
        return s;
    }();
    return *store;
}

STORE_HOOKS& Store_Hooks() {
    static STORE_HOOKS hooks;
    return hooks;
}

void Clear_Pattern_Record(DIFFRACTION_PATTERN_TYPE& pattern) { pattern = DIFFRACTION_PATTERN_TYPE{}; }

void Clear_Prf_Info(PRF_INFO_ADD_TYPE& info) { info = PRF_INFO_ADD_TYPE{}; }

void Copy_Pattern_Record(const DIFFRACTION_PATTERN_TYPE& from, DIFFRACTION_PATTERN_TYPE& to) {
    if (&from == &to) return;
    Clear_Pattern_Record(to);
    to = from;  // deep copy: the arrays are values
}

void Copy_Prf_Info(const PRF_INFO_ADD_TYPE& from, PRF_INFO_ADD_TYPE& to) {
    if (&from == &to) return;
    Clear_Prf_Info(to);
    to = from;
}

void Reset_Slot_Totals(int slot) {
    ZENDRITE_STORE& g = zendrite_param_global();
    if (slot < 1 || slot > kMaxProfiles) return;
    g.x_shift_total[static_cast<std::size_t>(slot)] = 0.0f;
    g.y_mult_total[static_cast<std::size_t>(slot)] = 1.0f;
    g.draw_dx[static_cast<std::size_t>(slot)] = g.draw_dy[static_cast<std::size_t>(slot)] = 0.0f;
}

void Reset_Store() {
    ZENDRITE_STORE& g = zendrite_param_global();
    for (int i = 1; i <= g.nperfiles; ++i) {
        Clear_Pattern_Record(g.pattern[static_cast<std::size_t>(i)]);
        Clear_Prf_Info(g.info[static_cast<std::size_t>(i)]);
    }
    g.nperfiles = 0;
    g.prf_loaded = false;
    g.ProfilePRFactive = 0;
    g.show_profile.fill(true);
    g.plot_calc.fill(false);
    g.plot_bgr.fill(false);
    g.x_shift_total.fill(0.0f);
    g.y_mult_total.fill(1.0f);
    g.draw_dx.fill(0.0f);
    g.draw_dy.fill(0.0f);
    g.shift_x_last = g.shift_y_last = 0.0f;
    g.show_ycalc = g.show_ydiff = g.show_reflexions = true;
    g.peak_insert = g.peak_delete = g.bgr_insert = g.bgr_delete = false;
    g.Bgr_List.count = 0;
    g.target_at_centre = false;
    if (Store_Hooks().after_reset) Store_Hooks().after_reset();
}

void Enter_None_Mode() {
    ZENDRITE_STORE& g = zendrite_param_global();
    g.calc_mode = 0;
    g.MoveMode = 0;
    g.nperfiles = 0;
    g.prf_loaded = false;
    g.mixed_scat_var = false;
    g.ProfilePRFactive = 0;
    g.xspace = "----";
    g.graph_mode = "none";
    if (Store_Hooks().after_none_mode) Store_Hooks().after_none_mode();
}

void Enter_Single_Mode(int keep) {
    ZENDRITE_STORE& g = zendrite_param_global();
    g.graph_mode = "single";
    g.MoveMode = 0;
    if (keep == 0) g.peak_insert = g.peak_delete = g.bgr_insert = g.bgr_delete = false;
    if (Store_Hooks().after_mode_change) Store_Hooks().after_mode_change();
}

void Enter_Multi_Mode(bool logflag) {
    ZENDRITE_STORE& g = zendrite_param_global();
    g.graph_mode = logflag ? "multi_log" : "multi";
    g.MoveMode = 0;
    if (Store_Hooks().after_mode_change) Store_Hooks().after_mode_change();
}

void Enter_Calculation_Mode(int mode) {
    ZENDRITE_STORE& g = zendrite_param_global();
    g.calc_mode = mode;
    g.graph_mode = "calculation";
    g.MoveMode = 0;
    if (Store_Hooks().after_mode_change) Store_Hooks().after_mode_change();
}

std::string Excluded_Region_Refusal(int slot) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    if (g.info[static_cast<std::size_t>(slot)].nexcl >= hxl::kMaxExcluded)
        return "Profile No " + std::to_string(slot) + kMsgTooManyExcl;
    return {};
}

}  // namespace zendrite
