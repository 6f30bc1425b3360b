// The routines of the window-limit, focus, target, zoom and multi-plot items.
#include <iostream>

#include "app/main/menu_groups.h"
#include "app/main/plot_link.h"
#include "app/main/zendrite_app.h"
#include "app/present.h"
#include "app/store/zendrite_param_global.h"

namespace zendrite {
namespace {

[[noreturn]] void fault(const std::string& text) {
    std::cerr << text << std::endl;
    std::exit(1);
}

bool plotting_mode() {
    const std::string& m = zendrite_param_global().graph_mode;
    return m == "single" || m == "multi" || m == "multi_log" || m == "calculation";
}

}  // namespace

void View_Window_Limits(int item) {
    ZENDRITE_STORE& g = zendrite_param_global();
    if (!plotting_mode()) {
        const bool first = item == 40106 || item == 40109 || item == 40116 || item == 40133;
        fault(first ? "/Fault: /zendrite_win_root/ihand_winroot/035 Op. not permitted"
                    : "/Fault: /zendrite_win_root/ihand_winroot/035 Op. not permited");
    }
    const float dx = 0.1f * (g.win_xmax - g.win_xmin), dy = 0.05f * (g.win_ymax - g.win_ymin),
                dz = 0.05f * (g.win_xmax - g.win_xmin);
    switch (item) {
    case 40106: g.win_xmin -= dx, g.win_xmax -= dx; break;
    case 40109: g.win_xmin += dx, g.win_xmax += dx; break;
    case 40116: { const float s = g.data_xmax - g.win_xmax; g.win_xmax = g.data_xmax, g.win_xmin += s; break; }
    case 40133: { const float s = g.data_xmin - g.win_xmin; g.win_xmin = g.data_xmin, g.win_xmax += s; break; }
    case 40118: g.win_ymin -= dy, g.win_ymax -= dy; break;
    case 40119: g.win_ymin += dy, g.win_ymax += dy; break;
    case 40136: g.win_xmax += dz, g.win_xmin -= dz; break;
    case 40137: g.win_xmax -= dz, g.win_xmin += dz; break;
    default: break;
    }
    Plot_Again();
}

void View_Focus(int) {
    if (!Root_Focus()) return;
    if (!plotting_mode()) fault("Fault: zendrite_win_root/ihand_win_root/017 focus no permited");
    Plot_Again();
}

void View_Target(int) {
    ZENDRITE_STORE& g = zendrite_param_global();
    g.target_at_centre = !g.target_at_centre;
    WMenuSetState(40111, 2, g.target_at_centre ? 1 : 0);
    Plot_Again();
}

void View_Zoom_Mode(int item) {
    ZENDRITE_STORE& g = zendrite_param_global();
    const bool zoom = item == 40105;
    WCursorShape(zoom ? 6 : 0);
    WMenuSetState(40113, 1, zoom ? 0 : 1);
    if (!zoom) WMenuSetState(40105, 1, 1);
    WMenuSetState(40105, 2, zoom ? 1 : 0);
    g.MoveMode = zoom ? 1 : 0;
}

void View_Multi(int item) {
    const bool log = item == 40226;
    Root_Restore_Shown();
    Enter_Multi_Mode(log);
    zendrite_param_global().log_scale = log;
    Plot_Again();
}

}  // namespace zendrite
