// The two redraw routines for a build without the plot engine: limits, modes and
// status bar as the plot would set them, with the title screen as the picture.
#include <algorithm>
#include <cmath>
#include <iostream>

#include "app/main/preferences.h"
#include "app/main/root_menu.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/zendrite_param_global.h"
#include "support/fixed_text.h"

namespace zendrite {

void Plot_ReMake() {
    ZENDRITE_STORE& g = zendrite_param_global();
    if (g.graph_mode != "none" && g.graph_mode != "single" && g.graph_mode != "multi" && g.graph_mode != "multi_log") {
        std::cerr << "Fault /zendrite_graphics/Plot_ReMake/02 mode invalid por this subroutine" << std::endl;
        std::exit(1);
    }
    if (g.nperfiles == 0) {
        Draw_Title_Screen();
        Update_Status_Bar();
        return;
    }
    auto slot = [&g](int i) -> const DIFFRACTION_PATTERN_TYPE& { return g.pattern[static_cast<std::size_t>(i)]; };
    g.data_xmin = slot(1).x(1), g.data_xmax = slot(1).x(slot(1).npts);
    g.data_ymin = slot(1).ymin, g.data_ymax = slot(1).ymax;
    for (int i = 2; i <= g.nperfiles; ++i) {
        g.data_xmin = std::min(g.data_xmin, slot(i).x(1));
        g.data_xmax = std::max(g.data_xmax, slot(i).x(slot(i).npts));
        g.data_ymin = std::min(g.data_ymin, slot(i).ymin);
        g.data_ymax = std::max(g.data_ymax, slot(i).ymax);
    }
    g.win_xmin = g.data_xmin, g.win_xmax = g.data_xmax;
    const float range = g.data_ymax - g.data_ymin;
    g.win_ymax = g.data_ymax + 0.05f * range;
    g.win_ymin = g.data_ymin - 0.05f * range;
    g.y_floor = g.data_ymin - 0.2f * range;
    g.diff_band = 0.14f * range;
    g.diff_base = g.data_ymin - g.diff_band;
    g.mixed_scat_var = false;
    for (int i = 2; i <= g.nperfiles; ++i)
        if (!hxl::Same(slot(i).scat_var, slot(1).scat_var)) g.mixed_scat_var = true;
    for (int item : {40042, 40228, 40043, 40229}) {
        WMenuSetState(item, 1, g.mixed_scat_var ? 0 : 1);
        WMenuSetState(item, 2, 0);
    }
    if (!g.mixed_scat_var) {
        const std::string s = hxl::Trim(slot(1).scat_var);
        const int item = s == "2theta" ? 40042 : s == "Omega" ? 40228 : s == "TOF" ? 40043 : s == "Energy" ? 40229 : 0;
        if (item) WMenuSetState(item, 2, 1);
    }
    if (g.graph_mode == "none" || g.graph_mode == "single") {
        Enter_Calculation_Mode(0);
        Enter_Single_Mode(0);
        g.Peak_List.count = 0;
        g.Bgr_List.count = 0;
        Grey_Data_Menus(true);
    }
    Plot_Again();
}

void Plot_Again() {
    Draw_Title_Screen();
    Update_Status_Bar();
}

}  // namespace zendrite
