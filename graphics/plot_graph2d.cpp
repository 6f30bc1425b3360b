// plot_graph2d: one frame of all shown profiles, drawn off-screen and copied to the window.
#include <algorithm>

#include "app/present.h"
#include "app/store/zendrite_param_global.h"
#include "graphics/curve_draw.h"
#include "graphics/plot.h"
#include "graphics/plot_parts.h"
#include "graphics/plot_settings.h"
#include "graphics/plot_state.h"

namespace zendrite {

void Open_Up_Range(float& low, float& high) {
    if (high > low) return;
    const float pad = std::max(1.0f, 0.05f * std::max(std::abs(low), std::abs(high)));
    low -= pad;
    high += pad;
}

void plot_graph2d(int nperfiles, float xmin, float xmax, float ymin, float ymax, bool log) {
    const ZENDRITE_STORE& g = zendrite_param_global();
    const PLOT_SETTINGS& s = Plot_Settings();
    GRAPHICS_STATE& st = Graphics_State();
    const int n = std::clamp(std::min(nperfiles, g.nperfiles), 0, kMaxProfiles);
    const float pw = static_cast<float>(s.page_width), ph = static_cast<float>(s.page_height);

    WindowSelect(kRootWindow);
    if (st.bitmap != 0) WBitmapDestroy(st.bitmap);
    WBitmapCreate(st.bitmap, std::max(WInfoWindow(1), 1), std::max(WInfoWindow(2), 1));
    IGrSelect(2, st.bitmap);

    Open_Up_Range(xmin, xmax);
    Open_Up_Range(ymin, ymax);
    st.frame = FRAME_LIMITS{xmin, xmax, ymin, ymax, log, true};
    IGrArea(0, 0, 1, 1);
    IGrUnits(0, 0, pw, ph);
    IPgArea(s.zone_left, s.zone_bottom, s.zone_right, s.zone_top);

    IGrPlotMode(PlotNormal);
    Paint_Plot_Zone();
    Draw_Excluded_Bands(n, xmin, xmax);

    IPgUnits(xmin, ymin, xmax, ymax);
    Set_Frame_Pixels(xmin, xmax, ymin, ymax, std::max(WInfoWindow(1), 1), std::max(WInfoWindow(2), 1));
    Begin_Curve_Batch();
    for (int k = 1; k <= n; ++k)
        if (g.show_profile[static_cast<std::size_t>(k)]) Draw_Slot_Curves(k, xmin, xmax, log);
    End_Curve_Batch();

    IGrLineWidth(1);
    Draw_Axes_And_Texts(n);
    if (g.prf_loaded) Draw_Rietveld_Layers(n, xmin, xmax, ymin, ymax);
    IGrArea(0, 0, 1, 1);
    IGrUnits(0, 0, pw, ph);
    Draw_Frame_And_Legend(n);
    Draw_Second_Axis(n);

    IGrSelect(1, kRootWindow);
    WBitmapPut(st.bitmap, 0);
}

}  // namespace zendrite
