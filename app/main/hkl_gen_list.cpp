// The list of the HKL generator for the present window, its ticks and the search under the mouse.
#include <algorithm>
#include <cstdio>

#include "app/main/hkl_gen.h"
#include "app/store/zendrite_param_global.h"
#include "graphics/hkl_ticks.h"
#include "graphics/mouse.h"
#include "graphics/plot_state.h"

namespace zendrite {

HKL_GEN_STATE& Hkl_Gen_State() {
    static HKL_GEN_STATE s;
    return s;
}

namespace {

// The profile whose points give the ticks their height.
const DIFFRACTION_PATTERN_TYPE* shown_pattern() {
    const ZENDRITE_STORE& g = zendrite_param_global();
    const int k = First_Shown_Slot();
    if (k < 1) return nullptr;
    return &g.pattern[static_cast<std::size_t>(k)];
}

bool panel_open() { return WDialogOpen(kHklPanel); }

void overlay() {
    HKL_GEN_STATE& s = Hkl_Gen_State();
    if (!s.drawing || !panel_open()) return;
    const ZENDRITE_STORE& g = zendrite_param_global();
    // a zoom changes the range of s: the list follows the window
    if (g.win_xmin != s.made_xmin || g.win_xmax != s.made_xmax) {
        std::string text;
        if (!Hkl_Gen_Update(text)) WindowOutStatusBar(4, text);
    }
    Draw_Hkl_Ticks(s.list);
}

void search(float x, float y) {
    if (!Hkl_Gen_State().drawing) return;
    bool changed = false;
    Search_HKLGen_Refl(x, y, Hkl_Gen_State().list, changed);
}

}  // namespace

bool Hkl_Gen_Update(std::string& text) {
    HKL_GEN_STATE& s = Hkl_Gen_State();
    const ZENDRITE_STORE& g = zendrite_param_global();
    hxl::Cell_Record rec;
    if (!hxl::Hkl_Trial_Cell(s.cell, rec, text)) return false;
    const DIFFRACTION_PATTERN_TYPE* p = shown_pattern();
    const int n = p ? std::min(p->npts, std::min(p->x.size(), p->y.size())) : 0;
    std::vector<hxl::HKL_GEN_TYPE> list;
    if (!hxl::Hkl_Generate_Window(rec, s.sg, s.space, s.lambda, s.dtt1, s.dtt2, g.win_xmin, g.win_xmax,
                                  n > 0 ? p->x.data() : nullptr, n > 0 ? p->y.data() : nullptr, n, list, text))
        return false;
    s.record = rec;
    s.list.swap(list);
    s.made_xmin = g.win_xmin;
    s.made_xmax = g.win_xmax;
    Mouse_State().found_hkl.clear();
    return true;
}

void Connect_Hkl_Gen() {
    Graphics_Hooks().hkl_overlay = overlay;
    Graphics_Hooks().hklgen_open = panel_open;
    Graphics_Hooks().search_hklgen = search;
}

std::string Hkl_Gen_Dump() {
    const HKL_GEN_STATE& s = Hkl_Gen_State();
    std::string out = "cell";
    char buf[160];
    for (float v : s.cell) {
        std::snprintf(buf, sizeof buf, " %.5f", static_cast<double>(v));
        out += buf;
    }
    out += "\nspgr " + s.spgr + "\nsystem " + s.crystal_system + "\ndrawing " + (s.drawing ? "1" : "0") +
           "\ncount " + std::to_string(s.list.size()) + "\nmerit " + s.merit +
           "\nstatus " + WindowStatusBarText(4) + "\n";
    if (s.refined) out += s.refined_text + "\n" + s.sigma_text + "\n";
    for (const hxl::HKL_GEN_TYPE& r : s.list) {
        std::snprintf(buf, sizeof buf, "refl %d %d %d %d %.6f %.4f %.1f\n", r.h, r.k, r.l, r.mult,
                      static_cast<double>(r.s), static_cast<double>(r.pos), static_cast<double>(r.y));
        out += buf;
    }
    for (int i : Mouse_State().found_hkl)
        if (i >= 1 && static_cast<std::size_t>(i) <= s.list.size())
            out += "under " + Hkl_Refl_Label(s.list[static_cast<std::size_t>(i - 1)]) + "\n";
    return out;
}

}  // namespace zendrite
