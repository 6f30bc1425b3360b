// Plot_Again, the overlays of the calculation modes and the repaint.
#include <algorithm>

#include "app/present.h"
#include "app/store/zendrite_param_global.h"
#include "graphics/plot.h"
#include "graphics/plot_settings.h"
#include "graphics/plot_state.h"
#include "support/fixed_text.h"

namespace zendrite {

namespace {
using hxl::Same;

// Overlays go to the window itself, so that a repaint removes them; drawn in page units.
void page_units_on_window() {
    const PLOT_SETTINGS& s = Plot_Settings();
    WindowSelect(kRootWindow);
    IGrSelect(1, kRootWindow);
    IGrPlotMode(PlotNormal);
    IGrArea(0, 0, 1, 1);
    IGrUnits(0, 0, static_cast<float>(s.page_width), static_cast<float>(s.page_height));
}

void peak_bars() {
    const ZENDRITE_STORE& g = zendrite_param_global();
    const FRAME_LIMITS& f = Graphics_State().frame;
    page_units_on_window();
    IGrColourN(0);
    IGrLineWidth(2);
    const int n = std::clamp(g.Peak_List.count, 0, kMaxPeaks + 1);
    for (int i = 1; i <= n; ++i) {
        const PEAK_RECORD& p = g.Peak_List.p[static_cast<std::size_t>(i)];
        if (p.x < f.xmin || p.x > f.xmax) continue;
        float px = 0, py0 = 0, py1 = 0;
        Data_To_Page(p.x, Frame_Y(g.win_ymin, f.log), px, py0);
        Data_To_Page(p.x, Frame_Y(p.y, f.log), px, py1);
        IGrMoveTo(px, py0);
        IGrLineTo(px, py1);
    }
    IGrLineWidth(1);
}

void background_points() {
    const ZENDRITE_STORE& g = zendrite_param_global();
    const FRAME_LIMITS& f = Graphics_State().frame;
    page_units_on_window();
    // Blue, so that the points show on the profiles, drawn in red by default.
    IGrColourN(WRGB(0, 0, 255));
    IGrFillPattern(3);
    const int n = std::clamp(g.Bgr_List.count, 0, kMaxBgrPoints);
    for (int i = 1; i <= n; ++i) {
        const BGR_RECORD& b = g.Bgr_List.p[static_cast<std::size_t>(i)];
        if (b.x < f.xmin || b.x > f.xmax) continue;
        float px = 0, py = 0;
        Data_To_Page(b.x, Frame_Y(b.y, f.log), px, py);
        IGrCircle(px, py, 6.0f);
    }
    IGrFillPattern(0);
}
}  // namespace

void Draw_Calc_Overlay() {
    const ZENDRITE_STORE& g = zendrite_param_global();
    const GRAPHICS_HOOKS& h = Graphics_Hooks();
    switch (g.calc_mode) {
    case 1:
        if (h.fit_overlay && !(h.fit_running && h.fit_running())) h.fit_overlay();
        break;
    case 2: peak_bars(); break;
    case 3: background_points(); break;
    case 4:
        if (h.hkl_overlay) h.hkl_overlay();
        break;
    default: break;
    }
}

void Plot_Again() {
    const ZENDRITE_STORE& g = zendrite_param_global();
    const std::string& mode = g.graph_mode;
    if (Same(mode, "none")) {
        if (Graphics_Hooks().title_screen) Graphics_Hooks().title_screen();
    } else if (Same(mode, "single") || Same(mode, "multi")) {
        plot_graph2d(g.nperfiles, g.win_xmin, g.win_xmax, g.win_ymin, g.win_ymax);
        if (Graphics_Hooks().structure_overlay) Graphics_Hooks().structure_overlay();
    } else if (Same(mode, "multi_log")) {
        plot_graph2d(g.nperfiles, g.win_xmin, g.win_xmax, Frame_Y(g.win_ymin, true), Frame_Y(g.win_ymax, true), true);
        if (Graphics_Hooks().structure_overlay) Graphics_Hooks().structure_overlay();
    } else if (Same(mode, "calculation")) {
        plot_graph2d(g.nperfiles, g.win_xmin, g.win_xmax, g.win_ymin, g.win_ymax);
        if (Graphics_Hooks().structure_overlay) Graphics_Hooks().structure_overlay();
        Draw_Calc_Overlay();
    } else if (Graphics_Hooks().graph_other) {
        Graphics_Hooks().graph_other(mode);
    }
}

void Plot_Repaint() {
    const ZENDRITE_STORE& g = zendrite_param_global();
    const GRAPHICS_STATE& st = Graphics_State();
    if (st.bitmap == 0) {
        Plot_Again();
        return;
    }
    WindowSelect(kRootWindow);
    IGrSelect(1, kRootWindow);
    WBitmapPut(st.bitmap, 0);
    if (Same(g.graph_mode, "calculation")) Draw_Calc_Overlay();
}

}  // namespace zendrite
