// The reflections of the Rietveld profile under the mouse, listed in a box beside it.
#include <algorithm>

#include "app/present.h"
#include "app/store/zendrite_param_global.h"
#include "graphics/mouse.h"
#include "graphics/mouse_draw.h"
#include "graphics/plot.h"
#include "graphics/plot_settings.h"
#include "graphics/plot_state.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {
std::vector<int> reflections_near(float x, float y) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    std::vector<int> found;
    const PRF_INFO_ADD_TYPE& info = g.info[static_cast<std::size_t>(g.ProfilePRFactive)];
    const int nph = std::clamp(info.nphases, 0, kMaxTickPhases);
    const float low = g.diff_base + g.tick_bottom[static_cast<std::size_t>(nph)];
    const float high = g.diff_base + g.tick_top[1];
    if (nph < 1 || x < g.win_xmin || x > g.win_xmax || y < low || y > high) return found;
    const float width = g.win_xmax - g.win_xmin;
    const int nrefl = std::min(info.nrefl, info.refl_pos.size());
    for (int i = 1; i <= nrefl && static_cast<int>(found.size()) < kMaxReflUnderMouse; ++i) {
        const float pos = info.refl_pos(i);
        if (pos > x - 0.02f * width && pos < x + 0.02f * width) found.push_back(i);
    }
    return found;
}

void show_box(float x, float y, const std::vector<int>& found) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    const PRF_INFO_ADD_TYPE& info = g.info[static_cast<std::size_t>(g.ProfilePRFactive)];
    WindowSelect(kRootWindow);
    IGrSelect(1, kRootWindow);
    IGrPlotMode(PlotNormal);
    // the ticks of the reflections found, in the window's data units
    IPgToGrUnits();
    IGrColour("Magenta");
    IGrLineWidth(2);
    for (int i : found) {
        const int ph_i = std::clamp(info.refl_phase(i), 1, kMaxTickPhases);
        IGrMoveTo(info.refl_pos(i), g.diff_base + g.tick_top[static_cast<std::size_t>(ph_i)]);
        IGrLineTo(info.refl_pos(i), g.diff_base + g.tick_bottom[static_cast<std::size_t>(ph_i)]);
    }
    IGrLineWidth(1);
    std::vector<std::string> lines;
    for (int i : found) lines.push_back(info.refl_label.size() >= i ? hxl::Trim(info.refl_label(i)) : std::string());
    Reflection_Box(x, y, lines);
}
}  // namespace

void Search_PRF_Refl(float x, float y, bool& changed) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    MOUSE_STATE& m = Mouse_State();
    changed = false;
    std::vector<int> found;
    if (g.prf_loaded) {
        if (g.ProfilePRFactive < 1) Graphics_Fault("Fault: /zendrite_win_root/ ProfilePRFactive=0");
        if (g.ProfilePRFactive > g.nperfiles) Graphics_Fault("Fault: /zendrite_win_root/ ProfilePRFactive>nperfiles");
        found = reflections_near(x, y);
    }
    if (found == m.found) return;
    changed = true;
    m.found = found;
    if (Graphics_State().bitmap == 0) return;
    Plot_Repaint();
    if (!found.empty()) show_box(x, y, found);
}

}  // namespace zendrite
