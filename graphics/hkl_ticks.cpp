// The ticks of the HKL generator and Search_HKLGen_Refl.
#include "graphics/hkl_ticks.h"

#include <algorithm>
#include <cstdio>

#include "app/present.h"
#include "app/store/zendrite_param_global.h"
#include "graphics/mouse.h"
#include "graphics/mouse_draw.h"
#include "graphics/plot.h"
#include "graphics/plot_state.h"

namespace zendrite {

namespace {
// A reflection's bar stands just above the pattern at its position, so that the
// peak under it stays visible: from 2% to 10% of the frame's height above y.
void bar(const hxl::HKL_GEN_TYPE& r, const FRAME_LIMITS& f, float& low, float& high) {
    const float h = f.ymax - f.ymin;
    low = std::clamp(Frame_Y(r.y, f.log) + 0.02f * h, f.ymin, f.ymax);
    high = std::clamp(low + 0.08f * h, f.ymin, f.ymax);
}
}  // namespace

std::string Hkl_Refl_Label(const hxl::HKL_GEN_TYPE& r) {
    char buf[96];
    std::snprintf(buf, sizeof buf, "(%3d %3d %3d)  M=%3d  d=%9.5f", r.h, r.k, r.l, r.mult,
                  r.s > 0 ? 0.5 / static_cast<double>(r.s) : 0.0);
    return buf;
}

void Draw_Hkl_Ticks(const std::vector<hxl::HKL_GEN_TYPE>& list) {
    const FRAME_LIMITS& f = Graphics_State().frame;
    if (!f.drawn) return;
    WindowSelect(kRootWindow);
    IGrSelect(1, kRootWindow);
    IGrPlotMode(PlotNormal);
    IPgToGrUnits();
    IGrColourN(WRGB(0, 150, 0));
    IGrLineWidth(2);
    // the list rises in position: only the part inside the frame is drawn
    auto first = std::lower_bound(list.begin(), list.end(), f.xmin,
                                  [](const hxl::HKL_GEN_TYPE& r, float x) { return r.pos < x; });
    for (auto it = first; it != list.end() && it->pos <= f.xmax; ++it) {
        float low = 0, high = 0;
        bar(*it, f, low, high);
        IGrMoveTo(it->pos, low);
        IGrLineTo(it->pos, high);
    }
    IGrLineWidth(1);
}

void Search_HKLGen_Refl(float x, float y, const std::vector<hxl::HKL_GEN_TYPE>& list, bool& changed) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    const FRAME_LIMITS& f = Graphics_State().frame;
    MOUSE_STATE& m = Mouse_State();
    changed = false;
    std::vector<int> found;
    const float width = g.win_xmax - g.win_xmin;
    if (x >= g.win_xmin && x <= g.win_xmax) {
        for (std::size_t i = 0; i < list.size() && static_cast<int>(found.size()) < kMaxReflUnderMouse; ++i) {
            const hxl::HKL_GEN_TYPE& r = list[i];
            float low = 0, high = 0;
            bar(r, f, low, high);
            if (r.pos > x - 0.01f * width && r.pos < x + 0.01f * width && Frame_Y(y, f.log) <= high)
                found.push_back(static_cast<int>(i) + 1);
        }
    }
    if (found == m.found_hkl) return;
    changed = true;
    m.found_hkl = found;
    if (Graphics_State().bitmap == 0) return;
    Plot_Repaint();
    if (found.empty()) return;
    std::vector<std::string> lines;
    for (int i : found) lines.push_back(Hkl_Refl_Label(list[static_cast<std::size_t>(i - 1)]));
    Reflection_Box(x, y, lines);
}

}  // namespace zendrite
